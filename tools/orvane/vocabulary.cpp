#include "vocabulary.h"

#include <array>

#include "orvane/ifc_property_set.h"
#include "orvane/ifc_quantity_set.h"
#include "text.h"

namespace orvane::cli {

namespace {

constexpr std::array<std::string_view, 6> kTypeWords = {"Integer", "Real", "String",
                                                        "Enumerated", "Boolean", "DateTime"};
constexpr std::array<std::string_view, kQuantityMeasureCount> kKindWords = {"length", "area", "volume"};

// The documents hold "ºC" as the Windows-1252 byte 0xBA; a terminal, a CSV file or JSON want UTF-8.
constexpr std::string_view kDegreeCp1252 = "\xBA";
constexpr std::string_view kDegreeUtf8 = "\xC2\xBA";

std::string toUtf8Unit(std::string_view name) {
  std::string text(name);
  if (const std::size_t at = text.find(kDegreeCp1252); at != std::string::npos) text.replace(at, 1, kDegreeUtf8);
  return text;
}

template <std::size_t N>
std::string joinWords(const std::array<std::string_view, N>& words) {
  std::string text;
  for (std::size_t i = 0; i < N; ++i) {
    if (i > 0) text += (i + 1 == N) ? " or " : ", ";
    text += words[i];
  }
  return text;
}

}  // namespace

std::string typeWord(int32_t valueType) {
  if (valueType >= 0 && static_cast<std::size_t>(valueType) < kTypeWords.size())
    return std::string(kTypeWords[static_cast<std::size_t>(valueType)]);
  return std::to_string(valueType);
}

std::optional<int32_t> typeFromWord(std::string_view word) {
  for (std::size_t i = 0; i < kTypeWords.size(); ++i)
    if (equalsNoCase(word, kTypeWords[i])) return static_cast<int32_t>(i);
  return std::nullopt;
}

std::string typeWordList() { return joinWords(kTypeWords); }

std::string unitName(int32_t unit) {
  if (unit >= 0 && unit < kUnitCount) return toUtf8Unit(UnitTable[unit]);
  return std::to_string(unit);
}

std::optional<int32_t> unitFromName(std::string_view name) {
  for (int32_t i = 0; i < kUnitCount; ++i)
    if (equalsNoCase(name, UnitTable[i]) || equalsNoCase(name, toUtf8Unit(UnitTable[i]))) return i;
  return std::nullopt;
}

std::string unitNameList() {
  std::string text;
  for (int32_t i = 1; i < kUnitCount; ++i) text += (i > 1 ? ", " : "") + unitName(i);
  return text + " or empty";
}

std::string kindWord(int32_t measureType) {
  if (measureType >= 0 && measureType < kQuantityMeasureCount) return std::string(kKindWords[static_cast<std::size_t>(measureType)]);
  return std::to_string(measureType);
}

std::optional<int32_t> kindFromWord(std::string_view word) {
  for (int32_t i = 0; i < kQuantityMeasureCount; ++i)
    if (equalsNoCase(word, kKindWords[static_cast<std::size_t>(i)]) || equalsNoCase(word, QuantityMeasureNames[i]))
      return i;
  return std::nullopt;
}

}  // namespace orvane::cli
