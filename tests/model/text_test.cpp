// Bounded copies into the fixed fields and the ASCII-only name comparison. (A host's field without
// its terminator is read to its end: the exchange tests show it on the records.)
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "model/names.h"
#include "model/text.h"

using orvane::compareNoCase;

namespace {

struct Cut {
  const char* what;
  std::size_t fieldSize;
  std::string text;
  std::string kept;
};

}  // namespace

TEST(CopyText, CutsAtTheFieldWithoutSplittingAUtf8Character) {
  const std::string a510(510, 'a'), a509(509, 'a'), a508(508, 'a');
  const Cut cuts[] = {
      {"short text", 16, "abc", "abc"},
      {"exactly the field", 512, std::string(511, 'y'), std::string(511, 'y')},
      {"long ASCII text", 512, std::string(600, 'x'), std::string(511, 'x')},
      {"the flat records' small fields", 256, std::string(300, 'n'), std::string(255, 'n')},
      {"n-tilde over the cut", 512, a510 + "\xC3\xB1", a510},
      {"euro sign over the cut", 512, a509 + "\xE2\x82\xAC" "z", a509},
      {"euro sign just fitting", 512, a508 + "\xE2\x82\xAC" "z", a508 + "\xE2\x82\xAC"},
      // Windows-1252 "º" (0xBA) looks like a UTF-8 continuation byte but is a whole character.
      {"1252 bytes that continue nothing", 512, a509 + "\xBA\xBA\xBA", a509 + "\xBA\xBA"},
      {"1252 lead byte without its sequence", 512, a510 + "\xF1\xBA", a510 + "\xF1"},
  };
  for (const Cut& cut : cuts) {
    SCOPED_TRACE(cut.what);
    char field[600];
    std::fill(std::begin(field), std::end(field), '#');
    orvane::copyText(field, cut.fieldSize, cut.text);
    EXPECT_EQ(std::string(field), cut.kept);
    EXPECT_EQ(field[cut.kept.size() + 1], '#');  // nothing written past the terminator
  }
}

TEST(NameComparison, FoldsOnlyAsciiLettersAndOrdersAsLowerCaseBytes) {
  const struct {
    const char* a;
    const char* b;
    int sign;
  } pairs[] = {
      {"MUROS", "muros", 0},
      {"Pset_WallCommon", "PSET_WALLCOMMON", 0},
      {"\xD1", "\xF1", -1},                  // 1252 "Ñ" / "ñ" stay apart
      {"\xC3\x91", "\xC3\xB1", -1},          // UTF-8 "Ñ" / "ñ" too
      {"Pset_A", "PsetB", -1},               // "_" (0x5F) folds before every letter, as _stricmp
      {"Alfa", "alpha", -1},
      {"Muro", "muros", -1},                 // a prefix first
      {"\xE1rbol", "zeta", 1},               // bytes above 127 after ASCII
  };
  for (const auto& pair : pairs) {
    SCOPED_TRACE(std::string(pair.a) + " / " + pair.b);
    const int got = compareNoCase(pair.a, pair.b);
    EXPECT_EQ((got > 0) - (got < 0), pair.sign);
    EXPECT_EQ((compareNoCase(pair.b, pair.a) > 0) - (compareNoCase(pair.b, pair.a) < 0), -pair.sign);
    EXPECT_EQ(orvane::equalsNoCase(pair.a, pair.b), pair.sign == 0);
  }
}
