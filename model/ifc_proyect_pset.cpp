#include "orvane/ifc_proyect_pset.h"

#include <algorithm>

#include "model/message_sink.h"
#include "model/names.h"
#include "model/property_records.h"
#include "model/xml_document.h"
#include "model/xml_util.h"

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
  try {
    const XMLElement* root = tree.FirstChildElement("PropertySetsBIM");
    if (root == nullptr) throw orvane::xml::MissingPart{};
    orvane::xml::readList(*root, "TypesEnum", "TypeEnum", enums, orvane::xml::readEnum);
    orvane::sortByName(enums);
    orvane::xml::readList(*root, "PropertiesSet", "PropertySet", propertySets,
                          orvane::xml::readPropertySet);
    orvane::sortByName(propertySets);
    // A relation that lacks one of its names is left out; it has no message of its own.
    if (const XMLElement* list = root->FirstChildElement("RelationsIfcElementWithPSet")) {
      relations.reserve(relations.size() + orvane::xml::countChildren(*list, "RelationIfcElementWithPSet"));
      orvane::xml::forEachChild(*list, "RelationIfcElementWithPSet", [&](const XMLElement& item) {
        if (orvane::xml::readRelation(item, relations.emplace_back()) != 1) relations.pop_back();
        return true;
      });
    }
    return 1;
  } catch (...) {
    orvane::showMessage("Error lectura XML. CIfcProyectPSet");
    return 0;
  }
}

int CIfcProyectPSet::graba(const char* path) {
  try {
    tinyxml2::XMLPrinter out;
    out.PushDeclaration("xml version=\"1.0\" encoding=\"UTF8\"");
    out.OpenElement("PropertySetsBIM");
    out.OpenElement("TypesEnum");
    for (const CIfcEnum& type : enums) orvane::xml::writeEnum(out, type);
    out.CloseElement();
    out.OpenElement("PropertiesSet");
    for (const CIfcPropertySet& set : propertySets) orvane::xml::writePropertySet(out, set);
    out.CloseElement();
    out.OpenElement("RelationsIfcElementWithPSet");
    for (const auto& relation : relations) orvane::xml::writeRelation(out, relation);
    out.CloseElement();
    out.CloseElement();
    orvane::xml::saveWithBackup(path, out);
  } catch (...) {
    // Out of memory while printing: like any failed write, the file stays as it was.
  }
  return 1;
}

int CIfcProyectPSet::edita() { return 0; }
