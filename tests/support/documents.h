// Builds property-set and quantity-set XML texts and loads them through the documents' own readers.
#ifndef ORVANE_TESTS_DOCUMENTS_H
#define ORVANE_TESTS_DOCUMENTS_H

#include <string>
#include <string_view>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "support/temp_dir.h"

namespace orvane::test {

inline std::string psetFile(std::string_view enums, std::string_view sets,
                            std::string_view relations = "") {
  return "<?xml version=\"1.0\" encoding=\"UTF8\"?>\n<PropertySetsBIM><TypesEnum>" + std::string(enums) +
         "</TypesEnum><PropertiesSet>" + std::string(sets) + "</PropertiesSet><RelationsIfcElementWithPSet>" +
         std::string(relations) + "</RelationsIfcElementWithPSet></PropertySetsBIM>\n";
}

inline std::string qsetFile(std::string_view types, std::string_view objects, std::string_view sets) {
  return "<?xml version=\"1.0\"?>\n<QuantitiesSetQuorsel><TypesQuorsel>" + std::string(types) +
         "</TypesQuorsel><ObjectsQuorsel>" + std::string(objects) + "</ObjectsQuorsel><QuantitiesSet>" +
         std::string(sets) + "</QuantitiesSet></QuantitiesSetQuorsel>\n";
}

// A "PropertyName" element with the given type word and value text.
inline std::string property(std::string_view name, std::string_view type, std::string_view value,
                            std::string_view extra = "Optional=\"No\" Unit=\"\" Rule=\"\"") {
  return "<PropertyName Name=\"" + std::string(name) + "\" " + std::string(extra) + " Type=\"" +
         std::string(type) + "\"><Description>d</Description><Value>" + std::string(value) +
         "</Value></PropertyName>";
}

inline std::string propertySet(std::string_view name, std::string_view properties = "") {
  return "<PropertySet Name=\"" + std::string(name) + "\" Description=\"\">" + std::string(properties) +
         "</PropertySet>";
}

inline std::string quantity(const std::string& name, const std::string& kind, const std::string& value,
                            const std::string& exported = "Yes") {
  return "<QuantityName Name=\"" + name + "\" TypeQuorsel=\"" + kind + "\" Export=\"" + exported +
         "\"><Description>d</Description><Value>" + value + "</Value></QuantityName>";
}

inline std::string quantitySet(const std::string& name, const std::string& quantities, const std::string& linked = "") {
  return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"" + linked + "\">" + quantities +
         "</QuantitySet>";
}

// Writes `xml` to a file in `dir` and reads it into a fresh document; `result` gets lee's result.
template <class Document>
Document load(const TempDir& dir, std::string_view xml, int* result = nullptr) {
  Document document;
  const int got = document.lee(dir.write("in.xml", xml).c_str());
  if (result != nullptr) *result = got;
  return document;
}

// Saves `document` to round.xml and reads the file back into a fresh one.
template <class Document>
Document roundTrip(const TempDir& dir, Document& document) {
  document.graba(dir.file("round.xml").c_str());
  return load<Document>(dir, readBytes(dir.file("round.xml")));
}

}  // namespace orvane::test

#endif
