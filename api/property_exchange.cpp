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
#include "api/name_index.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/orvane.h"

using orvane::copyText;
using orvane::fieldText;
using orvane::api::guarded;

namespace {

using IndexedPropertySets = orvane::api::IndexedSets<CIfcPropertySet, CIfcPropertyName, &CIfcPropertySet::properties>;

void fillRecord(FlatPropertyRecord& record, const CIfcPropertySet& set, const CIfcPropertyName& property) {
  record.valueType = property.valueType;
  copyText(record.setName, fieldText(set.name));
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

// The property a record describes, with every field the record doesn't give at its default.
CIfcPropertyName propertyFrom(const FlatPropertyRecord& record) {
  CIfcPropertyName property;
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
  return property;
}

// Puts `property` into set `set`: appended when the set has no property of its name, else its
// value, type, unit and (empty) description replace the first such property's; that property keeps
// its name, rule, optional flag and enumerated type.
void apply(IndexedPropertySets& sets, std::size_t set, const CIfcPropertyName& property) {
  CIfcPropertyName* existing = sets.findMember(set, fieldText(property.name));
  if (existing == nullptr) {
    sets.appendMember(set, property);
    return;
  }
  existing->valueType = property.valueType;
  existing->intValue = property.intValue;
  existing->realValue = property.realValue;
  copyText(existing->textValue, fieldText(property.textValue));
  copyText(existing->description, fieldText(property.description));
  existing->unit = property.unit;
}

}  // namespace

extern "C" {

int getPropiedadesFichero(const char* path, FlatPropertyRecord* records, int maxRecords) noexcept {
  if (path == nullptr || records == nullptr || maxRecords <= 0) return 0;
  return guarded(0, [&] {
    CIfcProyectPSet doc;
    doc.lee(path);  // a file that doesn't read gives no records
    int filled = 0;
    for (const CIfcPropertySet& set : doc.propertySets) {
      for (const CIfcPropertyName& property : set.properties) {
        if (filled >= maxRecords) return filled;
        fillRecord(records[filled], set, property);
        ++filled;
      }
    }
    return filled;
  });
}

int setPropiedadesFichero(const char* path, const char* partialPath, const FlatPropertyRecord* records,
                          int count, int saveDocument) noexcept {
  if (path == nullptr) return 0;
  if (count > 0 && (records == nullptr || partialPath == nullptr)) return 0;
  return guarded(0, [&] {
    const std::size_t n = count > 0 ? static_cast<std::size_t>(count) : 0;
    CIfcProyectPSet doc;
    doc.lee(path);  // a file that doesn't read merges into an empty document
    std::vector<CIfcPropertySet> named;  // the sets the records name, for the partial document
    {
      IndexedPropertySets inNamed(named);
      IndexedPropertySets inDoc(doc.propertySets);
      // Every set is in place before the first property goes in, so a set's position, taken once
      // per record, holds for the whole merge.
      std::vector<std::pair<std::size_t, std::size_t>> positions;
      positions.reserve(n);
      for (std::size_t i = 0; i < n; ++i) {
        const std::string_view setName = fieldText(records[i].setName);
        positions.emplace_back(inNamed.findOrAppend(setName), inDoc.findOrAppend(setName));
      }
      for (std::size_t i = 0; i < n; ++i) {
        const CIfcPropertyName property = propertyFrom(records[i]);
        apply(inNamed, positions[i].first, property);
        apply(inDoc, positions[i].second, property);
      }
    }
    if (!named.empty()) {
      CIfcProyectPSet partial;
      partial.enums = doc.enums;
      partial.propertySets = std::move(named);
      partial.graba(partialPath);
    }
    if (saveDocument != 0) doc.graba(path);
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
