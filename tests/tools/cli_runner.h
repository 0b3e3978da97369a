// Runs the orvane binary as a user does and keeps what it printed.
#ifndef ORVANE_TESTS_TOOLS_CLI_RUNNER_H
#define ORVANE_TESTS_TOOLS_CLI_RUNNER_H

#include <string>
#include <vector>

namespace orvane::test {

struct CliResult {
  int status = -1;  // the exit status; 128 + the signal when the tool was killed by one
  std::string out;
  std::string err;
};

// Runs `orvane args...` in the current folder, with stdin closed.
CliResult runCli(const std::vector<std::string>& args);

}  // namespace orvane::test

#endif
