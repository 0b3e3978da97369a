// Text helpers of the tool. The tool sees liborvane only through its public headers, so it keeps
// its own copies of the rules the library follows: names match ignoring ASCII case only, and a
// text cut to fit a field never ends in half a UTF-8 character.
#ifndef ORVANE_TOOLS_TEXT_H
#define ORVANE_TOOLS_TEXT_H

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace orvane::cli {

// `text` with the ASCII letters A-Z lowered; every other byte stays.
std::string foldCase(std::string_view text);
bool equalsNoCase(std::string_view a, std::string_view b);
bool lessNoCase(std::string_view a, std::string_view b);

// `text` without leading and trailing ASCII white space.
std::string_view trim(std::string_view text);

// The length of `text` cut to at most `maxBytes`, moved back to the start of a UTF-8 sequence
// the cut would split.
std::size_t cutLength(std::string_view text, std::size_t maxBytes);

// Copies `text` into a zero-terminated field of `size` bytes, cut as cutLength does. Returns
// false when the text had to be cut.
bool copyField(char* field, std::size_t size, std::string_view text);
template <std::size_t N>
bool copyField(char (&field)[N], std::string_view text) {
  return copyField(field, N, text);
}

// The text of a field, read no further than its end (a full field has no terminator).
template <std::size_t N>
std::string fieldString(const char (&field)[N]) {
  return std::string(field, strnlen(field, N));
}

// Columns `text` takes on a terminal: one per UTF-8 character.
std::size_t displayWidth(std::string_view text);

}  // namespace orvane::cli

#endif
