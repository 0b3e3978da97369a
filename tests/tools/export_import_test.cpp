// Documents across formats: import-psd from the buildingSMART definitions, and psets|qsets export and import, through
// which a document goes to JSON or CSV and comes back the same file, byte for byte.
#include <tinyxml2.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "tools/cli.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

using Values = std::vector<std::string>;

constexpr const char* kPsd = "http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd";

// <tag attributes>content</tag>
std::string el(const std::string& tag, const std::string& content) {
  return "<" + tag + ">" + content + "</" + tag.substr(0, tag.find(' ')) + ">";
}

std::string single(const std::string& name, const std::string& type, const std::string& definition = "") {
  return el("PropertyDef", el("Name", name) + el("Definition", definition) +
                               el("PropertyType", el("TypePropertySingleValue", "<DataType type=\"" + type + "\"/>")));
}

std::string enumerated(const std::string& name, const std::string& list, const Values& items) {
  std::string names, constants;
  for (const std::string& item : items) {
    names += el("EnumItem", item);
    constants += el("ConstantDef", el("Name", item));
  }
  const std::string values = list.empty() ? el("EnumList", "") : el("EnumList name=\"" + list + "\"", names);
  return el("PropertyDef", el("Name", name) + el("PropertyType", el("TypePropertyEnumeratedValue",
                                                                     values + el("ConstantList", constants))));
}

std::string psetDef(const std::string& name, const std::string& properties, const Values& classes,
                    const std::string& xmlns = std::string(" xmlns=\"") + kPsd + "\"") {
  std::string classNames;
  for (const std::string& c : classes) classNames += el("ClassName", c);
  return "<?xml version=\"1.0\"?>\n" +
         el("PropertySetDef" + xmlns, el("Name", name) + el("Definition", "About " + name) +
                                          el("ApplicableClasses", classNames) + el("PropertyDefs", properties));
}

TEST_F(CliTest, ImportPsdCarriesWhatTheDocumentsHoldAndReportsTheRest) {
  fs::create_directory(dir.path() / "psd");
  const std::string bounded =
      el("PropertyDef", el("Name", "Range") +
                            el("PropertyType", el("TypePropertyBoundedValue", "<DataType type=\"IfcReal\"/>")));
  write("psd/a.xml",
        psetDef("Pset_A",
                single("Width", "IfcPositiveLengthMeasure", "The width") + single("Pressure", "IfcPressureMeasure") +
                    single("Maybe", "IfcLogical") + single("Complex", "IfcComplexNumber") + single("Untyped", "") +
                    bounded + single("Long", "IfcLabel", std::string(600, 'd')) +
                    enumerated("Status", "PEnum_Status", {"NEW", "OLD"}) +
                    enumerated("Shape", "PEnum_Shape", {"ROUND", "SQUARE"}),
                {"IfcActuator/ELECTRICACTUATOR", "IfcActuator/HYDRAULICACTUATOR", ""}));
  // Every element with a namespace prefix; the same list name for other values is a type of its own.
  write("psd/b.xml", std::regex_replace(psetDef("Pset_B", single("Label", "IfcLabel") +
                                                              enumerated("Shape", "PEnum_Shape", {"FLAT"}),
                                                {"IfcSlab"}, std::string(" xmlns:psd=\"") + kPsd + "\""),
                                        std::regex("<(/?)([A-Z])"), "<$1psd:$2"));
  // No namespace; unnamed lists take the name of an identical list, or PEnum_<property>.
  write("psd/c.xml", psetDef("Pset_C",
                             single("Count", "IfcCountMeasure") + enumerated("Condition", "", {"NEW", "OLD"}) +
                                 enumerated("Finish", "", {"MATT", "GLOSS"}),
                             {"IfcBeam"}, ""));
  write("psd/d.xml", psetDef("Pset_D", enumerated("Shape", "PEnum_Shape", {"FLAT"}), {"IfcColumn"}));
  write("psd/e.xml", "<Other/>\n");
  write("psd/f.xml", "<PropertySetDef><Name>Broken");
  std::string qto;
  for (const std::string kind : {"LENGTH", "AREA", "VOLUME", "WEIGHT", "COUNT"})
    qto += el("QtoDef", el("Name", "Q" + kind) + el("Definition", "The " + kind) + el("QtoType", "Q_" + kind));
  write("psd/q.xml", el("QtoSetDef", el("Name", "Qto_Wall") + el("Definition", "W") +
                                         el("ApplicableClasses", el("ClassName", "IfcWall")) + el("QtoDefs", qto)));
  write("out.xml", "previous");

  const CliResult verbose = run({"import-psd", "psd", "-o", "out.xml", "--qto", "q.xml", "-v"});
  ASSERT_EQ(verbose.status, 0) << verbose.err;
  EXPECT_EQ(read("out.xml.bak"), "previous");
  EXPECT_EQ(verbose.out,
            "Read 7 files: 4 property sets, 1 quantity sets.\n"
            "Wrote out.xml: 4 sets, 13 properties, 4 enumerated types, 4 relations.\n"
            "Wrote q.xml: 1 quantity sets, 3 quantities, 1 element types.\nLeft out:\n"
            "  2  file that is not a set definition\n        psd/e.xml (neither a PropertySetDef nor a QtoSetDef)\n"
            "        psd/f.xml (not well-formed XML)\n  1  bounded value (a range of values)\n        Pset_A.Range\n"
            "  1  data type not representable\n        Pset_A.Complex (IfcComplexNumber)\n"
            "  1  empty applicable class\n        Pset_A\n"
            "  1  quantity kind Q_COUNT (only lengths, areas and volumes are kept)\n        Qto_Wall.QCOUNT\n"
            "  1  quantity kind Q_WEIGHT (only lengths, areas and volumes are kept)\n        Qto_Wall.QWEIGHT\n"
            "Kept with changes:\n  2  enumerated type renamed, its name was taken by other values\n"
            "        Pset_B.Shape: PEnum_Shape -> PEnum_Shape_Pset_B\n"
            "        Pset_D.Shape: PEnum_Shape -> PEnum_Shape_Pset_B\n"
            "  2  predefined type dropped from an applicable class\n        Pset_A: IfcActuator/ELECTRICACTUATOR\n"
            "        Pset_A: IfcActuator/HYDRAULICACTUATOR\n"
            "  1  IfcLogical kept as Boolean (its UNKNOWN state is lost)\n        Pset_A.Maybe (IfcLogical)\n"
            "  1  description cut to 511 bytes\n        Pset_A.Long\n"
            "  1  no data type given, kept as String\n        Pset_A.Untyped\n"
            "  1  unit not representable, kept as Real without unit\n        Pset_A.Pressure (IfcPressureMeasure)\n"
            "  1  unnamed value list given the name of an identical list\n        Pset_C.Condition: PEnum_Status\n"
            "  1  unnamed value list named PEnum_<property>\n        Pset_C.Finish: PEnum_Finish\n");
  // The documents, whole: types, units, enumerated types shared or renamed, descriptions, relations.
  EXPECT_EQ(run({"psets", "export", "out.xml", "--format", "csv"}).out,
            "record,name,description,type,enumeratedType,unit,rule,optional,value\n"
            "enumeratedType,PEnum_Finish,,,,,,,\nenumValue,MATT,,,,,,,1\nenumValue,GLOSS,,,,,,,2\n"
            "enumeratedType,PEnum_Shape,,,,,,,\nenumValue,ROUND,,,,,,,1\nenumValue,SQUARE,,,,,,,2\n"
            "enumeratedType,PEnum_Shape_Pset_B,,,,,,,\nenumValue,FLAT,,,,,,,1\n"
            "enumeratedType,PEnum_Status,,,,,,,\nenumValue,NEW,,,,,,,1\nenumValue,OLD,,,,,,,2\n"
            "propertySet,Pset_A,About Pset_A,,,,,,\nproperty,Width,The width,Real,,m,,Yes,0\n"
            "property,Pressure,,Real,,,,Yes,0\nproperty,Maybe,,Boolean,,,,Yes,No\nproperty,Untyped,,String,,,,Yes,\n"
            "property,Long," + std::string(511, 'd') + ",String,,,,Yes,\n"
            "property,Status,,Enumerated,PEnum_Status,,,Yes,\nproperty,Shape,,Enumerated,PEnum_Shape,,,Yes,\n"
            "propertySet,Pset_B,About Pset_B,,,,,,\nproperty,Label,,String,,,,Yes,\n"
            "property,Shape,,Enumerated,PEnum_Shape_Pset_B,,,Yes,\npropertySet,Pset_C,About Pset_C,,,,,,\n"
            "property,Count,,Integer,,,,Yes,0\nproperty,Condition,,Enumerated,PEnum_Status,,,Yes,\n"
            "property,Finish,,Enumerated,PEnum_Finish,,,Yes,\npropertySet,Pset_D,About Pset_D,,,,,,\n"
            "property,Shape,,Enumerated,PEnum_Shape_Pset_B,,,Yes,\nrelation,Pset_A,,,,,,,IfcActuator\n"
            "relation,Pset_B,,,,,,,IfcSlab\nrelation,Pset_C,,,,,,,IfcBeam\nrelation,Pset_D,,,,,,,IfcColumn\n");
  EXPECT_EQ(run({"qsets", "export", "q.xml", "--format", "csv"}).out,
            "record,name,description,element,kind,export,value\ntype,IfcLengthMeasure,,,,,\ntype,IfcAreaMeasure,,,,,\n"
            "type,IfcVolumeMeasure,,,,,\nobject,IfcWall,,,,,\nquantitySet,Qto_Wall,W,IfcWall,,,\n"
            "quantity,QLENGTH,The LENGTH,,IfcLengthMeasure,Yes,0\nquantity,QAREA,The AREA,,IfcAreaMeasure,Yes,0\n"
            "quantity,QVOLUME,The VOLUME,,IfcVolumeMeasure,Yes,0\n");

  // Without --verbose only counts; with -o - the document goes to standard output and the report to stderr.
  const std::string counts = run({"import-psd", "psd", "-o", "plain.xml"}).out;
  EXPECT_NE(counts.find("Left out:\n  2  file that is not a set definition\n  1  bounded value"), std::string::npos)
      << counts;
  EXPECT_NE(counts.find("  1  quantity set (no --qto file given)\nKept with changes:"), std::string::npos) << counts;
  EXPECT_NE(counts.find("named PEnum_<property>\nAdd --verbose to list every item.\n"), std::string::npos) << counts;
  const CliResult piped = run({"import-psd", "psd", "-o", "-"});
  EXPECT_EQ(piped.out, read("plain.xml"));
  EXPECT_NE(piped.err.find("Left out:"), std::string::npos);
  EXPECT_EQ(run({"import-psd", "psd", "-o", "quiet.xml", "-q"}).out, "");
  EXPECT_EQ(read("quiet.xml"), read("plain.xml"));
  const CliResult json = run({"import-psd", "psd", "-o", "json.xml", "--format", "json"});
  EXPECT_EQ(read("json.xml"), read("plain.xml"));
  EXPECT_TRUE(nlohmann::json::accept(json.out)) << json.out;
}

// The whole buildingSMART IFC4 library makes the shipped samples, byte for byte (samples/ifc4 is remade with
// `cmake --build <dir> --target ifc4-samples` after a change to the import); units follow the data types.
TEST_F(CliTest, ImportPsdCarriesTheWholeIfc4Library) {
  if (!fs::is_directory(ORVANE_PSD_DIR)) GTEST_SKIP() << "no IFC4 PSD files at " ORVANE_PSD_DIR " (set ORVANE_PSD_DIR)";
  const CliResult result = run({"import-psd", ORVANE_PSD_DIR, "-o", "psets.xml", "--qto", "qsets.xml"});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find(" files: 420 property sets, "), std::string::npos) << result.out;
  EXPECT_EQ(read("psets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-psets.xml"));
  EXPECT_EQ(read("qsets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-qsets.xml"));
  const std::string listed = run({"psets", "list", "psets.xml", "--format", "csv"}).out;
  for (const char* line : {"\nPset_DoorCommon,FireExit,Boolean,", "\nPset_SlabCommon,PitchAngle,Real,0.000,rad,",
                           "\nPset_SpaceCommon,GrossPlannedArea,Real,0.000,m2,",
                           "\nPset_WallCommon,ThermalTransmittance,Real,0.000,,",
                           "\nPset_BuildingCommon,NumberOfStoreys,Integer,0,,"})
    EXPECT_NE(listed.find(line), std::string::npos) << line;
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

// The samples (import-psd's IFC4 library among them, checked against the tool by ImportPsdCarriesTheWholeIfc4Library)
// and the fuzz corpora, each as the library saves it.
TEST_F(DocumentJson, EveryDocumentTheLibraryWritesComesBackByteForByte) {
  std::size_t checked = 0;
  for (const char* folder :
       {"", "ifc4", "../fuzz/corpus/pset_reader", "../fuzz/corpus/qset_reader", "../fuzz/corpus/round_trip"}) {
    for (const fs::directory_entry& source : fs::directory_iterator(fs::path(ORVANE_SAMPLES_DIR) / folder)) {
      SCOPED_TRACE(source.path().string());
      const std::string group = source.is_regular_file() ? groupOf(source.path()) : "", saved = dir.file("saved.xml");
      fs::remove(saved);
      if (group == "psets" ? !saveOnce<CIfcProyectPSet>(source.path(), saved)
                           : group != "qsets" || !saveOnce<CIfcProyectQSet>(source.path(), saved))
        continue;
      roundTrip(group);
      ++checked;
    }
  }
  // The samples alone are five documents; the corpora add dozens.
  EXPECT_GT(checked, 40u);
}

TEST_F(DocumentJson, SingleByteTextsBecomeUtf8AndGoBackAsTheSameBytes) {
  // 0xBA is the degree sign of "ºC"; 0x81 is a byte Windows-1252 leaves undefined.
  const std::string saved =
      write("saved.xml",
            "<PropertySetsBIM><PropertiesSet><PropertySet Name=\"Muro\xE9\" Description=\"a\x81\">"
            "<PropertyName Name=\"T\" Optional=\"No\" Unit=\"\xBA" "C\" Rule=\"\" Type=\"Real\">"
            "<Description>caf\xC3\xA9</Description>"
            "<Value>G.V$</Value></PropertyName></PropertySet></PropertiesSet></PropertySetsBIM>");
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
