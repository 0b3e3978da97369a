// psets|qsets export and import: a document through JSON or CSV and back is the same file, byte for byte.
#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "tools/tool_fixture.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error))
    if (entry.is_regular_file() && entry.path().extension() != ".md") files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

// "psets" or "qsets" by the root element, "" for anything else.
std::string groupOf(const fs::path& file) {
  tinyxml2::XMLDocument xml;
  if (xml.LoadFile(file.c_str()) != tinyxml2::XML_SUCCESS || xml.RootElement() == nullptr) return "";
  const std::string root = xml.RootElement()->Name();
  return root == "PropertySetsBIM" ? "psets" : root == "QuantitiesSetQuorsel" ? "qsets" : "";
}

// Saves what the library reads of `source` to `saved`; false when it does not read it.
template <class Document>
bool saveOnce(const fs::path& source, const std::string& saved) {
  Document document;
  if (document.lee(source.c_str()) != 1) return false;
  return document.graba(saved.c_str()) == 1;
}

class DocumentJson : public ToolTest {
 protected:
  // Exports `saved` as JSON and as CSV, imports each again and compares; returns the JSON.
  std::string roundTrip(const std::string& group, const std::string& saved) {
    for (const char* format : {"csv", "json"}) {
      SCOPED_TRACE(format);
      const std::string exportedFile = path(std::string("doc.") + format);
      const CliResult exported = run({group, "export", saved, "--format", format, "-o", exportedFile});
      EXPECT_EQ(exported.status, 0) << exported.err;
      EXPECT_EQ(exported.out, "");
      const CliResult imported = run({group, "import", exportedFile, "-o", "-"});
      EXPECT_EQ(imported.status, 0) << imported.err;
      EXPECT_EQ(imported.out, readBytes(saved));
    }
    return readBytes(path("doc.json"));
  }
};

TEST_F(DocumentJson, EveryDocumentTheLibraryWritesComesBackByteForByte) {
  std::vector<fs::path> sources = filesIn(ORVANE_SAMPLES_DIR);
  for (const char* folder : {"ifc4", "../fuzz/corpus/pset_reader", "../fuzz/corpus/qset_reader",
                             "../fuzz/corpus/round_trip"})
    for (const fs::path& file : filesIn(fs::path(ORVANE_SAMPLES_DIR) / folder)) sources.push_back(file);
  // The whole IFC4 library, as import-psd makes it today.
  if (fs::is_directory(ORVANE_PSD_DIR)) {
    const CliResult imported = run({"import-psd", ORVANE_PSD_DIR, "-o", path("ifc4-psets.xml"), "--qto",
                                    path("ifc4-qsets.xml")});
    ASSERT_EQ(imported.status, 0) << imported.err;
    sources.push_back(path("ifc4-psets.xml"));
    sources.push_back(path("ifc4-qsets.xml"));
  }
  std::size_t checked = 0;
  for (const fs::path& source : sources) {
    SCOPED_TRACE(source.string());
    const std::string group = groupOf(source);
    const std::string saved = path("saved.xml");
    fs::remove(saved);
    const bool read = group == "psets"   ? saveOnce<CIfcProyectPSet>(source, saved)
                      : group == "qsets" ? saveOnce<CIfcProyectQSet>(source, saved)
                                         : false;
    if (!read) continue;
    roundTrip(group, saved);
    ++checked;
  }
  // The samples alone are five documents; the corpora add dozens.
  EXPECT_GT(checked, 40u);
}

TEST_F(DocumentJson, SingleByteTextsBecomeUtf8AndGoBackAsTheSameBytes) {
  // 0xBA is the degree sign of "ºC"; 0x81 is a byte Windows-1252 leaves undefined.
  const std::string saved = write("coded.xml",
                                  "<PropertySetsBIM><PropertiesSet><PropertySet Name=\"Muro\xE9\" Description=\"a\x81\">"
                                  "<PropertyName Name=\"T\" Optional=\"No\" Unit=\"\xBA" "C\" Rule=\"\" Type=\"Real\">"
                                  "<Description>caf\xC3\xA9</Description><Value>G.V$</Value></PropertyName>"
                                  "</PropertySet></PropertiesSet></PropertySetsBIM>");
  ASSERT_TRUE(saveOnce<CIfcProyectPSet>(saved, saved));
  const auto json = nlohmann::json::parse(roundTrip("psets", saved));
  const auto& set = json["propertySets"][0];
  EXPECT_EQ(set["name"], nlohmann::json({{"windows-1252", "Muro\xC3\xA9"}}));
  EXPECT_EQ(set["description"], nlohmann::json({{"windows-1252", "a\xC2\x81"}}));
  EXPECT_EQ(set["properties"][0]["unit"], "\xC2\xBA" "C");
  EXPECT_EQ(set["properties"][0]["description"], "caf\xC3\xA9");  // already UTF-8: as it is
  EXPECT_EQ(set["properties"][0]["value"], nlohmann::json({{"reference", "G.V$"}}));
}

// "-" as a file name: standard input where a document is read, standard output where one is written.
TEST_F(DocumentJson, DashIsStandardInputAndOutput) {
  const std::string saved = path("saved.xml");
  ASSERT_TRUE(saveOnce<CIfcProyectPSet>(fs::path(ORVANE_SAMPLES_DIR) / "proyecto-psets.xml", saved));
  const auto shell = [&](const std::string& command, const std::string& output) {
    const std::string cli = std::string("'") + ORVANE_CLI + "'";
    const std::string line = "cd '" + dir.path().string() + "' && " + command;
    std::string expanded;
    for (char c : line) expanded += c == '@' ? cli : std::string(1, c);
    EXPECT_EQ(std::system((expanded + " > " + output).c_str()), 0) << command;
    return readBytes(path(output));
  };
  EXPECT_EQ(shell("@ psets export - < saved.xml | @ psets import - -o -", "back.xml"), readBytes(saved));
  EXPECT_EQ(shell("@ psets list - --format csv < saved.xml", "stdin.csv"),
            shell("@ psets list saved.xml --format csv", "file.csv"));
  EXPECT_EQ(shell("@ check - < saved.xml", "check.txt"), "No problems found in -.\n");
  const std::string psd = std::string(ORVANE_PSD_DIR) + "/Pset_WallCommon.xml";
  if (!fs::exists(psd)) return;
  ASSERT_EQ(run({"import-psd", psd, "-o", path("wall.xml")}).status, 0);
  EXPECT_EQ(shell("@ import-psd '" + psd + "' -o - 2>/dev/null", "wall-stdout.xml"), readBytes(path("wall.xml")));
}

TEST_F(DocumentJson, ImportRefusesWhatItCannotWriteAndLeavesTheTargetAlone) {
  const std::string set = R"({"name":"S","description":"","properties":[]})";
  const std::string longName(512, 'x');
  struct Case {
    const char* group;
    std::string json;
    std::string message;
  };
  std::vector<Case> cases{
      {"psets", "{", "not JSON"},
      {"psets", R"({"format":"orvane-qsets","version":1})", "\"format\" must be \"orvane-psets\""},
      {"qsets", R"({"format":"orvane-qsets","version":2})", "\"version\" 2 is not known"},
      {"psets", R"({"format":"orvane-psets","version":1,"enumeratedTypes":[],"relations":[]})",
       "document: \"propertySets\" is missing"},
      {"psets", R"({"format":"orvane-psets","version":1,"enumeratedTypes":[],"relations":[],"propertySets":[{"name":")" +
                    longName + R"(","description":"","properties":[]}]})",
       "propertySets[0].name: longer than the 511 bytes"},
      {"psets", R"({"format":"orvane-psets","version":1,"enumeratedTypes":[],"relations":[],"propertySets":[)" + set +
                    R"(,{"name":"T","description":"","properties":[{"name":"p","description":"","type":"Real",)"
                    R"("unit":"km","rule":"","optional":false,"value":1}]}]})",
       "propertySets[1].properties[0].unit: not one of the units"},
      {"psets", R"({"format":"orvane-psets","version":1,"enumeratedTypes":[],"relations":[],"propertySets":[)"
                R"({"name":{"windows-1252":"\u20ac\u0100"},"description":"","properties":[]}]})",
       "propertySets[0].name: a character that Windows-1252 does not have"},
      {"qsets", R"({"format":"orvane-qsets","version":1,"types":[],"objects":[],"quantitySets":[{"name":"Q",)"
                R"("description":"","element":"","quantities":[{"name":"q","description":"","kind":"IfcMass",)"
                R"("export":true,"value":1}]}]})",
       "quantitySets[0].quantities[0].kind: IfcLengthMeasure, IfcAreaMeasure or IfcVolumeMeasure is expected"},
  };
  const std::string header = "record,name,description,type,enumeratedType,unit,rule,optional,value\n";
  const std::vector<std::pair<std::string, std::string>> csvCases{
      {"name,description\n", "in.json:1: the first line must be the header record,name,"},
      {header + "property,p,,Real,,,,No,1\n", "in.json:2: a propertySet line must come first"},
      {header + "propertySet,S,,,,,,,\nproperty,p,,Integer,,,,No,2.5\n", "in.json:3: \"2.5\" is not an integer"},
      {header + "propertySet,S,,,,,,,\nproperty,p,,Boolean,,,,maybe,Yes\n", "\"maybe\" where Yes or No is expected"},
      {header + "set,S,,,,,,,\n", "in.json:2: unknown record \"set\""},
  };
  for (const auto& [csv, message] : csvCases) cases.push_back({"psets", csv, message.c_str()});
  const std::string target = write("target.xml", "kept");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.json.substr(0, 120));
    expectError(run({c.group, "import", write("in.json", c.json), "-o", target}), c.message);
    EXPECT_EQ(readBytes(target), "kept");
  }
}

}  // namespace
