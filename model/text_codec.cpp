#include "model/text_codec.h"

#include <iconv.h>

#include <cerrno>

#include "model/text.h"

namespace orvane {
namespace {

// glibc knows the code page by both names; which one a given installation lists varies.
constexpr const char* kAnsiNames[] = {"WINDOWS-1252", "CP1252"};
constexpr const char* kWide = "UTF-16LE";
constexpr const char* kUtf8 = "UTF-8";

// One conversion descriptor for one call; closed on every way out.
class Converter {
 public:
  explicit Converter(iconv_t descriptor) : descriptor_(descriptor) {}
  Converter(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (isOpen()) iconv_close(descriptor_);
  }
  bool isOpen() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }
  iconv_t get() const { return descriptor_; }

 private:
  iconv_t descriptor_;
};

iconv_t openAnsi(bool toAnsi) {
  iconv_t descriptor = reinterpret_cast<iconv_t>(-1);
  for (const char* name : kAnsiNames) {
    descriptor = toAnsi ? iconv_open(name, kWide) : iconv_open(kWide, name);
    if (descriptor != reinterpret_cast<iconv_t>(-1)) break;
  }
  return descriptor;
}

// Runs `converter` over `input`. Where iconv stops at something it can't convert, `replace` appends
// its stand-in to the output and says how many input bytes that was (at least 1).
template <class Replace>
std::string convert(const Converter& converter, std::string_view input, Replace replace) {
  std::string output;
  output.reserve(input.size() * 2);
  char* in = const_cast<char*>(input.data());  // iconv's signature; it does not write the input
  std::size_t inLeft = input.size();
  char chunk[1024];
  while (inLeft > 0) {
    char* out = chunk;
    std::size_t outLeft = sizeof chunk;
    const std::size_t result = iconv(converter.get(), &in, &inLeft, &out, &outLeft);
    const int error = errno;
    output.append(chunk, static_cast<std::size_t>(out - chunk));
    if (result != static_cast<std::size_t>(-1) || error == E2BIG) continue;
    std::size_t skip = replace(std::string_view(in, inLeft), output);
    if (skip < 1) skip = 1;
    if (skip > inLeft) skip = inLeft;
    in += skip;
    inLeft -= skip;
  }
  return output;
}

std::string wideBytes(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

std::u16string wideFromBytes(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
    text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                         (static_cast<unsigned char>(bytes[i + 1]) << 8)));
  return text;
}

char16_t unitAt(std::string_view wide, std::size_t index) {
  return static_cast<char16_t>(static_cast<unsigned char>(wide[2 * index]) |
                               (static_cast<unsigned char>(wide[2 * index + 1]) << 8));
}

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// The bytes Windows-1252 leaves undefined; Windows maps each to the code point of its value.
bool isUndefinedAnsi(unsigned v) { return v == 0x81 || v == 0x8D || v == 0x8F || v == 0x90 || v == 0x9D; }

void appendWide(std::string& wide, char16_t unit) {
  wide.push_back(static_cast<char>(unit & 0xFF));
  wide.push_back(static_cast<char>(unit >> 8));
}

// Without the converter (an installation missing glibc's code page modules) ASCII still passes and
// everything else becomes the stand-in, rather than the text going missing.
std::u16string wideOfAscii(std::string_view text) {
  std::u16string wide;
  wide.reserve(text.size());
  for (const char c : text)
    wide.push_back(static_cast<unsigned char>(c) < 0x80 ? static_cast<char16_t>(c) : u'\uFFFD');
  return wide;
}

std::string narrowOfAscii(std::u16string_view text, char standIn) {
  std::string narrow;
  narrow.reserve(text.size());
  for (const char16_t unit : text) narrow.push_back(unit < 0x80 ? static_cast<char>(unit) : standIn);
  return narrow;
}

}  // namespace

std::u16string fromUtf8(std::string_view text) {
  const Converter converter(kWide, kUtf8);
  if (!converter.isOpen()) return wideOfAscii(text);
  return wideFromBytes(convert(converter, text, [](std::string_view, std::string& out) {
    appendWide(out, u'\uFFFD');
    return std::size_t{1};
  }));
}

std::string toUtf8(std::u16string_view text) {
  const Converter converter(kUtf8, kWide);
  if (!converter.isOpen()) return narrowOfAscii(text, '?');
  return convert(converter, wideBytes(text), [](std::string_view, std::string& out) {
    out += "\xEF\xBF\xBD";  // U+FFFD
    return std::size_t{2};
  });
}

std::u16string fromAnsi(std::string_view text) {
  const Converter converter(openAnsi(false));
  if (!converter.isOpen()) return wideOfAscii(text);
  return wideFromBytes(convert(converter, text, [](std::string_view rest, std::string& out) {
    const unsigned byte = static_cast<unsigned char>(rest[0]);
    appendWide(out, isUndefinedAnsi(byte) ? static_cast<char16_t>(byte) : u'\uFFFD');
    return std::size_t{1};
  }));
}

std::string toAnsi(std::u16string_view text) {
  const Converter converter(openAnsi(true));
  if (!converter.isOpen()) return narrowOfAscii(text, '?');
  return convert(converter, wideBytes(text), [](std::string_view rest, std::string& out) {
    const char16_t unit = unitAt(rest, 0);
    if (isUndefinedAnsi(unit)) {
      out.push_back(static_cast<char>(unit));
      return std::size_t{2};
    }
    out.push_back('?');
    const bool pair = isHighSurrogate(unit) && rest.size() >= 4 && isLowSurrogate(unitAt(rest, 1));
    return std::size_t{pair ? 4u : 2u};
  });
}

std::string toUtf8Bounded(std::u16string_view text, std::size_t maxBytes) {
  std::string utf8 = toUtf8(text);
  utf8.resize(cutLength(utf8, maxBytes));
  return utf8;
}

void encodeUtf8(char* field, std::size_t fieldSize, std::u16string_view text) {
  if (field == nullptr || fieldSize == 0) return;
  copyText(field, fieldSize, toUtf8(text));
}

bool isValidUtf8(std::string_view text) noexcept {
  std::size_t i = 0;
  while (i < text.size()) {
    const unsigned lead = static_cast<unsigned char>(text[i]);
    std::size_t length = 0;
    unsigned low = 0x80, high = 0xBF;  // the range of the first continuation byte
    if (lead < 0x80) length = 1;
    else if (lead >= 0xC2 && lead <= 0xDF) length = 2;
    else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3;
      if (lead == 0xE0) low = 0xA0;       // overlong
      else if (lead == 0xED) high = 0x9F;  // surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4;
      if (lead == 0xF0) low = 0x90;       // overlong
      else if (lead == 0xF4) high = 0x8F;  // past U+10FFFF
    } else {
      return false;
    }
    if (text.size() - i < length) return false;
    for (std::size_t k = 1; k < length; ++k) {
      const unsigned byte = static_cast<unsigned char>(text[i + k]);
      if (byte < (k == 1 ? low : 0x80) || byte > (k == 1 ? high : 0xBF)) return false;
    }
    i += length;
  }
  return true;
}

std::string hostTextToUtf8(std::string_view text) {
  if (isValidUtf8(text)) return std::string(text);
  return toUtf8(fromAnsi(text));
}

std::u16string u16(const char* utf8Literal) {
  return utf8Literal != nullptr ? fromUtf8(utf8Literal) : std::u16string();
}

}  // namespace orvane
