// What the benchmarks share: a scratch folder and documents of a given size with a realistic mix
// of types, enumerations, units and descriptions.
#ifndef ORVANE_BENCH_SUPPORT_H
#define ORVANE_BENCH_SUPPORT_H

#include <stdlib.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"

namespace orvane::bench {

// A scratch folder for the benchmark's files, removed at exit.
class Scratch {
 public:
  Scratch() {
    std::string pattern = (std::filesystem::temp_directory_path() / "orvane-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    folder_ = pattern;
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  std::string file(const std::string& name) const { return (folder_ / name).string(); }

 private:
  std::filesystem::path folder_;
};

inline const Scratch& scratch() {
  static const Scratch instance;
  return instance;
}

template <std::size_t N, class... Args>
void print(char (&field)[N], const char* format, Args... args) {
  std::snprintf(field, N, format, args...);
}

// `count` properties in sets of 20: a third numbers with units, a quarter strings with host
// variable references among them, enumerated types of six values, some Booleans and dates.
inline CIfcProyectPSet propertyDocument(int count) {
  constexpr int kPerSet = 20;
  CIfcProyectPSet doc;
  const int enums = count / 500 + 1;
  doc.enums.resize(static_cast<std::size_t>(enums));
  for (int e = 0; e < enums; ++e) {
    CIfcEnum& type = doc.enums[static_cast<std::size_t>(e)];
    print(type.name, "Lista %04d", e);
    print(type.description, "Valores admitidos de la lista %d", e);
    type.elements.resize(6);
    for (int v = 0; v < 6; ++v) {
      type.elements[static_cast<std::size_t>(v)].value = v + 1;
      print(type.elements[static_cast<std::size_t>(v)].text, "Opci\xC3\xB3n %d", v + 1);
    }
  }
  const int sets = (count + kPerSet - 1) / kPerSet;
  doc.propertySets.resize(static_cast<std::size_t>(sets));
  for (int i = 0; i < count; ++i) {
    CIfcPropertySet& set = doc.propertySets[static_cast<std::size_t>(i / kPerSet)];
    if (i % kPerSet == 0) {
      print(set.name, "Pset_Conjunto%06d", i / kPerSet);
      print(set.description, "Propiedades del conjunto %d", i / kPerSet);
      CIfcRelationProyectPSet_IfcObject relation;
      print(relation.pset, "%s", set.name);
      print(relation.object, "IfcBuildingElement%d", i % 7);
      doc.relations.push_back(relation);
    }
    CIfcPropertyName& p = set.properties.emplace_back();
    print(p.name, "Propiedad %d", i % kPerSet);
    print(p.description, "Descripci\xC3\xB3n de la propiedad %d del conjunto", i);
    const int kind = i % 20;
    if (kind < 6) {
      p.valueType = PropertyReal;
      p.realValue = i * 0.125;
      p.unit = 1 + kind % 3;
      if (kind == 0) print(p.rule, ">0");
    } else if (kind < 10) {
      p.valueType = PropertyInteger;
      p.intValue = i;
      if (kind == 9) print(p.textValue, "Muro.Huecos$");
    } else if (kind < 15) {
      p.valueType = PropertyString;
      print(p.textValue, kind == 14 ? "Eje.PK$" : "Texto de ejemplo %d", i);
      p.optional = true;
    } else if (kind < 18) {
      p.valueType = PropertyEnumerated;
      print(p.enumName, "%s", doc.enums[static_cast<std::size_t>(i % enums)].name);
      print(p.textValue, "Opci\xC3\xB3n %d", i % 6 + 1);
    } else if (kind == 18) {
      p.valueType = PropertyBoolean;
      p.intValue = i % 2;
    } else {
      p.valueType = PropertyDateTime;
      print(p.textValue, "2026-11-%02d", i % 28 + 1);
    }
  }
  return doc;
}

// `count` quantities in sets of 10, with the three kinds and the host's element types.
inline CIfcProyectQSet quantityDocument(int count) {
  constexpr int kPerSet = 10;
  CIfcProyectQSet doc;
  for (const char* kind : QuantityMeasureNames) print(doc.types.emplace_back().name, "%s", kind);
  for (const char* object : {"Eje", "Superficie", "Muro", "Losa"}) print(doc.objects.emplace_back().name, "%s", object);
  doc.quantitySets.resize(static_cast<std::size_t>((count + kPerSet - 1) / kPerSet));
  for (int i = 0; i < count; ++i) {
    CIfcQuantitySet& set = doc.quantitySets[static_cast<std::size_t>(i / kPerSet)];
    if (i % kPerSet == 0) {
      print(set.name, "Qto_Conjunto%06d", i / kPerSet);
      print(set.description, "Mediciones del conjunto %d", i / kPerSet);
      print(set.typeZep, "%s", doc.objects[static_cast<std::size_t>(i % 4)].name);
    }
    CIfcQuantityName& q = set.quantities.emplace_back();
    print(q.name, "Cantidad %d", i % kPerSet);
    print(q.description, "Medici\xC3\xB3n %d", i);
    q.measureType = i % 3;
    q.value = i * 0.5;
    q.exported = i % 5 != 0;
  }
  return doc;
}

}  // namespace orvane::bench

#endif
