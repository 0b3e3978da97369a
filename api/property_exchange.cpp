// Properties of a property-set file to and from the host's arrays of FlatPropertyRecord.
//
// The host owns the records and may keep its own bytes in them: only the fields a property gives
// are written, and nothing past a text's terminator. Its texts may fill a field to the last byte
// without a terminator, so they are read only up to the field's end.
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "api/guard.h"
#include "api/merged_document.h"
#include "api/record_conversion.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/orvane.h"

using orvane::copyText;
using orvane::fieldText;
using orvane::api::guarded;

namespace orvane::api {

void fillRecord(FlatPropertyRecord& record, std::string_view setName, const CIfcPropertyName& property) {
  record.valueType = property.valueType;
  copyText(record.setName, setName);
  copyText(record.propertyName, fieldText(property.name));
  record.unit = property.unit;
  // An Integer or Real that refers to a host variable goes out as its number: the host reads
  // numbers from these records, never references.
  switch (property.valueType) {
    case PropertyInteger:
      copyText(record.valueText, orvane::formatInt(property.intValue).c_str());
      break;
    case PropertyReal:
      copyText(record.valueText, orvane::formatRealForField(property.realValue, sizeof record.valueText).c_str());
      break;
    case PropertyString:
      copyText(record.valueText, fieldText(property.textValue));
      break;
    case PropertyEnumerated:
      copyText(record.valueText, fieldText(property.textValue));
      copyText(record.enumName, fieldText(property.enumName));
      break;
    default:
      break;  // Boolean and DateTime values don't travel through records
  }
}

void propertyFrom(const FlatPropertyRecord& record, CIfcPropertyName& property) {
  copyText(property.name, fieldText(record.propertyName));
  property.valueType = record.valueType;
  property.unit = record.unit;
  // The number readers want a terminated text; the host's field may have none.
  char value[sizeof record.valueText + 1];
  copyText(value, fieldText(record.valueText));
  switch (record.valueType) {
    case PropertyInteger:
      property.intValue = orvane::readInt(value);
      break;
    case PropertyReal:
      property.realValue = orvane::readReal(value);
      break;
    case PropertyString:
      copyText(property.textValue, value);
      break;
    case PropertyEnumerated:
      copyText(property.textValue, value);
      copyText(property.enumName, fieldText(record.enumName));
      break;
    default:
      break;  // Boolean, DateTime and unknown types are written back without a value
  }
}

void update(CIfcPropertyName& existing, const FlatPropertyRecord& record) {
  CIfcPropertyName property;
  propertyFrom(record, property);
  existing.valueType = property.valueType;
  existing.intValue = property.intValue;
  existing.realValue = property.realValue;
  copyText(existing.textValue, fieldText(property.textValue));
  copyText(existing.description, fieldText(property.description));
  existing.unit = property.unit;
}

}  // namespace orvane::api

namespace {

using orvane::api::MergedMember;
using orvane::api::MergedSet;
using orvane::api::MergedSets;
using tinyxml2::XMLElement;
using tinyxml2::XMLPrinter;
using orvane::api::fillRecord;
using orvane::api::propertyFrom;
using orvane::api::update;

// Puts record `i` into set `set`: a new property when the set has none of its name, else an update
// of the first one.
void apply(MergedSets& sets, std::size_t set, const FlatPropertyRecord* records, int32_t i) {
  const std::string_view name = fieldText(records[i].propertyName);
  if (MergedMember* existing = sets.findMember(set, name)) existing->last = i;
  else sets.appendMember(set, MergedMember{name, nullptr, i, i});
}

// The property as a merge of whole records would hold it.
void materialise(const MergedMember& member, const FlatPropertyRecord* records, CIfcPropertyName& property) {
  if (member.element != nullptr) orvane::xml::fillProperty(*member.element, property);  // read once already
  else propertyFrom(records[member.first], property);
  if (member.last >= 0 && member.last != member.first) update(property, records[member.last]);
}

void printSets(XMLPrinter& out, const std::vector<MergedSet>& sets, const FlatPropertyRecord* records) {
  for (const MergedSet& set : sets) {
    char name[kTextFieldSize];
    char description[kTextFieldSize] = "";
    copyText(name, set.name);
    if (set.element != nullptr) copyText(description, orvane::xml::propertySetAttributes(*set.element).description);
    orvane::xml::openPropertySet(out, name, description);
    for (const MergedMember& member : set.members) {
      CIfcPropertyName property;
      materialise(member, records, property);
      orvane::xml::writeProperty(out, property);
    }
    out.CloseElement();
  }
}

void printRelations(XMLPrinter& out, const std::vector<const XMLElement*>& relations) {
  for (const XMLElement* element : relations) {
    CIfcRelationProyectPSet_IfcObject relation;
    orvane::xml::readRelation(*element, relation);  // read once already
    orvane::xml::writeRelation(out, relation);
  }
}

}  // namespace

extern "C" {

// Fills the host's records straight from the XML tree, one property at a time, without building
// the document's records: the same records as reading the document and walking it.
int getPropiedadesFichero(const char* path, FlatPropertyRecord* records, int maxRecords) noexcept {
  if (path == nullptr || records == nullptr || maxRecords <= 0) return 0;
  return guarded(0, [&] {
    tinyxml2::XMLDocument tree;
    if (!orvane::xml::loadTree(path, tree)) return 0;  // a file that doesn't read gives no records
    orvane::xml::PropertyOutline doc;
    orvane::xml::outlinePropertyDocument(tree, doc);
    int filled = 0;
    for (const orvane::xml::SetOutline& set : doc.sets) {
      for (const XMLElement* element : set.members) {
        if (filled >= maxRecords) return filled;
        CIfcPropertyName property;
        orvane::xml::fillProperty(*element, property);  // read once already
        fillRecord(records[filled], set.name, property);
        ++filled;
      }
    }
    return filled;
  });
}

// Merges against the document's XML tree: each property is noted as its element or the records
// that made it, and printed from there, so neither the document nor the partial document is ever
// held as records.
int setPropiedadesFichero(const char* path, const char* partialPath, const FlatPropertyRecord* records,
                          int count, int saveDocument) noexcept {
  if (path == nullptr) return 0;
  if (count > 0 && (records == nullptr || partialPath == nullptr)) return 0;
  return guarded(0, [&] {
    const std::size_t n = count > 0 ? static_cast<std::size_t>(count) : 0;
    tinyxml2::XMLDocument tree;
    orvane::xml::PropertyOutline doc;
    // A file that doesn't read merges into an empty document.
    if (orvane::xml::loadTree(path, tree)) orvane::xml::outlinePropertyDocument(tree, doc);
    std::vector<MergedSet> sets = orvane::api::mergedSets(doc.sets);
    std::vector<MergedSet> named;  // the sets the records name, for the partial document
    {
      MergedSets inNamed(named);
      MergedSets inDoc(sets);
      const auto positions = orvane::api::setPositions(inNamed, inDoc, records, n);
      for (std::size_t i = 0; i < n; ++i) {
        apply(inNamed, positions[i].first, records, static_cast<int32_t>(i));
        apply(inDoc, positions[i].second, records, static_cast<int32_t>(i));
      }
    }
    if (!named.empty()) {
      orvane::xml::saveWithBackup(partialPath, [&](XMLPrinter& out) {
        orvane::xml::printPropertyDocument(out, doc.enums, [&] { printSets(out, named, records); }, [] {});
      });
    }
    if (saveDocument != 0) {
      orvane::xml::saveWithBackup(path, [&](XMLPrinter& out) {
        orvane::xml::printPropertyDocument(
            out, doc.enums, [&] { printSets(out, sets, records); }, [&] { printRelations(out, doc.relations); });
      });
    }
    return 1;
  });
}

}  // extern "C"

int getEnumerados(char* path, char* typeName, char** valueBuffers, int maxValues) noexcept {
  if (path == nullptr || typeName == nullptr || valueBuffers == nullptr || maxValues <= 0) return 0;
  return guarded(0, [&] {
    CIfcProyectPSet doc;
    doc.lee(path);
    for (const CIfcEnum& type : doc.enums) {
      if (!orvane::equalsNoCase(fieldText(type.name), typeName)) continue;
      int copied = 0;
      for (const CIfcNodoEnum& value : type.elements) {
        if (copied >= maxValues || valueBuffers[copied] == nullptr) break;
        copyText(valueBuffers[copied], kTextFieldSize, fieldText(value.text));
        ++copied;
      }
      return copied;
    }
    return 0;
  });
}
