// orvane qsets list | merge on real files.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "orvane/ifc_proyect_qset.h"
#include "support/documents.h"
#include "tools/tool_fixture.h"

using namespace orvane::test;

namespace {

std::string quantity(const std::string& name, const std::string& kind, const std::string& value) {
  return "<QuantityName Name=\"" + name + "\" TypeQuorsel=\"" + kind + "\" Export=\"No\"><Description>d</Description><Value>" +
         value + "</Value></QuantityName>";
}

std::string quantitySet(const std::string& name, const std::string& quantities, const std::string& linked = "") {
  return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"" + linked + "\">" + quantities + "</QuantitySet>";
}

std::string wallsDocument() {
  return qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel><TypeQuorsel>IfcAreaMeasure</TypeQuorsel>"
                  "<TypeQuorsel>IfcVolumeMeasure</TypeQuorsel>",
                  "<ObjectQuorsel>Muro</ObjectQuorsel>",
                  quantitySet("walls", quantity("area", "IfcAreaMeasure", "3.0") + quantity("Volume", "IfcVolumeMeasure", "1.25")) +
                      quantitySet("Beams", quantity("Length", "IfcLengthMeasure", "12.3456"), "Muro"));
}

class QsetsList : public ToolTest {};

TEST_F(QsetsList, GivesEveryQuantityInEachFormat) {
  const std::string document = write("q.xml", wallsDocument());
  const CliResult table = run({"qsets", "list", document});
  ASSERT_EQ(table.status, 0) << table.err;
  EXPECT_EQ(table.out,
            "set    quantity  kind    value\n"
            "-----  --------  ------  ------\n"
            "Beams  Length    length  12.346\n"
            "walls  area      area    3.000\n"
            "walls  Volume    volume  1.250\n");
  EXPECT_EQ(run({"qsets", "list", document, "--format", "csv"}).out,
            "set,quantity,kind,value\nBeams,Length,length,12.346\nwalls,area,area,3.000\nwalls,Volume,volume,1.250\n");
  const nlohmann::json json = nlohmann::json::parse(run({"qsets", "list", document, "--format", "json"}).out);
  ASSERT_EQ(json.size(), 3u);
  EXPECT_EQ(json[2], (nlohmann::json{{"set", "walls"}, {"quantity", "Volume"}, {"kind", "volume"}, {"value", 1.25}}));
}

TEST_F(QsetsList, RefusesAPropertySetDocument) {
  expectError(run({"qsets", "list", write("p.xml", psetFile("", ""))}),
              "a property-set document where a quantity-set document is expected");
}

class QsetsMerge : public ToolTest {
 protected:
  void SetUp() override { document = write("q.xml", wallsDocument()); }
  std::string document;
};

TEST_F(QsetsMerge, OnlyAddsAndWritesTheNamedSetsApart) {
  const std::string records = write("r.csv",
                                    "set,quantity,kind,value\n"
                                    "Walls,Area,area,12.5\n"
                                    "Walls,Height,IfcLengthMeasure,2.75\n"
                                    "Slabs,Volume,VOLUME,0.1\n"
                                    "Slabs,Volume,volume,9\n");
  // Without --save, as psets merge: only OUT is written.
  const std::string before = readBytes(document);
  ASSERT_EQ(run({"qsets", "merge", document, path("unsaved.xml"), records}).status, 0);
  EXPECT_EQ(readBytes(document), before);
  EXPECT_FALSE(exists("q.xml.bak"));
  const CliResult merged = run({"qsets", "merge", document, path("out.xml"), records, "--save"});
  ASSERT_EQ(merged.status, 0) << merged.err;
  EXPECT_EQ(readBytes(path("unsaved.xml")), readBytes(path("out.xml")));
  EXPECT_NE(merged.out.find("Merged 4 records"), std::string::npos);
  EXPECT_TRUE(exists("q.xml.bak"));
  // The quantity walls/area keeps its 3.0; of the two Slabs/Volume records the first wins.
  EXPECT_EQ(run({"qsets", "list", document, "--format", "csv"}).out,
            "set,quantity,kind,value\n"
            "Beams,Length,length,12.346\n"
            "Slabs,Volume,volume,0.100\n"
            "walls,area,area,3.000\n"
            "walls,Volume,volume,1.250\n"
            "walls,Height,length,2.750\n");
  EXPECT_EQ(run({"qsets", "list", path("out.xml"), "--format", "csv"}).out,
            "set,quantity,kind,value\n"
            "Slabs,Volume,volume,0.100\n"
            "Walls,Area,area,12.500\n"
            "Walls,Height,length,2.750\n");
  CIfcProyectQSet after;
  ASSERT_EQ(after.lee(document.c_str()), 1);
  EXPECT_EQ(after.objects.size(), 1u);  // types and objects pass through
  EXPECT_EQ(after.types.size(), 3u);
}

TEST_F(QsetsMerge, BadRecordsAreRefusedAndTheDocumentStaysAsItWas) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"S,Q,weight,1\n", "r.csv:1: unknown kind \"weight\" (expected length, area or volume)"},
      {"S,Q,area,12abc\n", "r.csv:1: value \"12abc\" is not a number"},
      {"S,Q,area,\n", "r.csv:1: value \"\" is not a number"},
      {"S,Q,area\n", "r.csv:1: 3 fields where set,quantity,kind,value are expected"},
      {"S,Q,area,1,x\n", "r.csv:1: 5 fields"},
      {"set,quantity,value,kind\n", "r.csv:1: a header line must name the columns set,quantity,kind,value"},
  };
  const std::string before = readBytes(document);
  for (const auto& [csv, message] : cases) {
    SCOPED_TRACE(csv);
    expectError(run({"qsets", "merge", document, path("out.xml"), write("r.csv", csv)}), message);
    EXPECT_EQ(readBytes(document), before);
    EXPECT_FALSE(exists("out.xml"));
  }
}

TEST_F(QsetsMerge, RefusesAMissingDocumentAndAnOutputOverIt) {
  const std::string records = write("r.csv", "S,Q,area,1\n");
  expectError(run({"qsets", "merge", path("none.xml"), path("out.xml"), records}), "none.xml: no such file");
  expectError(run({"qsets", "merge", document, document, records}), "the output must be another file");
}

}  // namespace
