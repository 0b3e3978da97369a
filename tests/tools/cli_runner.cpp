#include "tools/cli_runner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <stdexcept>

#include "support/temp_dir.h"

extern char** environ;

namespace orvane::test {

namespace {

int exitStatus(int waitStatus) {
  if (WIFEXITED(waitStatus)) return WEXITSTATUS(waitStatus);
  if (WIFSIGNALED(waitStatus)) return 128 + WTERMSIG(waitStatus);
  return -1;
}

}  // namespace

CliResult runCli(const std::vector<std::string>& args) {
  // Output goes to files rather than pipes, so a long listing cannot block the tool.
  const TempDir capture;
  const std::string outPath = capture.file("out");
  const std::string errPath = capture.file("err");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);

  std::vector<std::string> argv{ORVANE_CLI};
  argv.insert(argv.end(), args.begin(), args.end());
  std::vector<char*> pointers;
  for (std::string& arg : argv) pointers.push_back(arg.data());
  pointers.push_back(nullptr);

  pid_t pid = 0;
  const int spawned = posix_spawn(&pid, ORVANE_CLI, &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) throw std::runtime_error("cannot run " + std::string(ORVANE_CLI));
  int waitStatus = 0;
  waitpid(pid, &waitStatus, 0);
  return {exitStatus(waitStatus), readBytes(outPath), readBytes(errPath)};
}

}  // namespace orvane::test
