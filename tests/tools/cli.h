// The orvane binary run as a user runs it, in a fresh folder holding the files a test names.
#ifndef ORVANE_TESTS_TOOLS_CLI_H
#define ORVANE_TESTS_TOOLS_CLI_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/temp_dir.h"

extern char** environ;

namespace orvane::test {

struct CliResult {
  int status = -1;  // the exit status; 128 + the signal when the tool was killed by one
  std::string out, err;
};

class CliTest : public ::testing::Test {
 protected:
  // Runs `orvane args...` in the folder, standard input from the file `in` there (/dev/null when
  // empty), standard output into the result or onto the descriptor `out`.
  CliResult run(const std::vector<std::string>& args, const std::string& in = "", int out = -1) const {
    // Output goes to files rather than pipes, so a long listing cannot block the tool.
    const TempDir capture;
    const std::string outPath = capture.file("out"), errPath = capture.file("err");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, dir.path().c_str());
    posix_spawn_file_actions_addopen(&actions, 0, in.empty() ? "/dev/null" : in.c_str(), O_RDONLY, 0);
    if (out >= 0) posix_spawn_file_actions_adddup2(&actions, out, 1);
    else posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    std::vector<std::string> argv{ORVANE_CLI};
    argv.insert(argv.end(), args.begin(), args.end());
    std::vector<char*> pointers;
    for (std::string& arg : argv) pointers.push_back(arg.data());
    pointers.push_back(nullptr);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, ORVANE_CLI, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) throw std::runtime_error("cannot run " ORVANE_CLI);
    int status = 0;
    waitpid(pid, &status, 0);
    const int exit = WIFEXITED(status) ? WEXITSTATUS(status) : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : -1;
    return {exit, out >= 0 ? "" : readBytes(outPath), readBytes(errPath)};
  }
  std::string write(const std::string& name, const std::string& bytes) const { return dir.write(name, bytes); }
  std::string read(const std::string& name) const { return readBytes(dir.file(name)); }
  bool exists(const std::string& name) const { return std::filesystem::exists(dir.file(name)); }
  TempDir dir;
};

}  // namespace orvane::test

#endif
