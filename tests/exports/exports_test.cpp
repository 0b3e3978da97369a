// exportaIds and exportaPlantillasIfc on the sample project, on the whole IFC4 library and on a
// project of awkward definitions. Every IDS file is validated against buildingSMART's ids.xsd
// (python3-xmlschema), every IFC file is read back by web-ifc (Node.js), and what each holds is
// compared with the documents exported; exporting twice must give the same bytes.
#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"
#include "support/temp_dir.h"

using namespace orvane::test;
using tinyxml2::XMLElement;
namespace fs = std::filesystem;

namespace {

// ---- Running the outside tools ------------------------------------------------------------------

std::string run(const std::string& command, int& status) {
  std::string output;
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) return "could not run " + command;
  char buffer[4096];
  for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, n);
  status = pclose(pipe);
  return output;
}

std::string quoted(const std::string& text) { return "'" + text + "'"; }

void expectValidIds(const std::string& path) {
  int status = 0;
  const std::string output = run("/usr/bin/python3 " + quoted(ORVANE_EXPORT_TOOLS "/validate_ids.py") + " " +
                                     quoted(ORVANE_IDS_XSD) + " " + quoted(path), status);
  EXPECT_EQ(status, 0) << output;
}

nlohmann::json readWithWebIfc(const std::string& path) {
  if (!fs::exists(ORVANE_EXPORT_TOOLS "/node_modules/web-ifc"))
    ADD_FAILURE() << "web-ifc is missing: run scripts/install-deps.sh (npm ci in tests/exports)";
  int status = 0;
  const std::string output = run("node " + quoted(ORVANE_EXPORT_TOOLS "/read_ifc.js") + " " + quoted(path), status);
  EXPECT_EQ(status, 0) << output;
  const std::size_t json = output.rfind("\n{");  // web-ifc may log lines of its own first
  return nlohmann::json::parse(output.substr(json == std::string::npos ? 0 : json + 1), nullptr, false);
}

// ---- What the documents say, worked out here ----------------------------------------------------

// A record's text as UTF-8: kept when it is UTF-8, else read as Latin-1 (which the tests' single-byte
// texts, such as the 0xBA of "ºC", share with Windows-1252).
std::string utf8(const char* text) {
  const std::string bytes(text);
  std::string latin1;
  bool valid = true;
  for (std::size_t i = 0; i < bytes.size();) {
    const unsigned char c = static_cast<unsigned char>(bytes[i]);
    const std::size_t length = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : (c >> 3) == 30 ? 4 : 0;
    valid = valid && length > 0 && i + length <= bytes.size();
    for (std::size_t k = 1; valid && k < length; ++k) valid = (static_cast<unsigned char>(bytes[i + k]) >> 6) == 2;
    i += valid ? length : 1;
  }
  if (valid) return bytes;
  for (const char c : bytes) {
    const unsigned char b = static_cast<unsigned char>(c);
    if (b < 0x80) latin1 += c;
    else latin1 += {static_cast<char>(0xC0 | (b >> 6)), static_cast<char>(0x80 | (b & 0x3F))};
  }
  return latin1;
}

bool sameNoCase(std::string a, std::string b) {
  auto lower = [](std::string& s) { for (char& c : s) c = (c >= 'A' && c <= 'Z') ? char(c + 32) : c; };
  lower(a);
  lower(b);
  return a == b;
}

bool isIfcName(const std::string& name) {
  if (name.size() < 4 || !sameNoCase(name.substr(0, 3), "Ifc") || !isalpha(static_cast<unsigned char>(name[3]))) return false;
  for (const char c : name)
    if (!isalnum(static_cast<unsigned char>(c))) return false;
  return true;
}

struct Member {
  std::string name, measure;
  bool optional = false;
  std::vector<std::string> values;  // an enumerated property with values
  std::string templateType;         // P_SINGLEVALUE, P_ENUMERATEDVALUE, Q_LENGTH ...
};

struct Set {
  bool quantities = false;
  std::string name;
  std::vector<std::string> entities;
  std::vector<Member> members;
};

// IFC data type by unit index (none, m, m2, m3, ºC, gr, J, rad, seg, w) and by value type.
const char* const kRealMeasure[] = {"IfcReal", "IfcLengthMeasure", "IfcAreaMeasure", "IfcVolumeMeasure",
                                    "IfcThermodynamicTemperatureMeasure", "IfcMassMeasure", "IfcEnergyMeasure",
                                    "IfcPlaneAngleMeasure", "IfcTimeMeasure", "IfcPowerMeasure"};
const char* const kTypeMeasure[] = {"IfcInteger", nullptr, "IfcLabel", "IfcLabel", "IfcBoolean", "IfcDateTime"};
const char* const kQuantity[][2] = {{"IfcLengthMeasure", "Q_LENGTH"}, {"IfcAreaMeasure", "Q_AREA"}, {"IfcVolumeMeasure", "Q_VOLUME"}};

void addMember(Set& set, Member member) {
  for (const Member& known : set.members)
    if (sameNoCase(known.name, member.name)) return;
  set.members.push_back(std::move(member));
}

void addEntity(Set& set, const std::string& entity) {
  if (!isIfcName(entity)) return;
  for (const std::string& known : set.entities)
    if (sameNoCase(known, entity)) return;
  set.entities.push_back(entity);
}

std::vector<std::string> enumValues(const CIfcProyectPSet& document, const char* typeName) {
  std::vector<std::string> values;
  for (const CIfcEnum& type : document.enums) {
    if (!sameNoCase(type.name, typeName)) continue;
    for (const CIfcNodoEnum& value : type.elements)
      if (std::find(values.begin(), values.end(), utf8(value.text)) == values.end()) values.push_back(utf8(value.text));
    break;
  }
  return values;
}

std::vector<Set> expectedSets(const std::string& psets, const std::string& qsets) {
  std::vector<Set> sets;
  CIfcProyectPSet properties;
  EXPECT_EQ(properties.lee(psets.c_str()), 1);
  for (const CIfcPropertySet& source : properties.propertySets) {
    Set set{false, utf8(source.name), {}, {}};
    for (const auto& relation : properties.relations)
      if (sameNoCase(relation.pset, source.name)) addEntity(set, utf8(relation.object));
    for (const CIfcPropertyName& property : source.properties) {
      Member member{utf8(property.name), "", property.optional, {}, "P_SINGLEVALUE"};
      member.measure = property.valueType == PropertyReal ? kRealMeasure[property.unit] : kTypeMeasure[property.valueType];
      if (property.valueType == PropertyEnumerated) member.values = enumValues(properties, property.enumName);
      if (!member.values.empty()) member.templateType = "P_ENUMERATEDVALUE";
      addMember(set, std::move(member));
    }
    if (!set.members.empty()) sets.push_back(std::move(set));
  }
  if (qsets.empty()) return sets;
  CIfcProyectQSet quantities;
  EXPECT_EQ(quantities.lee(qsets.c_str()), 1);
  for (const CIfcQuantitySet& source : quantities.quantitySets) {
    Set set{true, utf8(source.name), {}, {}};
    addEntity(set, utf8(source.typeZep));
    for (const CIfcQuantityName& quantity : source.quantities)
      addMember(set, Member{utf8(quantity.name), kQuantity[quantity.measureType][0], !quantity.exported, {},
                            kQuantity[quantity.measureType][1]});
    if (!set.members.empty()) sets.push_back(std::move(set));
  }
  return sets;
}

std::string upper(std::string text) {
  for (char& c : text) c = (c >= 'a' && c <= 'z') ? char(c - 32) : c;
  return text;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
  return text;
}

// ---- Comparing the files with the documents -----------------------------------------------------

const char* simpleValue(const XMLElement* parent, const char* name) {
  const XMLElement* value = parent ? parent->FirstChildElement(name) : nullptr;
  value = value ? value->FirstChildElement("simpleValue") : nullptr;
  return value && value->GetText() ? value->GetText() : "";
}

void expectIdsHolds(const std::string& path, const std::vector<Set>& sets) {
  tinyxml2::XMLDocument document;
  ASSERT_EQ(document.LoadFile(path.c_str()), tinyxml2::XML_SUCCESS);
  const XMLElement* specification = document.RootElement()->FirstChildElement("specifications")->FirstChildElement("specification");
  for (const Set& set : sets) {
    SCOPED_TRACE(set.name);
    const std::size_t specs = set.entities.empty() ? 1 : set.entities.size();
    for (std::size_t s = 0; s < specs; ++s, specification = specification->NextSiblingElement("specification")) {
      ASSERT_NE(specification, nullptr);
      const XMLElement* applicability = specification->FirstChildElement("applicability");
      if (set.entities.empty()) EXPECT_STREQ(simpleValue(applicability->FirstChildElement("property"), "propertySet"), set.name.c_str());
      else EXPECT_EQ(simpleValue(applicability->FirstChildElement("entity"), "name"), upper(set.entities[s]));
      const XMLElement* facet = specification->FirstChildElement("requirements")->FirstChildElement("property");
      for (const Member& member : set.members) {
        SCOPED_TRACE(member.name);
        ASSERT_NE(facet, nullptr);
        EXPECT_STREQ(simpleValue(facet, "propertySet"), set.name.c_str());
        EXPECT_STREQ(simpleValue(facet, "baseName"), member.name.c_str());
        EXPECT_EQ(facet->Attribute("dataType"), upper(member.measure));
        EXPECT_STREQ(facet->Attribute("cardinality"), member.optional ? "optional" : "required");
        std::vector<std::string> values;
        const XMLElement* value = facet->FirstChildElement("value");
        for (auto* e = value ? value->FirstChildElement("xs:restriction")->FirstChildElement("xs:enumeration") : nullptr; e;
             e = e->NextSiblingElement("xs:enumeration"))
          values.emplace_back(e->Attribute("value"));
        EXPECT_EQ(values, member.values);
        facet = facet->NextSiblingElement("property");
      }
      EXPECT_EQ(facet, nullptr) << "a requirement no member states";
    }
  }
  EXPECT_EQ(specification, nullptr) << "a specification no set states";
}

void expectIfcHolds(const nlohmann::json& read, const std::vector<Set>& sets, const std::string& title) {
  ASSERT_TRUE(read.is_object()) << "web-ifc gave no reading";
  EXPECT_EQ(read["schema"], "IFC4");
  EXPECT_EQ(read["projects"], nlohmann::json::array({title}));
  EXPECT_EQ(read["libraries"], nlohmann::json::array({title}));
  EXPECT_EQ(read["declared"], 1 + (sets.empty() ? 0 : sets.size()));
  const auto& globalIds = read["globalIds"];
  EXPECT_EQ(std::set<std::string>(globalIds.begin(), globalIds.end()).size(), globalIds.size()) << "GlobalIds repeat";
  ASSERT_EQ(read["sets"].size(), sets.size());
  for (std::size_t i = 0; i < sets.size(); ++i) {
    const Set& set = sets[i];
    const auto& got = read["sets"][i];
    SCOPED_TRACE(set.name);
    EXPECT_EQ(got["name"], set.name);
    EXPECT_EQ(got["templateType"], set.quantities ? "QTO_OCCURRENCEDRIVEN" : "PSET_OCCURRENCEDRIVEN");
    if (set.entities.empty()) EXPECT_TRUE(got["applicableEntity"].is_null());
    else EXPECT_EQ(got["applicableEntity"], joined(set.entities));
    ASSERT_EQ(got["members"].size(), set.members.size());
    for (std::size_t m = 0; m < set.members.size(); ++m) {
      const Member& member = set.members[m];
      const auto& gotMember = got["members"][m];
      SCOPED_TRACE(member.name);
      EXPECT_EQ(gotMember["name"], member.name);
      EXPECT_EQ(gotMember["templateType"], member.templateType);
      EXPECT_EQ(gotMember["measure"], member.measure);
      if (member.values.empty()) EXPECT_TRUE(gotMember["enumeration"].is_null());
      else EXPECT_EQ(gotMember["enumeration"]["values"], nlohmann::json(member.values));
    }
  }
}

// ---- The documents ------------------------------------------------------------------------------

struct Project {
  std::string psets, qsets, title;
};

// Sets, types and relations that push each rule to its edge: no properties, no values, repeated
// names, markup and non-ASCII names (UTF-8, Windows-1252, beyond U+FFFF), apostrophes and
// backslashes, element types that are no IFC entities, a relation to a missing set.
Project awkwardProject(const TempDir& dir) {
  const std::string odd = "Pset_&lt;Raro&gt; &amp; 'co' \\ &quot;1\xBA&quot;";  // Windows-1252: the byte 0xBA
  std::string realProperties;  // one per unit, the first optional
  for (const char* unit : {"", "m", "m2", "m3", "\xBA" "C", "gr", "J", "rad", "seg", "w"})
    realProperties += std::string("<PropertyName Name=\"Real \xBA ") + unit + "\" Optional=\"" + (*unit ? "No" : "Yes") +
                      "\" Unit=\"" + unit + "\" Rule=\"\" Type=\"Real\"><Description/><Value>1</Value></PropertyName>";
  writeBytes(dir.file("raro-psets.xml"),
             "<?xml version=\"1.0\" encoding=\"UTF8\"?>\n<PropertySetsBIM><TypesEnum>"
             "<TypeEnum Name=\"Vac\xC3\xADo\" Description=\"\"><Elements/></TypeEnum>"
             "<TypeEnum Name=\"Se\xC3\xB1" "ales\" Description=\"\"><Elements>"
             "<Element Value=\"1\">A &amp; B</Element><Element Value=\"2\">&lt;C&gt; \"D\" 'E' \\</Element>"
             "<Element Value=\"3\">A &amp; B</Element><Element Value=\"4\">\xC3\x91" "and\xC3\xBA \xF0\x9F\x98\x80</Element>"
             "</Elements></TypeEnum></TypesEnum><PropertiesSet>"
             "<PropertySet Name=\"Pset_Vac\xC3\xADo\" Description=\"sin propiedades\"/>"
             "<PropertySet Name=\"" + odd + "\" Description=\"Descripci\xF3n &amp; \xE2\x82\xAC\">"
             "<PropertyName Name=\"Entero\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"Integer\"><Description/><Value>1</Value></PropertyName>"
             "<PropertyName Name=\"entero\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"Real\"><Description/><Value>1</Value></PropertyName>"
             + realProperties +
             "<PropertyName Name=\"Texto &lt;&amp;&gt;\" Optional=\"Yes\" Unit=\"\" Rule=\"\" Type=\"String\"><Description>l\xC3\xADnea 1\nl\xC3\xADnea 2</Description><Value/></PropertyName>"
             "<PropertyName Name=\"S\xC3\xAD/No\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"Boolean\"><Description/><Value>Yes</Value></PropertyName>"
             "<PropertyName Name=\"Fecha\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"DateTime\"><Description/><Value/></PropertyName>"
             "<PropertyName Name=\"Se\xC3\xB1" "al \xF0\x9F\x98\x80\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"SE\xC3\xB1" "ALES\"><Description/><Value/></PropertyName>"
             "<PropertyName Name=\"Sin valores\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"Vac\xC3\xADo\"><Description/><Value/></PropertyName>"
             "<PropertyName Name=\"Sin tipo\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"Inexistente\"><Description/><Value/></PropertyName>"
             "</PropertySet>"
             "<PropertySet Name=\"Pset_Suelto\" Description=\"\">"
             "<PropertyName Name=\"Nota\" Optional=\"No\" Unit=\"\" Rule=\"\" Type=\"String\"><Description/><Value/></PropertyName>"
             "</PropertySet></PropertiesSet><RelationsIfcElementWithPSet>"
             "<RelationIfcElementWithPSet PSet=\"" + odd + "\" Object=\"IfcWall\"/>"
             "<RelationIfcElementWithPSet PSet=\"" + odd + "\" Object=\"IFCWALL\"/>"
             "<RelationIfcElementWithPSet PSet=\"" + odd + "\" Object=\"Muro de carga\"/>"
             "<RelationIfcElementWithPSet PSet=\"" + odd + "\" Object=\"IfcSlab\"/>"
             "<RelationIfcElementWithPSet PSet=\"Pset_Vac\xC3\xADo\" Object=\"IfcDoor\"/>"
             "<RelationIfcElementWithPSet PSet=\"Pset_Falta\" Object=\"IfcSlab\"/>"
             "</RelationsIfcElementWithPSet></PropertySetsBIM>\n");
  writeBytes(dir.file("raro-qsets.xml"),
             "<?xml version=\"1.0\"?>\n<QuantitiesSetQuorsel><QuantitiesSet>"
             "<QuantitySet Name=\"Qto_Muro\" Description=\"\" typeZep=\"IfcWall\">"
             "<QuantityName Name=\"Largo\" TypeQuorsel=\"IfcLengthMeasure\" Export=\"Yes\"><Description/><Value>0</Value></QuantityName>"
             "<QuantityName Name=\"Cara\" TypeQuorsel=\"IfcAreaMeasure\" Export=\"No\"><Description/><Value>0</Value></QuantityName>"
             "<QuantityName Name=\"Bulto\" TypeQuorsel=\"IfcVolumeMeasure\" Export=\"Yes\"><Description/><Value>0</Value></QuantityName>"
             "</QuantitySet>"
             "<QuantitySet Name=\"Qto_Anfitri\xC3\xB3n\" Description=\"\" typeZep=\"Muro\">"
             "<QuantityName Name=\"Largo\" TypeQuorsel=\"IfcLengthMeasure\" Export=\"Yes\"><Description/><Value>0</Value></QuantityName>"
             "</QuantitySet>"
             "<QuantitySet Name=\"Qto_Vac\xC3\xADo\" Description=\"\" typeZep=\"IfcSlab\"/>"
             "</QuantitiesSet></QuantitiesSetQuorsel>\n");
  return {dir.file("raro-psets.xml"), dir.file("raro-qsets.xml"), "Proyecto \xE2\x80\x9Craro\xE2\x80\x9D"};
}

Project sampleProject(const TempDir&) {
  return {ORVANE_SAMPLES_DIR "/proyecto-psets.xml", ORVANE_SAMPLES_DIR "/proyecto-qsets.xml", "proyecto-psets"};
}

// The whole IFC4 library, imported from the buildingSMART files by the tool first.
Project ifc4Project(const TempDir& dir) {
  if (!fs::is_directory(ORVANE_PSD_DIR)) return {};
  int status = 0;
  const std::string output = run(std::string(quoted(ORVANE_CLI)) + " import-psd " + quoted(ORVANE_PSD_DIR) + " -o " +
                                     quoted(dir.file("ifc4-psets.xml")) + " --qto " + quoted(dir.file("ifc4-qsets.xml")),
                                 status);
  EXPECT_EQ(status, 0) << output;
  return {dir.file("ifc4-psets.xml"), dir.file("ifc4-qsets.xml"), "IFC4"};
}

struct ExportCase {
  const char* name;
  Project (*project)(const TempDir&);
};

class Exports : public testing::TestWithParam<ExportCase> {};

TEST_P(Exports, ValidFilesHoldEverySetTheSameEachTime) {
  if (!fs::exists(ORVANE_IDS_XSD)) GTEST_SKIP() << "no ids.xsd at " ORVANE_IDS_XSD " (the shared reference data)";
  TempDir dir;
  const Project project = GetParam().project(dir);
  if (project.psets.empty()) GTEST_SKIP() << "no IFC4 PSD files at " ORVANE_PSD_DIR " (the shared reference data)";
  const std::vector<Set> sets = expectedSets(project.psets, project.qsets);
  const char* title = project.title == "proyecto-psets" ? nullptr : project.title.c_str();  // the default title

  const std::string ids = dir.file("out.ids"), ids2 = dir.file("again.ids");
  ASSERT_EQ(exportaIds(project.psets.c_str(), project.qsets.c_str(), ids.c_str(), title), 1);
  ASSERT_EQ(exportaIds(project.psets.c_str(), project.qsets.c_str(), ids2.c_str(), title), 1);
  EXPECT_EQ(readBytes(ids), readBytes(ids2));
  expectValidIds(ids);
  expectIdsHolds(ids, sets);

  const std::string ifc = dir.file("out.ifc"), ifc2 = dir.file("again.ifc");
  ASSERT_EQ(exportaPlantillasIfc(project.psets.c_str(), project.qsets.c_str(), ifc.c_str(), title), 1);
  ASSERT_EQ(exportaPlantillasIfc(project.psets.c_str(), project.qsets.c_str(), ifc2.c_str(), title), 1);
  EXPECT_EQ(readBytes(ifc), readBytes(ifc2));
  expectIfcHolds(readWithWebIfc(ifc), sets, project.title);
}

INSTANTIATE_TEST_SUITE_P(Projects, Exports,
                         testing::Values(ExportCase{"Samples", sampleProject}, ExportCase{"Ifc4Library", ifc4Project},
                                         ExportCase{"AwkwardNames", awkwardProject}),
                         [](const auto& row) { return std::string(row.param.name); });

// What the awkward project cannot export as it stands is said in both files.
TEST(Exports, NotesSayWhatWasLeftOut) {
  TempDir dir;
  const Project project = awkwardProject(dir);
  ASSERT_EQ(exportaIds(project.psets.c_str(), project.qsets.c_str(), dir.file("a.ids").c_str(), nullptr), 1);
  ASSERT_EQ(exportaPlantillasIfc(project.psets.c_str(), project.qsets.c_str(), dir.file("a.ifc").c_str(), nullptr), 1);
  const std::string ids = readBytes(dir.file("a.ids")), ifc = readBytes(dir.file("a.ifc"));
  for (const char* note : {"Pset_Vac\xC3\xADo: no properties, left out", "Qto_Vac\xC3\xADo: no quantities, left out",
                           "\"Muro de carga\" is no IFC entity name", "\"Muro\" is no IFC entity name",
                           "a second member of that name, left out", "\"Vac\xC3\xADo\" has no values",
                           "\"Inexistente\" is not in the document", "Pset_Falta: the relation to IfcSlab names no set"}) {
    SCOPED_TRACE(note);
    EXPECT_NE(ids.find(note), std::string::npos);
  }
  EXPECT_NE(ifc.find("/* Pset_Vac\\X2\\00ED\\X0\\o: no properties, left out */"), std::string::npos);
  EXPECT_NE(ifc.find("'Pset_<Raro> & ''co'' \\\\ \"1\\X2\\00BA\\X0\\\"'"), std::string::npos);  // STEP escaping
}

// Refusals: nothing is written, and a document is never overwritten by an export.
TEST(Exports, RefusedCallsWriteNothing) {
  TempDir dir;
  const std::string psets = dir.file("p.xml"), out = dir.file("out"), missing = dir.file("missing.xml"),
                    notXml = dir.file("not-xml"), noFolder = dir.file("no/such/out");
  writeBytes(psets, "<PropertySetsBIM><PropertiesSet><PropertySet Name=\"Vacio\" Description=\"\"/></PropertiesSet></PropertySetsBIM>");
  writeBytes(notXml, "not xml");
  const struct {
    const char* what;
    const char* psets;
    const char* qsets;
    const char* out;
    int ifcResult;  // an IFC library may be empty; an IDS file may not
  } cases[] = {
      {"no property-set path", nullptr, nullptr, out.c_str(), 0},
      {"no output path", psets.c_str(), nullptr, nullptr, 0},
      {"empty output path", psets.c_str(), nullptr, "", 0},
      {"unreadable property-set file", missing.c_str(), nullptr, out.c_str(), 0},
      {"malformed quantity-set file", psets.c_str(), notXml.c_str(), out.c_str(), 0},
      {"output over its own input", psets.c_str(), nullptr, psets.c_str(), 0},
      {"output in a missing folder", psets.c_str(), nullptr, noFolder.c_str(), 0},
      {"only an empty set", psets.c_str(), nullptr, out.c_str(), 1},
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

namespace {

// The tool's two commands, run as a user runs them.
TEST(ExportCommands, WriteOrRefuseWithAReport) {
  TempDir dir;
  const std::string psets = ORVANE_SAMPLES_DIR "/proyecto-psets.xml", qsets = ORVANE_SAMPLES_DIR "/proyecto-qsets.xml";
  writeBytes(dir.file("empty.xml"), "<PropertySetsBIM/>");
  const struct {
    std::string arguments;
    int exitCode;
    const char* says;
  } cases[] = {
      {"export-ids " + quoted(psets) + " " + quoted(qsets) + " -o " + quoted(dir.file("a.ids")) + " --title 'Mi proyecto'", 0,
       "a.ids: 6 specifications, 18 property requirements."},
      {"export-ids " + quoted(psets) + " " + quoted(qsets) + " -o " + quoted(dir.file("b.ids")), 0,
       "note: Qto_Eje: \"Eje\" is no IFC entity name, not used as its element type\n"},
      {"export-ifc " + quoted(psets) + " -o " + quoted(dir.file("a.ifc")), 0, "a.ifc: 3 set templates, 11 property templates."},
      {"export-ifc " + quoted(psets) + " -o " + quoted(psets), 2, "orvane: "},
      {"export-ids " + quoted(qsets) + " -o " + quoted(dir.file("c.ids")), 2, "orvane: "},
      {"export-ids " + quoted(dir.file("empty.xml")) + " -o " + quoted(dir.file("d.ids")), 2, "not written"},
      {"export-ifc " + quoted(psets), 2, "--out is required"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.arguments);
    int status = 0;
    const std::string output = run(quoted(ORVANE_CLI) + " " + c.arguments, status);
    EXPECT_EQ(WEXITSTATUS(status), c.exitCode) << output;
    EXPECT_NE(output.find(c.says), std::string::npos) << output;
  }
  EXPECT_NE(readBytes(dir.file("a.ids")).find("<title>Mi proyecto</title>"), std::string::npos);
  EXPECT_FALSE(fs::exists(dir.file("c.ids")) || fs::exists(dir.file("d.ids")));
}

}  // namespace
