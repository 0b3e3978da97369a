// The flat property merge, setPropiedadesFichero, fed host records of any bytes and any document;
// then the flat reads of what it wrote. The files written must load and hold every set and property
// the records name.
#include "fuzz/document_checks.h"

using namespace orvane;
using namespace orvane::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto [save, records, document] = splitMergeInput<FlatPropertyRecord>(data, size);
  const std::string path = writeScratchFile("document.xml", document);
  const std::string partial = scratchPath("partial.xml");
  std::remove(partial.c_str());
  const int count = static_cast<int>(records.size());
  check(setPropiedadesFichero(path.c_str(), partial.c_str(), records.data(), count, save) == 1,
        "setPropiedadesFichero gives 1");
  check(std::filesystem::exists(partial) == (count > 0), "a partial document is written exactly for records");
  if (count > 0) checkHoldsRecords<CIfcProyectPSet>(partial, records);
  if (save) checkHoldsRecords<CIfcProyectPSet>(path, records);
  // The host's arrays come back with terminated texts, never more records than it has room for.
  FlatPropertyRecord out[16];
  const int filled = getPropiedadesFichero(path.c_str(), out, 16);
  check(filled >= 0 && filled <= 16, "getPropiedadesFichero fills at most maxRecords");
  for (int i = 0; i < filled; ++i) {
    check(terminated(out[i].setName, out[i].propertyName), "names given are terminated");
    if (out[i].valueType != PropertyEnumerated) continue;
    char literal[2][kTextFieldSize];
    char* buffers[2] = {literal[0], literal[1]};
    const int copied = getEnumerados(const_cast<char*>(path.c_str()), out[i].enumName, buffers, 2);
    check(copied >= 0 && copied <= 2, "getEnumerados copies at most maxValues");
  }
  return 0;
}
