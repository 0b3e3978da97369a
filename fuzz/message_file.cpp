// The host's message file: loading the interface text table and looking texts up in it.
#include "editors/common/messages.h"
#include "fuzz/fuzz_support.h"

namespace {

using namespace orvane;
using orvane::fuzz::check;

// A lookup gives one of the table's texts, or none when an earlier row is greater (the file is not
// sorted). Some 64 rows spread over the table are looked up: each lookup walks the rows, and every
// row of a full table would make a run slow.
void lookUpRows() {
  const int32_t step = numMensajes / 64 + 1;
  for (int32_t i = 0; i < numMensajes; i += step) {
    const MessageEntry& row = MessageTable[i];
    const char* text = getMensaje(row.group, row.id);
    if (text == nullptr) continue;
    check(text >= MessageTable[0].text && text <= MessageTable[numMensajes - 1].text,
          "a text comes from the table");
    textoMensaje(row.group, row.id);  // the ANSI decoding of whatever the file held
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = fuzz::writeScratchFile("messages.txt", {reinterpret_cast<const char*>(data), size});
  setRutaMensajes(path.c_str());
  cargaMensajes();
  check(MessageTable != nullptr, "a message file that opens gives a table");
  check(numMensajes >= 0 && numMensajes <= kMaxMessages, "the table keeps at most 512 rows");
  for (int32_t i = 0; i < numMensajes; ++i)
    check(fuzz::terminated(MessageTable[i].text), "a message text is terminated");
  lookUpRows();
  getMensaje(INT32_MIN, INT32_MIN);
  getMensaje(INT32_MAX, INT32_MAX);
  liberaMensajes();
  descargaMensajes();  // a table without rows stays loaded after liberaMensajes
  return 0;
}
