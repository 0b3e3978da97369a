// What `orvane check` looks for: things a document holds that would surprise its user later, in
// an editor, in a host's records or when the host resolves its variables.
#ifndef ORVANE_TOOLS_CHECKS_H
#define ORVANE_TOOLS_CHECKS_H

#include <string>
#include <vector>

namespace orvane::cli {

class HostCatalogue;

struct Finding {
  std::string where;  // "Pset_WallCommon.Status", "set Pset_WallCommon", ...
  std::string what;
};

// A property-set document: enumerated properties without their type, values that do not read as
// their type, host variable references that are malformed or (with a catalogue) unknown, names
// that differ only in case, names and values over the 255 bytes of a flat record, relations to
// missing sets.
std::vector<Finding> checkPropertyDocument(const std::string& path, const HostCatalogue* catalogue);

// A quantity-set document: names that differ only in case, names over 255 bytes, sets linked to
// an element type the document does not list, a list of kinds other than the three measures.
std::vector<Finding> checkQuantityDocument(const std::string& path);

}  // namespace orvane::cli

#endif
