// The flat quantity merge, setCuantificadoresFichero, fed host records of any bytes and any
// document; then the flat read of what it wrote. Both files written must load and hold every set and
// quantity the records name.
#include "fuzz/document_checks.h"

using namespace orvane;
using namespace orvane::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The quantity merge always saves the document: the flag is not used.
  const auto [flag, records, document] = splitMergeInput<FlatQuantityRecord>(data, size);
  const std::string path = writeScratchFile("document.xml", document);
  const std::string output = scratchPath("output.xml");
  const int count = static_cast<int>(records.size());
  check(setCuantificadoresFichero(path.c_str(), output.c_str(), records.data(), count) == 1,
        "setCuantificadoresFichero gives 1");
  checkHoldsRecords<CIfcProyectQSet>(output, records);
  checkHoldsRecords<CIfcProyectQSet>(path, records);
  FlatQuantityRecord out[16];
  const int filled = getCuantificadoresFichero(path.c_str(), out, 16);
  check(filled >= 0 && filled <= 16, "getCuantificadoresFichero fills at most maxRecords");
  for (int i = 0; i < filled; ++i) {
    check(terminated(out[i].setName, out[i].quantityName), "names given are terminated");
    check(out[i].measureType >= 0 && out[i].measureType < kQuantityMeasureCount, "a kind read is one of the three");
  }
  return 0;
}
