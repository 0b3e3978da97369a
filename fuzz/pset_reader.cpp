// The property-set document reader, CIfcProyectPSet::lee, on any file.
#include "fuzz/document_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orvane::fuzz::readAnyFile<CIfcProyectPSet>(data, size, "pset.xml");
  return 0;
}
