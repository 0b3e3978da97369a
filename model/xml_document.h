// What both documents share around their XML: loading a file into a tree, reading lists of records
// into room reserved up front, and writing a printed tree with its backup.
#ifndef ORVANE_MODEL_XML_DOCUMENT_H
#define ORVANE_MODEL_XML_DOCUMENT_H

#include <tinyxml2.h>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "model/file_io.h"
#include "model/xml_util.h"

namespace orvane::xml {

// Parses the file at `path` (taken as UTF-8) into `tree`. False when the file cannot be read or is
// not well-formed XML, and when memory runs out for it.
bool loadTree(const char* path, tinyxml2::XMLDocument& tree) noexcept;

// Prints a whole document into the printer it is given.
using PrintDocument = std::function<void(tinyxml2::XMLPrinter& out)>;

// Runs `print` with a printer that hands what it prints to `sink` in chunks of about 64 KB, never
// holding the document whole, with each carriage return of a text written as the character
// reference "&#13;" so that it reads back unchanged. False when the sink refused a chunk (the rest
// is then not printed) or memory ran out.
bool printInChunks(const PrintDocument& print, const ChunkSink& sink) noexcept;

// Copies the file at `path` to its ".bak" and writes what `print` prints in its place (see
// printInChunks). A failed write, out of memory too, leaves the old file as it was. True when the
// new document is in place and on disk (see saveDocument); the documents' `graba` reports nothing.
bool saveWithBackup(const char* path, const PrintDocument& print) noexcept;

// Asks the system to map the pages of [begin, begin + size) for writing now, in one call, instead of
// one page fault at a time as records are first written into them: with large fixed-size records,
// those faults are most of the cost of reading a document. Only whole pages inside the range are
// touched. Without support (before Linux 5.14) nothing happens and the pages fault in as usual.
void prefaultForWriting(const void* begin, std::size_t size) noexcept;

template <class Record>
void prefaultRoom(const std::vector<Record>& records) noexcept {
  const std::size_t used = records.size();
  prefaultForWriting(records.data() + used, (records.capacity() - used) * sizeof(Record));
}

// Walks the children named `name` of `parent`'s child `list` (when there is one), reading each into
// a fresh record appended to `records`. The first record that fails to read ends the walk.
// Records are large (fixed text fields), so they are read in place into room reserved up front.
template <class Record, class Read>
void readList(const tinyxml2::XMLElement& parent, const char* list, const char* name,
              std::vector<Record>& records, Read read) {
  const tinyxml2::XMLElement* container = parent.FirstChildElement(list);
  if (container == nullptr) return;
  records.reserve(records.size() + countChildren(*container, name));
  prefaultRoom(records);
  for (const tinyxml2::XMLElement* child = container->FirstChildElement(name); child != nullptr;
       child = child->NextSiblingElement(name)) {
    if (read(*child, records.emplace_back()) != 1) {
      records.pop_back();
      return;
    }
  }
}

}  // namespace orvane::xml

#endif
