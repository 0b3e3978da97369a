// orvane edit | assign, in a session without a display (as CI runs): the commands reach the entry
// points, which say on stderr that they cannot show the editors and change nothing; nothing was
// edited, so the command fails.
#include <gtest/gtest.h>
#include <stdlib.h>

#include "support/documents.h"
#include "tools/tool_fixture.h"

using namespace orvane::test;

namespace {

class EditorCommands : public ToolTest {
 protected:
  void SetUp() override {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
    sets = write("p.xml", psetFile("", propertySet("Muros")));
    quantities = write("q.xml", qsetFile("", "", ""));
  }
  static void expectNoDisplay(const CliResult& result) {
    EXPECT_EQ(result.status, 2) << result.err;
    EXPECT_NE(result.err.find("the editors need a display"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("orvane: no editor could be shown; nothing was edited"), std::string::npos) << result.err;
  }
  std::string sets, quantities;
};

TEST_F(EditorCommands, EditAndAssignReachTheEntryPointsAndChangeNothingWithoutADisplay) {
  const std::string before = readBytes(sets);
  expectNoDisplay(run({"edit", "psets", sets, "--messages", ORVANE_SAMPLES_DIR "/mensajes.txt"}));
  expectNoDisplay(run({"edit", "qsets", quantities}));
  expectNoDisplay(run({"assign", "psets", sets, path("obj.xml"), "--catalog", ORVANE_SAMPLES_DIR "/variables.txt"}));
  expectNoDisplay(run({"assign", "qsets", quantities, path("objq.xml"), "--kind", "Eje", "--values", "12.5,3"}));
  EXPECT_EQ(readBytes(sets), before);
  EXPECT_FALSE(exists("p.xml.bak"));
  EXPECT_FALSE(exists("obj.xml"));
  EXPECT_FALSE(exists("objq.xml"));
}

TEST_F(EditorCommands, UnreadableDefinitionsAndBadArgumentsAreErrors) {
  write("roto.xml", "<PropertySetsBIM>");
  expectError(run({"assign", "psets", path("roto.xml"), path("obj.xml")}), "not a readable property-set document");
  expectError(run({"assign", "psets", path("none.xml"), path("obj.xml")}), "none.xml");
  expectError(run({"assign", "qsets", quantities, path("obj.xml")}), "--kind is required");
  expectError(run({"assign", "qsets", quantities, path("obj.xml"), "--kind", "Eje", "--values", "1,x"}), "--values");
  expectError(run({"edit", "psets", sets, "--catalog", path("none.txt")}), "none.txt");
}

TEST_F(EditorCommands, HelpNamesTheEntryPoints) {
  for (const std::vector<std::string>& command :
       {std::vector<std::string>{"edit", "--help"}, {"assign", "--help"}}) {
    const CliResult result = run(command);
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find("psets"), std::string::npos);
    EXPECT_NE(result.out.find("qsets"), std::string::npos);
  }
  EXPECT_NE(run({"assign", "qsets", "--help"}).out.find("asignarCuantificadores"), std::string::npos);
  EXPECT_NE(run({"--help"}).out.find("edit"), std::string::npos);
}

}  // namespace
