// The property-set document as a file: loading, sorting, saving, backups and malformed input.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "support/documents.h"
#include "support/golden.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

std::vector<std::string> setNames(const CIfcProyectPSet& doc) {
  std::vector<std::string> names;
  for (const CIfcPropertySet& set : doc.propertySets) names.emplace_back(set.name);
  return names;
}

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

void expectSameProperty(const CIfcPropertyName& a, const CIfcPropertyName& b) {
  EXPECT_STREQ(a.name, b.name);
  EXPECT_STREQ(a.description, b.description);
  EXPECT_STREQ(a.rule, b.rule);
  EXPECT_EQ(a.valueType, b.valueType);
  EXPECT_EQ(a.optional, b.optional);
  EXPECT_EQ(a.intValue, b.intValue);
  EXPECT_DOUBLE_EQ(a.realValue, b.realValue);
  EXPECT_STREQ(a.textValue, b.textValue);
  EXPECT_STREQ(a.enumName, b.enumName);
  EXPECT_EQ(a.unit, b.unit);
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

TEST_F(PsetDocument, RoundTripKeepsEveryField) {
  CIfcProyectPSet doc = sampleDocument();
  CIfcProyectPSet again = roundTrip(dir, doc);
  ASSERT_EQ(again.enums.size(), 1u);
  EXPECT_STREQ(again.enums[0].description, "Colores de acabado");
  ASSERT_EQ(again.enums[0].elements.size(), 2u);
  EXPECT_EQ(again.enums[0].elements[1].value, 2);
  EXPECT_STREQ(again.enums[0].elements[1].text, "Azul & <verde>");
  ASSERT_EQ(again.propertySets.size(), 1u);
  EXPECT_STREQ(again.propertySets[0].description, "Datos \"de\" muros");
  ASSERT_EQ(again.propertySets[0].properties.size(), doc.propertySets[0].properties.size());
  for (std::size_t i = 0; i < again.propertySets[0].properties.size(); ++i)
    expectSameProperty(again.propertySets[0].properties[i], doc.propertySets[0].properties[i]);
  ASSERT_EQ(again.relations.size(), 1u);
  EXPECT_STREQ(again.relations[0].object, "IfcWall");
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(PsetDocument, RoundTripLosesRealDigitsBeyondThree) {
  CIfcProyectPSet doc = sampleDocument();
  doc.propertySets[0].properties[0].realValue = 1.23456;
  EXPECT_DOUBLE_EQ(roundTrip(dir, doc).propertySets[0].properties[0].realValue, 1.235);
}

TEST_F(PsetDocument, RootAloneLoadsAsAnEmptyDocument) {
  int result = 0;
  CIfcProyectPSet doc = load<CIfcProyectPSet>(dir, "<PropertySetsBIM/>", &result);
  EXPECT_EQ(result, 1);
  EXPECT_TRUE(doc.propertySets.empty() && doc.enums.empty() && doc.relations.empty());
}

TEST_F(PsetDocument, SetsAndTypesAreSortedByNameIgnoringCase) {
  CIfcProyectPSet doc = load<CIfcProyectPSet>(
      dir, psetFile("<TypeEnum Name=\"zona\" Description=\"\"><Elements/></TypeEnum>"
                    "<TypeEnum Name=\"Acabado\" Description=\"\"><Elements/></TypeEnum>",
                    propertySet("beta") + propertySet("Alfa") + propertySet("alpha")));
  EXPECT_EQ(setNames(doc), (std::vector<std::string>{"Alfa", "alpha", "beta"}));
  ASSERT_EQ(doc.enums.size(), 2u);
  EXPECT_STREQ(doc.enums[0].name, "Acabado");
}

TEST_F(PsetDocument, NamesDifferingOnlyInCaseEndUpNextToEachOther) {
  CIfcProyectPSet doc = load<CIfcProyectPSet>(
      dir, psetFile("", propertySet("MUROS") + propertySet("Losas") + propertySet("Muros") + propertySet("B")));
  const std::vector<std::string> names = setNames(doc);
  ASSERT_EQ(names.size(), 4u);
  EXPECT_EQ(names[0], "B");
  EXPECT_EQ(names[1], "Losas");
  EXPECT_TRUE((names[2] == "MUROS" && names[3] == "Muros") || (names[2] == "Muros" && names[3] == "MUROS"));
}

TEST_F(PsetDocument, RelationsKeepFileOrder) {
  CIfcProyectPSet doc = load<CIfcProyectPSet>(
      dir, psetFile("", "",
                    "<RelationIfcElementWithPSet PSet=\"Z\" Object=\"IfcWall\"/>"
                    "<RelationIfcElementWithPSet PSet=\"A\" Object=\"IfcSlab\"/>"));
  ASSERT_EQ(doc.relations.size(), 2u);
  EXPECT_STREQ(doc.relations[0].pset, "Z");
  EXPECT_STREQ(doc.relations[1].pset, "A");
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
  EXPECT_EQ(setNames(doc), (std::vector<std::string>{"a", "C", "M", "x"}));
  ASSERT_EQ(doc.lee(first.c_str()), 1);
  EXPECT_EQ(doc.propertySets.size(), 6u);
  EXPECT_EQ(doc.relations.size(), 2u);
}

TEST_F(PsetDocument, AnotherRootIsADocumentReadFailure) {
  int result = -1;
  load<CIfcProyectPSet>(dir, "<?xml version=\"1.0\"?><QuantitiesSetQuorsel/>", &result);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(messages.messages(), std::vector<std::string>{"Error lectura XML. CIfcProyectPSet"});
}

TEST_F(PsetDocument, BytesAbove127PassThroughBothWays) {
  const std::string xml = psetFile("", propertySet("Ca\xF1o", property("\xC3\x91u", "String", "\xBA\xFF")));
  CIfcProyectPSet doc = load<CIfcProyectPSet>(dir, xml);
  ASSERT_EQ(doc.propertySets.size(), 1u);
  EXPECT_STREQ(doc.propertySets[0].name, "Ca\xF1o");
  EXPECT_STREQ(doc.propertySets[0].properties.at(0).name, "\xC3\x91u");
  EXPECT_STREQ(doc.propertySets[0].properties.at(0).textValue, "\xBA\xFF");
  const std::string path = dir.file("out.xml");
  doc.graba(path.c_str());
  const std::string written = readBytes(path);
  EXPECT_NE(written.find("Name=\"Ca\xF1o\""), std::string::npos);
  EXPECT_NE(written.find("<Value>\xBA\xFF</Value>"), std::string::npos);
}

TEST_F(PsetDocument, SavingKeepsThePreviousFileAsBackup) {
  const std::string path = dir.file("doc.xml");
  CIfcProyectPSet doc;
  doc.graba(path.c_str());
  EXPECT_FALSE(std::filesystem::exists(path + ".bak"));  // nothing to keep the first time
  const std::string firstSave = readBytes(path);

  doc.propertySets.emplace_back();
  std::strcpy(doc.propertySets[0].name, "Nuevo");
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), firstSave);
  const std::string secondSave = readBytes(path);
  EXPECT_NE(secondSave, firstSave);

  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), secondSave);
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

  CIfcProyectPSet& same = doc;
  doc = same;
  EXPECT_EQ(doc.propertySets[0].properties.size(), 6u);
  EXPECT_EQ(doc.edita(), 0);
}

}  // namespace
