#include "text.h"

#include <algorithm>

namespace orvane::cli {

namespace {

char foldAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + ('a' - 'A')) : c; }

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::string foldCase(std::string_view text) {
  std::string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), foldAscii);
  return folded;
}

bool equalsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                            [](char x, char y) { return foldAscii(x) == foldAscii(y); });
}

bool lessNoCase(std::string_view a, std::string_view b) {
  // Bytes compare unsigned, as the library sorts, so names with accents sort after plain ones.
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return static_cast<unsigned char>(foldAscii(x)) < static_cast<unsigned char>(foldAscii(y));
  });
}

std::string_view trim(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

std::size_t cutLength(std::string_view text, std::size_t maxBytes) {
  if (text.size() <= maxBytes) return text.size();
  std::size_t length = maxBytes;
  while (length > 0 && isContinuationByte(text[length])) --length;
  return length;
}

bool copyField(char* field, std::size_t size, std::string_view text) {
  if (size == 0) return text.empty();
  const std::size_t length = cutLength(text, size - 1);
  std::memcpy(field, text.data(), length);
  field[length] = '\0';
  return length == text.size();
}

std::size_t displayWidth(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !isContinuationByte(c); }));
}

}  // namespace orvane::cli
