// The pieces of an ISO 10303-21 (STEP) file that need care: strings and IFC GlobalIds.
#ifndef ORVANE_EXPORTS_STEP_TEXT_H
#define ORVANE_EXPORTS_STEP_TEXT_H

#include <string>
#include <string_view>

namespace orvane::exports {

// A UTF-8 text as a STEP string, apostrophes included: printable ASCII stays, an apostrophe and a
// backslash are doubled, every other character goes in \X2\...\X0\ runs of UTF-16 hex digits
// (\X4\...\X0\ with eight digits for a character beyond U+FFFF).
std::string stepString(std::string_view utf8);

// The same escaping for the text of a /* comment */, which may not hold "*/".
std::string stepComment(std::string_view utf8);

// A 22-character IFC GlobalId derived from `key` alone: its 128-bit FNV-1a hash, marked as a
// version 8 (custom) UUID, written in IFC's base-64 alphabet. The same key always gives the same
// GlobalId.
std::string globalIdOf(std::string_view key);

}  // namespace orvane::exports

#endif
