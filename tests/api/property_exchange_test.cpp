// getPropiedadesFichero, setPropiedadesFichero and getEnumerados on real files, through
// liborvane.so as a host calls them.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "api/records.h"
#include "orvane/orvane.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

CIfcProyectPSet read(const std::string& path) {
  CIfcProyectPSet doc;
  EXPECT_EQ(doc.lee(path.c_str()), 1) << path;
  return doc;
}

const CIfcPropertySet* findSet(const CIfcProyectPSet& doc, const char* name) {
  for (const CIfcPropertySet& set : doc.propertySets)
    if (std::strcmp(set.name, name) == 0) return &set;
  return nullptr;
}

std::vector<std::string> setNames(const CIfcProyectPSet& doc) {
  std::vector<std::string> names;
  for (const CIfcPropertySet& set : doc.propertySets) names.emplace_back(set.name);
  return names;
}

std::vector<std::string> propertyNames(const CIfcPropertySet& set) {
  std::vector<std::string> names;
  for (const CIfcPropertyName& property : set.properties) names.emplace_back(property.name);
  return names;
}

// Where each of `names` first occurs in `text`, to check the order in which a file holds them.
std::vector<std::size_t> positionsIn(const std::string& text, const std::vector<std::string>& names) {
  std::vector<std::size_t> positions;
  for (const std::string& name : names) positions.push_back(text.find(name));
  return positions;
}

int merge(const std::string& path, const std::string& partial, const std::vector<FlatPropertyRecord>& records,
          int saveDocument = 1) {
  return setPropiedadesFichero(path.c_str(), partial.c_str(), records.data(),
                               static_cast<int>(records.size()), saveDocument);
}

// A document of every value type in one set, with an enumerated type and a relation.
std::string everyTypeFile() {
  return psetFile(
      "<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">Rojo</Element>"
      "<Element Value=\"2\">Azul</Element><Element Value=\"3\">Verde</Element></Elements></TypeEnum>",
      propertySet("Muro", property("Entero", "Integer", "-7", "Optional=\"Yes\" Unit=\"m\" Rule=\"r1\"") +
                              property("Real", "Real", "2.5", "Optional=\"No\" Unit=\"m2\" Rule=\"\"") +
                              property("Referencia", "Integer", "Ejes.Ancho$") +
                              property("Texto", "String", "Ladrillo") +
                              property("Color", "Colores", "Azul", "Optional=\"Yes\" Unit=\"\" Rule=\"r2\"") +
                              property("Portante", "Boolean", "Yes") +
                              property("Fecha", "DateTime", "2026-11-21")),
      "<RelationIfcElementWithPSet PSet=\"Muro\" Object=\"IfcWall\"/>");
}

// --- Reading properties into records --------------------------------------------------------

TEST(GetPropiedadesFichero, GivesSetsInSortedOrderAndPropertiesInFileOrder) {
  TempDir dir;
  const std::string path = dir.write("p.xml",
                                 psetFile("", propertySet("B", property("b1", "String", "x") +
                                                                   property("b2", "String", "y")) +
                                                  propertySet("a", property("a1", "String", "z"))));
  auto records = hostRecords<FlatPropertyRecord>(5);
  ASSERT_EQ(getPropiedadesFichero(path.c_str(), records.data(), 5), 3);
  EXPECT_STREQ(records[0].setName, "a");
  EXPECT_STREQ(records[0].propertyName, "a1");
  EXPECT_STREQ(records[1].setName, "B");
  EXPECT_STREQ(records[1].propertyName, "b1");
  EXPECT_STREQ(records[2].propertyName, "b2");
  EXPECT_TRUE(untouchedFrom(records[3].setName, 0));
}

// maxRecords bounds the records written; a missing or malformed file, a null argument or no room
// gives none and leaves every host byte alone.
TEST(GetPropiedadesFichero, FillsNoMoreThanMaxRecords) {
  TempDir dir;
  const std::string three =
      dir.write("p.xml", psetFile("", propertySet("S", property("p1", "String", "1") + property("p2", "String", "2") +
                                                           property("p3", "String", "3"))));
  const std::string missing = dir.file("missing.xml");
  const std::string broken = dir.write("broken.xml", "<PropertySetsBIM><PropertiesSet>");
  auto records = hostRecords<FlatPropertyRecord>(3);
  const struct { const char* path; FlatPropertyRecord* records; int max, filled; } cases[] = {
      {three.c_str(), records.data(), 0, 0},   {three.c_str(), records.data(), -3, 0},
      {three.c_str(), nullptr, 1, 0},          {missing.c_str(), records.data(), 1, 0},
      {broken.c_str(), records.data(), 1, 0},  {nullptr, records.data(), 1, 0},
      {three.c_str(), records.data(), 2, 2}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << (c.path ? c.path : "null") << " max " << c.max);
    EXPECT_EQ(getPropiedadesFichero(c.path, c.records, c.max), c.filled);
    EXPECT_TRUE(untouchedFrom(records[c.filled].propertyName, 0));
    EXPECT_EQ(records[c.filled].valueType, static_cast<int32_t>(0x5A5A5A5A));
  }
  EXPECT_STREQ(records[1].propertyName, "p2");
}

TEST(GetPropiedadesFichero, ConvertsEachValueTypeToText) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  auto records = hostRecords<FlatPropertyRecord>(7);
  ASSERT_EQ(getPropiedadesFichero(path.c_str(), records.data(), 7), 7);

  EXPECT_EQ(records[0].valueType, 0);
  EXPECT_STREQ(records[0].valueText, "-7");
  EXPECT_EQ(records[0].unit, 1);
  EXPECT_EQ(records[1].valueType, 1);
  EXPECT_STREQ(records[1].valueText, "2.500");
  EXPECT_EQ(records[1].unit, 2);
  // A host variable reference goes out as the Integer's number field.
  EXPECT_STREQ(records[2].valueText, "0");
  EXPECT_EQ(records[3].valueType, 2);
  EXPECT_STREQ(records[3].valueText, "Ladrillo");
  EXPECT_EQ(records[4].valueType, 3);
  EXPECT_STREQ(records[4].valueText, "Azul");
  EXPECT_STREQ(records[4].enumName, "Colores");
  // Boolean and DateTime leave valueText as the host had it.
  EXPECT_EQ(records[5].valueType, 4);
  EXPECT_TRUE(untouchedFrom(records[5].valueText, 0));
  EXPECT_EQ(records[6].valueType, 5);
  EXPECT_TRUE(untouchedFrom(records[6].valueText, 0));
  // enumName is written for the Enumerated property alone.
  for (int i : {0, 1, 2, 3, 5, 6}) EXPECT_TRUE(untouchedFrom(records[i].enumName, 0)) << i;
}

TEST(GetPropiedadesFichero, WritesNothingPastATerminator) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  auto records = hostRecords<FlatPropertyRecord>(5);
  ASSERT_EQ(getPropiedadesFichero(path.c_str(), records.data(), 5), 5);
  EXPECT_TRUE(untouchedFrom(records[4].setName, std::strlen("Muro") + 1));
  EXPECT_TRUE(untouchedFrom(records[4].propertyName, std::strlen("Color") + 1));
  EXPECT_TRUE(untouchedFrom(records[4].valueText, std::strlen("Azul") + 1));
  EXPECT_TRUE(untouchedFrom(records[4].enumName, std::strlen("Colores") + 1));
}

TEST(GetPropiedadesFichero, CutsLongTextsAtTheFieldWithoutSplittingACharacter) {
  TempDir dir;
  const std::string longSet(300, 'S');
  std::string longValue;
  for (int i = 0; i < 150; ++i) longValue += "\xC3\xB1";  // 300 bytes of UTF-8 "ñ"
  const std::string path =
      dir.write("p.xml", psetFile("", propertySet(longSet, property("Nombre", "String", longValue) +
                                                                property("Enorme", "Real", "1e308"))));
  auto records = hostRecords<FlatPropertyRecord>(2);
  ASSERT_EQ(getPropiedadesFichero(path.c_str(), records.data(), 2), 2);
  // "%0.3lf" of 1e308 has 313 characters: cut, it would be a number 10^58 times smaller.
  EXPECT_STREQ(records[1].valueText, "1e+308");
  EXPECT_EQ(std::string(records[0].setName), std::string(255, 'S'));
  EXPECT_EQ(std::string(records[0].valueText), longValue.substr(0, 254));  // 255 would split a "ñ"
  EXPECT_TRUE(untouchedFrom(records[0].enumName, 0));  // nothing ran over into the next field
  EXPECT_STREQ(records[0].propertyName, "Nombre");
  EXPECT_EQ(records[0].unit, 0);
}

// --- Merging records into the document ------------------------------------------------------

TEST(SetPropiedadesFichero, ConvertsRecordTextsToValues) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  const std::vector<FlatPropertyRecord> records = {
      propertyRecord(0, "Muro", "Entero", "12abc"),
      propertyRecord(1, "Muro", "Real", "1.23456"),
      propertyRecord(0, "Muro", "Referencia", "5"),  // drops the host variable reference
      propertyRecord(2, "Muro", "Texto", "Hormigon"),
      propertyRecord(3, "Muro", "Color", "Verde", 0, "OtroTipo"),
      propertyRecord(4, "Muro", "Portante", "Yes"),  // Boolean values are cleared
      propertyRecord(5, "Muro", "Fecha", "2030-01-01"),
  };
  ASSERT_EQ(merge(path, dir.file("partial.xml"), records), 1);

  const CIfcProyectPSet doc = read(path);
  const CIfcPropertySet* set = findSet(doc, "Muro");
  ASSERT_NE(set, nullptr);
  ASSERT_EQ(set->properties.size(), 7u);
  const auto& p = set->properties;
  EXPECT_EQ(p[0].intValue, 12);
  EXPECT_DOUBLE_EQ(p[1].realValue, 1.235);  // three decimals survive the file
  EXPECT_EQ(p[2].intValue, 5);
  EXPECT_STREQ(p[2].textValue, "");
  EXPECT_STREQ(p[3].textValue, "Hormigon");
  EXPECT_STREQ(p[4].textValue, "Verde");
  EXPECT_STREQ(p[4].enumName, "Colores");  // an existing property keeps its enumerated type
  EXPECT_EQ(p[5].valueType, 4);
  EXPECT_EQ(p[5].intValue, 0);
  EXPECT_STREQ(p[6].textValue, "");
  EXPECT_NE(readBytes(path).find("<Value>No</Value>"), std::string::npos);
}

TEST(SetPropiedadesFichero, UpdatesTheMatchingPropertyIgnoringCaseAndKeepsItsDefinition) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  ASSERT_EQ(merge(path, dir.file("partial.xml"), {propertyRecord(1, "MURO", "ENTERO", "4.5", 3)}), 1);

  const CIfcProyectPSet doc = read(path);
  EXPECT_EQ(setNames(doc), std::vector<std::string>{"Muro"});
  const CIfcPropertyName& updated = doc.propertySets[0].properties[0];
  EXPECT_STREQ(updated.name, "Entero");
  EXPECT_EQ(updated.valueType, 1);
  EXPECT_DOUBLE_EQ(updated.realValue, 4.5);
  EXPECT_EQ(updated.unit, 3);
  EXPECT_STREQ(updated.description, "");  // updating empties the description
  EXPECT_STREQ(updated.rule, "r1");
  EXPECT_TRUE(updated.optional);
  EXPECT_EQ(doc.propertySets[0].properties.size(), 7u);
  EXPECT_EQ(doc.relations.size(), 1u);
  EXPECT_EQ(doc.enums.size(), 1u);
}

TEST(SetPropiedadesFichero, AppendsUnknownSetsAtTheEndWithBareProperties) {
  TempDir dir;
  const std::string path =
      dir.write("p.xml", psetFile("", propertySet("B", property("x", "String", "1")) + propertySet("C")));
  ASSERT_EQ(merge(path, dir.file("partial.xml"),
                  {propertyRecord(3, "A", "Color", "Rojo", 0, "Colores"), propertyRecord(0, "C", "n", "3")}),
            1);

  const std::string file = readBytes(path);
  const auto at = positionsIn(file, {"Name=\"B\"", "Name=\"C\"", "Name=\"A\""});
  EXPECT_LT(at[0], at[1]);
  EXPECT_LT(at[1], at[2]);  // not sorted in before saving
  ASSERT_NE(at[2], std::string::npos);

  const CIfcProyectPSet doc = read(path);
  const CIfcPropertySet* added = findSet(doc, "A");
  ASSERT_NE(added, nullptr);
  EXPECT_STREQ(added->description, "");
  ASSERT_EQ(added->properties.size(), 1u);
  const CIfcPropertyName& color = added->properties[0];
  EXPECT_EQ(color.valueType, 3);
  EXPECT_STREQ(color.enumName, "Colores");  // a new property takes the record's enumerated type
  EXPECT_STREQ(color.textValue, "Rojo");
  EXPECT_STREQ(color.description, "");
  EXPECT_STREQ(color.rule, "");
  EXPECT_FALSE(color.optional);
  EXPECT_EQ(propertyNames(*findSet(doc, "C")), std::vector<std::string>{"n"});
}

TEST(SetPropiedadesFichero, WritesThePartialDocumentOfTheNamedSetsOnly) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  const std::string partial = dir.file("partial.xml");
  ASSERT_EQ(merge(path, partial,
                  {propertyRecord(2, "Zeta", "z2", "b"), propertyRecord(2, "muro", "Texto", "Piedra"),
                   propertyRecord(2, "ZETA", "z1", "a"), propertyRecord(0, "Muro", "Entero", "9")}),
            1);

  // Sets in order of first appearance, named as the first record named them, with the records'
  // properties in record order.
  const std::string file = readBytes(partial);
  const auto at = positionsIn(file, {"Name=\"Zeta\"", "Name=\"z2\"", "Name=\"z1\"", "Name=\"muro\"",
                                     "Name=\"Texto\"", "Name=\"Entero\""});
  for (std::size_t i = 0; i + 1 < at.size(); ++i) EXPECT_LT(at[i], at[i + 1]) << i;
  EXPECT_EQ(file.find("Name=\"Real\""), std::string::npos);

  const CIfcProyectPSet doc = read(partial);
  EXPECT_EQ(setNames(doc), (std::vector<std::string>{"muro", "Zeta"}));
  EXPECT_EQ(doc.enums.size(), 1u);
  EXPECT_STREQ(doc.enums[0].name, "Colores");
  EXPECT_TRUE(doc.relations.empty());
  EXPECT_EQ(propertyNames(*findSet(doc, "muro")), (std::vector<std::string>{"Texto", "Entero"}));
  EXPECT_STREQ(findSet(doc, "muro")->properties[0].textValue, "Piedra");
}

TEST(SetPropiedadesFichero, TheLaterOfTwoRecordsForOnePropertyWins) {
  TempDir dir;
  const std::string path = dir.write("p.xml", psetFile("", ""));
  const std::string partial = dir.file("partial.xml");
  ASSERT_EQ(merge(path, partial,
                  {propertyRecord(2, "S", "p", "primero"), propertyRecord(2, "s", "P", "segundo")}),
            1);
  for (const std::string& file : {path, partial}) {
    const CIfcProyectPSet doc = read(file);
    ASSERT_EQ(doc.propertySets.size(), 1u) << file;
    ASSERT_EQ(doc.propertySets[0].properties.size(), 1u) << file;
    EXPECT_STREQ(doc.propertySets[0].properties[0].textValue, "segundo") << file;
  }
}

TEST(SetPropiedadesFichero, UpdatesTheFirstOfSetsAndPropertiesThatDifferOnlyInCase) {
  TempDir dir;
  const std::string path = dir.write(
      "p.xml",
      psetFile("", propertySet("Muros", property("Alto", "String", "1") + property("ALTO", "String", "2")) +
                       propertySet("MUROS", property("alto", "String", "3"))));
  const CIfcProyectPSet before = read(path);  // the order of the two sets after loading is not fixed
  ASSERT_EQ(merge(path, dir.file("partial.xml"), {propertyRecord(2, "muros", "alto", "nuevo")}), 1);

  const CIfcProyectPSet after = read(path);
  ASSERT_EQ(setNames(after), setNames(before));
  const CIfcPropertySet& first = after.propertySets[0];
  const CIfcPropertySet& second = after.propertySets[1];
  EXPECT_STREQ(first.properties[0].textValue, "nuevo");
  for (std::size_t i = 1; i < first.properties.size(); ++i)
    EXPECT_STREQ(first.properties[i].textValue, before.propertySets[0].properties[i].textValue);
  for (std::size_t i = 0; i < second.properties.size(); ++i)
    EXPECT_STREQ(second.properties[i].textValue, before.propertySets[1].properties[i].textValue);
}

TEST(SetPropiedadesFichero, CountZeroWritesNoPartialDocument) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  const std::string original = readBytes(path);
  const std::string partial = dir.file("partial.xml");

  EXPECT_EQ(setPropiedadesFichero(path.c_str(), partial.c_str(), nullptr, 0, 0), 1);
  EXPECT_FALSE(fs::exists(partial));
  EXPECT_FALSE(fs::exists(path + ".bak"));
  EXPECT_EQ(readBytes(path), original);

  // Saving rewrites the document as it was, keeping the old file as its backup.
  EXPECT_EQ(setPropiedadesFichero(path.c_str(), partial.c_str(), nullptr, -1, 1), 1);
  EXPECT_FALSE(fs::exists(partial));
  EXPECT_EQ(readBytes(path + ".bak"), original);
  const CIfcProyectPSet doc = read(path);
  ASSERT_EQ(doc.propertySets.size(), 1u);
  EXPECT_EQ(doc.propertySets[0].properties.size(), 7u);
}

TEST(SetPropiedadesFichero, WithoutSaveWritesOnlyThePartialDocument) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  const std::string original = readBytes(path);
  const std::string partial = dir.file("partial.xml");
  ASSERT_EQ(merge(path, partial, {propertyRecord(2, "Nuevo", "p", "v")}, 0), 1);
  EXPECT_EQ(readBytes(path), original);
  EXPECT_NE(findSet(read(partial), "Nuevo"), nullptr);
}

TEST(SetPropiedadesFichero, AMissingDocumentGetsOnlyTheRecordsSets) {
  TempDir dir;
  const std::string path = dir.file("new.xml");
  ASSERT_EQ(merge(path, dir.file("partial.xml"), {propertyRecord(0, "S", "n", "1")}), 1);
  const CIfcProyectPSet doc = read(path);
  EXPECT_EQ(setNames(doc), std::vector<std::string>{"S"});
  EXPECT_EQ(doc.propertySets[0].properties.at(0).intValue, 1);
}

TEST(SetPropiedadesFichero, ReadsHostFieldsOnlyToTheirEnd) {
  TempDir dir;
  const std::string path = dir.write("p.xml", psetFile("", ""));
  // Every text fills its field without a terminator; the bytes after each belong to other fields.
  FlatPropertyRecord record = propertyRecord(2, std::string(256, 'S'), std::string(256, 'P'),
                                             std::string(256, 'V'), 0x07070707);
  put(record.enumName, std::string(256, 'E'));
  ASSERT_EQ(setPropiedadesFichero(path.c_str(), dir.file("partial.xml").c_str(), &record, 1, 1), 1);

  const CIfcProyectPSet doc = read(path);
  ASSERT_EQ(doc.propertySets.size(), 1u);
  EXPECT_EQ(std::string(doc.propertySets[0].name), std::string(256, 'S'));
  ASSERT_EQ(doc.propertySets[0].properties.size(), 1u);
  EXPECT_EQ(std::string(doc.propertySets[0].properties[0].name), std::string(256, 'P'));
  EXPECT_EQ(std::string(doc.propertySets[0].properties[0].textValue), std::string(256, 'V'));
}

TEST(SetPropiedadesFichero, NullArgumentsChangeNothing) {
  TempDir dir;
  const std::string path = dir.write("p.xml", everyTypeFile());
  const std::string original = readBytes(path);
  const std::string partial = dir.file("partial.xml");
  const FlatPropertyRecord record = propertyRecord(2, "S", "p", "v");
  EXPECT_EQ(setPropiedadesFichero(nullptr, partial.c_str(), &record, 1, 1), 0);
  EXPECT_EQ(setPropiedadesFichero(path.c_str(), partial.c_str(), nullptr, 1, 1), 0);
  EXPECT_EQ(setPropiedadesFichero(path.c_str(), nullptr, &record, 1, 1), 0);
  EXPECT_EQ(readBytes(path), original);
  EXPECT_FALSE(fs::exists(partial));
  EXPECT_FALSE(fs::exists(path + ".bak"));
}

// --- Enumerated type literals -------------------------------------------------------------

class GetEnumerados : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = dir_.write("p.xml", everyTypeFile());
    for (auto& buffer : buffers_) std::memset(buffer, kHostByte, sizeof buffer);
    for (int i = 0; i < 4; ++i) pointers_[i] = buffers_[i];
  }

  int call(const char* typeName, int maxValues) {
    std::string name = typeName;
    return getEnumerados(path_.data(), name.data(), pointers_, maxValues);
  }

  TempDir dir_;
  std::string path_;
  char buffers_[4][600];
  char* pointers_[4];
};

bool untouched(const char* buffer) { return static_cast<unsigned char>(buffer[0]) == kHostByte; }

TEST_F(GetEnumerados, CopiesTheLiteralsOfTheTypeFoundIgnoringCaseUpToMaxValues) {
  EXPECT_EQ(call("COLORES", 4), 3);
  EXPECT_STREQ(buffers_[0], "Rojo");
  EXPECT_STREQ(buffers_[1], "Azul");
  EXPECT_STREQ(buffers_[2], "Verde");
  EXPECT_TRUE(untouched(buffers_[3]));
  EXPECT_TRUE(untouched(buffers_[0] + 5));
  SetUp();
  EXPECT_EQ(call("colores", 2), 2);
  EXPECT_STREQ(buffers_[1], "Azul");
  EXPECT_TRUE(untouched(buffers_[2]));
  pointers_[1] = nullptr;  // a null buffer ends the copy
  EXPECT_EQ(call("Colores", 4), 1);
}

TEST_F(GetEnumerados, NoRoomAnUnknownTypeOrANullArgumentLeavesTheBuffersAlone) {
  EXPECT_EQ(call("colores", 0), 0);
  EXPECT_EQ(call("colores", -1), 0);
  EXPECT_EQ(call("Tamanos", 4), 0);
  EXPECT_EQ(getEnumerados(nullptr, nullptr, pointers_, 4), 0);
  EXPECT_EQ(getEnumerados(path_.data(), nullptr, pointers_, 4), 0);
  std::string name = "Colores";
  EXPECT_EQ(getEnumerados(path_.data(), name.data(), nullptr, 4), 0);
  for (auto& buffer : buffers_) EXPECT_TRUE(untouched(buffer));
}

TEST_F(GetEnumerados, CutsLiteralsAt511Bytes) {
  const std::string literal(700, 'L');
  path_ = dir_.write("long.xml",
                psetFile("<TypeEnum Name=\"Largo\" Description=\"\"><Elements><Element Value=\"1\">" + literal +
                             "</Element></Elements></TypeEnum>",
                         ""));
  EXPECT_EQ(call("Largo", 1), 1);
  EXPECT_EQ(std::string(buffers_[0]), std::string(511, 'L'));
  EXPECT_TRUE(untouched(buffers_[0] + 512));
}

}  // namespace
