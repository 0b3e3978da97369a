#include "checks.h"

#include <tinyxml2.h>

#include <algorithm>
#include <charconv>
#include <map>

#include "catalogue.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"
#include "text.h"
#include "vocabulary.h"

namespace orvane::cli {

namespace {

constexpr std::size_t kRecordTextMax = ORVANE_RECORD_TEXT - 1;

std::string quoted(const std::string& text) { return "\"" + text + "\""; }
std::string item(const std::string& set, const std::string& member) { return set + "." + member; }

bool isReference(std::string_view text) { return text.find('$') != std::string_view::npos; }

// Reports names that are the same ignoring case: the library finds only the first of them.
void caseClashes(const std::vector<std::string>& names, const std::string& kind, const std::string& where,
                 std::vector<Finding>& findings) {
  std::map<std::string, std::vector<std::string>> byFolded;
  for (const std::string& name : names) byFolded[foldCase(name)].push_back(name);
  for (const auto& [folded, same] : byFolded) {
    if (same.size() < 2) continue;
    const bool identical = std::all_of(same.begin(), same.end(), [&](const std::string& n) { return n == same[0]; });
    std::string list;
    for (const std::string& name : same) list += (list.empty() ? "" : ", ") + quoted(name);
    findings.push_back({where, identical ? kind + " " + quoted(same[0]) + " appears " + std::to_string(same.size()) + " times"
                                         : kind + " names differ only in case: " + list});
  }
}

void tooLong(const std::string& text, const std::string& what, const std::string& where, std::vector<Finding>& findings) {
  if (text.size() > kRecordTextMax)
    findings.push_back({where, what + " is " + std::to_string(text.size()) + " bytes long; flat records carry " +
                                   std::to_string(kRecordTextMax) + " and cut the rest"});
}

template <class Record>
std::vector<std::string> namesOf(const std::vector<Record>& records) {
  std::vector<std::string> names;
  for (const Record& record : records) names.push_back(fieldString(record.name));
  return names;
}

const CIfcEnum* findEnum(const CIfcProyectPSet& document, const std::string& name) {
  for (const CIfcEnum& type : document.enums)
    if (equalsNoCase(fieldString(type.name), name)) return &type;
  return nullptr;
}

bool hasValue(const CIfcEnum& type, const std::string& value) {
  return std::any_of(type.elements.begin(), type.elements.end(),
                     [&](const CIfcNodoEnum& node) { return equalsNoCase(fieldString(node.text), value); });
}

void checkEnumerated(const CIfcProyectPSet& document, const std::string& where, const CIfcPropertyName& property,
                     std::vector<Finding>& findings) {
  const std::string typeName = fieldString(property.enumName);
  const std::string value = fieldString(property.textValue);
  const CIfcEnum* type = findEnum(document, typeName);
  if (typeName.empty()) findings.push_back({where, "Enumerated property without an enumerated type"});
  else if (type == nullptr) findings.push_back({where, "enumerated type " + quoted(typeName) + " is missing"});
  else if (!value.empty() && !isReference(value) && !hasValue(*type, value))
    findings.push_back({where, "value " + quoted(value) + " is not a value of " + quoted(typeName)});
}

void checkReference(const std::string& value, const std::string& where, const HostCatalogue* catalogue,
                    std::vector<Finding>& findings) {
  if (!isWellFormedReference(value))
    findings.push_back({where, "host variable reference " + quoted(value) + " is not of the form Group.Variable$"});
  else if (catalogue != nullptr && !catalogue->resolves(value))
    findings.push_back({where, "host variable " + quoted(value) + " is not in the catalogue"});
}

void checkProperty(const CIfcProyectPSet& document, const std::string& setName, const CIfcPropertyName& property,
                   const HostCatalogue* catalogue, std::vector<Finding>& findings) {
  const std::string where = item(setName, fieldString(property.name));
  const std::string value = fieldString(property.textValue);
  if (property.valueType == PropertyEnumerated) checkEnumerated(document, where, property, findings);
  if (isReference(value)) checkReference(value, where, catalogue, findings);
  tooLong(fieldString(property.name), "property name", where, findings);
  if (property.valueType == PropertyEnumerated) tooLong(fieldString(property.enumName), "enumerated type name", where, findings);
  if (property.valueType == PropertyString || property.valueType == PropertyEnumerated) tooLong(value, "value", where, findings);
}

void checkSets(const CIfcProyectPSet& document, const HostCatalogue* catalogue, std::vector<Finding>& findings) {
  caseClashes(namesOf(document.propertySets), "set", "document", findings);
  for (const CIfcPropertySet& set : document.propertySets) {
    const std::string setName = fieldString(set.name);
    tooLong(setName, "set name", "set " + setName, findings);
    caseClashes(namesOf(set.properties), "property", "set " + setName, findings);
    for (const CIfcPropertyName& property : set.properties) checkProperty(document, setName, property, catalogue, findings);
  }
}

void checkEnums(const CIfcProyectPSet& document, std::vector<Finding>& findings) {
  caseClashes(namesOf(document.enums), "enumerated type", "document", findings);
  for (const CIfcEnum& type : document.enums) {
    std::vector<std::string> values;
    for (const CIfcNodoEnum& node : type.elements) values.push_back(fieldString(node.text));
    caseClashes(values, "value", "enumerated type " + fieldString(type.name), findings);
  }
}

void checkRelations(const CIfcProyectPSet& document, std::vector<Finding>& findings) {
  for (const CIfcRelationProyectPSet_IfcObject& relation : document.relations) {
    const std::string set = fieldString(relation.pset);
    const bool known = std::any_of(document.propertySets.begin(), document.propertySets.end(),
                                   [&](const CIfcPropertySet& s) { return equalsNoCase(fieldString(s.name), set); });
    if (!known) findings.push_back({"relation " + set + " - " + fieldString(relation.object), "set " + quoted(set) + " is missing"});
  }
}

bool readsAsNumber(std::string_view text, bool integer) {
  if (!text.empty() && (text.front() == '+')) text.remove_prefix(1);
  const char* end = text.data() + text.size();
  if (integer) {
    int32_t value = 0;
    const auto result = std::from_chars(text.data(), end, value);
    return !text.empty() && result.ec == std::errc() && result.ptr == end;
  }
  double value = 0;
  const auto result = std::from_chars(text.data(), end, value);
  return !text.empty() && result.ec == std::errc() && result.ptr == end;
}

// The value text as the file holds it: once read, "12abc" is already the number 12.
std::string valueProblem(const std::string& type, const std::string& value) {
  if (value.empty()) return "";
  if (equalsNoCase(type, "Integer") && !isReference(value) && !readsAsNumber(value, true))
    return "value " + quoted(value) + " is not an Integer";
  if (equalsNoCase(type, "Real") && !isReference(value) && !readsAsNumber(value, false))
    return "value " + quoted(value) + " is not a Real number";
  if (equalsNoCase(type, "Boolean") && !equalsNoCase(value, "Yes") && !equalsNoCase(value, "No"))
    return "value " + quoted(value) + " is not Yes or No (it reads as No)";
  return "";
}

std::string attribute(const tinyxml2::XMLElement* element, const char* name) {
  const char* value = element->Attribute(name);
  return value != nullptr ? value : "";
}

void checkValueTexts(const std::string& path, std::vector<Finding>& findings) {
  tinyxml2::XMLDocument xml;
  if (xml.LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS) return;
  const tinyxml2::XMLElement* root = xml.RootElement();
  const tinyxml2::XMLElement* sets = root != nullptr ? root->FirstChildElement("PropertiesSet") : nullptr;
  for (auto* set = sets ? sets->FirstChildElement("PropertySet") : nullptr; set; set = set->NextSiblingElement("PropertySet")) {
    for (auto* property = set->FirstChildElement("PropertyName"); property; property = property->NextSiblingElement("PropertyName")) {
      const tinyxml2::XMLElement* value = property->FirstChildElement("Value");
      const char* text = value != nullptr ? value->GetText() : nullptr;
      const std::string problem = valueProblem(attribute(property, "Type"), text != nullptr ? text : "");
      if (!problem.empty()) findings.push_back({item(attribute(set, "Name"), attribute(property, "Name")), problem});
    }
  }
}

void checkQuantityKinds(const CIfcProyectQSet& document, std::vector<Finding>& findings) {
  if (document.types.empty()) return;
  bool standard = document.types.size() == kQuantityMeasureCount;
  for (std::size_t i = 0; standard && i < document.types.size(); ++i)
    standard = fieldString(document.types[i].name) == QuantityMeasureNames[i];
  if (!standard)
    findings.push_back({"document", "the quantity kinds are not IfcLengthMeasure, IfcAreaMeasure, IfcVolumeMeasure in this "
                                    "order, so the editors would give quantities the wrong kind"});
}

}  // namespace

std::vector<Finding> checkPropertyDocument(const std::string& path, const HostCatalogue* catalogue) {
  CIfcProyectPSet document;
  document.lee(path.c_str());
  std::vector<Finding> findings;
  checkValueTexts(path, findings);
  checkSets(document, catalogue, findings);
  checkEnums(document, findings);
  checkRelations(document, findings);
  return findings;
}

std::vector<Finding> checkQuantityDocument(const std::string& path) {
  CIfcProyectQSet document;
  document.lee(path.c_str());
  std::vector<Finding> findings;
  checkQuantityKinds(document, findings);
  caseClashes(namesOf(document.quantitySets), "quantity set", "document", findings);
  for (const CIfcQuantitySet& set : document.quantitySets) {
    const std::string setName = fieldString(set.name);
    const std::string linked = fieldString(set.typeZep);
    tooLong(setName, "set name", "set " + setName, findings);
    caseClashes(namesOf(set.quantities), "quantity", "set " + setName, findings);
    for (const CIfcQuantityName& quantity : set.quantities)
      tooLong(fieldString(quantity.name), "quantity name", item(setName, fieldString(quantity.name)), findings);
    const std::vector<std::string> objects = namesOf(document.objects);
    if (!linked.empty() && std::none_of(objects.begin(), objects.end(), [&](const std::string& o) { return equalsNoCase(o, linked); }))
      findings.push_back({"set " + setName, "linked element type " + quoted(linked) + " is not among the document's element types"});
  }
  return findings;
}

}  // namespace orvane::cli
