// The host's text files come with Windows line ends, but a file copied through other tools may have
// lost them: every parser is tested with both.
#ifndef ORVANE_TESTS_COMMON_LINE_ENDS_H
#define ORVANE_TESTS_COMMON_LINE_ENDS_H

#include <ostream>
#include <string>
#include <string_view>

namespace orvane::test {

enum class LineEnd { LF, CRLF };

inline std::ostream& operator<<(std::ostream& out, LineEnd end) {
  return out << (end == LineEnd::LF ? "LF" : "CRLF");
}

// `text` written with "\n" line ends, as the file holds it with `end`.
inline std::string withLineEnds(std::string_view text, LineEnd end) {
  std::string bytes;
  for (const char c : text) {
    if (c == '\n' && end == LineEnd::CRLF) bytes += '\r';
    bytes += c;
  }
  return bytes;
}

}  // namespace orvane::test

#endif
