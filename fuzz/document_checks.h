// Invariants every loaded document keeps, whatever file it came from, and what a merge must have
// written, for the fuzz targets.
#ifndef ORVANE_FUZZ_DOCUMENT_CHECKS_H
#define ORVANE_FUZZ_DOCUMENT_CHECKS_H

#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "model/names.h"
#include "model/text.h"
#include "orvane/orvane.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"

namespace orvane::fuzz {

inline void checkProperty(const CIfcPropertyName& property) {
  check(terminated(property.name) && terminated(property.description) && terminated(property.rule) &&
            terminated(property.textValue) && terminated(property.enumName),
        "a property's texts are terminated");
  check(property.valueType >= PropertyInteger && property.valueType <= PropertyDateTime,
        "a property read from a file has one of the six value types");
  check(property.unit >= 0 && property.unit < kUnitCount, "a property's unit indexes the unit table");
}

// `loaded`: lee returned 1, so the lists are sorted.
inline void checkDocument(const CIfcProyectPSet& doc, bool loaded) {
  for (const CIfcEnum& type : doc.enums) {
    check(terminated(type.name) && terminated(type.description), "a type's texts are terminated");
    for (const CIfcNodoEnum& value : type.elements) check(terminated(value.text), "a literal is terminated");
  }
  for (const CIfcPropertySet& set : doc.propertySets) {
    check(terminated(set.name) && terminated(set.description), "a set's texts are terminated");
    for (const CIfcPropertyName& property : set.properties) checkProperty(property);
  }
  for (const auto& relation : doc.relations)
    check(terminated(relation.pset) && terminated(relation.object), "a relation's texts are terminated");
  if (!loaded) return;
  check(std::is_sorted(doc.enums.begin(), doc.enums.end(), NameLessNoCase{}), "types are sorted by name");
  check(std::is_sorted(doc.propertySets.begin(), doc.propertySets.end(), NameLessNoCase{}),
        "property sets are sorted by name");
}

inline void checkDocument(const CIfcProyectQSet& doc, bool loaded) {
  for (const CIfcQuantitySet& set : doc.quantitySets) {
    check(terminated(set.name) && terminated(set.description) && terminated(set.typeZep),
          "a quantity set's texts are terminated");
    for (const CIfcQuantityName& quantity : set.quantities) {
      check(terminated(quantity.name) && terminated(quantity.description), "a quantity's texts are terminated");
      check(quantity.measureType >= 0 && quantity.measureType < kQuantityMeasureCount,
            "a quantity read from a file has one of the three kinds");
    }
  }
  for (const CIfcType& type : doc.types) check(terminated(type.name), "a type name is terminated");
  for (const CIfcObject& object : doc.objects) check(terminated(object.name), "an object name is terminated");
  if (!loaded) return;
  check(std::is_sorted(doc.quantitySets.begin(), doc.quantitySets.end(), NameLessNoCase{}),
        "quantity sets are sorted by name");
}

// Reads the input as a document file: lee gives 0 or 1 and leaves a document that keeps the
// invariants above.
template <class Document>
void readAnyFile(const uint8_t* data, size_t size, const char* name) {
  silenceMessages();
  const std::string path = writeScratchFile(name, {reinterpret_cast<const char*>(data), size});
  Document doc;
  const int result = doc.lee(path.c_str());
  check(result == 0 || result == 1, "lee gives 0 or 1");
  checkDocument(doc, result == 1);
}

inline const std::vector<CIfcPropertySet>& setsOf(const CIfcProyectPSet& doc) { return doc.propertySets; }
inline const std::vector<CIfcQuantitySet>& setsOf(const CIfcProyectQSet& doc) { return doc.quantitySets; }
inline const std::vector<CIfcPropertyName>& membersOf(const CIfcPropertySet& set) { return set.properties; }
inline const std::vector<CIfcQuantityName>& membersOf(const CIfcQuantitySet& set) { return set.quantities; }
inline std::string_view memberNameOf(const FlatPropertyRecord& record) { return fieldText(record.propertyName); }
inline std::string_view memberNameOf(const FlatQuantityRecord& record) { return fieldText(record.quantityName); }

// The merged file at `path` loads and holds every set, and in it every property or quantity, that a
// record names (ignoring case).
template <class Document, class Record>
void checkHoldsRecords(const std::string& path, const std::vector<Record>& records) {
  Document doc;
  check(doc.lee(path.c_str()) == 1, "a merged document loads");
  checkDocument(doc, true);
  for (const Record& record : records) {
    const auto& sets = setsOf(doc);
    const auto set = std::find_if(sets.begin(), sets.end(),
                                  [&](const auto& s) { return equalsNoCase(s.name, fieldText(record.setName)); });
    check(set != sets.end(), "every set a record names is in the document");
    const auto& members = membersOf(*set);
    check(std::any_of(members.begin(), members.end(),
                      [&](const auto& m) { return equalsNoCase(m.name, memberNameOf(record)); }),
          "every member a record names is in its set");
  }
}

}  // namespace orvane::fuzz

#endif
