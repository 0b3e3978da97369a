// Conversions between the records' narrow texts (UTF-8 or Windows-1252) and the controls' wide
// text, on Spanish texts, broken input and cuts into fixed fields.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "editors/common/text_codec.h"

using orvane::encodeUtf8;
using orvane::fromAnsi;
using orvane::fromUtf8;
using orvane::toAnsi;
using orvane::toUtf8;
using orvane::toUtf8Bounded;

TEST(AnsiText, SpanishTextBothWays) {
  for (const auto& [bytes, wide] : {std::pair<std::string, std::u16string>{"Descripci\xF3n", u"Descripción"},
                                    {"\xBA" "C", u"ºC"}, {"A\xD1O a\xF1o", u"AÑO año"}, {"20 \x80", u"20 €"},
                                    {"\xBF" "Continuar?", u"¿Continuar?"}, {"", u""},
                                    {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
                                    // the undefined bytes read as the controls of their value
                                    {"a\x81" "b\x8D\x8F\x90\x9D", u"a\u0081b\u008D\u008F\u0090\u009D"}}) {
    EXPECT_EQ(fromAnsi(bytes), wide);
    EXPECT_EQ(toAnsi(wide), bytes);
  }
}

TEST(AnsiText, EveryByteSurvivesARoundTrip) {
  std::string all;
  for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
  const std::u16string wide = fromAnsi(all);
  EXPECT_EQ(wide.size(), all.size());  // one character per byte, none replaced
  EXPECT_EQ(wide.find(u'\uFFFD'), std::u16string::npos);
  EXPECT_EQ(toAnsi(wide), all);
}

TEST(AnsiText, MissingCharactersBecomeOneQuestionMarkEach) {
  EXPECT_EQ(toAnsi(u"\u0080"), "?");  // the other C1 controls have no byte: 0x80 is "€"
  EXPECT_EQ(toAnsi(u"Łódź"), "?\xF3" "d?");
  EXPECT_EQ(toAnsi(u"a\U0001F600b"), "a?b");  // a surrogate pair is one character
  EXPECT_EQ(toAnsi(u"a\xD800" "b"), "a?b");   // a lone surrogate too
  EXPECT_EQ(toAnsi(u"a\xDC00"), "a?");
  EXPECT_EQ(toAnsi(u"\xD800"), "?");
}

TEST(Utf8Text, SpanishTextBothWays) {
  for (const auto& [bytes, wide] : {std::pair<std::string, std::u16string>{"Descripci\xC3\xB3n", u"Descripción"},
                                    {"\xC2\xBA" "C", u"ºC"}, {"A\xC3\xB1o", u"Año"}, {"\xE2\x82\xAC", u"€"},
                                    {"\xF0\x9F\x98\x80", u"\U0001F600"}}) {
    EXPECT_EQ(fromUtf8(bytes), wide);
    EXPECT_EQ(toUtf8(wide), bytes);
  }
  EXPECT_EQ(orvane::u16("Validación"), u"Validación");
  EXPECT_EQ(orvane::u16(nullptr), u"");
}

TEST(Utf8Text, EachInvalidByteBecomesOneReplacement) {
  EXPECT_EQ(fromUtf8("a\xFF" "b"), u"a\uFFFDb");
  EXPECT_EQ(fromUtf8("A\xF1o"), u"A\uFFFDo");                   // Windows-1252 read as UTF-8
  EXPECT_EQ(fromUtf8("\x80\xBF"), u"\uFFFD\uFFFD");             // stray continuation bytes
  EXPECT_EQ(fromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");             // overlong "/"
  EXPECT_EQ(fromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");   // an encoded surrogate
  EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");  // beyond U+10FFFF
  EXPECT_EQ(fromUtf8("ab\xE2\x82"), u"ab\uFFFD\uFFFD");         // cut short at the end
  EXPECT_EQ(fromUtf8("\xE2\x82" "c\xC3\xB1"), u"\uFFFD\uFFFDcñ");  // cut short, then valid again
}

// Files for other programs get UTF-8 whichever encoding the host typed a text in: valid UTF-8 stays
// byte for byte, anything else (one stray byte is enough) is read as Windows-1252.
TEST(HostText, BecomesUtf8FromEitherEncoding) {
  const struct {
    const char* text;
    const char* utf8;
  } cases[] = {
      {"", ""},
      {"plain <ASCII> & 'quotes'", "plain <ASCII> & 'quotes'"},
      {"\xBA" "C", "\xC2\xBA" "C"},                              // the unit as the host stores it
      {"\xC2\xBA" "C", "\xC2\xBA" "C"},                          // already UTF-8
      {"N\xC3\xBAmero \xF0\x9F\x98\x80", "N\xC3\xBAmero \xF0\x9F\x98\x80"},
      {"A\xF1o \x80", "A\xC3\xB1o \xE2\x82\xAC"},
      {"\xC3\xB1 y \xF1", "\xC3\x83\xC2\xB1 y \xC3\xB1"},  // mixed: the whole text is Windows-1252
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                        // overlong form
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},    // encoded surrogate
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC"},  // past U+10FFFF
      {"ab\xE2\x82", "ab\xC3\xA2\xE2\x80\x9A"},                // cut short at the end
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(orvane::hostTextToUtf8(c.text), c.utf8);
  }
}

TEST(Utf8Text, LoneSurrogatesBecomeReplacements) {
  EXPECT_EQ(toUtf8(u"a\xD800" "b"), "a\xEF\xBF\xBD" "b");
  EXPECT_EQ(toUtf8(u"a\xDC00"), "a\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(u"\xD83D"), "\xEF\xBF\xBD");  // high half at the very end
  EXPECT_EQ(toUtf8(u"\xDC00\xD800"), "\xEF\xBF\xBD\xEF\xBF\xBD");  // halves in the wrong order
}

TEST(Utf8Text, ArbitraryBytesNeverBreakTheConversion) {
  std::mt19937 random(1252);
  std::uniform_int_distribution<int> byte(0, 255);
  std::uniform_int_distribution<int> length(0, 64);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes(static_cast<std::size_t>(length(random)), '\0');
    for (char& c : bytes) c = static_cast<char>(byte(random));
    const std::u16string wide = fromUtf8(bytes);
    EXPECT_LE(wide.size(), bytes.size());
    // What comes out is valid UTF-8 that reads back to the same wide text.
    EXPECT_EQ(fromUtf8(toUtf8(wide)), wide) << "round " << round;
  }
}

TEST(Utf8Text, LongTextsConvertWhole) {
  std::u16string wide;
  for (int i = 0; i < 3000; ++i) wide += u"ñ€";  // far beyond any internal chunk
  const std::string utf8 = toUtf8(wide);
  EXPECT_EQ(utf8.size(), 3000u * 5);
  EXPECT_EQ(fromUtf8(utf8), wide);
  EXPECT_EQ(fromAnsi(toAnsi(wide)), wide);
}

TEST(BoundedUtf8, CutsNeverSplitACharacter) {
  const std::u16string text = u"Descripción ab€ a\U0001F600";
  // In UTF-8 "ó" ends at byte 11, "€" at byte 18 and the emoji at byte 24.
  for (const auto& [maxBytes, kept] : {std::pair<std::size_t, std::size_t>{0, 0}, {10, 9}, {11, 11}, {17, 15},
                                       {18, 18}, {23, 20}, {24, 24}, {100, 24}})
    EXPECT_EQ(toUtf8Bounded(text, maxBytes), toUtf8(text).substr(0, kept)) << maxBytes;
}

TEST(BoundedUtf8, FieldGetsAtMostItsSizeWithTerminator) {
  char field[12];
  std::fill(std::begin(field), std::end(field), '#');
  encodeUtf8(field, 11, u"Descripción");  // 12 bytes of text into 10 and a terminator
  EXPECT_STREQ(field, "Descripci");
  EXPECT_EQ(field[10], '#');  // nothing past the given size

  char record[512];
  std::u16string many(600, u'ñ');
  encodeUtf8(record, many);
  EXPECT_EQ(std::string(record), toUtf8(std::u16string(255, u'ñ')));  // 510 bytes: no half "ñ"

  char untouched[4] = "abc";
  encodeUtf8(untouched, 0, u"x");
  encodeUtf8(nullptr, 8, u"x");
  EXPECT_STREQ(untouched, "abc");
}
