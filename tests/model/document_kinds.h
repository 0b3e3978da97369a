// The two documents side by side, for the tests that hold for both, and what every model test uses.
#ifndef ORVANE_TESTS_MODEL_DOCUMENT_KINDS_H
#define ORVANE_TESTS_MODEL_DOCUMENT_KINDS_H

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "support/documents.h"
#include "support/message_recorder.h"
#include "support/outline.h"

namespace orvane::test {

template <class Document>
constexpr bool kIsPset = std::is_same_v<std::remove_const_t<Document>, CIfcProyectPSet>;

template <class Document>
auto& setsOf(Document& doc) {
  if constexpr (kIsPset<Document>) return doc.propertySets;
  else return doc.quantitySets;
}

inline const auto& membersOf(const CIfcPropertySet& set) { return set.properties; }
inline const auto& membersOf(const CIfcQuantitySet& set) { return set.quantities; }

template <class Document>
std::vector<std::string> setNames(const Document& doc) {
  std::vector<std::string> names;
  for (const auto& set : setsOf(doc)) names.emplace_back(set.name);
  return names;
}

// Appends a set named `name` with `members` empty properties or quantities.
template <class Document>
void addSet(Document& doc, const char* name, std::size_t members = 0) {
  auto& set = setsOf(doc).emplace_back();
  std::strcpy(set.name, name);
  if constexpr (kIsPset<Document>) set.properties.resize(members);
  else set.quantities.resize(members);
}

using DocumentTypes = ::testing::Types<CIfcProyectPSet, CIfcProyectQSet>;

}  // namespace orvane::test

#endif
