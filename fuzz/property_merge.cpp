// The flat property merge, setPropiedadesFichero, fed host records of any bytes and any document;
// then the flat reads of what it wrote. Whatever the records hold, the files written must load and
// hold every set and property the records name.
#include <sys/stat.h>

#include "fuzz/document_checks.h"
#include "fuzz/fuzz_support.h"
#include "fuzz/merge_input.h"
#include "model/text.h"
#include "orvane/orvane.h"

namespace {

using namespace orvane;
using orvane::fuzz::check;

bool exists(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0;
}

// The host's arrays come back filled with terminated texts, never more records than it has room for.
void readBack(const std::string& path) {
  FlatPropertyRecord out[16];
  const int filled = getPropiedadesFichero(path.c_str(), out, 16);
  check(filled >= 0 && filled <= 16, "getPropiedadesFichero fills at most maxRecords");
  for (int i = 0; i < filled; ++i) {
    check(fieldText(out[i].setName).size() < sizeof out[i].setName &&
              fieldText(out[i].propertyName).size() < sizeof out[i].propertyName,
          "names given to the host are terminated");
    if (out[i].valueType != PropertyEnumerated) continue;
    char literal[2][kTextFieldSize];
    char* buffers[2] = {literal[0], literal[1]};
    const int copied = getEnumerados(const_cast<char*>(path.c_str()), out[i].enumName, buffers, 2);
    check(copied >= 0 && copied <= 2, "getEnumerados copies at most maxValues");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::silenceMessages();
  const fuzz::MergeInput<FlatPropertyRecord> input = fuzz::splitMergeInput<FlatPropertyRecord>(data, size);
  fuzz::removeScratchFile("partial.xml");
  const std::string path = fuzz::writeScratchFile("document.xml", input.document);
  const std::string partial = fuzz::scratchPath("partial.xml");
  const int count = static_cast<int>(input.records.size());
  check(setPropiedadesFichero(path.c_str(), partial.c_str(), input.records.data(), count,
                              input.saveDocument ? 1 : 0) == 1,
        "setPropiedadesFichero gives 1");
  check(exists(partial) == (count > 0), "the partial document is written exactly when there are records");
  if (count > 0) fuzz::checkHoldsRecords<CIfcProyectPSet>(partial, input.records);
  if (input.saveDocument) fuzz::checkHoldsRecords<CIfcProyectPSet>(path, input.records);
  readBack(path);
  return 0;
}
