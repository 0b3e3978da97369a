// The host's variable catalogue, as `check` needs it: which "Group.Variable$" references exist.
// One group per line, "Group;Var1,Var2,..."; names match ignoring ASCII case.
#ifndef ORVANE_TOOLS_CATALOGUE_H
#define ORVANE_TOOLS_CATALOGUE_H

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace orvane::cli {

class HostCatalogue {
 public:
  // Throws a ToolError when the file cannot be read. Lines without ";" and empty names are
  // skipped; a group on several lines has the variables of all of them.
  static HostCatalogue read(const std::string& path);

  bool contains(std::string_view group, std::string_view variable) const;

  // Whether `reference` ("Group.Variable$") names a variable of the catalogue. Group names may
  // hold dots themselves, so every dot is tried as the separator.
  bool resolves(std::string_view reference) const;

 private:
  std::map<std::string, std::set<std::string>> variables_;  // folded group -> folded names
};

// Whether `text` has the form of a host variable reference: "Group.Variable$", one "$" at the end.
bool isWellFormedReference(std::string_view text);

}  // namespace orvane::cli

#endif
