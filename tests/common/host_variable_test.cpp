// Host variable references: building them into a value field, recognising them, splitting them and
// finding them again in a catalogue read from a file.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>

#include "editors/assign/host_variable.h"
#include "support/temp_dir.h"

using orvane::CatalogueIndex;
using orvane::resolveReference;

namespace orvane {
// How a failed expectation shows an index pair.
std::ostream& operator<<(std::ostream& out, const CatalogueIndex& index) {
  return out << "{" << index.group << ", " << index.variable << "}";
}
}  // namespace orvane

namespace {

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

TEST(MakeReference, WritesGroupFullStopVariableDollarOrRefusesAPairThatDoesNotFit) {
  const struct {
    std::string group, variable;
    std::optional<std::string> value;  // none: refused
  } rows[] = {
      {"Eje", "PK", "Eje.PK$"},
      {"Eje", "Pendiente\n", "Eje.Pendiente\n$"},  // the catalogue's bytes, as they are
      {"", "", ".$"},
      // 255 + "." + 254 + "$" is 511 characters: the longest that fits with its terminator.
      {std::string(255, 'g'), std::string(254, 'v'), std::string(255, 'g') + "." + std::string(254, 'v') + "$"},
      {std::string(509, 'g'), "", std::string(509, 'g') + ".$"},
      {std::string(255, 'g'), std::string(255, 'v'), std::nullopt},
      {std::string(510, 'g'), "", std::nullopt},
      {"", std::string(510, 'v'), std::nullopt},
      {std::string(4000, 'g'), std::string(4000, 'v'), std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.group.substr(0, 20) + " / " + row.variable.substr(0, 20));
    char value[512];
    std::fill(std::begin(value), std::end(value), '#');
    value[511] = '\0';
    const std::string before(value);
    EXPECT_EQ(orvane::makeReference(row.group, row.variable, value), row.value.has_value());
    EXPECT_EQ(std::string(value), row.value.value_or(before));  // a refusal leaves the value
  }
}

TEST(ReferenceText, IsRecognisedAndSplitAsTheEditorsDo) {
  const struct {
    const char* value;
    bool ends, contains;
    const char* parts;  // the parts the value editor preselects, as "group|variable"
  } rows[] = {
      {"Eje.PK$", true, true, "Eje|PK"},
      {"$", true, true, "|"},
      {"", false, false, "|"},
      {"$ANCHO", false, true, "$ANCHO|"},
      {"Eje.PK$ ", false, true, "Eje.PK$ |"},
      {"12.5", false, false, "12.5|"},             // a literal is all group part
      {"Eje.PK.1$", true, true, "Eje|PK.1"},       // group up to the first full stop
      {"..Eje.PK$", true, true, "Eje|PK"},         // leading full stops skipped
      {"Eje..PK$", true, true, "Eje|.PK"},         // the rest is taken unchanged
      {"Eje$", true, true, "Eje|"},
      {"Eje.$", true, true, "Eje|"},
      {"...$", true, true, "|"},
      {"Ej.e.PK$", true, true, "Ej|e.PK"},         // a group's own full stop is lost
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.value);
    EXPECT_EQ(orvane::endsAsReference(row.value), row.ends);
    EXPECT_EQ(orvane::containsReference(row.value), row.contains);
    const orvane::ReferenceParts parts = orvane::partsOfValue(row.value);
    EXPECT_EQ(parts.group + "|" + parts.variable, row.parts);
  }
}

// The last group of that name, else the first; in it the last variable of that name, else the
// first. Names compare whole, folding ASCII letters only.
TEST(ResolveReference, FindsTheLastMatchOrFallsBackToTheFirst) {
  const CConjuntoVariableZep catalogue =
      readCatalogue("Eje;PK,Cota\nMuro;Alto,Alto,Ancho\nEje;Radio,PK,Cota\nA\xD1O;Mes\n");
  ASSERT_EQ(catalogue.getNumGrupos(), 4);
  const struct {
    const char* group;
    const char* variable;
    CatalogueIndex found;
  } rows[] = {
      {"EJE", "pk", {2, 1}},
      {"muro", "ALTO", {1, 1}},
      // The last variable of a line carries the line feed, so only a name with it matches.
      {"Eje", "Cota", {2, 0}},
      {"Eje", "Cota\n", {2, 2}},
      {"Losa", "PK", {0, 0}},
      {"Muro", "Largo", {1, 0}},
      {"", "", {0, 0}},
      {"Mur", "Alto", {0, 0}},
      {"a\xF1o", "Mes\n", {0, 0}},  // 1252 "Ñ" and "ñ" stay apart
      {"a\xD1o", "MES\n", {3, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.group) + "." + row.variable);
    EXPECT_EQ(resolveReference(catalogue, {row.group, row.variable}), row.found);
  }
}

TEST(ResolveReference, EmptyCatalogueOrGroupGivesPositionsWithNothingThere) {
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(resolveReference(catalogue, {"Eje", "PK"}), (CatalogueIndex{0, 0}));
  catalogue.groups = {CZepGrupo("Eje"), CZepGrupo("Vacio")};
  catalogue.groups[0].variables.emplace_back("PK");
  const CatalogueIndex index = resolveReference(catalogue, {"vacio", "PK"});
  EXPECT_EQ(index, (CatalogueIndex{1, 0}));
  EXPECT_EQ(catalogue.getGrupo(index.group)->getVariable(index.variable), nullptr);
}
