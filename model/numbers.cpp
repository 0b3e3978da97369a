#include "model/numbers.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>

namespace orvane {
namespace {

bool isCSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

locale_t cLocale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return locale;
}

}  // namespace

int32_t readInt(const char* text) noexcept {
  if (text == nullptr) return 0;
  while (isCSpace(*text)) ++text;
  bool negative = false;
  if (*text == '+' || *text == '-') negative = (*text++ == '-');
  int64_t value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    value = value * 10 + (*text - '0');
    if (value > int64_t{std::numeric_limits<int32_t>::max()} + 1) break;  // saturated
  }
  if (negative) value = -value;
  if (value > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  if (value < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
  return static_cast<int32_t>(value);
}

double readReal(const char* text) noexcept {
  if (text == nullptr) return 0.0;
  return strtod_l(text, nullptr, cLocale());
}

NumberText formatInt(int32_t value) noexcept {
  NumberText out;
  auto result = std::to_chars(out.text_, out.text_ + sizeof out.text_ - 1, value);
  *result.ptr = '\0';
  return out;
}

NumberText formatReal3(double value) noexcept {
  NumberText out;
  auto result = std::to_chars(out.text_, out.text_ + sizeof out.text_ - 1, value,
                              std::chars_format::fixed, 3);
  *result.ptr = '\0';
  return out;
}

NumberText formatRealForField(double value, std::size_t fieldSize) noexcept {
  NumberText out = formatReal3(value);
  if (std::strlen(out.text_) < fieldSize) return out;
  auto result = std::to_chars(out.text_, out.text_ + sizeof out.text_ - 1, value);
  *result.ptr = '\0';
  return out;
}

}  // namespace orvane
