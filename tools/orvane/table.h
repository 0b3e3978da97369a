// Rows printed as a table with aligned columns, for people rather than programs.
#ifndef ORVANE_TOOLS_TABLE_H
#define ORVANE_TOOLS_TABLE_H

#include <ostream>
#include <string>
#include <vector>

namespace orvane::cli {

// The header, a line of dashes under each title, then the rows; columns two spaces apart, each as
// wide as its widest cell. Line ends and tabs inside a cell are shown as \n, \r and \t so that
// one row stays one line.
void printTable(std::ostream& out, const std::vector<std::string>& header,
                const std::vector<std::vector<std::string>>& rows);

}  // namespace orvane::cli

#endif
