#include "editors/psets/csv_import.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "editors/common/line_reader.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"

namespace orvane {
namespace {

// The host's importer read lines into a buffer of this size.
constexpr int kLineBufferSize = 256;

// Splits a CSV line at ";" where runs of ";" count as one and leading ones are skipped, so there
// are no empty fields. The line end is no separator: it stays in the last field.
std::vector<std::string_view> csvFields(std::string_view line) {
  std::vector<std::string_view> fields;
  std::size_t start = 0;
  while (start < line.size()) {
    start = line.find_first_not_of(';', start);
    if (start == std::string_view::npos) break;
    const std::size_t stop = std::min(line.find(';', start), line.size());
    fields.push_back(line.substr(start, stop - start));
    start = stop;
  }
  return fields;
}

bool holdsProperty(const CIfcPropertySet& set, std::string_view name) {
  return std::any_of(set.properties.begin(), set.properties.end(),
                     [&](const CIfcPropertyName& p) { return equalsNoCase(p.name, name); });
}

CIfcPropertyName propertyFrom(const std::vector<std::string_view>& fields, const char* realTypeWord) {
  CIfcPropertyName property;
  copyText(property.name, fields[1]);
  copyText(property.description, fields[2]);
  const bool real = realTypeWord != nullptr && equalsNoCase(fields[3], realTypeWord);
  property.valueType = real ? PropertyReal : PropertyString;
  if (fields.size() > 4) {
    if (real) property.realValue = readReal(std::string(fields[4]).c_str());
    else copyText(property.textValue, fields[4]);
  }
  return property;
}

void importLine(const char* line, std::vector<CIfcPropertySet>& sets, const char* realTypeWord) {
  const std::vector<std::string_view> fields = csvFields(line);
  if (fields.size() < 4) return;
  const CIfcPropertyName property = propertyFrom(fields, realTypeWord);
  bool named = false;
  for (CIfcPropertySet& set : sets) {
    if (!equalsNoCase(set.name, fields[0])) continue;
    named = true;
    if (!holdsProperty(set, fields[1])) {
      set.properties.push_back(property);
      return;
    }
  }
  if (named) return;  // every set of that name has the property already
  CIfcPropertySet set;
  copyText(set.name, fields[0]);
  set.properties.push_back(property);
  sets.push_back(set);
}

}  // namespace

void importPropertySetsCsv(std::FILE* file, std::vector<CIfcPropertySet>& sets, const char* realTypeWord) {
  if (file == nullptr) return;
  char line[kLineBufferSize];
  // The end-of-file test follows each read, so a last line without its line end is left out, as
  // the host's own importer always did.
  while (readTextLine(line, sizeof line, file) != nullptr && !std::feof(file)) importLine(line, sets, realTypeWord);
}

}  // namespace orvane
