#include "model/property_records.h"

#include <cstring>

#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"
#include "model/xml_util.h"

CIfcNodoEnum::~CIfcNodoEnum() = default;
CIfcEnum::~CIfcEnum() = default;
CIfcPropertyName::~CIfcPropertyName() = default;
CIfcPropertySet::~CIfcPropertySet() = default;
CIfcRelationProyectPSet_IfcObject::~CIfcRelationProyectPSet_IfcObject() = default;

namespace orvane::xml {
namespace {

using tinyxml2::XMLElement;
using tinyxml2::XMLPrinter;

struct TypeWord {
  const char* word;
  PropertyValueType type;
};
constexpr TypeWord kTypeWords[] = {
    {"Integer", PropertyInteger}, {"Real", PropertyReal},         {"String", PropertyString},
    {"Boolean", PropertyBoolean}, {"DateTime", PropertyDateTime},
};

bool isYes(const char* text) { return equalsNoCase(text, "YES"); }

int32_t unitIndex(const char* unit) {
  for (int i = 0; i < kUnitCount; ++i)
    if (equalsNoCase(unit, UnitTable[i])) return i;
  return 0;
}

const char* unitName(int32_t unit) { return (unit >= 0 && unit < kUnitCount) ? UnitTable[unit] : ""; }

// Integer and Real value texts are printed as a format without arguments: "%%" gives "%".
// Any other "%" is kept as it stands.
const char* printedAsFormat(const char* text, char (&scratch)[kTextFieldSize]) {
  if (std::strchr(text, '%') == nullptr) return text;
  std::size_t out = 0;
  for (const char* p = text; *p != '\0' && out + 1 < sizeof scratch; ++p) {
    scratch[out++] = *p;
    if (p[0] == '%' && p[1] == '%') ++p;
  }
  scratch[out] = '\0';
  return scratch;
}

const char* numberOrText(const CIfcPropertyName& property, const orvane::NumberText& number,
                         char (&scratch)[kTextFieldSize]) {
  if (property.textValue[0] != '\0') return printedAsFormat(property.textValue, scratch);
  copyText(scratch, number.c_str());
  return scratch;
}

bool isReference(const char* value) { return std::strchr(value, '$') != nullptr; }

// The value text of a "Value" element goes to the field its type keeps it in.
void storeValue(CIfcPropertyName& record, const char* value) {
  switch (record.valueType) {
    case PropertyInteger:
      if (isReference(value)) copyText(record.textValue, value);
      else record.intValue = readInt(value);
      break;
    case PropertyReal:
      if (isReference(value)) copyText(record.textValue, value);
      else record.realValue = readReal(value);
      break;
    case PropertyBoolean:
      record.intValue = isYes(value) ? 1 : 0;
      break;
    default:  // String, Enumerated, DateTime
      copyText(record.textValue, value);
  }
}

}  // namespace

const char* typeWord(const CIfcPropertyName& property) {
  for (const TypeWord& entry : kTypeWords)
    if (entry.type == property.valueType) return entry.word;
  return property.enumName;
}

const char* valueText(const CIfcPropertyName& property, char (&scratch)[kTextFieldSize]) {
  switch (property.valueType) {
    case PropertyInteger: return numberOrText(property, formatInt(property.intValue), scratch);
    case PropertyReal: return numberOrText(property, formatReal3(property.realValue), scratch);
    case PropertyBoolean: return property.intValue == 1 ? "Yes" : "No";
    default: return property.textValue;
  }
}

int readEnum(const XMLElement& element, CIfcEnum& record) {
  return guardedRead("Error lectura XML. CIfcEnum", [&] {
    copyText(record.name, requiredAttribute(element, "Name"));
    copyText(record.description, requiredAttribute(element, "Description"));
    const XMLElement& values = requiredChild(element, "Elements");
    record.elements.reserve(countChildren(values, "Element"));
    forEachChild(values, "Element", [&](const XMLElement& item) {
      CIfcNodoEnum& value = record.elements.emplace_back();
      value.value = readInt(requiredAttribute(item, "Value"));
      copyText(value.text, requiredText(item));
      return true;
    });
  });
}

PropertySetAttributes propertySetAttributes(const XMLElement& element) {
  return {requiredAttribute(element, "Name"), requiredAttribute(element, "Description")};
}

int readPropertySet(const XMLElement& element, CIfcPropertySet& record) {
  return guardedRead("Error lectura XML. CIfcPropertySet", [&] {
    const PropertySetAttributes attributes = propertySetAttributes(element);
    copyText(record.name, attributes.name);
    copyText(record.description, attributes.description);
    record.properties.reserve(countChildren(element, "PropertyName"));
    forEachChild(element, "PropertyName", [&](const XMLElement& child) {
      // A property that fails is left out; the others still count.
      if (readProperty(child, record.properties.emplace_back()) != 1) record.properties.pop_back();
      return true;
    });
  });
}

void fillProperty(const XMLElement& element, CIfcPropertyName& record) {
  copyText(record.name, requiredAttribute(element, "Name"));
  const char* type = requiredAttribute(element, "Type");
  record.valueType = PropertyEnumerated;  // any word but the five names an enumerated type
  for (const TypeWord& entry : kTypeWords)
    if (equalsNoCase(type, entry.word)) record.valueType = entry.type;
  if (record.valueType == PropertyEnumerated) copyText(record.enumName, type);
  if (const char* unit = element.Attribute("Unit")) record.unit = unitIndex(unit);
  copyText(record.rule, requiredAttribute(element, "Rule"));
  record.optional = isYes(requiredAttribute(element, "Optional"));
  copyText(record.description, textOrEmpty(requiredChild(element, "Description")));
  storeValue(record, textOrEmpty(requiredChild(element, "Value")));
}

int readProperty(const XMLElement& element, CIfcPropertyName& record) {
  return guardedRead("Error lectura XML. CIfcPropertyName", [&] { fillProperty(element, record); });
}

int readRelation(const XMLElement& element, CIfcRelationProyectPSet_IfcObject& record) {
  return guardedRead(nullptr, [&] {
    copyText(record.pset, requiredAttribute(element, "PSet"));
    copyText(record.object, requiredAttribute(element, "Object"));
  });
}

void writeEnum(XMLPrinter& out, const CIfcEnum& record) {
  out.OpenElement("TypeEnum");
  out.PushAttribute("Name", record.name);
  out.PushAttribute("Description", record.description);
  out.OpenElement("Elements");
  for (const CIfcNodoEnum& value : record.elements) {
    out.OpenElement("Element");
    out.PushAttribute("Value", formatInt(value.value).c_str());
    out.PushText(value.text);
    out.CloseElement();
  }
  out.CloseElement();
  out.CloseElement();
}

void openPropertySet(XMLPrinter& out, const char* name, const char* description) {
  out.OpenElement("PropertySet");
  out.PushAttribute("Name", name);
  out.PushAttribute("Description", description);
}

void writePropertySet(XMLPrinter& out, const CIfcPropertySet& record) {
  openPropertySet(out, record.name, record.description);
  for (const CIfcPropertyName& property : record.properties) writeProperty(out, property);
  out.CloseElement();
}

void writeProperty(XMLPrinter& out, const CIfcPropertyName& record) {
  char scratch[kTextFieldSize];
  out.OpenElement("PropertyName");
  out.PushAttribute("Name", record.name);
  out.PushAttribute("Optional", record.optional ? "Yes" : "No");
  out.PushAttribute("Unit", unitName(record.unit));
  out.PushAttribute("Rule", record.rule);
  out.PushAttribute("Type", typeWord(record));
  writeTextElement(out, "Description", record.description);
  writeTextElement(out, "Value", valueText(record, scratch));
  out.CloseElement();
}

void writeRelation(XMLPrinter& out, const CIfcRelationProyectPSet_IfcObject& record) {
  out.OpenElement("RelationIfcElementWithPSet");
  out.PushAttribute("PSet", record.pset);
  out.PushAttribute("Object", record.object);
  out.CloseElement();
}

}  // namespace orvane::xml
