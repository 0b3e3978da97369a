// What the commands throw for a problem the user can fix (a missing file, a bad CSV line): main
// prints the message on stderr and exits with kExitError. Nothing else reaches the user as a crash.
#ifndef ORVANE_TOOLS_TOOL_ERROR_H
#define ORVANE_TOOLS_TOOL_ERROR_H

#include <stdexcept>
#include <string>

namespace orvane::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFindings = 1;  // `check` found something
inline constexpr int kExitError = 2;     // bad usage, unreadable input, a failed write

class ToolError : public std::runtime_error {
 public:
  explicit ToolError(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace orvane::cli

#endif
