// Name comparison: sets, properties, types, values and catalogue entries are compared ignoring
// case, where only the ASCII letters A-Z are folded, byte by byte (as _stricmp does in the "C"
// locale). Bytes above 127 compare as themselves, whatever code page they come from.
#ifndef ORVANE_MODEL_NAMES_H
#define ORVANE_MODEL_NAMES_H

#include <algorithm>
#include <string_view>

namespace orvane {

inline constexpr unsigned char foldAscii(unsigned char c) noexcept {
  return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + ('a' - 'A')) : c;
}

// Negative, zero or positive as `a` sorts before, with or after `b`.
int compareNoCase(std::string_view a, std::string_view b) noexcept;

inline bool equalsNoCase(std::string_view a, std::string_view b) noexcept {
  return a.size() == b.size() && compareNoCase(a, b) == 0;
}

// Orders records by their `name` field, for std::sort.
struct NameLessNoCase {
  template <class Record>
  bool operator()(const Record& a, const Record& b) const noexcept {
    return compareNoCase(a.name, b.name) < 0;
  }
};

// Sorts records by name ignoring case, not stably. A list already in order (every file this
// library writes) is left as it is, sparing the moves of large records.
template <class Records>
void sortByName(Records& records) {
  if (!std::is_sorted(records.begin(), records.end(), NameLessNoCase{}))
    std::sort(records.begin(), records.end(), NameLessNoCase{});
}

}  // namespace orvane

#endif
