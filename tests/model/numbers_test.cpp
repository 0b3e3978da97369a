// Numbers read and printed as the C library does in the "C" locale, whatever the host's locale.
#include <gtest/gtest.h>

#include <clocale>
#include <climits>
#include <cstring>
#include <string>

#include "model/numbers.h"

using orvane::formatInt;
using orvane::formatReal3;
using orvane::readInt;
using orvane::readReal;

TEST(ReadInt, ReadsLeadingDigitsLikeAtoi) {
  EXPECT_EQ(readInt("12abc"), 12);
  EXPECT_EQ(readInt("  -7"), -7);
  EXPECT_EQ(readInt("+5"), 5);
  EXPECT_EQ(readInt("abc"), 0);
  EXPECT_EQ(readInt(""), 0);
  EXPECT_EQ(readInt("2.9"), 2);
  EXPECT_EQ(readInt(nullptr), 0);
}

TEST(ReadInt, SaturatesOutsideThe32BitRange) {
  EXPECT_EQ(readInt("99999999999999999999"), INT_MAX);
  EXPECT_EQ(readInt("-99999999999999999999"), INT_MIN);
  EXPECT_EQ(readInt("-2147483648"), INT_MIN);
  EXPECT_EQ(readInt("2147483647"), INT_MAX);
}

TEST(ReadReal, ReadsTheLeadingNumberLikeAtof) {
  EXPECT_DOUBLE_EQ(readReal("2.75"), 2.75);
  EXPECT_DOUBLE_EQ(readReal("12,5"), 12.0);  // stops at the comma
  EXPECT_DOUBLE_EQ(readReal(" 1e3x"), 1000.0);
  EXPECT_DOUBLE_EQ(readReal(""), 0.0);
  EXPECT_DOUBLE_EQ(readReal("abc"), 0.0);
}

TEST(FormatNumbers, PrintsLikePrintf) {
  EXPECT_STREQ(formatInt(-7).c_str(), "-7");
  EXPECT_STREQ(formatInt(INT_MIN).c_str(), "-2147483648");
  EXPECT_STREQ(formatReal3(1.23456).c_str(), "1.235");
  EXPECT_STREQ(formatReal3(12.5).c_str(), "12.500");
  EXPECT_STREQ(formatReal3(0.1).c_str(), "0.100");
  EXPECT_STREQ(formatReal3(-2.5).c_str(), "-2.500");
}

TEST(FormatNumbers, TheLargestDoubleFitsItsBuffer) {
  const std::string text = formatReal3(1.7976931348623157e308).c_str();
  EXPECT_EQ(text.size(), 313u);
  EXPECT_EQ(text.substr(text.size() - 4), ".000");
}

// A 256-byte record field holds 255 characters: "%0.3lf" of 9e250 has 255, of 1e251 256. What does
// not fit is written in the shortest form that reads back as the same double.
TEST(FormatNumbers, ARealTooLongForItsFieldIsWrittenInItsShortestExactForm) {
  const struct {
    double value;
    const char* text;  // null: the three-decimal form
  } cases[] = {{2.5, nullptr}, {9e250, nullptr}, {-9e249, nullptr}, {1e251, "1e+251"}, {1e308, "1e+308"},
               {-1.7976931348623157e308, "-1.7976931348623157e+308"}};
  for (const auto& test : cases) {
    const std::string text = orvane::formatRealForField(test.value, 256).c_str();
    SCOPED_TRACE(text);
    EXPECT_EQ(text, test.text != nullptr ? test.text : formatReal3(test.value).c_str());
    EXPECT_LE(text.size(), 255u);
    EXPECT_EQ(readReal(text.c_str()), test.text != nullptr ? test.value : readReal(formatReal3(test.value).c_str()));
  }
}

// LOCPATH points at a German locale made at build time; without it the test cannot run.
TEST(FormatNumbers, IgnoreTheHostLocale) {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "no de_DE.UTF-8 locale";
  char printed[32];
  std::snprintf(printed, sizeof printed, "%.3f", 1.5);
  EXPECT_STREQ(printed, "1,500");  // the locale is really in force
  EXPECT_STREQ(formatReal3(1.23456).c_str(), "1.235");
  EXPECT_DOUBLE_EQ(readReal("2.75"), 2.75);
  std::setlocale(LC_ALL, previous.c_str());
}
