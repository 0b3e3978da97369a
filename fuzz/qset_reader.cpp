// The quantity-set document reader, CIfcProyectQSet::lee, on any file.
#include "fuzz/document_checks.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace orvane::fuzz;
  silenceMessages();
  const std::string path = writeScratchFile("qset.xml", {reinterpret_cast<const char*>(data), size});
  CIfcProyectQSet doc;
  const int result = doc.lee(path.c_str());
  check(result == 0 || result == 1, "lee gives 0 or 1");
  checkDocument(doc, result == 1);
  return 0;
}
