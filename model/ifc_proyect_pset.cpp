#include "orvane/ifc_proyect_pset.h"

#include "model/document_outline.h"
#include "model/names.h"

using tinyxml2::XMLElement;

CIfcProyectPSet::CIfcProyectPSet() = default;
CIfcProyectPSet::CIfcProyectPSet(const CIfcProyectPSet& other) = default;
CIfcProyectPSet::CIfcProyectPSet(CIfcProyectPSet&& other) noexcept = default;
CIfcProyectPSet& CIfcProyectPSet::operator=(const CIfcProyectPSet& other) = default;
CIfcProyectPSet& CIfcProyectPSet::operator=(CIfcProyectPSet&& other) noexcept = default;
CIfcProyectPSet::~CIfcProyectPSet() = default;

int CIfcProyectPSet::lee(const char* path) {
  tinyxml2::XMLDocument tree;
  if (!orvane::xml::loadTree(path, tree)) return 0;
  return orvane::xml::readPropertyTree(
      tree, enums,
      [&](const XMLElement& container) {
        orvane::xml::readPropertySets(container, propertySets);
        orvane::sortByName(propertySets);
      },
      [&](const XMLElement& list) {
        // A relation that lacks one of its names is left out; it has no message of its own.
        relations.reserve(relations.size() + orvane::xml::countChildren(list, "RelationIfcElementWithPSet"));
        orvane::xml::forEachChild(list, "RelationIfcElementWithPSet", [&](const XMLElement& item) {
          if (orvane::xml::readRelation(item, relations.emplace_back()) != 1) relations.pop_back();
          return true;
        });
      });
}

int CIfcProyectPSet::graba(const char* path) {
  orvane::xml::saveWithBackup(path, [this](tinyxml2::XMLPrinter& out) {
    const auto sets = [&] {
      for (const CIfcPropertySet& set : propertySets) orvane::xml::writePropertySet(out, set);
    };
    const auto relationList = [&] {
      for (const auto& relation : relations) orvane::xml::writeRelation(out, relation);
    };
    orvane::xml::printPropertyDocument(out, enums, sets, relationList);
  });
  return 1;  // a failed save leaves the file as it was and is not reported
}

int CIfcProyectPSet::edita() { return 0; }
