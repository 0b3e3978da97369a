// Conversions between the records' narrow texts (UTF-8 or Windows-1252) and the controls' wide
// text, on Spanish texts, broken input and cuts into fixed fields.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "editors/common/text_codec.h"

using namespace orvane;

namespace {

enum Way { kBoth, kToWide, kToBytes };

struct Conversion {
  std::string bytes;
  std::u16string wide;
  Way way = kBoth;
};

void expectConversions(const std::vector<Conversion>& rows, std::u16string (*toWide)(std::string_view),
                       std::string (*toBytes)(std::u16string_view)) {
  for (const Conversion& row : rows) {
    SCOPED_TRACE(row.bytes);
    EXPECT_EQ(row.way == kToBytes ? row.wide : toWide(row.bytes), row.wide) << "to wide";
    EXPECT_EQ(row.way == kToWide ? row.bytes : toBytes(row.wide), row.bytes) << "to bytes";
  }
}

}  // namespace

// Windows-1252: the undefined bytes read as the C1 controls of their value; of those controls only
// U+0080 has no byte, since 0x80 is "€". What has no byte becomes one "?", a surrogate pair or a
// lone half too. UTF-8: each invalid byte becomes one replacement: a stray byte, Windows-1252 read
// as UTF-8, stray continuation bytes, an overlong "/", an encoded surrogate, beyond U+10FFFF, a
// sequence cut short (at the end, or followed by valid text). Lone surrogates, in any order or at
// the end, are replaced.
TEST(TextCodec, ConvertsBothWaysAndReplacesWhatHasNoCode) {
  expectConversions({{"Descripci\xF3n \xBA" "C A\xD1O a\xF1o 20 \x80 \xBF" "Continuar?",
                      u"Descripción ºC AÑO año 20 € ¿Continuar?"},
                     {"", u""}, {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
                     {"a\x81" "b\x8D\x8F\x90\x9D", u"a\u0081b\u008D\u008F\u0090\u009D"},
                     {"? ?\xF3" "d? a?b a?b a?", u"\u0080 Łódź a\U0001F600b a\xD800" "b a\xDC00", kToBytes},
                     {"?", u"\xD800", kToBytes}},
                    fromAnsi, toAnsi);
  std::string all;
  for (int b = 1; b < 256; ++b) all += static_cast<char>(b);
  const std::u16string wide = fromAnsi(all);
  EXPECT_EQ(wide.size(), all.size());  // one character per byte, none replaced
  EXPECT_EQ(wide.find(u'\uFFFD'), std::u16string::npos);
  EXPECT_EQ(toAnsi(wide), all);
  expectConversions({{"Descripci\xC3\xB3n \xC2\xBA" "C A\xC3\xB1o \xE2\x82\xAC \xF0\x9F\x98\x80",
                      u"Descripción ºC Año € \U0001F600"},
                     {"a\xFF" "b A\xF1o \x80\xBF \xC0\xAF", u"a\uFFFDb A\uFFFDo \uFFFD\uFFFD \uFFFD\uFFFD", kToWide},
                     {"\xED\xA0\x80 \xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD \uFFFD\uFFFD\uFFFD\uFFFD", kToWide},
                     {"ab\xE2\x82", u"ab\uFFFD\uFFFD", kToWide}, {"\xE2\x82" "c\xC3\xB1", u"\uFFFD\uFFFDcñ", kToWide},
                     {"a\xEF\xBF\xBD" "b \xEF\xBF\xBD\xEF\xBF\xBD", u"a\xD800" "b \xDC00\xD800", kToBytes},
                     {"a\xEF\xBF\xBD", u"a\xDC00", kToBytes}, {"\xEF\xBF\xBD", u"\xD83D", kToBytes}},
                    fromUtf8, toUtf8);
  EXPECT_EQ(u16("Validación"), u"Validación");
  EXPECT_EQ(u16(nullptr), u"");
  std::u16string many;
  for (int i = 0; i < 3000; ++i) many += u"ñ€";  // far beyond any internal chunk
  EXPECT_EQ(toUtf8(many).size(), 3000u * 5);
  EXPECT_EQ(fromUtf8(toUtf8(many)), many);
  EXPECT_EQ(fromAnsi(toAnsi(many)), many);
}

// Arbitrary bytes give valid UTF-8 that reads back to the same wide text.
TEST(Utf8Text, ArbitraryBytesNeverBreakTheConversion) {
  std::mt19937 random(1252);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes(random() % 65, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    const std::u16string wide = fromUtf8(bytes);
    EXPECT_LE(wide.size(), bytes.size());
    EXPECT_EQ(fromUtf8(toUtf8(wide)), wide) << "round " << round;
  }
}

// Files for other programs get UTF-8 whichever encoding the host typed a text in: valid UTF-8 stays
// byte for byte, anything else (one stray byte is enough) is read as Windows-1252.
TEST(HostText, BecomesUtf8FromEitherEncoding) {
  // The unit as the host stores it, already UTF-8, mixed (so all Windows-1252), an overlong form, an
  // encoded surrogate, past U+10FFFF, cut short at the end.
  const std::pair<const char*, const char*> rows[] = {
      {"", ""}, {"plain <ASCII> & 'quotes'", "plain <ASCII> & 'quotes'"}, {"\xBA" "C", "\xC2\xBA" "C"},
      {"\xC2\xBA" "C", "\xC2\xBA" "C"}, {"N\xC3\xBAmero \xF0\x9F\x98\x80", "N\xC3\xBAmero \xF0\x9F\x98\x80"},
      {"A\xF1o \x80", "A\xC3\xB1o \xE2\x82\xAC"}, {"\xC3\xB1 y \xF1", "\xC3\x83\xC2\xB1 y \xC3\xB1"},
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"}, {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC"}, {"ab\xE2\x82", "ab\xC3\xA2\xE2\x80\x9A"},
  };
  for (const auto& [text, utf8] : rows) EXPECT_EQ(hostTextToUtf8(text), utf8) << text;
}

// In UTF-8 "ó" ends at byte 11, "€" at byte 18 and the emoji at byte 24: a cut never splits one.
TEST(BoundedUtf8, CutsNeverSplitACharacterNorPassTheField) {
  const std::u16string text = u"Descripción ab€ a\U0001F600";
  for (const auto& [maxBytes, kept] : {std::pair<std::size_t, std::size_t>{0, 0}, {10, 9}, {11, 11}, {17, 15},
                                       {18, 18}, {23, 20}, {24, 24}, {100, 24}})
    EXPECT_EQ(toUtf8Bounded(text, maxBytes), toUtf8(text).substr(0, kept)) << maxBytes;
  char field[13] = "############";
  encodeUtf8(field, 11, u"Descripción");  // 12 bytes of text into 10 and a terminator
  EXPECT_STREQ(field, "Descripci");
  EXPECT_EQ(field[10], '#');  // nothing past the given size
  char record[512];
  encodeUtf8(record, std::u16string(600, u'ñ'));
  EXPECT_EQ(record, toUtf8(std::u16string(255, u'ñ')));  // 510 bytes: no half "ñ"
  char untouched[4] = "abc";
  encodeUtf8(untouched, 0, u"x");
  encodeUtf8(nullptr, 8, u"x");
  EXPECT_STREQ(untouched, "abc");
}
