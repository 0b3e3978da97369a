// What a document holds, one line per type, object, set and relation in the document's order, so a
// whole document compares in one expectation and a failure shows all of it.
#ifndef ORVANE_TESTS_OUTLINE_H
#define ORVANE_TESTS_OUTLINE_H

#include <string>
#include <vector>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"

namespace orvane::test {

using Outline = std::vector<std::string>;

// "type Colores: 7 Rojo, 2 Azul", "set Muros: Altura, Fecha", "relation Muros IfcWall".
inline Outline outline(const CIfcProyectPSet& doc) {
  Outline lines;
  for (const CIfcEnum& type : doc.enums) {
    lines.push_back("type " + std::string(type.name) + ":");
    for (const auto& value : type.elements) lines.back() += " " + std::to_string(value.value) + " " + value.text + ",";
  }
  for (const CIfcPropertySet& set : doc.propertySets) {
    lines.push_back("set " + std::string(set.name) + ":");
    for (const CIfcPropertyName& property : set.properties) lines.back() += " " + std::string(property.name) + ",";
  }
  for (const CIfcRelationProyectPSet_IfcObject& relation : doc.relations)
    lines.push_back("relation " + std::string(relation.pset) + " " + relation.object);
  return lines;
}

// "type IfcLengthMeasure", "object Eje", "set Muros: Area, Longitud".
inline Outline outline(const CIfcProyectQSet& doc) {
  Outline lines;
  for (const auto& type : doc.types) lines.push_back("type " + std::string(type.name));
  for (const auto& object : doc.objects) lines.push_back("object " + std::string(object.name));
  for (const CIfcQuantitySet& set : doc.quantitySets) {
    lines.push_back("set " + std::string(set.name) + ":");
    for (const CIfcQuantityName& quantity : set.quantities) lines.back() += " " + std::string(quantity.name) + ",";
  }
  return lines;
}

}  // namespace orvane::test

#endif
