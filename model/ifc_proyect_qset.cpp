#include "orvane/ifc_proyect_qset.h"

#include <algorithm>

#include "model/message_sink.h"
#include "model/names.h"
#include "model/quantity_records.h"
#include "model/xml_document.h"

CIfcProyectQSet::CIfcProyectQSet() = default;
CIfcProyectQSet::CIfcProyectQSet(const CIfcProyectQSet& other) = default;
CIfcProyectQSet::CIfcProyectQSet(CIfcProyectQSet&& other) noexcept = default;
CIfcProyectQSet& CIfcProyectQSet::operator=(const CIfcProyectQSet& other) = default;
CIfcProyectQSet& CIfcProyectQSet::operator=(CIfcProyectQSet&& other) noexcept = default;
CIfcProyectQSet::~CIfcProyectQSet() = default;

int CIfcProyectQSet::lee(const char* path) {
  tinyxml2::XMLDocument tree;
  if (!orvane::xml::loadTree(path, tree)) return 0;
  try {
    // Another root (a property-set file, say) reads as an empty quantity document.
    const tinyxml2::XMLElement* root = tree.FirstChildElement("QuantitiesSetQuorsel");
    if (root == nullptr) return 1;
    orvane::xml::readList(*root, "TypesQuorsel", "TypeQuorsel", types, orvane::xml::readType);
    orvane::xml::readList(*root, "ObjectsQuorsel", "ObjectQuorsel", objects, orvane::xml::readObject);
    orvane::xml::readList(*root, "QuantitiesSet", "QuantitySet", quantitySets,
                          orvane::xml::readQuantitySet);
    orvane::sortByName(quantitySets);
    return 1;
  } catch (...) {
    orvane::showMessage("Error lectura XML. CIfcProyectQSet");
    return 0;
  }
}

int CIfcProyectQSet::graba(const char* path) {
  try {
    tinyxml2::XMLPrinter out;
    out.PushDeclaration("xml version=\"1.0\"");
    out.OpenElement("QuantitiesSetQuorsel");
    out.OpenElement("TypesQuorsel");
    for (const CIfcType& type : types) orvane::xml::writeType(out, type);
    out.CloseElement();
    out.OpenElement("ObjectsQuorsel");
    for (const CIfcObject& object : objects) orvane::xml::writeObject(out, object);
    out.CloseElement();
    out.OpenElement("QuantitiesSet");
    for (const CIfcQuantitySet& set : quantitySets) orvane::xml::writeQuantitySet(out, set);
    out.CloseElement();
    out.CloseElement();
    orvane::xml::saveWithBackup(path, out);
  } catch (...) {
    // Out of memory while printing: like any failed write, the file stays as it was.
  }
  return 1;
}

int CIfcProyectQSet::edita() { return 0; }
