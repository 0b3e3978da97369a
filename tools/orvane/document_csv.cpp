#include "document_csv.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "text.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

const std::vector<std::string> kPropertyColumns{"record", "name",  "description", "type", "enumeratedType",
                                                "unit",   "rule",  "optional",    "value"};
const std::vector<std::string> kQuantityColumns{"record", "name", "description", "element", "kind", "export", "value"};

std::string bytes(const Json& text) { return textFromJson(text, "document"); }

std::string realText(const Json& value) {
  if (value.is_string()) return value.get<std::string>();  // NaN, Infinity
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.17g", value.get<double>());  // every bit of the double
  return buffer;
}

std::string yesNo(bool value) { return value ? "Yes" : "No"; }

std::string propertyValue(const Json& property) {
  const Json& value = property["value"];
  if (value.is_object() && value.contains("reference")) return bytes(value["reference"]);
  const std::string type = property["type"];
  if (type == "Integer") return std::to_string(value.get<std::int64_t>());
  if (type == "Real") return realText(value);
  if (type == "Boolean") return yesNo(value.get<bool>());
  return bytes(value);
}

// ---- reading rows ----

std::string at(const CsvRecord& row, const std::string& source) { return source + ":" + std::to_string(row.line); }

bool parseYesNo(const std::string& cell, const std::string& where) {
  if (equalsNoCase(cell, "yes")) return true;
  if (equalsNoCase(cell, "no")) return false;
  throw ToolError(where + ": \"" + cell + "\" where Yes or No is expected");
}

Json parseInteger(const std::string& cell, const std::string& where) {
  errno = 0;
  char* end = nullptr;
  const long long value = std::strtoll(cell.c_str(), &end, 10);
  if (cell.empty() || *end != '\0' || errno != 0) throw ToolError(where + ": \"" + cell + "\" is not an integer");
  return value;
}

Json parseReal(const std::string& cell, const std::string& where) {
  if (cell == "NaN" || cell == "-NaN" || cell == "Infinity" || cell == "-Infinity") return cell;
  char* end = nullptr;
  const double value = std::strtod(cell.c_str(), &end);
  if (cell.empty() || *end != '\0') throw ToolError(where + ": \"" + cell + "\" is not a number");
  return value;
}

// An Integer or Real value holding "$" is a host-variable reference, as the library itself reads it.
Json parsePropertyValue(const std::string& type, const std::string& cell, const std::string& where) {
  const bool numeric = type == "Integer" || type == "Real";
  if (numeric && cell.find('$') != std::string::npos) return {{"reference", textToJson(cell)}};
  if (type == "Integer") return parseInteger(cell, where);
  if (type == "Real") return parseReal(cell, where);
  if (type == "Boolean") return parseYesNo(cell, where);
  return textToJson(cell);
}

// The rows after the header, each with exactly the columns of `header`.
std::vector<const CsvRecord*> bodyRows(const std::vector<CsvRecord>& rows, const std::vector<std::string>& header,
                                       const std::string& source) {
  std::string names;
  for (const std::string& column : header) names += (names.empty() ? "" : ",") + column;
  if (rows.empty() || rows.front().fields != header)
    throw ToolError(source + ":1: the first line must be the header " + names);
  std::vector<const CsvRecord*> body;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (rows[i].fields.size() != header.size())
      throw ToolError(at(rows[i], source) + ": " + std::to_string(rows[i].fields.size()) + " fields where " +
                      names + " are expected");
    body.push_back(&rows[i]);
  }
  return body;
}

Json& lastOf(Json& list, const char* what, const std::string& where) {
  if (list.empty()) throw ToolError(where + ": a " + std::string(what) + " line must come first");
  return list.back();
}

}  // namespace

void writePropertyCsv(std::ostream& out, const Json& json) {
  writeCsvLine(out, kPropertyColumns);
  for (const Json& type : json["enumeratedTypes"]) {
    writeCsvLine(out, {"enumeratedType", bytes(type["name"]), bytes(type["description"]), "", "", "", "", "", ""});
    for (const Json& value : type["values"])
      writeCsvLine(out, {"enumValue", bytes(value["text"]), "", "", "", "", "", "", std::to_string(value["code"].get<int>())});
  }
  for (const Json& set : json["propertySets"]) {
    writeCsvLine(out, {"propertySet", bytes(set["name"]), bytes(set["description"]), "", "", "", "", "", ""});
    for (const Json& property : set["properties"])
      writeCsvLine(out, {"property", bytes(property["name"]), bytes(property["description"]), property["type"],
                         property.contains("enumeratedType") ? bytes(property["enumeratedType"]) : "",
                         property["unit"], bytes(property["rule"]), yesNo(property["optional"]),
                         propertyValue(property)});
  }
  for (const Json& relation : json["relations"])
    writeCsvLine(out, {"relation", bytes(relation["set"]), "", "", "", "", "", "", bytes(relation["object"])});
}

Json propertyJsonFromCsv(const std::vector<CsvRecord>& rows, const std::string& source) {
  Json enums = Json::array(), sets = Json::array(), relations = Json::array();
  for (const CsvRecord* row : bodyRows(rows, kPropertyColumns, source)) {
    const std::vector<std::string>& f = row->fields;
    const std::string where = at(*row, source);
    const std::string& record = f[0];
    if (record == "enumeratedType") {
      enums.push_back({{"name", textToJson(f[1])}, {"description", textToJson(f[2])}, {"values", Json::array()}});
    } else if (record == "enumValue") {
      lastOf(enums, "enumeratedType", where)["values"].push_back(
          {{"code", parseInteger(f[8], where)}, {"text", textToJson(f[1])}});
    } else if (record == "propertySet") {
      sets.push_back({{"name", textToJson(f[1])}, {"description", textToJson(f[2])}, {"properties", Json::array()}});
    } else if (record == "property") {
      Json property{{"name", textToJson(f[1])}, {"description", textToJson(f[2])}, {"type", f[3]}};
      if (f[3] == "Enumerated") property["enumeratedType"] = textToJson(f[4]);
      property["unit"] = f[5];
      property["rule"] = textToJson(f[6]);
      property["optional"] = parseYesNo(f[7], where);
      property["value"] = parsePropertyValue(f[3], f[8], where);
      lastOf(sets, "propertySet", where)["properties"].push_back(property);
    } else if (record == "relation") {
      relations.push_back({{"set", textToJson(f[1])}, {"object", textToJson(f[8])}});
    } else {
      throw ToolError(where + ": unknown record \"" + record +
                      "\" (expected enumeratedType, enumValue, propertySet, property or relation)");
    }
  }
  return {{"format", kPropertyFormat}, {"version", kJsonFormatVersion}, {"enumeratedTypes", enums},
          {"propertySets", sets},      {"relations", relations}};
}

void writeQuantityCsv(std::ostream& out, const Json& json) {
  writeCsvLine(out, kQuantityColumns);
  for (const Json& type : json["types"]) writeCsvLine(out, {"type", bytes(type), "", "", "", "", ""});
  for (const Json& object : json["objects"]) writeCsvLine(out, {"object", bytes(object), "", "", "", "", ""});
  for (const Json& set : json["quantitySets"]) {
    writeCsvLine(out, {"quantitySet", bytes(set["name"]), bytes(set["description"]), bytes(set["element"]), "", "", ""});
    for (const Json& quantity : set["quantities"])
      writeCsvLine(out, {"quantity", bytes(quantity["name"]), bytes(quantity["description"]), "",
                         quantity["kind"].is_string() ? quantity["kind"].get<std::string>() : quantity["kind"].dump(),
                         yesNo(quantity["export"]), realText(quantity["value"])});
  }
}

Json quantityJsonFromCsv(const std::vector<CsvRecord>& rows, const std::string& source) {
  Json types = Json::array(), objects = Json::array(), sets = Json::array();
  for (const CsvRecord* row : bodyRows(rows, kQuantityColumns, source)) {
    const std::vector<std::string>& f = row->fields;
    const std::string where = at(*row, source);
    const std::string& record = f[0];
    if (record == "type") {
      types.push_back(textToJson(f[1]));
    } else if (record == "object") {
      objects.push_back(textToJson(f[1]));
    } else if (record == "quantitySet") {
      sets.push_back({{"name", textToJson(f[1])}, {"description", textToJson(f[2])}, {"element", textToJson(f[3])},
                      {"quantities", Json::array()}});
    } else if (record == "quantity") {
      const bool code = !f[4].empty() && f[4].find_first_not_of("-0123456789") == std::string::npos;
      lastOf(sets, "quantitySet", where)["quantities"].push_back(
          {{"name", textToJson(f[1])}, {"description", textToJson(f[2])},
           {"kind", code ? parseInteger(f[4], where) : Json(f[4])}, {"export", parseYesNo(f[5], where)},
           {"value", parseReal(f[6], where)}});
    } else {
      throw ToolError(where + ": unknown record \"" + record + "\" (expected type, object, quantitySet or quantity)");
    }
  }
  return {{"format", kQuantityFormat}, {"version", kJsonFormatVersion}, {"types", types}, {"objects", objects},
          {"quantitySets", sets}};
}

}  // namespace orvane::cli
