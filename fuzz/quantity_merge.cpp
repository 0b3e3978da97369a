// The flat quantity merge, setCuantificadoresFichero, fed host records of any bytes and any
// document; then the flat read of what it wrote. Both files written must load and hold every set and
// quantity the records name.
#include "fuzz/document_checks.h"
#include "fuzz/merge_input.h"

using namespace orvane;
using orvane::fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::silenceMessages();
  const auto input = fuzz::splitMergeInput<FlatQuantityRecord>(data, size);
  const std::string path = fuzz::writeScratchFile("document.xml", input.document);
  const std::string output = fuzz::scratchPath("output.xml");
  check(setCuantificadoresFichero(path.c_str(), output.c_str(), input.records.data(),
                                  static_cast<int>(input.records.size())) == 1,
        "setCuantificadoresFichero gives 1");
  fuzz::checkHoldsRecords<CIfcProyectQSet>(output, input.records);
  fuzz::checkHoldsRecords<CIfcProyectQSet>(path, input.records);
  FlatQuantityRecord out[16];
  const int filled = getCuantificadoresFichero(path.c_str(), out, 16);
  check(filled >= 0 && filled <= 16, "getCuantificadoresFichero fills at most maxRecords");
  for (int i = 0; i < filled; ++i) {
    check(fuzz::terminated(out[i].setName, out[i].quantityName), "names given are terminated");
    check(out[i].measureType >= 0 && out[i].measureType < kQuantityMeasureCount, "a kind read is one of the three");
  }
  return 0;
}
