// exportaIds and exportaPlantillasIfc, checked with readers nobody here wrote:
// every IDS file is validated against buildingSMART's ids.xsd and read back by validate_ids.py (Python),
// every IFC file by web-ifc (Node.js); both must state the same members, and exporting twice must give
// the same bytes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/orvane.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane::test;
using Lines = std::vector<std::string>;
namespace fs = std::filesystem;

namespace {

std::string quote(const std::string& text) { return "'" + text + "'"; }

// The command's standard output and error together, once it has exited with status 0.
std::string run(const std::string& command) {
  const TempDir capture;
  const int status = std::system((command + " >" + quote(capture.file("out")) + " 2>&1").c_str());
  const std::string output = readBytes(capture.file("out"));
  EXPECT_EQ(status, 0) << command << "\n" << output;
  return output;
}

// The lines of a text, its "#" comments left out.
Lines linesOf(const std::string& text) {
  std::istringstream in(text);
  Lines lines;
  for (std::string line; std::getline(in, line);)
    if (line.rfind('#', 0) != 0) lines.push_back(line);
  return lines;
}

// The IDS file, validated and read back by validate_ids.py: "for IFCWALL" or "for set NAME" per
// specification, then "set.member\tDATATYPE\tvalues\tcardinality" per requirement.
Lines idsLines(const std::string& path) {
  return linesOf(run("/usr/bin/python3 " + quote(ORVANE_EXPORT_TOOLS "/validate_ids.py") + " " + quote(ORVANE_IDS_XSD) +
                     " " + quote(path)));
}

std::string text(const nlohmann::json& value) { return value.is_string() ? value.get<std::string>() : "-"; }

// The IFC file as web-ifc reads it: "set NAME\tTEMPLATE\tentities", then "set.member\tmeasure\tvalues\ttemplate".
Lines ifcLines(const std::string& path, const std::string& title) {
  const std::string output = run("node " + quote(ORVANE_EXPORT_TOOLS "/read_ifc.js") + " " + quote(path));
  const std::size_t json = output.rfind("\n{");  // web-ifc may log lines of its own first
  nlohmann::json read = nlohmann::json::parse(output.substr(json == std::string::npos ? 0 : json + 1), nullptr, false);
  if (!read.is_object()) return {"web-ifc gave no reading"};
  EXPECT_EQ(read["schema"], "IFC4");
  EXPECT_EQ(read["projects"], nlohmann::json::array({title}));
  EXPECT_EQ(read["libraries"], nlohmann::json::array({title}));
  EXPECT_EQ(read["declared"], 1 + read["sets"].size());
  const std::set<std::string> globalIds(read["globalIds"].begin(), read["globalIds"].end());
  EXPECT_EQ(globalIds.size(), read["globalIds"].size()) << "GlobalIds repeat";
  Lines lines;
  for (const auto& set : read["sets"]) {
    lines.push_back("set " + text(set["name"]) + "\t" + text(set["templateType"]) + "\t" + text(set["applicableEntity"]));
    for (const auto& member : set["members"]) {
      std::string values;
      if (member["enumeration"].is_object())
        for (const auto& v : member["enumeration"]["values"]) values += (values.empty() ? "" : "|") + text(v);
      lines.push_back(text(set["name"]) + "." + text(member["name"]) + "\t" + text(member["measure"]) + "\t" + values +
                      "\t" + text(member["templateType"]));
    }
  }
  return lines;
}

// What both files state alike, each once: "SET.MEMBER\tMEASURE\tVALUES".
Lines common(const Lines& lines) {
  Lines out;
  for (const std::string& line : lines) {
    if (line.rfind("for ", 0) == 0 || line.rfind("set ", 0) == 0) continue;
    std::string member = line.substr(0, line.rfind('\t'));
    for (char& c : member) c = (c >= 'a' && c <= 'z') ? char(c - 32) : c;  // IDS writes data types in capitals
    if (std::find(out.begin(), out.end(), member) == out.end()) out.push_back(member);
  }
  return out;
}

struct Project {
  const char* name;
  std::string psets, qsets, title;
  std::size_t sets, members;  // the sets with members, and those members
};
void PrintTo(const Project& row, std::ostream* out) { *out << row.name; }

// awkward-*.xml push each export rule to its edge; samples/ifc4 is what import-psd makes of the IFC4 library.
const Project kSamples{"Samples", ORVANE_SAMPLES_DIR "/proyecto-psets.xml", ORVANE_SAMPLES_DIR "/proyecto-qsets.xml",
                       "proyecto-psets", 6, 18};
const Project kAwkward{"Awkward", ORVANE_EXPORT_TOOLS "/awkward-psets.xml", ORVANE_EXPORT_TOOLS "/awkward-qsets.xml",
                       "Proyecto \xE2\x80\x9Craro\xE2\x80\x9D", 4, 22};
const Project kIfc4{"Ifc4Library", ORVANE_SAMPLES_DIR "/ifc4/ifc4-psets.xml", ORVANE_SAMPLES_DIR "/ifc4/ifc4-qsets.xml",
                    "IFC4", 395, 2159};

struct Exported { Lines ids, ifc; };

// Both exports of `project`, each made twice and read back.
Exported exportBoth(const TempDir& dir, const Project& project) {
  const char* title = project.title == "proyecto-psets" ? nullptr : project.title.c_str();  // the default title
  const auto exportTwice = [&](auto function, const std::string& name) {
    const std::string path = dir.file(name), again = dir.file("again-" + name);
    EXPECT_EQ(function(project.psets.c_str(), project.qsets.c_str(), path.c_str(), title), 1);
    EXPECT_EQ(function(project.psets.c_str(), project.qsets.c_str(), again.c_str(), title), 1);
    EXPECT_EQ(readBytes(path), readBytes(again));
    return path;
  };
  const std::string ids = exportTwice(exportaIds, "out.ids"), ifc = exportTwice(exportaPlantillasIfc, "out.ifc");
  return {idsLines(ids), ifcLines(ifc, project.title)};
}

class Exports : public testing::TestWithParam<Project> {};

TEST_P(Exports, ValidFilesStatingTheSameSetsEachTime) {
  if (!fs::exists(ORVANE_IDS_XSD)) GTEST_SKIP() << "no ids.xsd at " ORVANE_IDS_XSD " (the shared reference data)";
  TempDir dir;
  const Project& project = GetParam();
  const Exported out = exportBoth(dir, project);
  EXPECT_EQ(common(out.ids), common(out.ifc));
  const std::size_t sets = std::count_if(out.ifc.begin(), out.ifc.end(), [](const std::string& line) { return line.rfind("set ", 0) == 0; });
  EXPECT_EQ((std::pair{sets, out.ifc.size() - sets}), (std::pair{project.sets, project.members}));
}

INSTANTIATE_TEST_SUITE_P(Projects, Exports, testing::Values(kSamples, kAwkward, kIfc4),
                         [](const auto& row) { return std::string(row.param.name); });

// What each awkward definition becomes, as each file states it, and the notes on what could not be
// exported as it stands (written out here, so the projects above need only agree with each other).
TEST(Exports, AwkwardDefinitionsAsEachFileStatesThem) {
  if (!fs::exists(ORVANE_IDS_XSD)) GTEST_SKIP() << "no ids.xsd at " ORVANE_IDS_XSD " (the shared reference data)";
  TempDir dir;
  const Exported out = exportBoth(dir, kAwkward);
  EXPECT_EQ(out.ids, linesOf(readBytes(ORVANE_EXPORT_TOOLS "/awkward-ids.txt")));
  EXPECT_EQ(out.ifc, linesOf(readBytes(ORVANE_EXPORT_TOOLS "/awkward-ifc.txt")));
  const std::string ids = readBytes(dir.file("out.ids")), ifc = readBytes(dir.file("out.ifc"));
  for (const char* note : {"Pset_Vac\xC3\xADo: no properties, left out", "Qto_Vac\xC3\xADo: no quantities, left out",
                           "\"Muro de carga\" is no IFC entity name", "\"Muro\" is no IFC entity name",
                           "a second member of that name, left out", "\"Vac\xC3\xADo\" has no values",
                           "\"Inexistente\" is not in the document", "Pset_Falta: the relation to IfcSlab names no set"})
    EXPECT_NE(ids.find(note), std::string::npos) << note;
  EXPECT_NE(ifc.find("/* Pset_Vac\\X2\\00ED\\X0\\o: no properties, left out */"), std::string::npos);
  EXPECT_NE(ifc.find("'Pset_<Raro> & ''co'' \\\\ \"1\\X2\\00BA\\X0\\\"'"), std::string::npos);  // STEP escaping
}

// Refusals: nothing is written, and a document is never overwritten by an export.
TEST(Exports, RefusedCallsWriteNothing) {
  TempDir dir;
  const std::string psets = dir.write("p.xml", psetFile("", propertySet("Vacio"))), out = dir.file("out"),
                    missing = dir.file("missing.xml"), notXml = dir.write("not-xml", "not xml"),
                    noFolder = dir.file("no/such/out");
  const struct { const char *what, *psets, *qsets, *out; int ifcResult; } cases[] = {
      {"no property-set path", nullptr, nullptr, out.c_str(), 0},
      {"no output path", psets.c_str(), nullptr, nullptr, 0},
      {"empty output path", psets.c_str(), nullptr, "", 0},
      {"unreadable property-set file", missing.c_str(), nullptr, out.c_str(), 0},
      {"malformed quantity-set file", psets.c_str(), notXml.c_str(), out.c_str(), 0},
      {"output over its own input", psets.c_str(), nullptr, psets.c_str(), 0},
      {"output in a missing folder", psets.c_str(), nullptr, noFolder.c_str(), 0},
      {"only an empty set", psets.c_str(), nullptr, out.c_str(), 1},  // an IFC library may be empty, an IDS not
  };
  const std::string before = readBytes(psets);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(exportaIds(c.psets, c.qsets, c.out, nullptr), 0);
    EXPECT_FALSE(fs::exists(out));
    EXPECT_EQ(exportaPlantillasIfc(c.psets, c.qsets, c.out, nullptr), c.ifcResult);
    EXPECT_EQ(fs::exists(out), c.ifcResult == 1);
    fs::remove(out);
    EXPECT_EQ(readBytes(psets), before);
  }
}

}  // namespace
