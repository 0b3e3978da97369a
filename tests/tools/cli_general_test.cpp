// What every command shares: help, usage errors and exit statuses.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/documents.h"
#include "tools/tool_fixture.h"

using namespace orvane::test;

extern char** environ;

namespace {

TEST(CommandLine, EveryCommandExplainsItselfWithHelp) {
  const std::vector<std::vector<std::string>> commands{
      {}, {"psets"}, {"psets", "list"}, {"psets", "merge"}, {"psets", "enums"}, {"qsets"},
      {"qsets", "list"}, {"qsets", "merge"}, {"import-psd"}, {"check"}, {"psets", "export"}, {"psets", "import"},
      {"qsets", "export"}, {"qsets", "import"}};
  for (std::vector<std::string> command : commands) {
    std::string usage = "Usage: orvane";
    for (const std::string& word : command) usage += " " + word;
    command.push_back("--help");
    const CliResult result = runCli(command);
    EXPECT_EQ(result.status, 0) << usage;
    EXPECT_NE(result.out.find(usage), std::string::npos) << result.out;
    EXPECT_EQ(result.err, "") << usage;
  }
}

TEST(CommandLine, MergeHelpDocumentsTheRecordColumns) {
  const CliResult properties = runCli({"psets", "merge", "--help"});
  EXPECT_NE(properties.out.find("set,property,type,value,unit,enum"), std::string::npos);
  EXPECT_NE(properties.out.find("header"), std::string::npos);
  EXPECT_NE(properties.out.find("RFC 4180"), std::string::npos);
  const CliResult quantities = runCli({"qsets", "merge", "--help"});
  EXPECT_NE(quantities.out.find("set,quantity,kind,value"), std::string::npos);
  EXPECT_NE(quantities.out.find("RFC 4180"), std::string::npos);
}

TEST(CommandLine, UsageErrorsExitWithTwoAndSayWhatIsWrong) {
  expectError(runCli({}), "a command is required; run with --help to see them");
  expectError(runCli({"psets"}), "a command is required");
  expectError(runCli({"frobnicate"}), "The following argument was not expected: frobnicate");
  expectError(runCli({"qsets", "lists"}), "The following argument was not expected: lists");
  expectError(runCli({"psets", "list"}), "FILE is required");
  expectError(runCli({"psets", "list", "a.xml", "--bogus"}), "--bogus");
  expectError(runCli({"psets", "list", "a.xml", "--format", "xml"}), "--format: xml not in {table,csv,json}");
  expectError(runCli({"qsets", "merge", "a.xml", "b.xml"}), "RECORDS is required");
  expectError(runCli({"import-psd", "folder"}), "--output is required");
}

TEST(CommandLine, AMistypedCommandGetsASuggestion) {
  const struct {
    std::vector<std::string> args;
    std::string suggestion;  // empty: none
  } cases[] = {
      {{"psets", "lsit"}, "Did you mean \"orvane psets list\"?"},
      {{"qsets", "mrege", "a.xml"}, "Did you mean \"orvane qsets merge\"?"},
      {{"import-pds", "folder"}, "Did you mean \"orvane import-psd\"?"},
      {{"frobnicate"}, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args.front());
    const CliResult result = runCli(c.args);
    EXPECT_EQ(result.status, 2);
    if (c.suggestion.empty()) EXPECT_EQ(result.err.find("Did you mean"), std::string::npos) << result.err;
    else EXPECT_NE(result.err.find(c.suggestion), std::string::npos) << result.err;
  }
}

TEST(CommandLine, VersionNamesTheTool) {
  const CliResult result = runCli({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "orvane " ORVANE_VERSION "\n");
}

TEST(CommandLine, UsageErrorsPointToHelp) {
  const CliResult result = runCli({"psets", "enums", "only-a-file.xml"});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("Run with --help"), std::string::npos);
}

// Every file the tool reads must be a regular file: a FIFO would block it, /dev/zero never ends.
TEST_F(ToolTest, InputsThatAreNoRegularFilesAreRefusedWithoutReading) {
  const std::string document = write("p.xml", psetFile("", propertySet("Muros")));
  const std::string fifo = path("pipe");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  for (const std::string& input : {fifo, std::string("/dev/zero")}) {
    SCOPED_TRACE(input);
    expectError(run({"psets", "list", input}), "document " + input + ": is not a regular file");
    expectError(run({"psets", "merge", document, path("part.xml"), input}), "records file " + input + ": is not a regular");
    expectError(run({"check", document, "--catalog", input}), "catalogue " + input + ": is not a regular file");
  }
  // Nor is anything but a regular file replaced by an output.
  const std::string records = write("r.csv", "Muros,Alto,Real,4\n");
  expectError(run({"psets", "merge", document, "/dev/null", records}), "/dev/null: is not a regular file");
}

// Runs `orvane args...` with standard output on `out` (a descriptor) and stderr into `errPath`;
// the exit status, or -1.
int runWithOutput(int out, const std::string& errPath, std::vector<std::string> args) {
  args.insert(args.begin(), ORVANE_CLI);
  std::vector<char*> argv;
  for (std::string& arg : args) argv.push_back(arg.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, out, 1);
  posix_spawn_file_actions_addopen(&actions, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  pid_t pid = 0;
  int status = 0;
  const bool ran = posix_spawn(&pid, ORVANE_CLI, &actions, nullptr, argv.data(), environ) == 0 &&
                   waitpid(pid, &status, 0) == pid && WIFEXITED(status);
  posix_spawn_file_actions_destroy(&actions);
  return ran ? WEXITSTATUS(status) : -1;
}

// A full disk or a pipe whose reader is gone, on standard output: the command fails with a message.
TEST_F(ToolTest, OutputThatCannotBeWrittenExitsWithTwo) {
  const std::string document = write("p.xml", psetFile("", propertySet("Muros")));
  const int full = ::open("/dev/full", O_WRONLY);
  int pipeEnds[2];
  ASSERT_GE(full, 0);
  ASSERT_EQ(::pipe(pipeEnds), 0);
  ::close(pipeEnds[0]);  // no reader: every write fails
  for (const int out : {full, pipeEnds[1]}) {
    EXPECT_EQ(runWithOutput(out, path("err"), {"psets", "list", document}), 2);
    EXPECT_EQ(readBytes(path("err")).rfind("orvane: cannot write the output", 0), 0u) << readBytes(path("err"));
  }
  ::close(full);
  ::close(pipeEnds[1]);
}

}  // namespace
