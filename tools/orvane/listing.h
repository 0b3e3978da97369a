// What the listing commands print, in the format the user chose.
#ifndef ORVANE_TOOLS_LISTING_H
#define ORVANE_TOOLS_LISTING_H

#include <ostream>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace orvane::cli {

enum class Format { Table, Csv, Json };

struct Column {
  std::string name;
  bool numeric = false;  // a JSON number rather than a string
};

struct Listing {
  std::vector<Column> columns;
  std::vector<std::vector<std::string>> rows;  // one cell per column
};

// Adds "--format table|csv|json" to `command`, storing the choice in `format`.
void addFormatOption(CLI::App& command, Format& format);

// Table: aligned columns under a header. CSV: a header line of the column names, then one line
// per row (the same columns the merge commands read). JSON: an array of objects keyed by column
// name; text that is not UTF-8 has its bad bytes replaced by U+FFFD.
void printListing(std::ostream& out, const Listing& listing, Format format);

}  // namespace orvane::cli

#endif
