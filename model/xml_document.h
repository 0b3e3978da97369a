// What both documents share around their XML: loading a file into a tree and writing a printed
// tree with its backup.
#ifndef ORVANE_MODEL_XML_DOCUMENT_H
#define ORVANE_MODEL_XML_DOCUMENT_H

#include <tinyxml2.h>

#include <utility>
#include <vector>

#include "model/xml_util.h"

namespace orvane::xml {

// Parses the file at `path` (taken as UTF-8) into `tree`. False when the file cannot be read or is
// not well-formed XML, and when memory runs out for it.
bool loadTree(const char* path, tinyxml2::XMLDocument& tree) noexcept;

// Copies the file at `path` to its ".bak" and writes what `printer` printed in its place, with each
// carriage return of a text as the character reference "&#13;" so that it reads back unchanged.
// Nothing is reported: a failed write leaves the old file as it was.
void saveWithBackup(const char* path, const tinyxml2::XMLPrinter& printer);

// Walks the children named `name` of `parent`'s child `list` (when there is one), reading each into
// a fresh record appended to `records`. The first record that fails to read ends the walk.
// Records are large (fixed text fields), so they are read in place into room reserved up front.
template <class Record, class Read>
void readList(const tinyxml2::XMLElement& parent, const char* list, const char* name,
              std::vector<Record>& records, Read read) {
  const tinyxml2::XMLElement* container = parent.FirstChildElement(list);
  if (container == nullptr) return;
  records.reserve(records.size() + countChildren(*container, name));
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
