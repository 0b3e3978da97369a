// getCuantificadoresFichero and setCuantificadoresFichero on real files, through liborvane.so.
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

std::string quantity(const std::string& name, const std::string& kind, const std::string& value,
                     const std::string& exported = "Yes", const std::string& description = "") {
  return "<QuantityName Name=\"" + name + "\" TypeQuorsel=\"" + kind + "\" Export=\"" + exported +
         "\"><Description>" + description + "</Description><Value>" + value + "</Value></QuantityName>";
}

std::string quantitySet(const std::string& name, const std::string& quantities) {
  return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"\">" + quantities + "</QuantitySet>";
}

CIfcProyectQSet read(const std::string& path) {
  CIfcProyectQSet doc;
  EXPECT_EQ(doc.lee(path.c_str()), 1) << path;
  return doc;
}

int merge(const std::string& path, const std::string& out, const std::vector<FlatQuantityRecord>& records) {
  return setCuantificadoresFichero(path.c_str(), out.c_str(), records.data(), static_cast<int>(records.size()));
}

// Three sets of four quantities each, stored out of name order.
std::string twelveQuantities() {
  auto four = [](const std::string& prefix) {
    return quantity(prefix + "1", "IfcLengthMeasure", "1") + quantity(prefix + "2", "IfcAreaMeasure", "2") +
           quantity(prefix + "3", "IfcVolumeMeasure", "3") + quantity(prefix + "4", "IfcAreaMeasure", "4.25", "No");
  };
  return qsetFile("", "", quantitySet("c", four("c")) + quantitySet("A", four("a")) + quantitySet("b", four("b")));
}

std::string wallsFile() {
  return qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel>", "<ObjectQuorsel>Muro</ObjectQuorsel>",
                  quantitySet("walls", quantity("area", "IfcAreaMeasure", "3.0", "No", "medida")));
}

// --- Reading quantities into records --------------------------------------------------------

TEST(GetCuantificadoresFichero, FillsUpToMaxRecordsInSortedSetOrder) {
  TempDir dir;
  const std::string path = dir.write("q.xml", twelveQuantities());
  auto records = hostRecords<FlatQuantityRecord>(12);
  ASSERT_EQ(getCuantificadoresFichero(path.c_str(), records.data(), 10), 10);
  const char* expected[10][2] = {{"A", "a1"}, {"A", "a2"}, {"A", "a3"}, {"A", "a4"}, {"b", "b1"},
                                 {"b", "b2"}, {"b", "b3"}, {"b", "b4"}, {"c", "c1"}, {"c", "c2"}};
  for (int i = 0; i < 10; ++i) {
    EXPECT_STREQ(records[i].setName, expected[i][0]) << i;
    EXPECT_STREQ(records[i].quantityName, expected[i][1]) << i;
  }
  EXPECT_EQ(records[1].measureType, 1);
  EXPECT_EQ(records[2].measureType, 2);
  EXPECT_EQ(records[3].value, 4.25);  // not exported, delivered all the same
  EXPECT_TRUE(untouchedFrom(records[10].setName, 0));
}

TEST(GetCuantificadoresFichero, NoQuantitiesOrNoRoomGiveNoRecords) {
  TempDir dir;
  const std::string twelve = dir.write("q.xml", twelveQuantities());
  const std::string empty = dir.write("empty.xml", qsetFile("", "", quantitySet("S", "")));
  const std::string missing = dir.file("missing.xml");
  auto records = hostRecords<FlatQuantityRecord>(1);
  const struct { const char* path; FlatQuantityRecord* records; int max; } cases[] = {
      {twelve.c_str(), records.data(), 0}, {twelve.c_str(), records.data(), -1}, {missing.c_str(), records.data(), 1},
      {empty.c_str(), records.data(), 1},  {nullptr, records.data(), 1},         {empty.c_str(), nullptr, 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << (c.path ? c.path : "null") << " max " << c.max);
    EXPECT_EQ(getCuantificadoresFichero(c.path, c.records, c.max), 0);
    EXPECT_TRUE(untouchedFrom(records[0].setName, 0));
    EXPECT_EQ(records[0].measureType, static_cast<int32_t>(0x5A5A5A5A));
  }
}

// Names are cut at their field; the padding and the bytes after each terminator stay the host's.
TEST(GetCuantificadoresFichero, CutsLongNamesAndLeavesPaddingAndBytesAfterNamesAlone) {
  TempDir dir;
  const std::string path = dir.write(
      "q.xml", qsetFile("", "", quantitySet(std::string(400, 'S'), quantity(std::string(300, 'Q'), "IfcAreaMeasure", "1.5")) +
                                    quantitySet("walls", quantity("area", "IfcAreaMeasure", "3.0", "No", "medida"))));
  auto records = hostRecords<FlatQuantityRecord>(2);
  ASSERT_EQ(getCuantificadoresFichero(path.c_str(), records.data(), 2), 2);
  EXPECT_EQ(std::string(records[0].setName), std::string(255, 'S'));
  EXPECT_EQ(std::string(records[0].quantityName), std::string(255, 'Q'));
  EXPECT_EQ(records[0].value, 1.5);
  EXPECT_STREQ(records[1].setName, "walls");
  EXPECT_STREQ(records[1].quantityName, "area");
  EXPECT_EQ(records[1].value, 3.0);
  EXPECT_TRUE(untouchedFrom(records[1].setName, 6));
  EXPECT_TRUE(untouchedFrom(records[1].quantityName, 5));
  for (const FlatQuantityRecord& record : records)
    for (unsigned char byte : record.reserved) EXPECT_EQ(byte, kHostByte);
}

// --- Merging records into the file ----------------------------------------------------------

TEST(SetCuantificadoresFichero, OnlyAddsAndLeavesExistingQuantitiesAlone) {
  TempDir dir;
  const std::string path = dir.write("q.xml", wallsFile());
  const std::string out = dir.file("out.xml");
  ASSERT_EQ(merge(path, out, {quantityRecord(1, "Walls", "Area", 12.5)}), 1);

  const CIfcProyectQSet doc = read(path);
  ASSERT_EQ(doc.quantitySets.size(), 1u);
  ASSERT_EQ(doc.quantitySets[0].quantities.size(), 1u);
  const CIfcQuantityName& kept = doc.quantitySets[0].quantities[0];
  EXPECT_STREQ(kept.name, "area");
  EXPECT_EQ(kept.value, 3.0);
  EXPECT_FALSE(kept.exported);
  EXPECT_STREQ(kept.description, "medida");
  EXPECT_EQ(doc.types.size(), 1u);
  EXPECT_EQ(doc.objects.size(), 1u);

  const std::string written = readBytes(out);
  EXPECT_NE(written.find("Name=\"Walls\""), std::string::npos);
  EXPECT_NE(written.find("<Value>12.500</Value>"), std::string::npos);
  const CIfcProyectQSet partial = read(out);
  ASSERT_EQ(partial.quantitySets.size(), 1u);
  ASSERT_EQ(partial.quantitySets[0].quantities.size(), 1u);
  EXPECT_STREQ(partial.quantitySets[0].quantities[0].name, "Area");
  EXPECT_TRUE(partial.quantitySets[0].quantities[0].exported);
  EXPECT_TRUE(partial.types.empty());
  EXPECT_TRUE(partial.objects.empty());
}

TEST(SetCuantificadoresFichero, AppendsNewSetsAndQuantitiesAtTheEnd) {
  TempDir dir;
  const std::string path = dir.write("q.xml", wallsFile());
  const std::string out = dir.file("out.xml");
  ASSERT_EQ(merge(path, out,
                  {quantityRecord(2, "Zona", "Volumen", 7.0), quantityRecord(0, "WALLS", "Largo", 4.0),
                   quantityRecord(1, "Acera", "Superficie", 1.0)}),
            1);

  // Written in merge order: the existing set first, then the new ones as the records named them.
  const std::string file = readBytes(path);
  EXPECT_LT(file.find("Name=\"walls\""), file.find("Name=\"Zona\""));
  EXPECT_LT(file.find("Name=\"Zona\""), file.find("Name=\"Acera\""));
  const CIfcProyectQSet doc = read(path);
  ASSERT_EQ(doc.quantitySets.size(), 3u);
  const CIfcQuantitySet& walls = doc.quantitySets[1];  // Acera, walls, Zona
  ASSERT_STREQ(walls.name, "walls");
  ASSERT_EQ(walls.quantities.size(), 2u);
  EXPECT_STREQ(walls.quantities[1].name, "Largo");
  EXPECT_EQ(walls.quantities[1].measureType, 0);
  EXPECT_STREQ(walls.quantities[1].description, "");
  EXPECT_TRUE(walls.quantities[1].exported);

  const std::string partial = readBytes(out);
  EXPECT_LT(partial.find("Name=\"Zona\""), partial.find("Name=\"WALLS\""));
  EXPECT_LT(partial.find("Name=\"WALLS\""), partial.find("Name=\"Acera\""));
}

TEST(SetCuantificadoresFichero, TheFirstOfTwoRecordsForOneQuantityWins) {
  TempDir dir;
  const std::string path = dir.file("q.xml");
  const std::string out = dir.file("out.xml");
  ASSERT_EQ(merge(path, out, {quantityRecord(1, "S", "q", 1.0), quantityRecord(2, "s", "Q", 2.0)}), 1);
  for (const std::string& file : {path, out}) {
    const CIfcProyectQSet doc = read(file);
    ASSERT_EQ(doc.quantitySets.size(), 1u) << file;
    ASSERT_EQ(doc.quantitySets[0].quantities.size(), 1u) << file;
    EXPECT_EQ(doc.quantitySets[0].quantities[0].value, 1.0) << file;
    EXPECT_EQ(doc.quantitySets[0].quantities[0].measureType, 1) << file;
  }
}

TEST(SetCuantificadoresFichero, CountZeroRewritesTheFileSortedAndWritesAnEmptyOutput) {
  TempDir dir;
  const std::string original = twelveQuantities();
  const std::string path = dir.write("q.xml", original);
  const std::string out = dir.file("out.xml");
  ASSERT_EQ(setCuantificadoresFichero(path.c_str(), out.c_str(), nullptr, 0), 1);

  EXPECT_EQ(readBytes(path + ".bak"), original);
  const std::string file = readBytes(path);
  EXPECT_LT(file.find("Name=\"A\""), file.find("Name=\"b\""));
  EXPECT_LT(file.find("Name=\"b\""), file.find("Name=\"c\""));
  const CIfcProyectQSet empty = read(out);
  EXPECT_TRUE(empty.quantitySets.empty());
  EXPECT_TRUE(empty.types.empty());
  EXPECT_TRUE(empty.objects.empty());
  EXPECT_NE(readBytes(out).find("QuantitiesSet"), std::string::npos);
  EXPECT_FALSE(fs::exists(out + ".bak"));  // written once, over nothing
}

TEST(SetCuantificadoresFichero, TheOutputsBackupHoldsTheNewContents) {
  TempDir dir;
  const std::string path = dir.write("q.xml", wallsFile());
  const std::string out = dir.write("out.xml", "earlier output");
  ASSERT_EQ(merge(path, out, {quantityRecord(1, "Walls", "Area", 12.5)}), 1);
  EXPECT_EQ(readBytes(out + ".bak"), readBytes(out));
  EXPECT_NE(readBytes(out).find("Name=\"Walls\""), std::string::npos);
}

TEST(SetCuantificadoresFichero, ReadsHostNamesOnlyToTheirFieldsEnd) {
  TempDir dir;
  const std::string path = dir.file("q.xml");
  const FlatQuantityRecord record =
      quantityRecord(2, std::string(256, 'S'), std::string(256, 'Q'), 5.0);  // no terminators
  ASSERT_EQ(setCuantificadoresFichero(path.c_str(), dir.file("out.xml").c_str(), &record, 1), 1);
  const CIfcProyectQSet doc = read(path);
  ASSERT_EQ(doc.quantitySets.size(), 1u);
  EXPECT_EQ(std::string(doc.quantitySets[0].name), std::string(256, 'S'));
  ASSERT_EQ(doc.quantitySets[0].quantities.size(), 1u);
  EXPECT_EQ(std::string(doc.quantitySets[0].quantities[0].name), std::string(256, 'Q'));
  EXPECT_EQ(doc.quantitySets[0].quantities[0].value, 5.0);
}

TEST(SetCuantificadoresFichero, NullArgumentsChangeNothing) {
  TempDir dir;
  const std::string original = wallsFile();
  const std::string path = dir.write("q.xml", original);
  const std::string out = dir.file("out.xml");
  const FlatQuantityRecord record = quantityRecord(1, "S", "q", 1.0);
  EXPECT_EQ(setCuantificadoresFichero(nullptr, out.c_str(), &record, 1), 0);
  EXPECT_EQ(setCuantificadoresFichero(path.c_str(), nullptr, &record, 1), 0);
  EXPECT_EQ(setCuantificadoresFichero(path.c_str(), out.c_str(), nullptr, 1), 0);
  EXPECT_EQ(readBytes(path), original);
  EXPECT_FALSE(fs::exists(out));
  EXPECT_FALSE(fs::exists(path + ".bak"));
}

}  // namespace
