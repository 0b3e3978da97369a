#include "model/text.h"

#include <cstring>

namespace orvane {
namespace {

bool isContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// How many bytes a UTF-8 sequence starting with `lead` has; 0 when `lead` starts none.
std::size_t sequenceLength(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

}  // namespace

std::size_t cutLength(std::string_view text, std::size_t maxBytes) noexcept {
  if (text.size() <= maxBytes) return text.size();
  if (!isContinuation(static_cast<unsigned char>(text[maxBytes]))) return maxBytes;
  // The first byte left out continues a sequence: find its lead byte among the kept ones.
  std::size_t start = maxBytes;
  while (start > 0 && maxBytes - start < 3 && isContinuation(static_cast<unsigned char>(text[start - 1])))
    --start;
  if (start == 0) return maxBytes;
  const std::size_t lead = start - 1;
  const std::size_t length = sequenceLength(static_cast<unsigned char>(text[lead]));
  // Only a real UTF-8 sequence that runs over the cut moves it; anything else is a single-byte text.
  if (length > maxBytes - lead && lead + length <= text.size()) {
    for (std::size_t i = lead + 1; i < lead + length; ++i)
      if (!isContinuation(static_cast<unsigned char>(text[i]))) return maxBytes;
    return lead;
  }
  return maxBytes;
}

void copyText(char* field, std::size_t fieldSize, std::string_view text) noexcept {
  if (fieldSize == 0) return;
  const std::size_t length = cutLength(text, fieldSize - 1);
  if (length > 0) std::memmove(field, text.data(), length);
  field[length] = '\0';
}

std::string_view fieldText(const char* field, std::size_t fieldSize) noexcept {
  return {field, strnlen(field, fieldSize)};
}

}  // namespace orvane
