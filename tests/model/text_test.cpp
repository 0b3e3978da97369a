// Bounded copies into the fixed fields and the ASCII-only name comparison.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "model/names.h"
#include "model/text.h"

TEST(CopyText, CutsAtTheFieldWithoutSplittingAUtf8Character) {
  const std::string a510(510, 'a'), a509(509, 'a'), a508(508, 'a');
  const struct { std::size_t fieldSize; std::string text, kept; } cuts[] = {
      {512, std::string(511, 'y'), std::string(511, 'y')},
      {256, std::string(300, 'n'), std::string(255, 'n')},
      {512, a510 + "\xC3\xB1", a510},                                // n-tilde over the cut
      {512, a509 + "\xE2\x82\xAC" "z", a509},                         // euro sign over the cut
      {512, a508 + "\xE2\x82\xAC" "z", a508 + "\xE2\x82\xAC"},        // euro sign just fitting
      {512, a509 + "\xBA\xBA\xBA", a509 + "\xBA\xBA"},                // 1252 bytes that continue nothing
      {512, a510 + "\xF1\xBA", a510 + "\xF1"},                        // 1252 lead byte without its sequence
  };
  for (const auto& cut : cuts) {
    SCOPED_TRACE(cut.kept.substr(cut.kept.size() > 4 ? cut.kept.size() - 4 : 0));
    char field[600];
    std::fill(std::begin(field), std::end(field), '#');
    orvane::copyText(field, cut.fieldSize, cut.text);
    EXPECT_EQ(std::string(field), cut.kept);
    EXPECT_EQ(field[cut.kept.size() + 1], '#');  // nothing written past the terminator
  }
}

TEST(NameComparison, FoldsOnlyAsciiLettersAndOrdersAsLowerCaseBytes) {
  const struct { const char *a, *b; int sign; } pairs[] = {
      {"Pset_WallCommon", "PSET_WALLCOMMON", 0},
      {"\xD1", "\xF1", -1},          // 1252 "Ñ" / "ñ" stay apart
      {"\xC3\x91", "\xC3\xB1", -1},  // UTF-8 "Ñ" / "ñ" too
      {"Pset_A", "PsetB", -1},       // "_" (0x5F) folds before every letter, as _stricmp
      {"Alfa", "alpha", -1},
      {"Muro", "muros", -1},         // a prefix first
      {"\xE1rbol", "zeta", 1},       // bytes above 127 after ASCII
  };
  const auto sign = [](int v) { return (v > 0) - (v < 0); };
  for (const auto& pair : pairs) {
    SCOPED_TRACE(std::string(pair.a) + " / " + pair.b);
    EXPECT_EQ(sign(orvane::compareNoCase(pair.a, pair.b)), pair.sign);
    EXPECT_EQ(sign(orvane::compareNoCase(pair.b, pair.a)), -pair.sign);
    EXPECT_EQ(orvane::equalsNoCase(pair.a, pair.b), pair.sign == 0);
  }
}
