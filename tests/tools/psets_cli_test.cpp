// orvane psets list | merge | enums on real files.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "orvane/ifc_proyect_pset.h"
#include "support/documents.h"
#include "tools/tool_fixture.h"

using namespace orvane::test;

namespace {

// Sets Muro and arco (listed arco first: sets sort by name ignoring case), every value type.
std::string wallDocument() {
  return psetFile(
      "<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">Rojo</Element>"
      "<Element Value=\"2\">Azul</Element></Elements></TypeEnum>"
      "<TypeEnum Name=\"Vacio\" Description=\"\"><Elements/></TypeEnum>",
      propertySet("Muro", property("Alto", "Real", "2.5", "Optional=\"No\" Unit=\"m\" Rule=\"\"") +
                              property("Color", "Colores", "Azul") + property("Portante", "Boolean", "Yes") +
                              property("Nota", "String", "a, &quot;b&quot;") +
                              property("Fecha", "DateTime", "2026-11-21")) +
          propertySet("arco", property("Piezas", "Integer", "-7")));
}

std::string manyPropertiesDocument(int count) {
  std::string properties;
  for (int i = 0; i < count; ++i) properties += property("P" + std::to_string(i), "Integer", std::to_string(i));
  return psetFile("", propertySet("Grande", properties));
}

CIfcProyectPSet load(const std::string& path) {
  CIfcProyectPSet document;
  EXPECT_EQ(document.lee(path.c_str()), 1) << path;
  return document;
}

const CIfcPropertyName* findProperty(const CIfcProyectPSet& document, const std::string& set, const std::string& name) {
  for (const CIfcPropertySet& s : document.propertySets)
    for (const CIfcPropertyName& p : s.properties)
      if (set == s.name && name == p.name) return &p;
  return nullptr;
}

class PsetsList : public ToolTest {};

TEST_F(PsetsList, TableShowsEachRecordOnAnAlignedLine) {
  const CliResult result = run({"psets", "list", write("doc.xml", wallDocument())});
  ASSERT_EQ(result.status, 0) << result.err;
  const std::vector<std::string> rows = lines(result.out);
  ASSERT_EQ(rows.size(), 8u) << result.out;
  EXPECT_EQ(rows[0], "set   property  type        value   unit  enum");
  EXPECT_EQ(rows[1], "----  --------  ----------  ------  ----  -------");
  EXPECT_EQ(rows[2], "arco  Piezas    Integer     -7");
  EXPECT_EQ(rows[3], "Muro  Alto      Real        2.500   m");
  EXPECT_EQ(rows[4], "Muro  Color     Enumerated  Azul          Colores");
  EXPECT_EQ(rows[5], "Muro  Portante  Boolean");
  EXPECT_EQ(rows[6], "Muro  Nota      String      a, \"b\"");
  EXPECT_EQ(rows[7], "Muro  Fecha     DateTime");
}

TEST_F(PsetsList, CsvQuotesWhatNeedsIt) {
  const CliResult result = run({"psets", "list", write("doc.xml", wallDocument()), "--format", "csv"});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out,
            "set,property,type,value,unit,enum\n"
            "arco,Piezas,Integer,-7,,\n"
            "Muro,Alto,Real,2.500,m,\n"
            "Muro,Color,Enumerated,Azul,,Colores\n"
            "Muro,Portante,Boolean,,,\n"
            "Muro,Nota,String,\"a, \"\"b\"\"\",,\n"
            "Muro,Fecha,DateTime,,,\n");
}

TEST_F(PsetsList, JsonGivesOneObjectPerRecord) {
  const CliResult result = run({"psets", "list", write("doc.xml", wallDocument()), "--format", "json"});
  ASSERT_EQ(result.status, 0) << result.err;
  const nlohmann::json records = nlohmann::json::parse(result.out);
  ASSERT_EQ(records.size(), 6u);
  EXPECT_EQ(records[1], (nlohmann::json{{"set", "Muro"}, {"property", "Alto"}, {"type", "Real"},
                                         {"value", "2.500"}, {"unit", "m"}, {"enum", ""}}));
  EXPECT_EQ(records[4]["value"], "a, \"b\"");
}

TEST_F(PsetsList, TheDegreeUnitIsPrintedAsUtf8) {
  const std::string doc = psetFile("", propertySet("S", property("T", "Real", "20", "Optional=\"No\" Unit=\"\xBA" "C\" Rule=\"\"")));
  const CliResult result = run({"psets", "list", write("doc.xml", doc), "--format", "csv"});
  EXPECT_EQ(lines(result.out).at(1), "S,T,Real,20.000,\xC2\xBA" "C,");
}

TEST_F(PsetsList, ListsEveryRecordAroundTheSizeOfOneBatch) {
  // The tool grows its record array until the library fills less than all of it: a document that
  // fills a batch exactly must still come out whole.
  for (const int count : {0, 255, 256, 257, 600}) {
    const CliResult result =
        run({"psets", "list", write("many.xml", manyPropertiesDocument(count)), "--format", "csv"});
    ASSERT_EQ(result.status, 0) << result.err;
    const std::vector<std::string> rows = lines(result.out);
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(count) + 1) << count;
    const std::string last = std::to_string(count - 1);
    if (count > 0) {
      EXPECT_EQ(rows.back(), "Grande,P" + last + ",Integer," + last + ",,");
    }
  }
}

TEST_F(PsetsList, RefusesWhatIsNotAPropertySetDocument) {
  expectError(run({"psets", "list", path("missing.xml")}), "missing.xml: no such file");
  expectError(run({"psets", "list", dir.path().string()}), "is a folder");
  expectError(run({"psets", "list", write("broken.xml", "<PropertySetsBIM>")}), "not well-formed XML");
  expectError(run({"psets", "list", write("q.xml", qsetFile("", "", ""))}),
              "a quantity-set document where a property-set document is expected");
  expectError(run({"psets", "list", write("other.xml", "<Other/>")}), "root element is Other");
}

class PsetsMerge : public ToolTest {
 protected:
  void SetUp() override { document = write("doc.xml", wallDocument()); }
  std::string document;
};

TEST_F(PsetsMerge, ListedRecordsMergeBackAfterAnEdit) {
  CliResult listed = run({"psets", "list", document, "--format", "csv"});
  ASSERT_EQ(listed.status, 0);
  std::string csv = listed.out;
  csv.replace(csv.find("Muro,Alto,Real,2.500"), 20, "Muro,Alto,Real,3.125");
  const CliResult merged = run({"psets", "merge", document, path("partial.xml"), write("records.csv", csv), "--save"});
  ASSERT_EQ(merged.status, 0) << merged.err;
  EXPECT_NE(merged.out.find("Merged 6 records"), std::string::npos) << merged.out;
  EXPECT_TRUE(exists("doc.xml.bak"));
  const CliResult again = run({"psets", "list", document, "--format", "csv"});
  // Only the edited value differs. (The exchange also empties descriptions and clears Boolean and
  // DateTime values, which a listing does not show.)
  std::string expected = listed.out;
  expected.replace(expected.find("2.500"), 5, "3.125");
  EXPECT_EQ(again.out, expected);
  EXPECT_EQ(findProperty(load(document), "Muro", "Alto")->realValue, 3.125);
}

TEST_F(PsetsMerge, WithoutSaveOnlyThePartialDocumentIsWritten) {
  const std::string before = readBytes(document);
  const std::string records = write("r.csv", "muro,Alto,Real,9\nNuevo,\"Uno, dos\",String,\"x\"\"y\"\n");
  const CliResult merged = run({"psets", "merge", document, path("partial.xml"), records});
  ASSERT_EQ(merged.status, 0) << merged.err;
  EXPECT_NE(merged.out.find("add --save"), std::string::npos);
  EXPECT_EQ(readBytes(document), before);
  const CliResult partial = run({"psets", "list", path("partial.xml"), "--format", "csv"});
  // The partial document holds the sets the records name, under the name the records give.
  EXPECT_EQ(partial.out,
            "set,property,type,value,unit,enum\n"
            "muro,Alto,Real,9.000,,\n"
            "Nuevo,\"Uno, dos\",String,\"x\"\"y\",,\n");
}

TEST_F(PsetsMerge, HeaderByteOrderMarkAndWindowsLineEndsAreAccepted) {
  const std::string plain = write("plain.csv", "Muro,Alto,Real,4\n");
  const std::string dressed = write("dressed.csv", "\xEF\xBB\xBFSET,Property,Type,Value\r\nMuro,Alto,Real,4\r\n\r\n");
  ASSERT_EQ(run({"psets", "merge", document, path("p1.xml"), plain}).status, 0);
  const CliResult second = run({"psets", "merge", document, path("p2.xml"), dressed});
  ASSERT_EQ(second.status, 0) << second.err;
  EXPECT_EQ(readBytes(path("p1.xml")), readBytes(path("p2.xml")));
}

TEST_F(PsetsMerge, QuotedFieldsKeepCommasQuotesAndLineEnds) {
  const std::string records = write("r.csv", "S,P,String,\"one, \"\"two\"\"\nthree\"\n");
  ASSERT_EQ(run({"psets", "merge", document, path("partial.xml"), records, "--save"}).status, 0);
  EXPECT_STREQ(findProperty(load(document), "S", "P")->textValue, "one, \"two\"\nthree");
  const CliResult listed = run({"psets", "list", path("partial.xml"), "--format", "csv"});
  EXPECT_EQ(listed.out, "set,property,type,value,unit,enum\nS,P,String,\"one, \"\"two\"\"\nthree\",,\n");
}

TEST_F(PsetsMerge, AnEnumeratedRecordNamesItsTypeForANewProperty) {
  const std::string records = write("r.csv", "Muro,Acabado,enumerated,Rojo,,Colores\nMuro,Ancho,real,0.3,M\n");
  ASSERT_EQ(run({"psets", "merge", document, path("partial.xml"), records, "--save"}).status, 0);
  const CIfcProyectPSet merged = load(document);
  EXPECT_STREQ(findProperty(merged, "Muro", "Acabado")->enumName, "Colores");
  EXPECT_EQ(findProperty(merged, "Muro", "Ancho")->unit, 1);
}

struct BadRecords {
  std::string csv;
  std::string message;
};

TEST_F(PsetsMerge, BadRecordsAreRefusedWithTheirLineAndNothingIsWritten) {
  const std::string longName(256, 'n');
  const std::vector<BadRecords> cases{
      {"S,P,Texto\n", "r.csv:1: unknown type \"Texto\" (expected Integer, Real, String, Enumerated, Boolean or DateTime)"},
      {"S,P,String\nS,P\n", "r.csv:2: 2 fields where set,property,type,value,unit,enum are expected"},
      {"S,P,String,v,,,extra\n", "r.csv:1: 7 fields"},
      {"S,P,String\nS,Q,String,\"open\n\n", "r.csv:2: a quoted field is never closed"},
      {"S,P,String,say \"hi\"\n", "r.csv:1: a quote inside an unquoted field"},
      {"S,P,String,\"a\"b\n", "r.csv:1: text after the closing quote"},
      {"S,P,Integer,12abc\n", "r.csv:1: value \"12abc\" is not an Integer"},
      {"S,P,Integer,99999999999\n", "r.csv:1: value \"99999999999\" is not an Integer"},
      {"S,P,Real,\"1,5\"\n", "r.csv:1: value \"1,5\" is not a Real number"},
      {"S,P,Real,inf\n", "r.csv:1: value \"inf\" is not a Real number"},
      {"S,P,Boolean,Yes\n", "r.csv:1: Boolean values cannot be written through records"},
      {"S,P,DateTime,2026-01-01\n", "r.csv:1: DateTime values cannot be written through records"},
      {"S,P,Real,1,km\n", "r.csv:1: unknown unit \"km\""},
      {"S,P,String,v,,Colores\n", "r.csv:1: enum is only for Enumerated properties"},
      {",P,String\n", "r.csv:1: set is empty"},
      {"S,,String\n", "r.csv:1: property is empty"},
      {"S," + longName + ",String\n", "r.csv:1: property is 256 bytes long; records hold at most 255"},
      {"S,P,Real,1." + std::string(300, '0') + "\n", "r.csv:1: value is 302 bytes long"},
      {"set,type,property\nS,String,P\n", "r.csv:1: a header line must name the columns set,property,type,value,unit,enum"},
      {"set,property,type\n", "r.csv: no records"},
      {"", "r.csv: no records"},
  };
  const std::string before = readBytes(document);
  for (const BadRecords& bad : cases) {
    SCOPED_TRACE(bad.csv);
    expectError(run({"psets", "merge", document, path("partial.xml"), write("r.csv", bad.csv), "--save"}), bad.message);
    EXPECT_EQ(readBytes(document), before);
    EXPECT_FALSE(exists("partial.xml"));
  }
}

TEST_F(PsetsMerge, RefusesFilesThatWouldBeLostOrCannotBeWritten) {
  const std::string records = write("r.csv", "S,P,String\n");
  expectError(run({"psets", "merge", path("missing.xml"), path("p.xml"), records}), "missing.xml: no such file");
  expectError(run({"psets", "merge", write("q.xml", qsetFile("", "", "")), path("p.xml"), records}),
              "where a property-set document is expected");
  expectError(run({"psets", "merge", document, document, records}), "the output must be another file");
  expectError(run({"psets", "merge", document, path("no/such/folder/p.xml"), records}), "does not exist");
  expectError(run({"psets", "merge", document, dir.path().string(), records}), "is a folder");
  expectError(run({"psets", "merge", document, path("p.xml"), path("missing.csv")}), "records file");
  EXPECT_FALSE(exists("p.xml"));
}

class PsetsEnums : public ToolTest {};

TEST_F(PsetsEnums, ListsTheValuesOfATypeFoundIgnoringCase) {
  const std::string document = write("doc.xml", wallDocument());
  const CliResult table = run({"psets", "enums", document, "COLORES"});
  ASSERT_EQ(table.status, 0) << table.err;
  EXPECT_EQ(table.out, "value\n-----\nRojo\nAzul\n");
  EXPECT_EQ(run({"psets", "enums", document, "colores", "--format", "json"}).out, "[\n  {\n    \"value\": \"Rojo\"\n  },\n  {\n    \"value\": \"Azul\"\n  }\n]\n");
  EXPECT_EQ(run({"psets", "enums", document, "Vacio", "--format", "csv"}).out, "value\n");
}

TEST_F(PsetsEnums, AnUnknownTypeIsAnError) {
  expectError(run({"psets", "enums", write("doc.xml", wallDocument()), "Formas"}), "has no enumerated type \"Formas\"");
}

}  // namespace
