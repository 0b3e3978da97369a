// The CSV import of property sets, on any file, into an empty list.
#include "editors/psets/csv_import.h"
#include "fuzz/document_checks.h"

using namespace orvane;
using namespace orvane::fuzz;

// Lines hold at most 255 characters, so no field is ever cut and names compare as they were read.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = writeScratchFile("import.csv", {reinterpret_cast<const char*>(data), size});
  std::vector<CIfcPropertySet> sets;
  importPropertySetsCsv(HostTextFile(path.c_str(), kMaxCsvBytes).stream(), sets, "Real");
  for (auto set = sets.begin(); set != sets.end(); ++set) {
    check(terminated(set->name) && std::strlen(set->name) <= 255, "a set name fits a line");
    check(!set->properties.empty(), "an imported set holds the property that made it");
    for (auto other = sets.begin(); other != set; ++other)
      check(!equalsNoCase(other->name, set->name), "a set name is imported once");
    for (auto property = set->properties.begin(); property != set->properties.end(); ++property) {
      check(terminated(property->name, property->description, property->textValue), "property texts are terminated");
      check(property->valueType == PropertyReal || property->valueType == PropertyString,
            "an imported property is Real or String");
      for (auto other = set->properties.begin(); other != property; ++other)
        check(!equalsNoCase(other->name, property->name), "a set gets a property name once");
    }
  }
  return 0;
}
