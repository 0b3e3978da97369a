// What every command shares: help, usage errors and exit statuses.
#include <gtest/gtest.h>

#include "tools/tool_fixture.h"

using namespace orvane::test;

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

}  // namespace
