#include "exports/ids_export.h"

#include <tinyxml2.h>

#include "exports/measure_types.h"

using tinyxml2::XMLDocument;
using tinyxml2::XMLElement;

namespace orvane::exports {

namespace {

XMLElement* child(XMLElement* parent, const char* name) {
  XMLElement* element = parent->GetDocument()->NewElement(name);
  parent->InsertEndChild(element);
  return element;
}

void textChild(XMLElement* parent, const char* name, const std::string& text) {
  child(parent, name)->SetText(text.c_str());
}

// An IDS value: <simpleValue>text</simpleValue>.
XMLElement* simpleValue(XMLElement* parent, const char* name, const std::string& text) {
  XMLElement* value = child(parent, name);
  textChild(value, "simpleValue", text);
  return value;
}

// XML comments may not hold "--" nor end in "-".
std::string commentText(std::string text) {
  for (std::size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at)) text.replace(at, 2, "- -");
  return " " + text + " ";
}

void applicability(XMLElement* specification, const DefinitionSet& set, const std::string* entity) {
  XMLElement* applies = child(specification, "applicability");
  applies->SetAttribute("minOccurs", "0");
  applies->SetAttribute("maxOccurs", "unbounded");
  if (entity != nullptr) {
    simpleValue(child(applies, "entity"), "name", upperAscii(*entity));
    return;
  }
  // Any element that carries the set: a property of it whatever its name.
  XMLElement* property = child(applies, "property");
  simpleValue(property, "propertySet", set.name);
  XMLElement* restriction = child(child(property, "baseName"), "xs:restriction");
  restriction->SetAttribute("base", "xs:string");
  child(restriction, "xs:pattern")->SetAttribute("value", ".+");
}

void requirement(XMLElement* requirements, const DefinitionSet& set, const Member& member,
                 const Definitions& definitions) {
  XMLElement* property = child(requirements, "property");
  property->SetAttribute("dataType", upperAscii(member.measure).c_str());
  property->SetAttribute("cardinality", member.optional ? "optional" : "required");
  if (!member.description.empty()) property->SetAttribute("instructions", member.description.c_str());
  simpleValue(property, "propertySet", set.name);
  simpleValue(property, "baseName", member.name);
  if (member.enumeration < 0) return;
  XMLElement* restriction = child(child(property, "value"), "xs:restriction");
  restriction->SetAttribute("base", "xs:string");
  for (const std::string& value : definitions.enumerations[static_cast<std::size_t>(member.enumeration)].values)
    child(restriction, "xs:enumeration")->SetAttribute("value", value.c_str());
}

void specification(XMLElement* specifications, const DefinitionSet& set, const std::string* entity,
                   const Definitions& definitions) {
  XMLElement* entry = child(specifications, "specification");
  entry->SetAttribute("name", (entity != nullptr ? set.name + " (" + *entity + ")" : set.name).c_str());
  entry->SetAttribute("ifcVersion", "IFC4");
  if (!set.description.empty()) entry->SetAttribute("description", set.description.c_str());
  applicability(entry, set, entity);
  XMLElement* requirements = child(entry, "requirements");
  for (const Member& member : set.members) requirement(requirements, set, member, definitions);
}

}  // namespace

std::string idsDocument(const Definitions& definitions, const std::string& title) {
  if (definitions.sets.empty()) return {};
  XMLDocument document;
  document.InsertEndChild(document.NewDeclaration(R"(xml version="1.0" encoding="UTF-8")"));
  XMLElement* ids = document.NewElement("ids");
  document.InsertEndChild(ids);
  ids->SetAttribute("xmlns", "http://standards.buildingsmart.org/IDS");
  ids->SetAttribute("xmlns:xs", "http://www.w3.org/2001/XMLSchema");
  ids->SetAttribute("xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance");
  ids->SetAttribute("xsi:schemaLocation",
                    "http://standards.buildingsmart.org/IDS http://standards.buildingsmart.org/IDS/1.0/ids.xsd");
  XMLElement* info = child(ids, "info");
  textChild(info, "title", title);
  XMLElement* specifications = child(ids, "specifications");
  for (const std::string& note : definitions.notes) specifications->InsertEndChild(document.NewComment(commentText(note).c_str()));
  for (const DefinitionSet& set : definitions.sets) {
    if (set.entities.empty()) specification(specifications, set, nullptr, definitions);
    for (const std::string& entity : set.entities) specification(specifications, set, &entity, definitions);
  }
  tinyxml2::XMLPrinter printer;
  document.Print(&printer);
  return std::string(printer.CStr(), static_cast<std::size_t>(printer.CStrSize() - 1));
}

}  // namespace orvane::exports
