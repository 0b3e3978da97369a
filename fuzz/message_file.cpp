// The host's message file: loading the interface text table and looking texts up in it.
#include "editors/common/messages.h"
#include "fuzz/document_checks.h"

using namespace orvane;
using namespace orvane::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  setRutaMensajes(writeScratchFile("messages.txt", {reinterpret_cast<const char*>(data), size}).c_str());
  cargaMensajes();
  check(MessageTable != nullptr, "a message file that opens gives a table");
  check(numMensajes >= 0 && numMensajes <= kMaxMessages, "the table keeps at most 512 rows");
  for (int32_t i = 0; i < numMensajes; ++i) check(terminated(MessageTable[i].text), "a message text is terminated");
  // Some 64 rows give one of the table's texts, or none when an earlier row is greater (the file is
  // not sorted); each lookup walks the rows, so every row of a full table would make a run slow.
  for (int32_t i = 0; i < numMensajes; i += numMensajes / 64 + 1) {
    const char* text = getMensaje(MessageTable[i].group, MessageTable[i].id);
    check(text == nullptr || (text >= MessageTable[0].text && text <= MessageTable[numMensajes - 1].text),
          "a text comes from the table");
    textoMensaje(MessageTable[i].group, MessageTable[i].id);  // the ANSI decoding of whatever the file held
  }
  liberaMensajes();
  descargaMensajes();  // a table without rows stays loaded after liberaMensajes
  return 0;
}
