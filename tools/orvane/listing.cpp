#include "listing.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <map>
#include <nlohmann/json.hpp>

#include "csv.h"
#include "table.h"

namespace orvane::cli {

namespace {

std::vector<std::string> columnNames(const Listing& listing) {
  std::vector<std::string> names;
  for (const Column& column : listing.columns) names.push_back(column.name);
  return names;
}

nlohmann::ordered_json jsonCell(const std::string& cell, bool numeric) {
  if (numeric) {
    double number = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    if (error == std::errc() && end == cell.data() + cell.size()) return number;
  }
  return cell;
}

void printJson(std::ostream& out, const Listing& listing) {
  nlohmann::ordered_json array = nlohmann::ordered_json::array();
  for (const auto& row : listing.rows) {
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < listing.columns.size(); ++i)
      object[listing.columns[i].name] = jsonCell(row[i], listing.columns[i].numeric);
    array.push_back(std::move(object));
  }
  out << array.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

}  // namespace

void addFormatOption(CLI::App& command, Format& format) {
  const std::map<std::string, Format> formats{{"table", Format::Table}, {"csv", Format::Csv}, {"json", Format::Json}};
  command
      .add_option_function<std::string>(
          "--format", [&format, formats](const std::string& name) { format = formats.at(name); },
          "Output format: table (default), csv or json")
      ->check(CLI::IsMember({"table", "csv", "json"}))
      ->option_text("table|csv|json");
}

void printListing(std::ostream& out, const Listing& listing, Format format) {
  switch (format) {
    case Format::Table:
      printTable(out, columnNames(listing), listing.rows);
      break;
    case Format::Csv:
      writeCsvLine(out, columnNames(listing));
      for (const auto& row : listing.rows) writeCsvLine(out, row);
      break;
    case Format::Json:
      printJson(out, listing);
      break;
  }
}

}  // namespace orvane::cli
