#include "table.h"

#include <algorithm>

#include "text.h"

namespace orvane::cli {

namespace {

std::string oneLine(const std::string& cell) {
  std::string shown;
  for (const char c : cell) {
    if (c == '\n') shown += "\\n";
    else if (c == '\r') shown += "\\r";
    else if (c == '\t') shown += "\\t";
    else shown += c;
  }
  return shown;
}

using Rows = std::vector<std::vector<std::string>>;

std::vector<std::size_t> columnWidths(const Rows& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size(), 0);
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], displayWidth(row[i]));
  }
  return widths;
}

void printRow(std::ostream& out, const std::vector<std::string>& row, const std::vector<std::size_t>& widths) {
  std::string line;
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (i > 0) line += "  ";
    line += row[i];
    line.append(widths[i] - displayWidth(row[i]), ' ');
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

}  // namespace

void printTable(std::ostream& out, const std::vector<std::string>& header, const Rows& rows) {
  Rows shown{header};
  for (const auto& row : rows) {
    std::vector<std::string> cells;
    for (const std::string& cell : row) cells.push_back(oneLine(cell));
    shown.push_back(std::move(cells));
  }
  const std::vector<std::size_t> widths = columnWidths(shown);
  std::vector<std::string> rule;
  for (std::size_t i = 0; i < header.size(); ++i) rule.emplace_back(widths[i], '-');
  printRow(out, shown[0], widths);
  printRow(out, rule, widths);
  for (std::size_t i = 1; i < shown.size(); ++i) printRow(out, shown[i], widths);
}

}  // namespace orvane::cli
