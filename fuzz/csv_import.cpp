// The CSV import of property sets, on any file, into an empty list.
#include <cstring>
#include <vector>

#include "editors/psets/csv_import.h"
#include "fuzz/fuzz_support.h"
#include "model/names.h"

namespace {

using namespace orvane;
using orvane::fuzz::check;

// Lines hold at most 255 characters, so no field is ever cut and names compare as they were read.
void checkSet(const CIfcPropertySet& set) {
  check(fuzz::terminated(set.name) && std::strlen(set.name) <= 255, "a set name fits a line");
  check(!set.properties.empty(), "an imported set holds the property that made it");
  for (std::size_t i = 0; i < set.properties.size(); ++i) {
    const CIfcPropertyName& property = set.properties[i];
    check(fuzz::terminated(property.name) && fuzz::terminated(property.description) &&
              fuzz::terminated(property.textValue),
          "a property's texts are terminated");
    check(property.valueType == PropertyReal || property.valueType == PropertyString,
          "an imported property is Real or String");
    for (std::size_t j = 0; j < i; ++j)
      check(!equalsNoCase(set.properties[j].name, property.name), "a set gets a property name once");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::FILE* stream = fuzz::openBytes(data, size);
  if (stream == nullptr) return 0;
  std::vector<CIfcPropertySet> sets;
  importPropertySetsCsv(stream, sets, "Real");
  std::fclose(stream);
  for (std::size_t i = 0; i < sets.size(); ++i) {
    checkSet(sets[i]);
    for (std::size_t j = 0; j < i; ++j)
      check(!equalsNoCase(sets[j].name, sets[i].name), "a set name is imported once");
  }
  return 0;
}
