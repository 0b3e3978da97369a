// The orvane binary run as a user runs it, from a shell in a fresh folder holding the files a test names.
#ifndef ORVANE_TESTS_TOOLS_CLI_H
#define ORVANE_TESTS_TOOLS_CLI_H

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace orvane::test {

struct CliResult {
  int status = -1;  // the exit status; 128 + the signal when the tool was killed by one
  std::string out, err;
};

class CliTest : public ::testing::Test {
 protected:
  // Runs `orvane args...` in the folder (no argument holds a single quote), standard input from the file `in` there
  // (/dev/null when empty), standard output into the result or onto the descriptor `out`.
  CliResult run(const std::vector<std::string>& args, const std::string& in = "", int out = -1) const {
    // Output goes to files rather than pipes, so a long listing cannot block the tool.
    const TempDir capture;
    std::string line = "cd '" + dir.path().string() + "' && exec '" ORVANE_CLI "'";
    for (const std::string& arg : args) line += " '" + arg + "'";
    line += " <'" + (in.empty() ? "/dev/null" : in) + "' 2>'" + capture.file("err") + "' >" +
            (out >= 0 ? "&" + std::to_string(out) : "'" + capture.file("out") + "'");
    const int status = std::system(line.c_str());
    const int exit = WIFEXITED(status) ? WEXITSTATUS(status) : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : -1;
    return {exit, out >= 0 ? "" : readBytes(capture.file("out")), readBytes(capture.file("err"))};
  }
  std::string write(const std::string& name, const std::string& bytes) const { return dir.write(name, bytes); }
  std::string read(const std::string& name) const { return readBytes(dir.file(name)); }
  TempDir dir;
};

}  // namespace orvane::test

#endif
