// Bounded copies into the 512-byte fields and the ASCII-only name comparison.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "model/names.h"
#include "model/text.h"

using orvane::compareNoCase;
using orvane::copyText;
using orvane::equalsNoCase;

TEST(CopyText, ShortTextIsCopiedWithTerminatorAndNothingBeyond) {
  char field[16];
  std::fill(std::begin(field), std::end(field), '#');
  copyText(field, "abc");
  EXPECT_STREQ(field, "abc");
  EXPECT_EQ(field[4], '#');  // the rest of the field is not touched
}

TEST(CopyText, LongAsciiTextIsCutAt511Bytes) {
  char field[512];
  copyText(field, std::string(600, 'x'));
  EXPECT_EQ(std::string(field), std::string(511, 'x'));
}

TEST(CopyText, TextOfExactly511BytesFitsWhole) {
  char field[512];
  copyText(field, std::string(511, 'y'));
  EXPECT_EQ(std::string(field).size(), 511u);
}

TEST(CopyText, CutNeverSplitsAUtf8Character) {
  char field[512];
  copyText(field, std::string(510, 'a') + "\xC3\xB1");  // "ñ" would straddle byte 511
  EXPECT_EQ(std::string(field), std::string(510, 'a'));
  copyText(field, std::string(509, 'a') + "\xE2\x82\xAC" "z");  // "€" would straddle it
  EXPECT_EQ(std::string(field), std::string(509, 'a'));
  copyText(field, std::string(508, 'a') + "\xE2\x82\xAC" "z");  // "€" fits exactly
  EXPECT_EQ(std::string(field), std::string(508, 'a') + "\xE2\x82\xAC");
}

TEST(CopyText, SingleByteCodePageTextIsCutAtTheByte) {
  char field[512];
  // Windows-1252 "º" (0xBA) looks like a UTF-8 continuation byte but is a whole character.
  copyText(field, std::string(509, 'a') + "\xBA\xBA\xBA");
  EXPECT_EQ(std::string(field), std::string(509, 'a') + "\xBA\xBA");
  copyText(field, std::string(510, 'a') + "\xF1\xBA");  // 1252 "ñº": no real UTF-8 sequence
  EXPECT_EQ(std::string(field), std::string(510, 'a') + "\xF1");
}

TEST(CopyText, SmallFieldsOfTheFlatRecords) {
  char field[256];
  copyText(field, std::string(300, 'n'));
  EXPECT_EQ(std::string(field).size(), 255u);
}

TEST(FieldText, StopsAtTheFieldEndWhenTheHostLeftNoTerminator) {
  char field[256];
  std::fill(std::begin(field), std::end(field), 'z');
  EXPECT_EQ(orvane::fieldText(field).size(), 256u);
  field[3] = '\0';
  EXPECT_EQ(orvane::fieldText(field), "zzz");
}

TEST(NameComparison, FoldsOnlyAsciiLetters) {
  EXPECT_TRUE(equalsNoCase("MUROS", "muros"));
  EXPECT_TRUE(equalsNoCase("Pset_WallCommon", "PSET_WALLCOMMON"));
  EXPECT_FALSE(equalsNoCase("\xD1", "\xF1"));                  // 1252 "Ñ" / "ñ" stay apart
  EXPECT_FALSE(equalsNoCase("\xC3\x91", "\xC3\xB1"));          // UTF-8 "Ñ" / "ñ" too
  EXPECT_FALSE(equalsNoCase("Muro", "Muros"));
}

TEST(NameComparison, OrdersAsLowerCaseBytes) {
  // Folding to lower case puts "_" (0x5F) before every letter, as _stricmp does.
  EXPECT_LT(compareNoCase("Pset_A", "PsetB"), 0);
  EXPECT_LT(compareNoCase("Alfa", "alpha"), 0);
  EXPECT_LT(compareNoCase("Muro", "muros"), 0);
  EXPECT_GT(compareNoCase("\xE1rbol", "zeta"), 0);  // bytes above 127 sort after ASCII
  EXPECT_EQ(compareNoCase("ABC", "abc"), 0);
}

TEST(NameComparison, SortsRecordsByName) {
  struct Named {
    const char* name;
  };
  std::vector<Named> names{{"beta"}, {"Alfa"}, {"alpha"}, {"Pset_B"}, {"PsetA"}};
  std::sort(names.begin(), names.end(), orvane::NameLessNoCase{});
  std::vector<std::string> sorted;
  for (const Named& n : names) sorted.emplace_back(n.name);
  EXPECT_EQ(sorted, (std::vector<std::string>{"Alfa", "alpha", "beta", "Pset_B", "PsetA"}));
}
