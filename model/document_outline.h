// How both documents walk their XML trees, written once for the two ways of reading them: into the
// exported document classes (`lee`), and into an outline that keeps, instead of records, where in
// the tree each record that would read is. The exchange functions fill host records and merge
// from outlines, so a large document never has to exist as records (2.6 KB per property) at all.
//
// An outline holds exactly what `lee` would: the same sets and members in the same order (sorted by
// the same sort over the same names, so names equal but for case tie the same way), with the same
// messages shown on the way. The enumerated types, quantity kinds and object types are small and
// are read as records.
#ifndef ORVANE_MODEL_DOCUMENT_OUTLINE_H
#define ORVANE_MODEL_DOCUMENT_OUTLINE_H

#include <tinyxml2.h>

#include <string_view>
#include <vector>

#include "model/message_sink.h"
#include "model/names.h"
#include "model/property_records.h"
#include "model/quantity_records.h"
#include "model/xml_document.h"
#include "orvane/ifc_property_set.h"
#include "orvane/ifc_quantity_set.h"

namespace orvane::xml {

// An element's text as a record's field holds it: cut to the field (at a character boundary).
std::string_view asField(const char* text) noexcept;

// One set of an outline: its name as the record's field would hold it, its element, and the
// elements of the members that read.
struct SetOutline {
  std::string_view name;
  const tinyxml2::XMLElement* element = nullptr;
  std::vector<const tinyxml2::XMLElement*> members;
};

struct PropertyOutline {
  std::vector<CIfcEnum> enums;                        // as `lee` leaves them
  std::vector<SetOutline> sets;                        // in `lee`'s order
  std::vector<const tinyxml2::XMLElement*> relations;  // those that read, in file order
};

struct QuantityOutline {
  std::vector<CIfcType> types;
  std::vector<CIfcObject> objects;
  std::vector<SetOutline> sets;
};

// What `lee` does with a loaded property-set tree, around the two lists whose records can be large:
// `readSets` gets the "PropertiesSet" element and must read its "PropertySet" children in order,
// stopping at the first that fails, then sort them; `readRelations` gets the
// "RelationsIfcElementWithPSet" element. Each is called only when its element is there. 1, or 0
// after the document's message when the root is missing or memory runs out.
template <class ReadSets, class ReadRelations>
int readPropertyTree(const tinyxml2::XMLDocument& tree, std::vector<CIfcEnum>& enums, ReadSets readSets,
                     ReadRelations readRelations) {
  try {
    const tinyxml2::XMLElement* root = tree.FirstChildElement("PropertySetsBIM");
    if (root == nullptr) throw MissingPart{};
    readList(*root, "TypesEnum", "TypeEnum", enums, readEnum);
    sortByName(enums);
    if (const tinyxml2::XMLElement* sets = root->FirstChildElement("PropertiesSet")) readSets(*sets);
    if (const tinyxml2::XMLElement* list = root->FirstChildElement("RelationsIfcElementWithPSet"))
      readRelations(*list);
    return 1;
  } catch (...) {
    showMessage("Error lectura XML. CIfcProyectPSet");
    return 0;
  }
}

// The same for a quantity-set tree: `readSets` gets the "QuantitiesSet" element. Another root reads
// as an empty document.
template <class ReadSets>
int readQuantityTree(const tinyxml2::XMLDocument& tree, std::vector<CIfcType>& types,
                     std::vector<CIfcObject>& objects, ReadSets readSets) {
  try {
    const tinyxml2::XMLElement* root = tree.FirstChildElement("QuantitiesSetQuorsel");
    if (root == nullptr) return 1;
    readList(*root, "TypesQuorsel", "TypeQuorsel", types, readType);
    readList(*root, "ObjectsQuorsel", "ObjectQuorsel", objects, readObject);
    if (const tinyxml2::XMLElement* sets = root->FirstChildElement("QuantitiesSet")) readSets(*sets);
    return 1;
  } catch (...) {
    showMessage("Error lectura XML. CIfcProyectQSet");
    return 0;
  }
}

// Reads the "PropertySet" children of `container` into `sets`, as readList does, but first reserves
// every set's room for its properties, one after another, so that the pages they need are mapped in
// a few calls rather than faulted in one at a time.
void readPropertySets(const tinyxml2::XMLElement& container, std::vector<CIfcPropertySet>& sets);
void readQuantitySets(const tinyxml2::XMLElement& container, std::vector<CIfcQuantitySet>& sets);

// `lee` into an outline of the loaded `tree`, which must outlive it. Same result and messages.
int outlinePropertyDocument(const tinyxml2::XMLDocument& tree, PropertyOutline& outline);
int outlineQuantityDocument(const tinyxml2::XMLDocument& tree, QuantityOutline& outline);

// Prints a property-set file: declaration, root and the three containers, always written, with the
// enumerated types; `printSets` and `printRelations` print the other two lists' elements.
template <class PrintSets, class PrintRelations>
void printPropertyDocument(tinyxml2::XMLPrinter& out, const std::vector<CIfcEnum>& enums, PrintSets printSets,
                           PrintRelations printRelations) {
  out.PushDeclaration("xml version=\"1.0\" encoding=\"UTF8\"");
  out.OpenElement("PropertySetsBIM");
  out.OpenElement("TypesEnum");
  for (const CIfcEnum& type : enums) writeEnum(out, type);
  out.CloseElement();
  out.OpenElement("PropertiesSet");
  printSets();
  out.CloseElement();
  out.OpenElement("RelationsIfcElementWithPSet");
  printRelations();
  out.CloseElement();
  out.CloseElement();
}

template <class PrintSets>
void printQuantityDocument(tinyxml2::XMLPrinter& out, const std::vector<CIfcType>& types,
                           const std::vector<CIfcObject>& objects, PrintSets printSets) {
  out.PushDeclaration("xml version=\"1.0\"");
  out.OpenElement("QuantitiesSetQuorsel");
  out.OpenElement("TypesQuorsel");
  for (const CIfcType& type : types) writeType(out, type);
  out.CloseElement();
  out.OpenElement("ObjectsQuorsel");
  for (const CIfcObject& object : objects) writeObject(out, object);
  out.CloseElement();
  out.OpenElement("QuantitiesSet");
  printSets();
  out.CloseElement();
  out.CloseElement();
}

}  // namespace orvane::xml

#endif
