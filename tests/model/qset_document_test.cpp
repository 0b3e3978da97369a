// The quantity-set document as a file.
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

std::vector<std::string> setNames(const CIfcProyectQSet& doc) {
  std::vector<std::string> names;
  for (const CIfcQuantitySet& set : doc.quantitySets) names.emplace_back(set.name);
  return names;
}

std::string emptySet(const std::string& name) {
  return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"\"/>";
}

CIfcProyectQSet sampleDocument() {
  CIfcProyectQSet doc;
  for (const char* kind : QuantityMeasureNames) {
    doc.types.emplace_back();
    std::strcpy(doc.types.back().name, kind);
  }
  for (const char* object : {"Eje", "Superficie"}) {
    doc.objects.emplace_back();
    std::strcpy(doc.objects.back().name, object);
  }
  CIfcQuantitySet walls;
  std::strcpy(walls.name, "Muros");
  std::strcpy(walls.description, "Medici\xC3\xB3n de muros");
  std::strcpy(walls.typeZep, "Superficie");
  CIfcQuantityName area;
  std::strcpy(area.name, "Area");
  std::strcpy(area.description, "Area neta");
  area.measureType = AreaMeasure;
  area.value = 12.5;
  CIfcQuantityName length;
  std::strcpy(length.name, "Longitud");
  length.exported = false;
  walls.quantities = {area, length};
  doc.quantitySets.push_back(walls);
  return doc;
}

class QsetDocument : public ::testing::Test {
 protected:
  TempDir dir;
  MessageRecorder messages;
};

TEST_F(QsetDocument, WritesTheExpectedBytes) {
  CIfcProyectQSet doc = sampleDocument();
  const std::string path = dir.file("sample.xml");
  EXPECT_EQ(doc.graba(path.c_str()), 1);
  expectGolden(path, "qset_small.xml");
}

TEST_F(QsetDocument, SetsAreSortedOnLoadAndWrittenInThatOrder) {
  CIfcProyectQSet doc = load<CIfcProyectQSet>(dir, qsetFile("", "", emptySet("b") + emptySet("A") + emptySet("c")));
  EXPECT_EQ(setNames(doc), (std::vector<std::string>{"A", "b", "c"}));
  const std::string written = readBytes((doc.graba(dir.file("out.xml").c_str()), dir.file("out.xml")));
  EXPECT_LT(written.find("Name=\"A\""), written.find("Name=\"b\""));
  EXPECT_LT(written.find("Name=\"b\""), written.find("Name=\"c\""));
}

TEST_F(QsetDocument, TypesAndObjectsKeepFileOrder) {
  CIfcProyectQSet doc = load<CIfcProyectQSet>(
      dir, qsetFile("<TypeQuorsel>z</TypeQuorsel><TypeQuorsel>a</TypeQuorsel>",
                    "<ObjectQuorsel>Superficie</ObjectQuorsel><ObjectQuorsel>Eje</ObjectQuorsel>", ""));
  ASSERT_EQ(doc.types.size(), 2u);
  EXPECT_STREQ(doc.types[0].name, "z");
  ASSERT_EQ(doc.objects.size(), 2u);
  EXPECT_STREQ(doc.objects[0].name, "Superficie");
}

TEST_F(QsetDocument, MissingListsReadAsEmptyAndAreWrittenEmpty) {
  int result = 0;
  CIfcProyectQSet doc = load<CIfcProyectQSet>(
      dir, "<QuantitiesSetQuorsel><QuantitiesSet>" + emptySet("S") + "</QuantitiesSet></QuantitiesSetQuorsel>", &result);
  EXPECT_EQ(result, 1);
  EXPECT_TRUE(doc.types.empty());
  EXPECT_TRUE(doc.objects.empty());
  const std::string path = dir.file("out.xml");
  doc.graba(path.c_str());
  const std::string written = readBytes(path);
  EXPECT_NE(written.find("<TypesQuorsel/>"), std::string::npos);
  EXPECT_NE(written.find("<ObjectsQuorsel/>"), std::string::npos);
}

TEST_F(QsetDocument, AnEmptyDocumentIsWrittenWithItsThreeLists) {
  CIfcProyectQSet doc;
  const std::string path = dir.file("empty.xml");
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path),
            "<?xml version=\"1.0\"?>\r\n<QuantitiesSetQuorsel>\r\n    <TypesQuorsel/>\r\n"
            "    <ObjectsQuorsel/>\r\n    <QuantitiesSet/>\r\n</QuantitiesSetQuorsel>\r\n");
}

TEST_F(QsetDocument, ASecondLoadDoublesTheContents) {
  CIfcProyectQSet doc = sampleDocument();
  const std::string path = dir.file("doc.xml");
  doc.graba(path.c_str());
  CIfcProyectQSet twice;
  ASSERT_EQ(twice.lee(path.c_str()), 1);
  ASSERT_EQ(twice.lee(path.c_str()), 1);
  EXPECT_EQ(twice.quantitySets.size(), 2u);
  EXPECT_EQ(twice.types.size(), 6u);
  EXPECT_EQ(twice.objects.size(), 4u);
}

TEST_F(QsetDocument, AnotherRootReadsAsEmptyWithoutMessage) {
  int result = 0;
  CIfcProyectQSet doc = load<CIfcProyectQSet>(dir, psetFile("", "<PropertySet Name=\"A\" Description=\"\"/>"), &result);
  EXPECT_EQ(result, 1);
  EXPECT_TRUE(doc.quantitySets.empty());
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(QsetDocument, SavingTwiceLeavesTheFirstSaveInTheBackup) {
  const std::string path = dir.file("doc.xml");
  CIfcProyectQSet doc = sampleDocument();
  doc.graba(path.c_str());
  const std::string firstSave = readBytes(path);
  doc.quantitySets.clear();
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), firstSave);
  EXPECT_NE(readBytes(path), firstSave);
}

TEST_F(QsetDocument, CopiesAreDeep) {
  CIfcProyectQSet doc = sampleDocument();
  CIfcProyectQSet copy = doc;
  copy.quantitySets[0].quantities.clear();
  copy.types.clear();
  EXPECT_EQ(doc.quantitySets[0].quantities.size(), 2u);
  EXPECT_EQ(doc.types.size(), 3u);
  CIfcProyectQSet assigned;
  assigned = doc;
  EXPECT_EQ(assigned.objects.size(), 2u);
  EXPECT_EQ(doc.edita(), 0);
}

}  // namespace
