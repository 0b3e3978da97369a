// Bounded copies into fixed text fields.
#ifndef ORVANE_MODEL_TEXT_H
#define ORVANE_MODEL_TEXT_H

#include <cstddef>
#include <string_view>

namespace orvane {

// The length of `text` once cut to at most `maxBytes` bytes. When the cut would split a UTF-8
// sequence, it moves back to the start of that sequence so no half character is left; text in a
// single-byte code page (where 0x80..0xBF bytes are whole characters) is cut at the byte.
std::size_t cutLength(std::string_view text, std::size_t maxBytes) noexcept;

// Copies `text` into a field of `fieldSize` bytes and terminates it: a longer text is cut at
// fieldSize - 1 bytes (see cutLength). Only the bytes of the text and its terminator are written.
void copyText(char* field, std::size_t fieldSize, std::string_view text) noexcept;

template <std::size_t N>
inline void copyText(char (&field)[N], std::string_view text) noexcept {
  copyText(field, N, text);
}

// The text of a field another program filled, which may lack its terminator: at most fieldSize bytes.
std::string_view fieldText(const char* field, std::size_t fieldSize) noexcept;

template <std::size_t N>
inline std::string_view fieldText(const char (&field)[N]) noexcept {
  return fieldText(field, N);
}

}  // namespace orvane

#endif
