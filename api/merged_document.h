// A document being merged with host records, kept as its outline (model/document_outline.h) and
// the records themselves rather than as copies of every entry: an entry is either read from its
// element, or made from the first record that named it; a property is then updated by the last
// record that named it. Printing materialises one entry at a time.
#ifndef ORVANE_API_MERGED_DOCUMENT_H
#define ORVANE_API_MERGED_DOCUMENT_H

#include <tinyxml2.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "api/name_index.h"
#include "model/document_outline.h"

namespace orvane::api {

struct MergedMember {
  std::string_view name;                          // as the entry's name field holds it
  const tinyxml2::XMLElement* element = nullptr;  // null: made from records[first]
  int32_t first = -1;
  int32_t last = -1;  // the last record that named it, or -1
};

struct MergedSet {
  std::string_view name;
  const tinyxml2::XMLElement* element = nullptr;  // null: made from a record
  std::vector<MergedMember> members;
};

using MergedSets = IndexedSets<MergedSet, MergedMember, &MergedSet::members>;

// The sets of an outline, each member under its name as the entry's field would hold it.
inline std::vector<MergedSet> mergedSets(const std::vector<xml::SetOutline>& outline) {
  std::vector<MergedSet> sets(outline.size());
  for (std::size_t s = 0; s < outline.size(); ++s) {
    sets[s].name = outline[s].name;
    sets[s].element = outline[s].element;
    sets[s].members.reserve(outline[s].members.size());
    for (const tinyxml2::XMLElement* member : outline[s].members)
      sets[s].members.push_back({xml::asField(member->Attribute("Name")), member, -1, -1});
  }
  return sets;
}

// Where each record goes, once every set it names is in both lists: a record's set position,
// taken once, then holds for the whole merge. Hosts send a set's records together, so a record
// naming its predecessor's set, byte for byte, takes its positions without a lookup.
template <class Record>
std::vector<std::pair<std::size_t, std::size_t>> setPositions(MergedSets& named, MergedSets& document,
                                                              const Record* records, std::size_t count) {
  std::vector<std::pair<std::size_t, std::size_t>> positions;
  positions.reserve(count);
  std::string_view previous;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string_view setName = fieldText(records[i].setName);
    if (i == 0 || setName != previous)
      positions.emplace_back(named.findOrAppend(setName), document.findOrAppend(setName));
    else
      positions.push_back(positions.back());
    previous = setName;
  }
  return positions;
}

}  // namespace orvane::api

#endif
