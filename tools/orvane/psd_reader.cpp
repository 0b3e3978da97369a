#include "psd_reader.h"

#include <tinyxml2.h>

#include <algorithm>
#include <cstring>

#include "documents.h"
#include "text.h"
#include "tool_error.h"

namespace fs = std::filesystem;
using tinyxml2::XMLElement;

namespace orvane::cli {

namespace {

// "psd:Name" and "Name" are the same element: files come with a default namespace, a prefix or
// none at all.
std::string_view localName(const XMLElement& element) {
  const std::string_view name = element.Name();
  const std::size_t colon = name.rfind(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

const XMLElement* child(const XMLElement* parent, std::string_view name) {
  if (parent == nullptr) return nullptr;
  for (const XMLElement* e = parent->FirstChildElement(); e != nullptr; e = e->NextSiblingElement())
    if (localName(*e) == name) return e;
  return nullptr;
}

std::vector<const XMLElement*> children(const XMLElement* parent, std::string_view name) {
  std::vector<const XMLElement*> found;
  if (parent == nullptr) return found;
  for (const XMLElement* e = parent->FirstChildElement(); e != nullptr; e = e->NextSiblingElement())
    if (localName(*e) == name) found.push_back(e);
  return found;
}

std::string text(const XMLElement* element) {
  const char* value = element != nullptr ? element->GetText() : nullptr;
  return value != nullptr ? std::string(trim(value)) : std::string();
}

// The English definition: the Definition element, or the English alias when that is empty.
std::string definition(const XMLElement& owner, std::string_view aliasList, std::string_view aliasItem) {
  std::string english = text(child(&owner, "Definition"));
  if (!english.empty()) return english;
  for (const XMLElement* alias : children(child(&owner, aliasList), aliasItem)) {
    const char* lang = alias->Attribute("lang");
    if (lang != nullptr && std::strncmp(lang, "en", 2) == 0 && !text(alias).empty()) return text(alias);
  }
  return "";
}

std::vector<std::string> texts(const std::vector<const XMLElement*>& elements) {
  std::vector<std::string> values;
  for (const XMLElement* element : elements) values.push_back(text(element));
  return values;
}

void readEnumeration(const XMLElement& type, PsdProperty& property) {
  const XMLElement* list = child(&type, "EnumList");
  if (const char* name = list != nullptr ? list->Attribute("name") : nullptr; name != nullptr && *name != '\0') {
    property.hasEnumListName = true;
    property.enumName = trim(name);
  }
  property.enumValues = texts(children(list, "EnumItem"));
  // Some files leave EnumList empty and give the values only as constants.
  if (property.enumValues.empty())
    for (const XMLElement* constant : children(child(&type, "ConstantList"), "ConstantDef"))
      property.enumValues.push_back(text(child(constant, "Name")));
}

PsdProperty readProperty(const XMLElement& element) {
  PsdProperty property;
  property.name = text(child(&element, "Name"));
  property.definition = definition(element, "DefinitionAliases", "DefinitionAlias");
  const XMLElement* propertyType = child(&element, "PropertyType");
  const XMLElement* shape = propertyType != nullptr ? propertyType->FirstChildElement() : nullptr;
  if (shape == nullptr) return property;
  property.shape = localName(*shape);
  if (const XMLElement* dataType = child(shape, "DataType"); dataType != nullptr && dataType->Attribute("type"))
    property.dataType = trim(dataType->Attribute("type"));
  if (property.shape == "TypePropertyEnumeratedValue") readEnumeration(*shape, property);
  return property;
}

PsdQuantity readQuantity(const XMLElement& element) {
  return {text(child(&element, "Name")), definition(element, "DefinitionAliases", "DefinitionAlias"), text(child(&element, "QtoType"))};
}

void readCommon(const XMLElement& root, PsdSet& set, std::string_view aliasList, std::string_view aliasItem) {
  set.name = text(child(&root, "Name"));
  set.definition = definition(root, aliasList, aliasItem);
  for (const XMLElement* name : children(child(&root, "ApplicableClasses"), "ClassName"))
    set.applicableClasses.push_back(text(name));
}

bool isXmlFile(const fs::path& path) { return equalsNoCase(path.extension().string(), ".xml"); }

}  // namespace

PsdFile readPsdFile(const fs::path& path) {
  std::string bytes;
  try {
    bytes = readInputFile(path.string(), "file");
  } catch (const ToolError& refused) {
    return {std::nullopt, refused.what()};
  }
  tinyxml2::XMLDocument xml;
  if (xml.Parse(bytes.data(), bytes.size()) != tinyxml2::XML_SUCCESS) return {std::nullopt, "not well-formed XML"};
  const XMLElement* root = xml.RootElement();
  const std::string_view kind = root != nullptr ? localName(*root) : std::string_view();
  PsdSet set;
  set.source = path;
  if (kind == "PropertySetDef") {
    readCommon(*root, set, "PsetDefinitionAliases", "PsetDefinitionAlias");
    for (const XMLElement* property : children(child(root, "PropertyDefs"), "PropertyDef"))
      set.properties.push_back(readProperty(*property));
  } else if (kind == "QtoSetDef") {
    set.quantities = true;
    readCommon(*root, set, "QtoDefinitionAliases", "QtoDefinitionAlias");
    for (const XMLElement* quantity : children(child(root, "QtoDefs"), "QtoDef"))
      set.quantityDefs.push_back(readQuantity(*quantity));
  } else {
    return {std::nullopt, "neither a PropertySetDef nor a QtoSetDef"};
  }
  if (set.name.empty()) return {std::nullopt, "the set has no name"};
  return {std::move(set), ""};
}

std::vector<fs::path> collectPsdFiles(const std::vector<std::string>& paths) {
  std::vector<fs::path> files;
  for (const std::string& given : paths) {
    std::error_code error;
    const fs::path path(given);
    if (fs::is_directory(path, error)) {
      std::vector<fs::path> inFolder;
      for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error))
        if (entry->is_regular_file(error) && isXmlFile(entry->path())) inFolder.push_back(entry->path());
      if (error) throw ToolError(given + ": cannot read the folder (" + error.message() + ")");
      std::sort(inFolder.begin(), inFolder.end());
      files.insert(files.end(), inFolder.begin(), inFolder.end());
    } else if (fs::exists(path, error)) {
      files.push_back(path);
    } else {
      throw ToolError(given + ": no such file or folder");
    }
  }
  return files;
}

}  // namespace orvane::cli
