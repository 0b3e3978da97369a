// The host variable catalogue read from real files: the line format with every consequence the
// host's catalogues depend on, and the classes' copying and indexed access.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "common/line_ends.h"
#include "editors/assign/catalogue.h"
#include "support/temp_dir.h"

using orvane::test::LineEnd;
using orvane::test::TempDir;
using orvane::test::withLineEnds;

namespace {

// A group as "Name:var1|var2|..." so a whole catalogue compares in one expectation.
std::vector<std::string> describe(const CConjuntoVariableZep& catalogue) {
  std::vector<std::string> out;
  for (const CZepGrupo& group : catalogue.groups) {
    std::string line = std::string(group.name) + ":";
    for (std::size_t i = 0; i < group.variables.size(); ++i)
      line += (i > 0 ? "|" : "") + std::string(group.variables[i].name);
    out.push_back(line);
  }
  return out;
}

using Groups = std::vector<std::string>;

class CatalogueFile : public ::testing::TestWithParam<LineEnd> {
 protected:
  // Reads a file holding `text` (with "\n" for the parameter's line end) into `catalogue_`.
  int read(std::string_view text, const char* name = "variables.txt") {
    const std::string path = dir_.file(name);
    orvane::test::writeBytes(path, withLineEnds(text, GetParam()));
    std::FILE* stream = std::fopen(path.c_str(), "r");
    EXPECT_NE(stream, nullptr);
    if (stream == nullptr) return -1;
    const int result = catalogue_.leeFichero(stream);
    std::fclose(stream);
    return result;
  }

  TempDir dir_;
  CConjuntoVariableZep catalogue_;
};

}  // namespace

TEST_P(CatalogueFile, LastVariableOfALineKeepsTheLineFeed) {
  EXPECT_EQ(read("Eje;PK,Cota,Pendiente\nMuro;Altura\n"), 1);
  EXPECT_EQ(describe(catalogue_), (Groups{"Eje:PK|Cota|Pendiente\n", "Muro:Altura\n"}));
}

TEST_P(CatalogueFile, LastLineWithoutLineFeedKeepsItsLastVariableBare) {
  read("Eje;PK,Cota\nMuro;Altura");
  EXPECT_EQ(describe(catalogue_), (Groups{"Eje:PK|Cota\n", "Muro:Altura"}));
}

TEST_P(CatalogueFile, EmptyFilesAndEmptyLinesGiveNothing) {
  EXPECT_EQ(read(""), 0);
  EXPECT_EQ(read("\n\n\n"), 0);
  EXPECT_TRUE(catalogue_.groups.empty());
}

TEST_P(CatalogueFile, EmptyVariableNamesAreSkipped) {
  read("A;x,,y\nB;,z,\n");
  EXPECT_EQ(describe(catalogue_), (Groups{"A:x|y\n", "B:z|\n"}));  // the trailing comma leaves "\n"
}

TEST_P(CatalogueFile, LeadingSemicolonsAreSkippedAndLaterOnesBelongToNames) {
  read(";;A;x\nA;x;y,z\n");
  EXPECT_EQ(describe(catalogue_), (Groups{"A:x\n", "A:x;y|z\n"}));
}

TEST_P(CatalogueFile, LinesWithoutVariablesAreDropped) {
  read("Suelto\n;;;\nA;\nB;x\nC;");
  // "A;" plus its line feed has one variable, the line feed; "C;" at the end has none.
  EXPECT_EQ(describe(catalogue_), (Groups{"A:\n", "B:x\n"}));
}

TEST_P(CatalogueFile, BlanksAndBytesAbove127BelongToTheNames) {
  read(" Habitaci\xF3n ; Superficie \xFAtil , Temperatura \xBA" "C\n");
  EXPECT_EQ(describe(catalogue_), (Groups{" Habitaci\xF3n : Superficie \xFAtil | Temperatura \xBA" "C\n"}));
}

TEST_P(CatalogueFile, DuplicatesAreKeptInFileOrder) {
  read("Eje;PK,PK\nMuro;Alto\nEje;Radio\n");
  EXPECT_EQ(describe(catalogue_), (Groups{"Eje:PK|PK\n", "Muro:Alto\n", "Eje:Radio\n"}));
}

TEST_P(CatalogueFile, LongLineIsReadAsTwoLines) {
  // 600 characters: 511 of them make group A, the remaining 89 (and the line feed) group B.
  const std::string first = "A;" + std::string(509, 'x');
  const std::string second = "B;" + std::string(85, 'y') + ",z";
  ASSERT_EQ(first.size() + second.size(), 600u);
  read(first + second + "\n");
  EXPECT_EQ(describe(catalogue_), (Groups{"A:" + std::string(509, 'x'), "B:" + std::string(85, 'y') + "|z\n"}));
}

TEST_P(CatalogueFile, TwoStreamsAppend) {
  EXPECT_EQ(read("Eje;PK\n", "uno.txt"), 1);
  EXPECT_EQ(read("Muro;Alto\n", "dos.txt"), 1);
  EXPECT_EQ(read("", "vacio.txt"), 1);  // the groups read before still count
  EXPECT_EQ(describe(catalogue_), (Groups{"Eje:PK\n", "Muro:Alto\n"}));
}

INSTANTIATE_TEST_SUITE_P(LineEnds, CatalogueFile, ::testing::Values(LineEnd::LF, LineEnd::CRLF),
                         ::testing::PrintToStringParamName());

TEST(CatalogueStream, IsLeftOpenAndAStreamAtItsEndAddsNothing) {
  TempDir dir;
  const std::string path = dir.file("variables.txt");
  orvane::test::writeBytes(path, "Eje;PK\n");
  std::FILE* stream = std::fopen(path.c_str(), "r");
  ASSERT_NE(stream, nullptr);
  CConjuntoVariableZep catalogue;
  catalogue.leeFichero(stream);
  EXPECT_TRUE(std::feof(stream));
  EXPECT_EQ(catalogue.leeFichero(stream), 1);  // already at its end: nothing more
  EXPECT_EQ(catalogue.getNumGrupos(), 1);
  // Still open: it can be rewound and read again.
  ASSERT_EQ(std::fseek(stream, 0, SEEK_SET), 0);
  catalogue.leeFichero(stream);
  EXPECT_EQ(catalogue.getNumGrupos(), 2);
  EXPECT_EQ(std::fclose(stream), 0);
}

TEST(CatalogueStream, NullAndFailingStreamsEndTheRead) {
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(catalogue.leeFichero(nullptr), 0);
  TempDir dir;
  std::FILE* folder = std::fopen(dir.path().c_str(), "r");
  if (folder == nullptr) GTEST_SKIP() << "this system does not open folders as files";
  // A reader that waited for the end of this stream would never return: let it kill the test
  // (SIGALRM) rather than hang the run.
  ::alarm(20);
  EXPECT_EQ(catalogue.leeFichero(folder), 0);
  ::alarm(0);
  std::fclose(folder);
}

TEST(CatalogueAccess, IndexesAreCheckedAgainstTheLists) {
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(catalogue.getNumGrupos(), 0);
  EXPECT_EQ(catalogue.getGrupo(0), nullptr);
  catalogue.groups.emplace_back("Eje");
  catalogue.groups[0].variables.emplace_back("PK");
  catalogue.groups[0].variables.emplace_back("Cota");
  ASSERT_NE(catalogue.getGrupo(0), nullptr);
  EXPECT_STREQ(catalogue.getGrupo(0)->name, "Eje");
  EXPECT_EQ(catalogue.getGrupo(1), nullptr);
  EXPECT_EQ(catalogue.getGrupo(-1), nullptr);
  const CZepGrupo& group = *catalogue.getGrupo(0);
  EXPECT_EQ(group.getNumVariables(), 2);
  ASSERT_NE(group.getVariable(1), nullptr);
  EXPECT_STREQ(group.getVariable(1)->name, "Cota");
  EXPECT_EQ(group.getVariable(2), nullptr);
  EXPECT_EQ(group.getVariable(-1), nullptr);
}

TEST(CatalogueClasses, NamesAreCutToTheirFields) {
  const CZepVariable variable(std::string(600, 'v'));
  EXPECT_EQ(std::string(variable.name), std::string(511, 'v'));
  const CZepGrupo group(std::string(512, 'g'));
  EXPECT_EQ(std::string(group.name), std::string(511, 'g'));
}

TEST(CatalogueClasses, GroupAssignmentReplacesNameAndVariables) {
  CZepGrupo source("Muro");
  source.variables.emplace_back("Alto");
  CZepGrupo target("Eje");
  target.variables.emplace_back("PK");
  target.variables.emplace_back("Cota");
  target = source;
  EXPECT_STREQ(target.name, "Muro");
  ASSERT_EQ(target.variables.size(), 1u);
  EXPECT_STREQ(target.variables[0].name, "Alto");

  target.variables[0].name[0] = 'X';  // a deep copy: the source is not touched
  EXPECT_STREQ(source.variables[0].name, "Alto");

  CZepGrupo& same = target;
  target = same;  // assigning a group to itself keeps its variables
  EXPECT_EQ(target.variables.size(), 1u);
}
