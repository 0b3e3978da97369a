// Host variable references: building them into a value field, recognising them, splitting them and
// finding them again in a catalogue read from a file.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "editors/assign/host_variable.h"
#include "support/temp_dir.h"

using orvane::CatalogueIndex;
using orvane::ReferenceParts;
using orvane::resolveReference;
using orvane::splitReference;

namespace {

std::string parts(const ReferenceParts& p) { return p.group + "|" + p.variable; }

CConjuntoVariableZep readCatalogue(std::string_view text) {
  orvane::test::TempDir dir;
  const std::string path = dir.file("variables.txt");
  orvane::test::writeBytes(path, text);
  CConjuntoVariableZep catalogue;
  std::FILE* stream = std::fopen(path.c_str(), "r");
  EXPECT_NE(stream, nullptr);
  if (stream != nullptr) {
    catalogue.leeFichero(stream);
    std::fclose(stream);
  }
  return catalogue;
}

}  // namespace

namespace orvane {
// How a failed expectation shows an index pair.
std::ostream& operator<<(std::ostream& out, const CatalogueIndex& index) {
  return out << "{" << index.group << ", " << index.variable << "}";
}
}  // namespace orvane

TEST(MakeReference, WritesGroupFullStopVariableDollar) {
  char value[512];
  ASSERT_TRUE(orvane::makeReference("Eje", "PK", value));
  EXPECT_STREQ(value, "Eje.PK$");
  ASSERT_TRUE(orvane::makeReference("Eje", "Pendiente\n", value));  // the catalogue's bytes, as they are
  EXPECT_STREQ(value, "Eje.Pendiente\n$");
  ASSERT_TRUE(orvane::makeReference("", "", value));
  EXPECT_STREQ(value, ".$");
}

TEST(MakeReference, RefusesAPairThatDoesNotFitAndLeavesTheValue) {
  char value[512];
  // 255 + "." + 254 + "$" is 511 characters: the longest that fits with its terminator.
  ASSERT_TRUE(orvane::makeReference(std::string(255, 'g'), std::string(254, 'v'), value));
  EXPECT_EQ(std::string(value).size(), 511u);
  EXPECT_EQ(value[510], '$');
  ASSERT_TRUE(orvane::makeReference(std::string(509, 'g'), "", value));

  std::fill(std::begin(value), std::end(value), '#');
  value[511] = '\0';
  const std::string before(value);
  EXPECT_FALSE(orvane::makeReference(std::string(255, 'g'), std::string(255, 'v'), value));
  EXPECT_FALSE(orvane::makeReference(std::string(510, 'g'), "", value));
  EXPECT_FALSE(orvane::makeReference("", std::string(510, 'v'), value));
  EXPECT_FALSE(orvane::makeReference(std::string(4000, 'g'), std::string(4000, 'v'), value));
  EXPECT_EQ(std::string(value), before);
}

TEST(ReferenceTests, EndingAndContainingDollar) {
  EXPECT_TRUE(orvane::endsAsReference("Eje.PK$"));
  EXPECT_TRUE(orvane::endsAsReference("$"));
  EXPECT_FALSE(orvane::endsAsReference(""));
  EXPECT_FALSE(orvane::endsAsReference("$ANCHO"));
  EXPECT_FALSE(orvane::endsAsReference("Eje.PK$ "));
  EXPECT_TRUE(orvane::containsReference("$ANCHO"));
  EXPECT_TRUE(orvane::containsReference("Eje.PK$"));
  EXPECT_FALSE(orvane::containsReference("12.5"));
  EXPECT_FALSE(orvane::containsReference(""));
}

TEST(SplitReference, GroupUpToTheFirstFullStopAndTheRestUnchanged) {
  EXPECT_EQ(parts(splitReference("Eje.PK")), "Eje|PK");
  EXPECT_EQ(parts(splitReference("Eje.PK.1")), "Eje|PK.1");
  EXPECT_EQ(parts(splitReference("..Eje.PK")), "Eje|PK");   // leading full stops skipped
  EXPECT_EQ(parts(splitReference("Eje..PK")), "Eje|.PK");   // the rest is taken unchanged
  EXPECT_EQ(parts(splitReference("Eje")), "Eje|");
  EXPECT_EQ(parts(splitReference("Eje.")), "Eje|");
  EXPECT_EQ(parts(splitReference("...")), "|");
  EXPECT_EQ(parts(splitReference("")), "|");
  EXPECT_EQ(parts(splitReference("Ej.e.PK")), "Ej|e.PK");  // a group's own full stop is lost
}

TEST(SplitReference, PartsOfAnyValue) {
  EXPECT_EQ(parts(orvane::partsOfValue("Eje.PK$")), "Eje|PK");
  EXPECT_EQ(parts(orvane::partsOfValue("12.5")), "12.5|");  // a literal is all group part
  EXPECT_EQ(parts(orvane::partsOfValue("")), "|");
  EXPECT_EQ(parts(orvane::partsOfValue("$")), "|");
}

TEST(ResolveReference, FindsTheLastMatchIgnoringAsciiCase) {
  const CConjuntoVariableZep catalogue =
      readCatalogue("Eje;PK,Cota\nMuro;Alto,Alto,Ancho\nEje;Radio,PK,Cota\n");
  ASSERT_EQ(catalogue.getNumGrupos(), 3);
  EXPECT_EQ(resolveReference(catalogue, {"EJE", "pk"}), (CatalogueIndex{2, 1}));
  EXPECT_EQ(resolveReference(catalogue, {"muro", "ALTO"}), (CatalogueIndex{1, 1}));
  // The last variable of a line carries the line feed, so only a name with it matches.
  EXPECT_EQ(resolveReference(catalogue, {"Eje", "Cota"}), (CatalogueIndex{2, 0}));
  EXPECT_EQ(resolveReference(catalogue, {"Eje", "Cota\n"}), (CatalogueIndex{2, 2}));
}

TEST(ResolveReference, FallsBackToTheFirstGroupAndVariable) {
  const CConjuntoVariableZep catalogue = readCatalogue("Eje;PK,Cota\nMuro;Alto,Ancho\n");
  EXPECT_EQ(resolveReference(catalogue, {"Losa", "PK"}), (CatalogueIndex{0, 0}));
  EXPECT_EQ(resolveReference(catalogue, {"Muro", "Largo"}), (CatalogueIndex{1, 0}));
  EXPECT_EQ(resolveReference(catalogue, {"", ""}), (CatalogueIndex{0, 0}));
  EXPECT_EQ(resolveReference(catalogue, {"Mur", "Alto"}), (CatalogueIndex{0, 0}));  // whole names only
}

TEST(ResolveReference, FoldsOnlyAsciiLetters) {
  const CConjuntoVariableZep catalogue = readCatalogue("Eje;PK\nA\xD1O;Mes\n");
  EXPECT_EQ(resolveReference(catalogue, {"a\xF1o", "Mes\n"}), (CatalogueIndex{0, 0}));
  EXPECT_EQ(resolveReference(catalogue, {"a\xD1o", "MES\n"}), (CatalogueIndex{1, 0}));
}

TEST(ResolveReference, EmptyCatalogueOrGroupGivesPositionsWithNothingThere) {
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(resolveReference(catalogue, {"Eje", "PK"}), (CatalogueIndex{0, 0}));
  catalogue.groups.emplace_back("Eje");
  catalogue.groups.emplace_back("Vacio");
  catalogue.groups[0].variables.emplace_back("PK");
  const CatalogueIndex index = resolveReference(catalogue, {"vacio", "PK"});
  EXPECT_EQ(index, (CatalogueIndex{1, 0}));
  EXPECT_EQ(catalogue.getGrupo(index.group)->getVariable(index.variable), nullptr);
}

TEST(ResolveReference, AReferenceBuiltFromTheCatalogueFindsItsVariableAgain) {
  const CConjuntoVariableZep catalogue = readCatalogue("Eje;PK,Cota,Pendiente\nMuro;Alto\n");
  for (int g = 0; g < catalogue.getNumGrupos(); ++g) {
    const CZepGrupo& group = *catalogue.getGrupo(g);
    for (int v = 0; v < group.getNumVariables(); ++v) {
      char value[512];
      ASSERT_TRUE(orvane::makeReference(group.name, group.getVariable(v)->name, value));
      ASSERT_TRUE(orvane::endsAsReference(value));
      EXPECT_EQ(resolveReference(catalogue, orvane::partsOfValue(value)), (CatalogueIndex{g, v})) << value;
    }
  }
}
