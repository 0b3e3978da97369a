#include "orvane/ifc_proyect_qset.h"

#include "model/document_outline.h"
#include "model/names.h"

CIfcProyectQSet::CIfcProyectQSet() = default;
CIfcProyectQSet::CIfcProyectQSet(const CIfcProyectQSet& other) = default;
CIfcProyectQSet::CIfcProyectQSet(CIfcProyectQSet&& other) noexcept = default;
CIfcProyectQSet& CIfcProyectQSet::operator=(const CIfcProyectQSet& other) = default;
CIfcProyectQSet& CIfcProyectQSet::operator=(CIfcProyectQSet&& other) noexcept = default;
CIfcProyectQSet::~CIfcProyectQSet() = default;

int CIfcProyectQSet::lee(const char* path) {
  tinyxml2::XMLDocument tree;
  if (!orvane::xml::loadTree(path, tree)) return 0;
  // Another root (a property-set file, say) reads as an empty quantity document.
  return orvane::xml::readQuantityTree(tree, types, objects, [&](const tinyxml2::XMLElement& container) {
    orvane::xml::readQuantitySets(container, quantitySets);
    orvane::sortByName(quantitySets);
  });
}

int CIfcProyectQSet::graba(const char* path) {
  orvane::xml::saveWithBackup(path, [this](tinyxml2::XMLPrinter& out) {
    orvane::xml::printQuantityDocument(out, types, objects, [&] {
      for (const CIfcQuantitySet& set : quantitySets) orvane::xml::writeQuantitySet(out, set);
    });
  });
  return 1;  // a failed save leaves the file as it was and is not reported
}

int CIfcProyectQSet::edita() { return 0; }
