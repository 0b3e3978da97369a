// Conversions between the records' narrow texts (UTF-8 or Windows-1252) and the controls' wide
// text, on Spanish texts, broken input and cuts into fixed fields.
#include <gtest/gtest.h>

#include "editors/common/text_codec.h"

using namespace orvane;

// Windows-1252: the undefined bytes read as the C1 controls of their value; of those controls only
// U+0080 has no byte, since 0x80 is "€". What has no byte becomes one "?", a surrogate pair or a
// lone half too. UTF-8: each invalid byte becomes one replacement: a stray byte, Windows-1252 read
// as UTF-8, stray continuation bytes, an overlong "/", a sequence cut short (at the end, or followed
// by valid text). Lone surrogates, in any order or at the end, are replaced. A long text passes
// the converter's internal chunks, which all four conversions share.
TEST(TextCodec, ConvertsBothWaysAndReplacesWhatHasNoCode) {
  // Whether the bytes are UTF-8, the bytes, the wide text, and which ways the row converts.
  enum Ways { kBoth, kToWide, kToBytes };
  const std::tuple<bool, std::string, std::u16string, Ways> rows[] = {
      {false, "Descripci\xF3n \xBA" "C A\xD1O a\xF1o \x80 \xBF" "S?", u"Descripción ºC AÑO año € ¿S?", kBoth},
      {false, "", u"", kBoth}, {false, std::string("a\0b", 3), std::u16string(u"a\0b", 3), kBoth},
      {false, "a\x81" "b\x8D\x8F\x90\x9D", u"a\u0081b\u008D\u008F\u0090\u009D", kBoth},
      {false, "? ?\xF3" "d? a?b a?b a?", u"\u0080 Łódź a\U0001F600b a\xD800" "b a\xDC00", kToBytes},
      {false, "?", u"\xD800", kToBytes}, {false, std::string(3000, '\xF1'), std::u16string(3000, u'ñ'), kBoth},
      {true, "A\xC3\xB1o \xC2\xBA" "C \xE2\x82\xAC \xF0\x9F\x98\x80", u"Año ºC € \U0001F600", kBoth},
      {true, "a\xFF" "b A\xF1o \x80\xBF \xC0\xAF", u"a\uFFFDb A\uFFFDo \uFFFD\uFFFD \uFFFD\uFFFD", kToWide},
      {true, "ab\xE2\x82", u"ab\uFFFD\uFFFD", kToWide}, {true, "\xE2\x82" "c\xC3\xB1", u"\uFFFD\uFFFDcñ", kToWide},
      {true, "a\xEF\xBF\xBD" "b \xEF\xBF\xBD\xEF\xBF\xBD", u"a\xD800" "b \xDC00\xD800", kToBytes},
      {true, "\xEF\xBF\xBD", u"\xD83D", kToBytes},
  };
  for (const auto& [utf8, bytes, wide, ways] : rows) {
    SCOPED_TRACE(bytes.substr(0, 40));
    EXPECT_EQ(ways == kToBytes ? wide : utf8 ? fromUtf8(bytes) : fromAnsi(bytes), wide) << "to wide";
    EXPECT_EQ(ways == kToWide ? bytes : utf8 ? toUtf8(wide) : toAnsi(wide), bytes) << "to bytes";
  }
  EXPECT_EQ(u16("Validación") + u16(nullptr), u"Validación");
}

// Files for other programs get UTF-8 whichever encoding the host typed a text in: valid UTF-8 stays
// byte for byte, anything else (one stray byte is enough) is read as Windows-1252: the unit as the
// host stores it, mixed text, an overlong form, an encoded surrogate, past U+10FFFF, cut short.
TEST(HostText, BecomesUtf8FromEitherEncoding) {
  const std::pair<const char*, const char*> rows[] = {
      {"", ""}, {"\xBA" "C", "\xC2\xBA" "C"}, {"\xC2\xBA" "C", "\xC2\xBA" "C"},
      {"N\xC3\xBAmero \xF0\x9F\x98\x80", "N\xC3\xBAmero \xF0\x9F\x98\x80"}, {"\xC0\xAF", "\xC3\x80\xC2\xAF"},
      {"A\xF1o \x80", "A\xC3\xB1o \xE2\x82\xAC"}, {"\xC3\xB1 y \xF1", "\xC3\x83\xC2\xB1 y \xC3\xB1"},
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"}, {"ab\xE2\x82", "ab\xC3\xA2\xE2\x80\x9A"},
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC"},
  };
  for (const auto& [text, utf8] : rows) EXPECT_EQ(hostTextToUtf8(text), utf8) << text;
}

// In UTF-8 "ó" ends at byte 11, "€" at byte 18 and the emoji at byte 24: a cut never splits one.
TEST(BoundedUtf8, CutsNeverSplitACharacterNorPassTheField) {
  const std::u16string text = u"Descripción ab€ a\U0001F600";
  for (const auto& [maxBytes, kept] : {std::pair{0, 0}, {10, 9}, {11, 11}, {17, 15}, {23, 20}, {24, 24}, {99, 24}})
    EXPECT_EQ(toUtf8Bounded(text, maxBytes), toUtf8(text).substr(0, kept)) << maxBytes;
  char field[13] = "############";
  encodeUtf8(field, 11, u"Descripción");  // 12 bytes of text into 10 and a terminator, nothing past the given size
  encodeUtf8(field, 0, u"x");              // no room: nothing written
  encodeUtf8(nullptr, 8, u"x");
  EXPECT_EQ(std::string(field, 12), std::string("Descripci\0##", 12));
  char record[512];
  encodeUtf8(record, std::u16string(600, u'ñ'));
  EXPECT_EQ(record, toUtf8(std::u16string(255, u'ñ')));  // 510 bytes: no half "ñ"
}
