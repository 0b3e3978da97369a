// The quantity-set document as a file.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/documents.h"
#include "support/golden.h"
#include "support/message_recorder.h"
#include "support/outline.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

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

// A file as the document it loads: its result, what it holds and the messages shown.
TEST_F(QsetDocument, FilesLoadAs) {
  const std::string area = " TypeQuorsel=\"IfcAreaMeasure\"><Description>d</Description><Value>1</Value></QuantityName>";
  const struct {
    const char* what;
    std::string file;
    Outline holds;
    std::vector<std::string> messages;
  } rows[] = {
      {"another root reads as empty, without a message",
       psetFile("", "<PropertySet Name=\"A\" Description=\"\"/>"), {}, {}},
      {"missing lists read as empty", "<QuantitiesSetQuorsel><QuantitiesSet>" + emptySet("S") +
       "</QuantitiesSet></QuantitiesSetQuorsel>", {"set S:"}, {}},
      {"sets sorted by name, types and objects in file order",
       qsetFile("<TypeQuorsel>z</TypeQuorsel><TypeQuorsel>a</TypeQuorsel>",
                "<ObjectQuorsel>Superficie</ObjectQuorsel><ObjectQuorsel>Eje</ObjectQuorsel>",
                emptySet("b") + emptySet("A") + emptySet("c")),
       {"type z", "type a", "object Superficie", "object Eje", "set A:", "set b:", "set c:"}, {}},
      {"a quantity missing a required part is left out with its message",
       qsetFile("", "", "<QuantitySet Name=\"S\" Description=\"\" typeZep=\"\"><QuantityName Name=\"A\"" + area +
                "<QuantityName Name=\"B\" Export=\"Yes\"><Description/></QuantityName>"
                "<QuantityName Name=\"C\" Export=\"No\"" + area + "</QuantitySet>"),
       {"set S: C,"}, {"Error lectura XML. CIfcQuantityName", "Error lectura XML. CIfcQuantityName"}},
      {"a set missing an attribute ends the reading of sets",
       qsetFile("", "", emptySet("A") + "<QuantitySet Name=\"B\" Description=\"\"/>" + emptySet("C")),
       {"set A:"}, {"Error lectura XML. CIfcQuantitySet"}},
      {"a type or object without text ends its list only",
       qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel><TypeQuorsel/><TypeQuorsel>IfcVolumeMeasure</TypeQuorsel>",
                "<ObjectQuorsel>Eje</ObjectQuorsel><ObjectQuorsel></ObjectQuorsel><ObjectQuorsel>Muro</ObjectQuorsel>",
                emptySet("S")),
       {"type IfcLengthMeasure", "object Eje", "set S:"},
       {"Error lectura XML. CIfcType", "Error lectura XML. CIfcObject"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    MessageRecorder shown;
    int result = -1;
    const CIfcProyectQSet doc = load<CIfcProyectQSet>(dir, row.file, &result);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(outline(doc), row.holds);
    EXPECT_EQ(shown.messages(), row.messages);
  }
}

// Lists, even empty or missing from the file read, are written.
TEST_F(QsetDocument, AnEmptyDocumentIsWrittenWithItsThreeLists) {
  CIfcProyectQSet doc;
  const std::string path = dir.file("empty.xml");
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path),
            "<?xml version=\"1.0\"?>\r\n<QuantitiesSetQuorsel>\r\n    <TypesQuorsel/>\r\n"
            "    <ObjectsQuorsel/>\r\n    <QuantitiesSet/>\r\n</QuantitiesSetQuorsel>\r\n");
}

TEST_F(QsetDocument, SetsAreWrittenInTheOrderSortedOnLoad) {
  CIfcProyectQSet doc = load<CIfcProyectQSet>(dir, qsetFile("", "", emptySet("b") + emptySet("A") + emptySet("c")));
  const std::string written = readBytes((doc.graba(dir.file("out.xml").c_str()), dir.file("out.xml")));
  EXPECT_LT(written.find("Name=\"A\""), written.find("Name=\"b\""));
  EXPECT_LT(written.find("Name=\"b\""), written.find("Name=\"c\""));
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
