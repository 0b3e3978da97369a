#include "model/quantity_records.h"

#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"
#include "model/xml_util.h"

CIfcQuantityName::~CIfcQuantityName() = default;
CIfcQuantitySet::~CIfcQuantitySet() = default;
CIfcType::~CIfcType() = default;
CIfcObject::~CIfcObject() = default;

namespace orvane::xml {
namespace {

using tinyxml2::XMLElement;
using tinyxml2::XMLPrinter;

// The kind named by a "TypeQuorsel" literal; an unknown one reads as a length.
int32_t measureTypeOf(const char* literal) {
  for (int32_t kind = 0; kind < kQuantityMeasureCount; ++kind)
    if (equalsNoCase(literal, QuantityMeasureNames[kind])) return kind;
  return LengthMeasure;
}

}  // namespace

void fillQuantity(const XMLElement& element, CIfcQuantityName& record) {
  copyText(record.name, requiredAttribute(element, "Name"));
  record.exported = equalsNoCase(requiredAttribute(element, "Export"), "yes");
  // A kind outside the three is written without "TypeQuorsel", so its absence reads as a length
  // rather than failing: a saved document always reads back.
  record.measureType = LengthMeasure;
  if (const char* literal = element.Attribute("TypeQuorsel")) record.measureType = measureTypeOf(literal);
  copyText(record.description, textOrEmpty(requiredChild(element, "Description")));
  record.value = readReal(textOrEmpty(requiredChild(element, "Value")));
}

int readQuantity(const XMLElement& element, CIfcQuantityName& record) {
  return guardedRead("Error lectura XML. CIfcQuantityName", [&] { fillQuantity(element, record); });
}

QuantitySetAttributes quantitySetAttributes(const XMLElement& element) {
  return {requiredAttribute(element, "Name"), requiredAttribute(element, "Description"),
          requiredAttribute(element, "typeZep")};
}

int readQuantitySet(const XMLElement& element, CIfcQuantitySet& record) {
  return guardedRead("Error lectura XML. CIfcQuantitySet", [&] {
    const QuantitySetAttributes attributes = quantitySetAttributes(element);
    copyText(record.name, attributes.name);
    copyText(record.description, attributes.description);
    copyText(record.typeZep, attributes.typeZep);
    record.quantities.reserve(countChildren(element, "QuantityName"));
    forEachChild(element, "QuantityName", [&](const XMLElement& child) {
      // A quantity that fails is left out; the set still reads.
      if (readQuantity(child, record.quantities.emplace_back()) != 1) record.quantities.pop_back();
      return true;
    });
  });
}

int readType(const XMLElement& element, CIfcType& record) {
  return guardedRead("Error lectura XML. CIfcType", [&] { copyText(record.name, requiredText(element)); });
}

int readObject(const XMLElement& element, CIfcObject& record) {
  return guardedRead("Error lectura XML. CIfcObject", [&] { copyText(record.name, requiredText(element)); });
}

void writeQuantity(XMLPrinter& out, const CIfcQuantityName& record) {
  out.OpenElement("QuantityName");
  out.PushAttribute("Name", record.name);
  if (record.measureType >= 0 && record.measureType < kQuantityMeasureCount)
    out.PushAttribute("TypeQuorsel", QuantityMeasureNames[record.measureType]);
  out.PushAttribute("Export", record.exported ? "Yes" : "No");
  writeTextElement(out, "Description", record.description);
  writeTextElement(out, "Value", formatReal3(record.value).c_str());
  out.CloseElement();
}

void openQuantitySet(XMLPrinter& out, const char* name, const char* description, const char* typeZep) {
  out.OpenElement("QuantitySet");
  out.PushAttribute("Name", name);
  out.PushAttribute("Description", description);
  out.PushAttribute("typeZep", typeZep);
}

void writeQuantitySet(XMLPrinter& out, const CIfcQuantitySet& record) {
  openQuantitySet(out, record.name, record.description, record.typeZep);
  for (const CIfcQuantityName& quantity : record.quantities) writeQuantity(out, quantity);
  out.CloseElement();
}

void writeType(XMLPrinter& out, const CIfcType& record) { writeTextElement(out, "TypeQuorsel", record.name); }

void writeObject(XMLPrinter& out, const CIfcObject& record) {
  writeTextElement(out, "ObjectQuorsel", record.name);
}

}  // namespace orvane::xml
