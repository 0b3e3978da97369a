// Text between the records and the editors' controls. Record fields are narrow: what the user types
// is stored as UTF-8, while the interface texts and the catalogue's names are in the host's ANSI
// code page, Windows-1252. Controls hold wide text, here UTF-16 in std::u16string. No conversion
// ever fails: what can't be converted is replaced, as the host's own conversions do.
#ifndef ORVANE_MODEL_TEXT_CODEC_H
#define ORVANE_MODEL_TEXT_CODEC_H

#include <cstddef>
#include <string>
#include <string_view>

namespace orvane {

// UTF-8 to wide text. Each byte that does not belong to a valid UTF-8 sequence (stray continuation
// bytes, overlong forms, encoded surrogates, a sequence cut short) becomes one U+FFFD.
std::u16string fromUtf8(std::string_view text);

// Wide text to UTF-8. A surrogate that is not half of a pair becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

// Windows-1252 to wide text. The five bytes that code page leaves undefined (0x81, 0x8D, 0x8F,
// 0x90, 0x9D) become the C1 control characters of the same value (U+0081 ...), as Windows itself
// reads them, so they survive a round trip through toAnsi.
std::u16string fromAnsi(std::string_view text);

// Wide text to Windows-1252. A character the code page lacks becomes one "?" (a surrogate pair
// too); U+0081, U+008D, U+008F, U+0090 and U+009D go back to their single bytes.
std::string toAnsi(std::u16string_view text);

// toUtf8 cut to at most `maxBytes` bytes, never inside a character.
std::string toUtf8Bounded(std::u16string_view text, std::size_t maxBytes);

// Encodes `text` as UTF-8 into a field of `fieldSize` bytes, terminator included: at most
// fieldSize - 1 bytes of text, cut at a character boundary. A field size of 0 writes nothing.
void encodeUtf8(char* field, std::size_t fieldSize, std::u16string_view text);

template <std::size_t N>
inline void encodeUtf8(char (&field)[N], std::u16string_view text) {
  encodeUtf8(field, N, text);
}

// A record's text as UTF-8 for files other programs read: a text that is valid UTF-8 stays as it
// is; any other is taken as the host's Windows-1252, as the unit "ºC" is stored (byte 0xBA).
std::string hostTextToUtf8(std::string_view text);

// Whether `text` is well-formed UTF-8 (no overlong forms, no surrogates, nothing past U+10FFFF).
bool isValidUtf8(std::string_view text) noexcept;

// A wide text from a UTF-8 literal: u16("Descripción"). A null pointer gives "".
std::u16string u16(const char* utf8Literal);

}  // namespace orvane

#endif
