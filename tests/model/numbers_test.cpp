// Numbers read and printed as the C library does in the "C" locale, whatever the host's locale.
#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cstdio>
#include <string>

#include "model/numbers.h"

using orvane::formatReal3;
using orvane::readReal;

TEST(Numbers, IntegersReadLikeAtoiButSaturate) {
  const struct { const char* text; int32_t value; } rows[] = {
      {"12abc", 12}, {"  -7", -7}, {"+5", 5}, {"abc", 0}, {"", 0}, {"2.9", 2}, {nullptr, 0}, {"2147483647", INT_MAX},
      {"99999999999999999999", INT_MAX}, {"-99999999999999999999", INT_MIN}, {"-2147483648", INT_MIN}};
  for (const auto& row : rows) EXPECT_EQ(orvane::readInt(row.text), row.value) << (row.text ? row.text : "(null)");
  EXPECT_STREQ(orvane::formatInt(INT_MIN).c_str(), "-2147483648");
}

TEST(Numbers, RealsReadLikeAtofAndPrintWithThreeDecimals) {
  EXPECT_DOUBLE_EQ(readReal("12,5"), 12.0);  // stops at the comma
  EXPECT_DOUBLE_EQ(readReal(" 1e3x"), 1000.0);
  EXPECT_DOUBLE_EQ(readReal("abc"), 0.0);
  EXPECT_DOUBLE_EQ(readReal(nullptr), 0.0);
  EXPECT_STREQ(formatReal3(1.23456).c_str(), "1.235");
  EXPECT_STREQ(formatReal3(-2.5).c_str(), "-2.500");
  const std::string largest = formatReal3(1.7976931348623157e308).c_str();  // fits its buffer
  EXPECT_EQ(largest.size(), 313u);
  EXPECT_EQ(largest.substr(309), ".000");
}

// A 256-byte record field holds 255 characters: "%0.3lf" of 9e250 has 255, of 1e251 256. What does
// not fit is written in the shortest form that reads back as the same double.
TEST(Numbers, ARealTooLongForItsFieldIsWrittenInItsShortestExactForm) {
  const struct { double value; const char* text; } rows[] = {
      {9e250, nullptr}, {-9e249, nullptr}, {1e251, "1e+251"}, {-1.7976931348623157e308, "-1.7976931348623157e+308"}};
  for (const auto& row : rows) {
    const std::string text = orvane::formatRealForField(row.value, 256).c_str();
    EXPECT_EQ(text, row.text != nullptr ? row.text : formatReal3(row.value).c_str());
    EXPECT_LE(text.size(), 255u);
    if (row.text != nullptr) { EXPECT_EQ(readReal(text.c_str()), row.value); }
  }
}

// LOCPATH points at a German locale made at build time; without it the test cannot run.
TEST(Numbers, IgnoreTheHostLocale) {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "no de_DE.UTF-8 locale";
  char printed[32];
  std::snprintf(printed, sizeof printed, "%.3f", 1.5);
  EXPECT_STREQ(printed, "1,500");  // the locale is really in force
  EXPECT_STREQ(formatReal3(1.23456).c_str(), "1.235");
  EXPECT_DOUBLE_EQ(readReal("2.75"), 2.75);
  std::setlocale(LC_ALL, previous.c_str());
}
