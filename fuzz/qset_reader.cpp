// The quantity-set document reader, CIfcProyectQSet::lee, on any file.
#include "fuzz/document_checks.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orvane::fuzz::readAnyFile<CIfcProyectQSet>(data, size, "qset.xml");
  return 0;
}
