// Comma-separated records as RFC 4180 has them: a field holding a comma, a quote or a line end is
// quoted, with its quotes doubled. Lines may end in LF or CR LF.
#ifndef ORVANE_TOOLS_CSV_H
#define ORVANE_TOOLS_CSV_H

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::cli {

struct CsvRecord {
  std::size_t line = 0;  // where the record starts, for messages
  std::vector<std::string> fields;
};

// The records of `text`. Empty lines are skipped and a leading UTF-8 byte-order mark is ignored.
// A quote left open, text after a closing quote or a quote inside an unquoted field throws a
// ToolError that starts with "<source>:<line>: ".
std::vector<CsvRecord> parseCsv(std::string_view text, const std::string& source);

// The records of the file at `path`; a ToolError when it cannot be read.
std::vector<CsvRecord> readCsvFile(const std::string& path);

// One line of `fields`, quoted where needed, ended by LF.
void writeCsvLine(std::ostream& out, const std::vector<std::string>& fields);

}  // namespace orvane::cli

#endif
