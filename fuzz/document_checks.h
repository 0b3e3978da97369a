// Invariants every loaded document keeps, whatever file it came from, for the fuzz targets.
#ifndef ORVANE_FUZZ_DOCUMENT_CHECKS_H
#define ORVANE_FUZZ_DOCUMENT_CHECKS_H

#include <algorithm>

#include "fuzz/fuzz_support.h"
#include "model/names.h"
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

}  // namespace orvane::fuzz

#endif
