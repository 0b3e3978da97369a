#include "record_csv.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "csv.h"
#include "orvane/ifc_property_set.h"
#include "text.h"
#include "tool_error.h"
#include "vocabulary.h"

namespace orvane::cli {

namespace {

const std::vector<std::string> kPropertyColumns = {"set", "property", "type", "value", "unit", "enum"};
const std::vector<std::string> kQuantityColumns = {"set", "quantity", "kind", "value"};
constexpr std::size_t kRequiredPropertyFields = 3;
constexpr std::size_t kRecordTextMax = ORVANE_RECORD_TEXT - 1;

// One CSV record being turned into a flat record, with what a message needs to point at it.
class Line {
 public:
  Line(const std::string& source, const CsvRecord& record, const std::vector<std::string>& columns)
      : source_(source), record_(record), columns_(columns) {}

  // The field of `column`, or "" when the line stops before it.
  const std::string& field(std::size_t column) const {
    static const std::string none;
    return column < record_.fields.size() ? record_.fields[column] : none;
  }

  [[noreturn]] void fail(const std::string& message) const {
    throw ToolError(source_ + ":" + std::to_string(record_.line) + ": " + message);
  }

  // Copies the field (or `text` made of it) into a record's text field, refusing what it would
  // have to cut.
  template <std::size_t N>
  void copyTo(char (&target)[N], std::size_t column) const {
    copyTo(target, column, field(column));
  }
  template <std::size_t N>
  void copyTo(char (&target)[N], std::size_t column, std::string_view text) const {
    if (text.size() > kRecordTextMax)
      fail(columns_[column] + " is " + std::to_string(text.size()) + " bytes long; records hold at most " +
           std::to_string(kRecordTextMax));
    copyField(target, text);
  }

  void requireName(std::size_t column) const {
    if (field(column).empty()) fail(columns_[column] + " is empty");
  }

 private:
  const std::string& source_;
  const CsvRecord& record_;
  const std::vector<std::string>& columns_;
};

std::string joined(const std::vector<std::string>& columns) {
  std::string text;
  for (const std::string& column : columns) text += (text.empty() ? "" : ",") + column;
  return text;
}

bool isHeader(const CsvRecord& record, const std::vector<std::string>& columns) {
  return !record.fields.empty() && equalsNoCase(trim(record.fields[0]), columns[0]);
}

void checkHeader(const std::string& source, const CsvRecord& header, const std::vector<std::string>& columns) {
  bool matches = header.fields.size() <= columns.size();
  for (std::size_t i = 0; matches && i < header.fields.size(); ++i)
    matches = equalsNoCase(trim(header.fields[i]), columns[i]);
  if (!matches)
    throw ToolError(source + ":" + std::to_string(header.line) + ": a header line must name the columns " +
                    joined(columns) + " in this order");
}

// The records of the file without its header, each with an acceptable number of fields.
std::vector<CsvRecord> dataRecords(const std::string& path, const std::vector<std::string>& columns,
                                   std::size_t required) {
  std::vector<CsvRecord> records = readCsvFile(path);
  if (!records.empty() && isHeader(records.front(), columns)) {
    checkHeader(path, records.front(), columns);
    records.erase(records.begin());
  }
  if (records.empty()) throw ToolError(path + ": no records");
  for (const CsvRecord& record : records) {
    const std::size_t count = record.fields.size();
    if (count < required || count > columns.size())
      throw ToolError(path + ":" + std::to_string(record.line) + ": " + std::to_string(count) +
                      (count == 1 ? " field" : " fields") + " where " + joined(columns) + " are expected" +
                      (required < columns.size() ? " (the first " + std::to_string(required) + " required)" : ""));
  }
  return records;
}

bool readsAsInt(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

bool readsAsReal(std::string_view text, double* value = nullptr) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return false;
  if (value != nullptr) *value = number;
  return true;
}

// The value of a property record: numbers must read as numbers (the library would take "12abc"
// for 12 without a word), and Boolean and DateTime values cannot travel at all.
void putPropertyValue(const Line& line, FlatPropertyRecord& record) {
  const std::string_view value = trim(line.field(3));
  switch (record.valueType) {
    case PropertyInteger:
      if (!value.empty() && !readsAsInt(value)) line.fail("value \"" + line.field(3) + "\" is not an Integer");
      line.copyTo(record.valueText, 3, value);
      break;
    case PropertyReal:
      if (!value.empty() && !readsAsReal(value)) line.fail("value \"" + line.field(3) + "\" is not a Real number");
      line.copyTo(record.valueText, 3, value);
      break;
    case PropertyString:
    case PropertyEnumerated:
      line.copyTo(record.valueText, 3);
      break;
    default:
      if (!value.empty())
        line.fail(typeWord(record.valueType) + " values cannot be written through records; leave value empty");
  }
}

FlatPropertyRecord propertyRecord(const Line& line) {
  FlatPropertyRecord record{};
  line.requireName(0);
  line.requireName(1);
  line.copyTo(record.setName, 0);
  line.copyTo(record.propertyName, 1);
  const std::optional<int32_t> type = typeFromWord(trim(line.field(2)));
  if (!type) line.fail("unknown type \"" + line.field(2) + "\" (expected " + typeWordList() + ")");
  record.valueType = *type;
  putPropertyValue(line, record);
  const std::optional<int32_t> unit = unitFromName(trim(line.field(4)));
  if (!unit) line.fail("unknown unit \"" + line.field(4) + "\" (expected " + unitNameList() + ")");
  record.unit = *unit;
  if (!line.field(5).empty() && record.valueType != PropertyEnumerated)
    line.fail("enum is only for Enumerated properties");
  line.copyTo(record.enumName, 5);
  return record;
}

FlatQuantityRecord quantityRecord(const Line& line) {
  FlatQuantityRecord record{};
  line.requireName(0);
  line.requireName(1);
  line.copyTo(record.setName, 0);
  line.copyTo(record.quantityName, 1);
  const std::optional<int32_t> kind = kindFromWord(trim(line.field(2)));
  if (!kind) line.fail("unknown kind \"" + line.field(2) + "\" (expected length, area or volume)");
  record.measureType = *kind;
  if (!readsAsReal(trim(line.field(3)), &record.value)) line.fail("value \"" + line.field(3) + "\" is not a number");
  return record;
}

std::string valueCell(const FlatPropertyRecord& record) {
  switch (record.valueType) {
    case PropertyInteger:
    case PropertyReal:
    case PropertyString:
    case PropertyEnumerated:
      return fieldString(record.valueText);
    default:
      return "";  // the library gives no value for the other types
  }
}

std::string threeDecimals(double value) {
  char text[400];  // a fixed-point double needs up to 309 digits before the point
  const auto [end, error] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3);
  return error == std::errc() ? std::string(text, end) : std::string("?");
}

}  // namespace

std::vector<FlatPropertyRecord> readPropertyCsv(const std::string& path) {
  std::vector<FlatPropertyRecord> records;
  for (const CsvRecord& csv : dataRecords(path, kPropertyColumns, kRequiredPropertyFields))
    records.push_back(propertyRecord(Line(path, csv, kPropertyColumns)));
  return records;
}

std::vector<FlatQuantityRecord> readQuantityCsv(const std::string& path) {
  std::vector<FlatQuantityRecord> records;
  for (const CsvRecord& csv : dataRecords(path, kQuantityColumns, kQuantityColumns.size()))
    records.push_back(quantityRecord(Line(path, csv, kQuantityColumns)));
  return records;
}

Listing propertyListing(const std::vector<FlatPropertyRecord>& records) {
  Listing listing;
  for (const std::string& name : kPropertyColumns) listing.columns.push_back({name});
  for (const FlatPropertyRecord& record : records) {
    const bool enumerated = record.valueType == PropertyEnumerated;
    listing.rows.push_back({fieldString(record.setName), fieldString(record.propertyName), typeWord(record.valueType),
                            valueCell(record), unitName(record.unit), enumerated ? fieldString(record.enumName) : ""});
  }
  return listing;
}

Listing quantityListing(const std::vector<FlatQuantityRecord>& records) {
  Listing listing;
  for (const std::string& name : kQuantityColumns) listing.columns.push_back({name, name == "value"});
  for (const FlatQuantityRecord& record : records)
    listing.rows.push_back({fieldString(record.setName), fieldString(record.quantityName), kindWord(record.measureType),
                            threeDecimals(record.value)});
  return listing;
}

std::string propertyCsvHelp() {
  return "RECORDS.csv: one property per line, fields separated by commas:\n"
         "  set,property,type,value,unit,enum\n"
         "  type   Integer, Real, String, Enumerated, Boolean or DateTime (any letter case)\n"
         "  value  Integer and Real: a number with a point (empty is 0); String and Enumerated: the text;\n"
         "         Boolean and DateTime: must be empty (records carry no such values; the merge clears them)\n"
         "  unit   empty, m, m2, m3, ºC, gr, J, rad, seg or w\n"
         "  enum   Enumerated only: its enumerated type, used when the property is new\n"
         "value, unit and enum may be left off the end of a line. A first line starting with \"set\" is a\n"
         "header and must name the columns in this order. Fields holding a comma, a quote or a line end\n"
         "are quoted (\"...\") with quotes doubled (RFC 4180). Names and values hold at most 255 bytes.\n"
         "`orvane psets list FILE --format csv` writes this format.";
}

std::string quantityCsvHelp() {
  return "RECORDS.csv: one quantity per line, fields separated by commas:\n"
         "  set,quantity,kind,value\n"
         "  kind   length, area or volume (or IfcLengthMeasure, IfcAreaMeasure, IfcVolumeMeasure)\n"
         "  value  a number with a point\n"
         "All four fields are required. A first line starting with \"set\" is a header and must name the\n"
         "columns in this order. Fields holding a comma, a quote or a line end are quoted (\"...\") with\n"
         "quotes doubled (RFC 4180). Names hold at most 255 bytes.\n"
         "`orvane qsets list FILE --format csv` writes this format.";
}

}  // namespace orvane::cli
