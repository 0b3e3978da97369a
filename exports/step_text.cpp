#include "exports/step_text.h"

#include <cstdint>

#include "model/text_codec.h"

namespace orvane::exports {

namespace {

constexpr char kHex[] = "0123456789ABCDEF";

void appendHex(std::string& out, std::uint32_t value, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) out.push_back(kHex[(value >> shift) & 0xF]);
}

bool isHigh(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLow(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// `wide` in the basic alphabet of STEP files, with runs of \X2\ or \X4\ digits for what lies outside.
std::string escaped(std::u16string_view wide, bool doubleApostrophes) {
  std::string out;
  std::string_view run;  // "\X2\" or "\X4\" while a run of escaped characters is open
  auto openRun = [&](std::string_view kind) {
    if (run == kind) return;
    if (!run.empty()) out += "\\X0\\";
    out += kind;
    run = kind;
  };
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const char16_t unit = wide[i];
    if (unit >= 0x20 && unit <= 0x7E) {
      if (!run.empty()) out += "\\X0\\";
      run = {};
      out.push_back(static_cast<char>(unit));
      if (unit == '\\' || (unit == '\'' && doubleApostrophes)) out.push_back(static_cast<char>(unit));
    } else if (isHigh(unit) && i + 1 < wide.size() && isLow(wide[i + 1])) {
      openRun("\\X4\\");
      appendHex(out, 0x10000u + ((static_cast<std::uint32_t>(unit) - 0xD800u) << 10) + (wide[i + 1] - 0xDC00u), 8);
      ++i;
    } else {
      openRun("\\X2\\");
      appendHex(out, unit, 4);
    }
  }
  if (!run.empty()) out += "\\X0\\";
  return out;
}

constexpr char kIfcBase64[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";

}  // namespace

std::string stepString(std::string_view utf8) {
  return "'" + escaped(fromUtf8(utf8), true) + "'";
}

std::string stepComment(std::string_view utf8) {
  std::string text = escaped(fromUtf8(utf8), false);
  for (std::size_t at = text.find("*/"); at != std::string::npos; at = text.find("*/", at)) text.replace(at, 2, "* /");
  return "/* " + text + " */";
}

std::string globalIdOf(std::string_view key) {
  __extension__ typedef unsigned __int128 Hash;
  const Hash prime = (static_cast<Hash>(1) << 88) + 0x13B;
  Hash hash = (static_cast<Hash>(0x6C62272E07BB0142ull) << 64) | 0x62B821756295C58Dull;
  for (const char c : key) {
    hash ^= static_cast<unsigned char>(c);
    hash *= prime;
  }
  // Bytes 0..15 from the top: version 8 in byte 6's high nibble, variant 10 in byte 8's top bits.
  unsigned char bytes[16];
  for (int i = 15; i >= 0; --i, hash >>= 8) bytes[i] = static_cast<unsigned char>(hash & 0xFF);
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x80);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
  // IFC's compression: 2 bits in the first character, then 6 bits in each of the other 21.
  std::string id(22, '0');
  id[0] = kIfcBase64[bytes[0] >> 6];
  unsigned bits = bytes[0] & 0x3F;  // the 6 bits still to write
  int pending = 6;
  std::size_t next = 1;
  for (int i = 1; i < 16; ++i) {
    bits = (bits << 8) | bytes[i];
    pending += 8;
    while (pending >= 6) {
      pending -= 6;
      id[next++] = kIfcBase64[(bits >> pending) & 0x3F];
    }
    bits &= (1u << pending) - 1;
  }
  return id;
}

}  // namespace orvane::exports
