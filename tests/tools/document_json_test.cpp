// psets|qsets export and import: a document through JSON or CSV and back is the same file, byte for byte.
#include <tinyxml2.h>

#include <nlohmann/json.hpp>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "tools/cli.h"

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
  return document.lee(source.c_str()) == 1 && document.graba(saved.c_str()) == 1;
}

class DocumentJson : public CliTest {
 protected:
  // saved.xml exported as CSV to a file and as JSON to standard output, each imported again to
  // standard output (the JSON from standard input); gives the JSON.
  std::string roundTrip(const std::string& group) {
    const CliResult csv = run({group, "export", "saved.xml", "--format", "csv", "-o", "doc.csv"});
    EXPECT_EQ(csv.status, 0) << csv.err;
    EXPECT_EQ(csv.out, "");
    const CliResult json = run({group, "export", "-"}, "saved.xml");
    EXPECT_EQ(json.status, 0) << json.err;
    write("doc.json", json.out);
    for (const auto& [file, in] : {std::pair{"doc.csv", ""}, {"-", "doc.json"}}) {
      SCOPED_TRACE(file);
      const CliResult imported = run({group, "import", file, "-o", "-"}, in);
      EXPECT_EQ(imported.status, 0) << imported.err;
      EXPECT_EQ(imported.out, read("saved.xml"));
    }
    return json.out;
  }
};

TEST_F(DocumentJson, EveryDocumentTheLibraryWritesComesBackByteForByte) {
  std::vector<fs::path> sources = filesIn(ORVANE_SAMPLES_DIR);
  for (const char* folder : {"ifc4", "../fuzz/corpus/pset_reader", "../fuzz/corpus/qset_reader", "../fuzz/corpus/round_trip"})
    for (const fs::path& file : filesIn(fs::path(ORVANE_SAMPLES_DIR) / folder)) sources.push_back(file);
  // The whole IFC4 library, as import-psd makes it today.
  if (fs::is_directory(ORVANE_PSD_DIR)) {
    const CliResult imported = run({"import-psd", ORVANE_PSD_DIR, "-o", "ifc4-psets.xml", "--qto", "ifc4-qsets.xml"});
    ASSERT_EQ(imported.status, 0) << imported.err;
    sources.push_back(dir.file("ifc4-psets.xml"));
    sources.push_back(dir.file("ifc4-qsets.xml"));
  }
  std::size_t checked = 0;
  for (const fs::path& source : sources) {
    SCOPED_TRACE(source.string());
    const std::string group = groupOf(source), saved = dir.file("saved.xml");
    fs::remove(saved);
    if (group == "psets" ? !saveOnce<CIfcProyectPSet>(source, saved)
                         : group != "qsets" || !saveOnce<CIfcProyectQSet>(source, saved))
      continue;
    roundTrip(group);
    ++checked;
  }
  // The samples alone are five documents; the corpora add dozens.
  EXPECT_GT(checked, 40u);
}

TEST_F(DocumentJson, SingleByteTextsBecomeUtf8AndGoBackAsTheSameBytes) {
  // 0xBA is the degree sign of "ºC"; 0x81 is a byte Windows-1252 leaves undefined.
  const std::string saved = write("saved.xml",
                                  "<PropertySetsBIM><PropertiesSet><PropertySet Name=\"Muro\xE9\" Description=\"a\x81\">"
                                  "<PropertyName Name=\"T\" Optional=\"No\" Unit=\"\xBA" "C\" Rule=\"\" Type=\"Real\">"
                                  "<Description>caf\xC3\xA9</Description><Value>G.V$</Value></PropertyName>"
                                  "</PropertySet></PropertiesSet></PropertySetsBIM>");
  ASSERT_TRUE(saveOnce<CIfcProyectPSet>(saved, saved));
  const auto json = nlohmann::json::parse(roundTrip("psets"));
  const auto& set = json["propertySets"][0];
  EXPECT_EQ(set["name"], nlohmann::json({{"windows-1252", "Muro\xC3\xA9"}}));
  EXPECT_EQ(set["description"], nlohmann::json({{"windows-1252", "a\xC2\x81"}}));
  EXPECT_EQ(set["properties"][0]["unit"], "\xC2\xBA" "C");
  EXPECT_EQ(set["properties"][0]["description"], "caf\xC3\xA9");  // already UTF-8: as it is
  EXPECT_EQ(set["properties"][0]["value"], nlohmann::json({{"reference", "G.V$"}}));
}

}  // namespace
