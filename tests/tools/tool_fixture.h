// A scratch folder and the orvane binary, for tests that use the tool on real files.
#ifndef ORVANE_TESTS_TOOLS_TOOL_FIXTURE_H
#define ORVANE_TESTS_TOOLS_TOOL_FIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/temp_dir.h"
#include "tools/cli_runner.h"

namespace orvane::test {

class ToolTest : public ::testing::Test {
 protected:
  // Writes `bytes` to `name` in the scratch folder and returns its path.
  std::string write(const std::string& name, const std::string& bytes) const {
    const std::string path = dir.file(name);
    writeBytes(path, bytes);
    return path;
  }

  std::string path(const std::string& name) const { return dir.file(name); }
  bool exists(const std::string& name) const { return std::filesystem::exists(dir.file(name)); }

  static CliResult run(const std::vector<std::string>& args) { return runCli(args); }

  TempDir dir;
};

inline std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) result.push_back(line);
  return result;
}

// A failure as the tool reports one: status 2, nothing on stdout, `message` on stderr.
inline void expectError(const CliResult& result, const std::string& message) {
  EXPECT_EQ(result.status, 2) << result.err;
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find(message), std::string::npos) << "stderr: " << result.err;
  EXPECT_EQ(result.err.rfind("orvane: ", 0), 0u) << result.err;
}

}  // namespace orvane::test

#endif
