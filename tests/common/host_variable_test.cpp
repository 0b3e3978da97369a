// Host variable references: building them into a value field, recognising and splitting them as the
// editors do, and finding them again in a catalogue.
#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>

#include "editors/assign/host_variable.h"

using orvane::CatalogueIndex;
using orvane::resolveReference;

// The catalogue's bytes are taken as they are, line feed included. 511 characters are the most that
// fit with the terminator; a pair that does not fit is refused and leaves the value as it was.
TEST(MakeReference, WritesGroupFullStopVariableDollarOrRefusesAPairThatDoesNotFit) {
  const std::string g255(255, 'g'), v254(254, 'v');
  const struct {
    std::string group, variable;
    std::optional<std::string> value;
  } rows[] = {
      {"Eje", "PK", "Eje.PK$"}, {"Eje", "Pendiente\n", "Eje.Pendiente\n$"}, {"", "", ".$"},
      {g255, v254, g255 + "." + v254 + "$"}, {std::string(509, 'g'), "", std::string(509, 'g') + ".$"},
      {g255, v254 + "v", std::nullopt}, {std::string(510, 'g'), "", std::nullopt},
      {"", std::string(510, 'v'), std::nullopt}, {std::string(4000, 'g'), std::string(4000, 'v'), std::nullopt},
  };
  for (const auto& row : rows) {
    char value[512];
    std::fill(std::begin(value), std::end(value) - 1, '#');
    value[511] = '\0';
    const std::string before(value);
    EXPECT_EQ(orvane::makeReference(row.group, row.variable, value), row.value.has_value()) << row.group.size();
    EXPECT_EQ(value, row.value.value_or(before)) << row.group.size() << " + " << row.variable.size();
  }
}

// A literal is all group part. Leading full stops are skipped, the group runs to the next one and the
// rest is taken unchanged, so a group's own full stop is lost.
TEST(ReferenceText, IsRecognisedAndSplitAsTheEditorsDo) {
  const struct {
    const char* value;
    bool ends, contains;
    const char* parts;  // what the value editor preselects
  } rows[] = {
      {"Eje.PK$", true, true, "Eje|PK"}, {"$", true, true, "|"}, {"", false, false, "|"},
      {"$ANCHO", false, true, "$ANCHO|"}, {"Eje.PK$ ", false, true, "Eje.PK$ |"}, {"12.5", false, false, "12.5|"},
      {"Eje.PK.1$", true, true, "Eje|PK.1"}, {"..Eje.PK$", true, true, "Eje|PK"}, {"Eje..PK$", true, true, "Eje|.PK"},
      {"Eje$", true, true, "Eje|"}, {"Eje.$", true, true, "Eje|"}, {"...$", true, true, "|"},
      {"Ej.e.PK$", true, true, "Ej|e.PK"},
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
// first. Names compare whole (the line feed of a line's last variable too), folding ASCII letters
// only: 1252 "Ñ" and "ñ" stay apart. An empty catalogue or group gives positions with nothing there.
TEST(ResolveReference, FindsTheLastMatchOrFallsBackToTheFirst) {
  std::string text = "Eje;PK,Cota\nMuro;Alto,Alto,Ancho\nEje;Radio,PK,Cota\nA\xD1O;Mes\n";
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(resolveReference(catalogue, {"Eje", "PK"}), (CatalogueIndex{0, 0}));
  std::FILE* stream = ::fmemopen(text.data(), text.size(), "r");
  catalogue.leeFichero(stream);
  std::fclose(stream);
  catalogue.groups.emplace_back("Vacio");
  ASSERT_EQ(catalogue.getNumGrupos(), 5);
  const struct {
    const char* group;
    const char* variable;
    CatalogueIndex found;
  } rows[] = {
      {"EJE", "pk", {2, 1}}, {"muro", "ALTO", {1, 1}}, {"Eje", "Cota", {2, 0}}, {"Eje", "Cota\n", {2, 2}},
      {"Losa", "PK", {0, 0}}, {"Muro", "Largo", {1, 0}}, {"", "", {0, 0}}, {"Mur", "Alto", {0, 0}},
      {"a\xF1o", "Mes\n", {0, 0}}, {"a\xD1o", "MES\n", {3, 0}}, {"vacio", "PK", {4, 0}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(resolveReference(catalogue, {row.group, row.variable}), row.found) << row.group << "." << row.variable;
  EXPECT_EQ(catalogue.getGrupo(4)->getVariable(0), nullptr);
}
