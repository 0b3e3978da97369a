// The property-set document as a file: loading, sorting, saving, backups and malformed input.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/documents.h"
#include "support/golden.h"
#include "support/message_recorder.h"
#include "support/outline.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

void setText(char (&field)[kTextFieldSize], const char* text) { std::strcpy(field, text); }

// A small document with one of everything, bytes above 127 included.
CIfcProyectPSet sampleDocument() {
  CIfcProyectPSet doc;
  CIfcEnum colours;
  setText(colours.name, "Colores");
  setText(colours.description, "Colores de acabado");
  for (auto [code, text] : {std::pair{1, "Rojo"}, {2, "Azul & <verde>"}}) {
    CIfcNodoEnum value;
    value.value = code;
    setText(value.text, text);
    colours.elements.push_back(value);
  }
  doc.enums.push_back(colours);

  CIfcPropertySet walls;
  setText(walls.name, "Muros");
  setText(walls.description, "Datos \"de\" muros");
  CIfcPropertyName height;
  setText(height.name, "Altura");
  setText(height.description, "Altura libre");
  setText(height.rule, ">0");
  height.valueType = PropertyReal;
  height.realValue = 2.75;
  height.unit = 1;
  CIfcPropertyName temperature;
  setText(temperature.name, "Temperatura");
  temperature.valueType = PropertyInteger;
  temperature.optional = true;
  setText(temperature.textValue, "Eje.Temp$");
  temperature.unit = 4;
  CIfcPropertyName colour;
  setText(colour.name, "Acabado");
  colour.valueType = PropertyEnumerated;
  setText(colour.enumName, "Colores");
  setText(colour.textValue, "Rojo");
  CIfcPropertyName bearing;
  setText(bearing.name, "Portante");
  bearing.valueType = PropertyBoolean;
  bearing.intValue = 1;
  CIfcPropertyName built;
  setText(built.name, "Fecha");
  built.valueType = PropertyDateTime;
  setText(built.textValue, "2026-11-21");
  CIfcPropertyName owner;
  setText(owner.name, "Due\xC3\xB1o");  // UTF-8 from the editors
  owner.valueType = PropertyString;
  setText(owner.textValue, "Ca\xF1o");  // Windows-1252 from an older file
  walls.properties = {height, temperature, colour, bearing, built, owner};
  doc.propertySets.push_back(walls);

  CIfcRelationProyectPSet_IfcObject relation;
  setText(relation.pset, "Muros");
  setText(relation.object, "IfcWall");
  doc.relations.push_back(relation);
  return doc;
}

class PsetDocument : public ::testing::Test {
 protected:
  TempDir dir;
  MessageRecorder messages;
};

TEST_F(PsetDocument, WritesTheExpectedBytes) {
  CIfcProyectPSet doc = sampleDocument();
  const std::string path = dir.file("sample.xml");
  EXPECT_EQ(doc.graba(path.c_str()), 1);
  expectGolden(path, "pset_small.xml");
}

TEST_F(PsetDocument, WritesAnEmptyDocumentWithItsThreeContainers) {
  CIfcProyectPSet doc;
  const std::string path = dir.file("empty.xml");
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path),
            "<?xml version=\"1.0\" encoding=\"UTF8\"?>\r\n<PropertySetsBIM>\r\n    <TypesEnum/>\r\n"
            "    <PropertiesSet/>\r\n    <RelationsIfcElementWithPSet/>\r\n</PropertySetsBIM>\r\n");
}

// With the writer proven on the golden file, a read that lost or swapped a field would show here.
TEST_F(PsetDocument, ReadingTheGoldenFileAndSavingItGivesItBack) {
  CIfcProyectPSet doc;
  ASSERT_EQ(doc.lee((std::string(ORVANE_TEST_DATA) + "/golden/pset_small.xml").c_str()), 1);
  const std::string path = dir.file("again.xml");
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path), readBytes(std::string(ORVANE_TEST_DATA) + "/golden/pset_small.xml"));
  EXPECT_TRUE(messages.messages().empty());
}

// A file as the document it loads: its result, what it holds and the messages shown.
TEST_F(PsetDocument, FilesLoadAs) {
  const std::string noRule =
      "<PropertyName Name=\"A\" Optional=\"No\" Type=\"String\"><Description/><Value/></PropertyName>";
  const std::string noValue =
      "<PropertyName Name=\"B\" Optional=\"No\" Rule=\"\" Type=\"String\"><Description/></PropertyName>";
  const std::string noName =
      "<PropertyName Optional=\"No\" Rule=\"\" Type=\"String\"><Description/><Value/></PropertyName>";
  const std::string propertyError = "Error lectura XML. CIfcPropertyName";
  const struct {
    const char* what;
    std::string file;
    int result;
    Outline holds;
    std::vector<std::string> messages;
  } rows[] = {
      {"the root alone", "<PropertySetsBIM/>", 1, {}, {}},
      {"another root", "<?xml version=\"1.0\"?><QuantitiesSetQuorsel/>", 0, {}, {"Error lectura XML. CIfcProyectPSet"}},
      {"sets and types sorted by name ignoring case",
       psetFile("<TypeEnum Name=\"zona\" Description=\"\"><Elements/></TypeEnum>"
                "<TypeEnum Name=\"Acabado\" Description=\"\"><Elements/></TypeEnum>",
                propertySet("beta") + propertySet("Alfa") + propertySet("alpha")),
       1, {"type Acabado:", "type zona:", "set Alfa:", "set alpha:", "set beta:"}, {}},
      {"relations in file order; one missing a name left out silently",
       psetFile("", "",
                "<RelationIfcElementWithPSet PSet=\"Z\" Object=\"IfcWall\"/><RelationIfcElementWithPSet PSet=\"Q\"/>"
                "<RelationIfcElementWithPSet PSet=\"A\" Object=\"IfcSlab\"/>"),
       1, {"relation Z IfcWall", "relation A IfcSlab"}, {}},
      {"enumerated values keep codes (no digits: 0) and order",
       psetFile("<TypeEnum Name=\"Colores\" Description=\"c\"><Elements><Element Value=\"7\">Rojo</Element>"
                "<Element Value=\"x\">Azul</Element><Element Value=\"-2\">Verde</Element></Elements></TypeEnum>", ""),
       1, {"type Colores: 7 Rojo, 0 Azul, -2 Verde,"}, {}},
      {"a property missing a required part is left out with its message",
       psetFile("", propertySet("S", noRule + property("Ok", "String", "v") + noValue + noName)),
       1, {"set S: Ok,"}, {propertyError, propertyError, propertyError}},
      {"a set missing its description ends the reading of sets",
       psetFile("", propertySet("A") + "<PropertySet Name=\"B\"/>" + propertySet("C")),
       1, {"set A:"}, {"Error lectura XML. CIfcPropertySet"}},
      {"a type missing its elements ends the reading of types",
       psetFile("<TypeEnum Name=\"A\" Description=\"\"/><TypeEnum Name=\"B\" Description=\"\"><Elements/></TypeEnum>", ""),
       1, {}, {"Error lectura XML. CIfcEnum"}},
      {"a value with an empty literal fails its type, and the reading of types ends there",
       psetFile("<TypeEnum Name=\"A\" Description=\"\"><Elements><Element Value=\"0\"/></Elements></TypeEnum>"
                "<TypeEnum Name=\"B\" Description=\"\"><Elements/></TypeEnum>", ""),
       1, {}, {"Error lectura XML. CIfcEnum"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    MessageRecorder shown;
    int result = -1;
    const CIfcProyectPSet doc = load<CIfcProyectPSet>(dir, row.file, &result);
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(outline(doc), row.holds);
    EXPECT_EQ(shown.messages(), row.messages);
  }
}

TEST_F(PsetDocument, NamesDifferingOnlyInCaseEndUpNextToEachOther) {
  const Outline holds = outline(load<CIfcProyectPSet>(
      dir, psetFile("", propertySet("MUROS") + propertySet("Losas") + propertySet("Muros") + propertySet("B"))));
  ASSERT_EQ(holds.size(), 4u);
  EXPECT_EQ(Outline(holds.begin(), holds.begin() + 2), (Outline{"set B:", "set Losas:"}));
  EXPECT_TRUE(holds[2] == "set MUROS:" ? holds[3] == "set Muros:" : holds[2] == "set Muros:" && holds[3] == "set MUROS:");
}

TEST_F(PsetDocument, ASecondLoadAppendsAndSortsOldAndNewTogether) {
  const std::string first = dir.file("first.xml");
  const std::string second = dir.file("second.xml");
  writeBytes(first, psetFile("", propertySet("M") + propertySet("C"),
                             "<RelationIfcElementWithPSet PSet=\"M\" Object=\"IfcWall\"/>"));
  writeBytes(second, psetFile("", propertySet("a") + propertySet("x")));
  CIfcProyectPSet doc;
  ASSERT_EQ(doc.lee(first.c_str()), 1);
  ASSERT_EQ(doc.lee(second.c_str()), 1);
  EXPECT_EQ(outline(doc), (Outline{"set a:", "set C:", "set M:", "set x:", "relation M IfcWall"}));
  ASSERT_EQ(doc.lee(first.c_str()), 1);
  EXPECT_EQ(outline(doc), (Outline{"set a:", "set C:", "set C:", "set M:", "set M:", "set x:", "relation M IfcWall",
                                   "relation M IfcWall"}));
}

TEST_F(PsetDocument, CopiesAreDeepAndSelfAssignmentChangesNothing) {
  CIfcProyectPSet doc = sampleDocument();
  CIfcProyectPSet copy(doc);
  std::strcpy(copy.propertySets[0].properties[0].name, "Cambiado");
  EXPECT_STREQ(doc.propertySets[0].properties[0].name, "Altura");

  CIfcProyectPSet assigned;
  assigned = doc;
  assigned.enums[0].elements.clear();
  EXPECT_EQ(doc.enums[0].elements.size(), 2u);
  assigned = std::move(copy);
  EXPECT_STREQ(assigned.propertySets[0].properties[0].name, "Cambiado");

  CIfcProyectPSet& same = doc;
  doc = same;
  EXPECT_EQ(doc.propertySets[0].properties.size(), 6u);
  EXPECT_EQ(doc.edita(), 0);
}

}  // namespace
