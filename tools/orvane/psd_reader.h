// buildingSMART property-set definition files (PSD XML): one PropertySetDef or QtoSetDef per
// file, with or without the PSD namespace (elements are matched by their local name).
#ifndef ORVANE_TOOLS_PSD_READER_H
#define ORVANE_TOOLS_PSD_READER_H

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace orvane::cli {

struct PsdProperty {
  std::string name;
  std::string definition;  // English
  std::string shape;       // the PropertyType child: "TypePropertySingleValue", ...
  std::string dataType;    // DataType/@type of a single or bounded value; "" when not given
  bool hasEnumListName = false;
  std::string enumName;                 // EnumList/@name
  std::vector<std::string> enumValues;  // EnumList items, else the ConstantList names
};

struct PsdQuantity {
  std::string name;
  std::string definition;
  std::string kind;  // QtoType: "Q_LENGTH", "Q_AREA", ...
};

struct PsdSet {
  std::filesystem::path source;
  bool quantities = false;  // a QtoSetDef
  std::string name;
  std::string definition;
  std::vector<std::string> applicableClasses;  // as written, trimmed
  std::vector<PsdProperty> properties;
  std::vector<PsdQuantity> quantityDefs;
};

struct PsdFile {
  std::optional<PsdSet> set;
  std::string problem;  // why there is no set
};

PsdFile readPsdFile(const std::filesystem::path& path);

// The files `paths` name: a file as given, a folder's *.xml files (not its subfolders), all in
// name order. Throws a ToolError for a path that does not exist.
std::vector<std::filesystem::path> collectPsdFiles(const std::vector<std::string>& paths);

}  // namespace orvane::cli

#endif
