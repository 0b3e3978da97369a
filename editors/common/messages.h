// The interface text table: the editors' captions, labels, column titles and most messages are the
// host's, looked up by (group, id) in the message file whose path the entry points store here.
//
// The message file is a narrow text file in the ANSI code page, one entry per line:
//     3,4,"Borrar"
// group and id are read as atoi does; the text runs from after the second comma, skipping any
// leading double quotes and commas, up to the next double quote or comma. So a text holds neither,
// and an unquoted text keeps the line's line feed. Lines of more than 511 characters are read in
// pieces that count as lines of their own. The file must be sorted by group, then by id: a lookup
// stops at the first row greater than the one it seeks.
//
// This is library-wide state, unguarded, used only on the thread of the entry point that set it.
#ifndef ORVANE_EDITORS_COMMON_MESSAGES_H
#define ORVANE_EDITORS_COMMON_MESSAGES_H

#include <cstdint>
#include <string>

namespace orvane {

inline constexpr int32_t kMaxMessages = 512;       // rows a table keeps; later lines are ignored
inline constexpr int32_t kReservedMessages = 513;  // rows reserved at load

struct MessageEntry {
  int32_t group;
  int32_t id;
  char text[512];
};

// Path of the host's message file; empty until an entry point stores one.
extern char rutaMensajes[512];
// The loaded rows, or null while no table is loaded; numMensajes counts the rows in use.
extern MessageEntry* MessageTable;
extern int32_t numMensajes;

// Stores the message file's path, cut to fit the 512-byte buffer. A null path stores an empty one.
void setRutaMensajes(const char* path);

// Loads the table from rutaMensajes. A file that can't be opened (or is a folder) changes nothing,
// so the next lookup tries again. Otherwise the rows read replace any table loaded before.
void cargaMensajes();

// The host's text for (group, id), or null when there is none. Loads the table first when none is.
const char* getMensaje(int32_t group, int32_t id);

// Releases a table with rows. A table loaded from a file without rows stays loaded, so later
// lookups give no text without reading the file again; the host relies on that.
void liberaMensajes();

// getMensaje decoded from the ANSI code page, as the editors show it: no text gives "".
std::u16string textoMensaje(int32_t group, int32_t id);

// Frees whatever table is loaded, with or without rows; for the library's unloading and for tests
// that need a fresh start. Not part of an entry point's work.
void descargaMensajes();

}  // namespace orvane

#endif
