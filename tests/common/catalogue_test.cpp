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

using Groups = std::vector<std::string>;

// A group as "Name:var1|var2|..." so a whole catalogue compares in one expectation.
Groups describe(const CConjuntoVariableZep& catalogue) {
  Groups out;
  for (const CZepGrupo& group : catalogue.groups) {
    std::string line = std::string(group.name) + ":";
    for (std::size_t i = 0; i < group.variables.size(); ++i)
      line += (i > 0 ? "|" : "") + std::string(group.variables[i].name);
    out.push_back(line);
  }
  return out;
}

class CatalogueFile : public ::testing::TestWithParam<LineEnd> {
 protected:
  // Reads a file holding `text` (with "\n" for the parameter's line end) into `catalogue`.
  int read(std::string_view text, const char* name = "variables.txt") {
    const std::string path = dir.file(name);
    orvane::test::writeBytes(path, withLineEnds(text, GetParam()));
    std::FILE* stream = std::fopen(path.c_str(), "r");
    EXPECT_NE(stream, nullptr);
    if (stream == nullptr) return -1;
    const int result = catalogue.leeFichero(stream);
    std::fclose(stream);
    return result;
  }

  TempDir dir;
  CConjuntoVariableZep catalogue;
};

struct Format {
  const char* rule;
  std::string text;
  Groups groups;
};

}  // namespace

TEST_P(CatalogueFile, LineFormat) {
  // 600 characters on one line: 511 of them make group A, the other 89 (and the line feed) group B.
  const std::string longFirst = "A;" + std::string(509, 'x'), longSecond = "B;" + std::string(85, 'y') + ",z";
  const Format formats[] = {
      {"the last variable of a line keeps the line feed", "Eje;PK,Cota,Pendiente\nMuro;Altura\n",
       {"Eje:PK|Cota|Pendiente\n", "Muro:Altura\n"}},
      {"a last line without line feed keeps its variable bare", "Eje;PK,Cota\nMuro;Altura",
       {"Eje:PK|Cota\n", "Muro:Altura"}},
      {"an empty file", "", {}},
      {"empty lines", "\n\n\n", {}},
      // the trailing comma leaves "\n" as a name
      {"empty variable names are skipped", "A;x,,y\nB;,z,\n", {"A:x|y\n", "B:z|\n"}},
      {"leading semicolons are skipped, later ones belong to names", ";;A;x\nA;x;y,z\n",
       {"A:x\n", "A:x;y|z\n"}},
      // "A;" and its line feed have one variable, the line feed; "C;" at the end has none.
      {"lines without variables are dropped", "Suelto\n;;;\nA;\nB;x\nC;", {"A:\n", "B:x\n"}},
      {"blanks and bytes above 127 belong to names",
       " Habitaci\xF3n ; Superficie \xFAtil , Temperatura \xBA" "C\n",
       {" Habitaci\xF3n : Superficie \xFAtil | Temperatura \xBA" "C\n"}},
      {"duplicates are kept in file order", "Eje;PK,PK\nMuro;Alto\nEje;Radio\n",
       {"Eje:PK|PK\n", "Muro:Alto\n", "Eje:Radio\n"}},
      {"a long line is read as two", longFirst + longSecond + "\n",
       {"A:" + std::string(509, 'x'), "B:" + std::string(85, 'y') + "|z\n"}},
  };
  for (const Format& format : formats) {
    SCOPED_TRACE(format.rule);
    catalogue.groups.clear();
    EXPECT_EQ(read(format.text), format.groups.empty() ? 0 : 1);
    EXPECT_EQ(describe(catalogue), format.groups);
  }
}

TEST_P(CatalogueFile, TwoStreamsAppend) {
  EXPECT_EQ(read("Eje;PK\n", "uno.txt"), 1);
  EXPECT_EQ(read("Muro;Alto\n", "dos.txt"), 1);
  EXPECT_EQ(read("", "vacio.txt"), 1);  // the groups read before still count
  EXPECT_EQ(describe(catalogue), (Groups{"Eje:PK\n", "Muro:Alto\n"}));
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

TEST(CatalogueClasses, IndexesAreCheckedAgainstTheLists) {
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(catalogue.getGrupo(0), nullptr);
  catalogue.groups.emplace_back("Eje");
  for (const char* name : {"PK", "Cota"}) catalogue.groups[0].variables.emplace_back(name);
  for (int index : {-1, 1}) EXPECT_EQ(catalogue.getGrupo(index), nullptr) << index;
  ASSERT_NE(catalogue.getGrupo(0), nullptr);
  const CZepGrupo& group = *catalogue.getGrupo(0);
  EXPECT_EQ(group.getNumVariables(), 2);
  ASSERT_NE(group.getVariable(1), nullptr);
  EXPECT_STREQ(group.getVariable(1)->name, "Cota");
  for (int index : {-1, 2}) EXPECT_EQ(group.getVariable(index), nullptr) << index;
}

TEST(CatalogueClasses, NamesAreCutToTheirFieldsAndGroupsCopyDeep) {
  EXPECT_EQ(std::string(CZepVariable(std::string(600, 'v')).name), std::string(511, 'v'));
  EXPECT_EQ(std::string(CZepGrupo(std::string(512, 'g')).name), std::string(511, 'g'));

  CZepGrupo source("Muro");
  source.variables.emplace_back("Alto");
  CZepGrupo target("Eje");
  for (const char* name : {"PK", "Cota"}) target.variables.emplace_back(name);
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
