#include "editors/common/messages.h"

#include <string.h>  // strtok_r

#include <algorithm>
#include <cstdio>
#include <new>

#include "editors/common/line_reader.h"
#include "editors/common/text_codec.h"
#include "model/numbers.h"
#include "model/text.h"

namespace orvane {

char rutaMensajes[512] = "";
MessageEntry* MessageTable = nullptr;
int32_t numMensajes = 0;

namespace {

// Fills `row` from one line: group and id up to a comma each, then the text. Only a line with all
// three is a row; a shorter one leaves what it read in `row` for the next line to overwrite.
bool readRow(char* line, MessageEntry& row) {
  char* rest = nullptr;
  const char* group = strtok_r(line, ",", &rest);
  if (group == nullptr) return false;
  row.group = readInt(group);
  const char* id = strtok_r(nullptr, ",", &rest);
  if (id == nullptr) return false;
  row.id = readInt(id);
  const char* text = strtok_r(nullptr, "\",", &rest);
  if (text == nullptr) return false;
  copyText(row.text, text);
  return true;
}

}  // namespace

void setRutaMensajes(const char* path) { copyText(rutaMensajes, path != nullptr ? path : ""); }

void cargaMensajes() {
  // A folder, a FIFO, a device or an oversized file does not open, like a missing one.
  const HostTextFile opened(rutaMensajes, kMaxMessageFileBytes);
  std::FILE* file = opened.stream();
  if (file == nullptr) return;
  auto* rows = new (std::nothrow) MessageEntry[kReservedMessages]();
  if (rows == nullptr) return;
  delete[] MessageTable;
  MessageTable = rows;
  numMensajes = 0;

  char line[512] = {};
  // The end-of-file test follows each read, so a last line without its line end is not kept.
  readTextLine(line, sizeof line, file);
  while (!std::feof(file) && !std::ferror(file)) {
    if (numMensajes == kMaxMessages) break;
    if (readRow(line, rows[numMensajes])) ++numMensajes;
    readTextLine(line, sizeof line, file);
  }
}

const char* getMensaje(int32_t group, int32_t id) {
  if (MessageTable == nullptr) cargaMensajes();
  if (MessageTable == nullptr || numMensajes < 1) return nullptr;
  const int32_t count = std::min(numMensajes, kMaxMessages);
  for (int32_t i = 0; i < count; ++i) {
    const MessageEntry& row = MessageTable[i];
    if (group < row.group) return nullptr;
    if (group == row.group) {
      if (row.id > id) return nullptr;
      if (row.id == id) return row.text;
    }
  }
  return nullptr;
}

void liberaMensajes() {
  if (MessageTable != nullptr && numMensajes >= 1) descargaMensajes();
}

void descargaMensajes() {
  delete[] MessageTable;
  MessageTable = nullptr;
  numMensajes = 0;
}

std::u16string textoMensaje(int32_t group, int32_t id) {
  const char* text = getMensaje(group, id);
  return text != nullptr ? fromAnsi(text) : std::u16string();
}

}  // namespace orvane
