// orvane import-psd: small PSD files that show each rule, then the whole IFC4 library.
#include <gtest/gtest.h>

#include <cstring>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "tools/tool_fixture.h"

using namespace orvane::test;

namespace {

constexpr const char* kNamespace = "http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd";

std::string singleValue(const std::string& name, const std::string& type, const std::string& definition = "") {
  return "<PropertyDef><Name>" + name + "</Name><Definition>" + definition +
         "</Definition><PropertyType><TypePropertySingleValue><DataType type=\"" + type +
         "\"/></TypePropertySingleValue></PropertyType></PropertyDef>";
}

std::string enumerated(const std::string& name, const std::string& listName, const std::vector<std::string>& items) {
  std::string list = listName.empty() ? "<EnumList>" : "<EnumList name=\"" + listName + "\">";
  std::string constants;
  for (const std::string& item : items) {
    if (!listName.empty()) list += "<EnumItem>" + item + "</EnumItem>";
    constants += "<ConstantDef><Name>" + item + "</Name></ConstantDef>";
  }
  return "<PropertyDef><Name>" + name + "</Name><PropertyType><TypePropertyEnumeratedValue>" + list +
         "</EnumList><ConstantList>" + constants + "</ConstantList></TypePropertyEnumeratedValue></PropertyType></PropertyDef>";
}

std::string bounded(const std::string& name) {
  return "<PropertyDef><Name>" + name + "</Name><PropertyType><TypePropertyBoundedValue><DataType type=\"IfcReal\"/>"
         "</TypePropertyBoundedValue></PropertyType></PropertyDef>";
}

// A PropertySetDef; `prefix` "psd:" writes it with a namespace prefix, "" with the default one.
std::string psetDef(const std::string& name, const std::string& properties, const std::vector<std::string>& classes,
                    const std::string& prefix = "") {
  std::string classNames;
  for (const std::string& c : classes) classNames += "<ClassName>" + c + "</ClassName>";
  std::string xml = "<?xml version=\"1.0\"?>\n<PropertySetDef xmlns" + (prefix.empty() ? "" : ":" + prefix.substr(0, prefix.size() - 1)) +
                    "=\"" + kNamespace + "\"><Name>" + name + "</Name><Definition>About " + name +
                    "</Definition><ApplicableClasses>" + classNames + "</ApplicableClasses><PropertyDefs>" + properties +
                    "</PropertyDefs></PropertySetDef>\n";
  if (prefix.empty()) return xml;
  // Every element of a prefixed file carries the prefix.
  std::string prefixed;
  for (std::size_t i = 0; i < xml.size(); ++i) {
    prefixed += xml[i];
    if (xml[i] == '<' && i + 1 < xml.size() && xml[i + 1] != '?') {
      if (xml[i + 1] == '/') prefixed += xml[++i];
      prefixed += prefix;
    }
  }
  return prefixed;
}

std::string qtoDef(const std::string& name, const std::vector<std::pair<std::string, std::string>>& quantities,
                   const std::string& applicableClass) {
  std::string defs;
  for (const auto& [quantity, kind] : quantities)
    defs += "<QtoDef><Name>" + quantity + "</Name><Definition>The " + quantity + "</Definition><QtoType>" + kind + "</QtoType></QtoDef>";
  return "<QtoSetDef><Name>" + name + "</Name><Definition>About " + name + "</Definition><ApplicableClasses><ClassName>" +
         applicableClass + "</ClassName></ApplicableClasses><QtoDefs>" + defs + "</QtoDefs></QtoSetDef>\n";
}

CIfcProyectPSet loadProperties(const std::string& path) {
  CIfcProyectPSet document;
  EXPECT_EQ(document.lee(path.c_str()), 1) << path;
  return document;
}

const CIfcPropertySet* findSet(const CIfcProyectPSet& document, const std::string& name) {
  for (const CIfcPropertySet& set : document.propertySets)
    if (name == set.name) return &set;
  return nullptr;
}

const CIfcPropertyName* findProperty(const CIfcPropertySet& set, const std::string& name) {
  for (const CIfcPropertyName& property : set.properties)
    if (name == property.name) return &property;
  return nullptr;
}

const CIfcEnum* findEnum(const CIfcProyectPSet& document, const std::string& name) {
  for (const CIfcEnum& type : document.enums)
    if (strcasecmp(name.c_str(), type.name) == 0) return &type;
  return nullptr;
}

std::vector<std::string> valuesOf(const CIfcEnum& type) {
  std::vector<std::string> values;
  for (const CIfcNodoEnum& node : type.elements) values.emplace_back(node.text);
  return values;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class ImportPsd : public ToolTest {
 protected:
  void SetUp() override { std::filesystem::create_directory(dir.path() / "psd"); }
  std::string psd(const std::string& name, const std::string& xml) const { return write("psd/" + name, xml); }
  std::string psdFolder() const { return path("psd"); }
};

TEST_F(ImportPsd, ReadsFilesWithAndWithoutTheNamespace) {
  psd("a.xml", psetDef("Pset_A", singleValue("Width", "IfcPositiveLengthMeasure", "The width"), {"IfcWall"}));
  psd("b.xml", psetDef("Pset_B", singleValue("Label", "IfcLabel"), {"IfcSlab"}, "psd:"));
  std::string plain = psetDef("Pset_C", singleValue("Count", "IfcCountMeasure"), {"IfcBeam"});
  plain.replace(plain.find(" xmlns"), std::strlen(" xmlns=\"\"") + std::strlen(kNamespace), "");
  psd("c.xml", plain);
  const CliResult result = run({"import-psd", psdFolder(), "-o", path("out.xml")});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(contains(result.out, "Read 3 files: 3 property sets, 0 quantity sets.")) << result.out;
  EXPECT_TRUE(contains(result.out, "Wrote " + path("out.xml") + ": 3 sets, 3 properties, 0 enumerated types, 3 relations."));
  const CIfcProyectPSet document = loadProperties(path("out.xml"));
  const CIfcPropertyName* width = findProperty(*findSet(document, "Pset_A"), "Width");
  ASSERT_NE(width, nullptr);
  EXPECT_EQ(width->valueType, PropertyReal);
  EXPECT_EQ(width->unit, 1);
  EXPECT_STREQ(width->description, "The width");
  EXPECT_TRUE(width->optional);
  EXPECT_STREQ(findSet(document, "Pset_A")->description, "About Pset_A");
  EXPECT_EQ(findProperty(*findSet(document, "Pset_B"), "Label")->valueType, PropertyString);
  EXPECT_EQ(findProperty(*findSet(document, "Pset_C"), "Count")->valueType, PropertyInteger);
  ASSERT_EQ(document.relations.size(), 3u);
  EXPECT_STREQ(document.relations[1].pset, "Pset_B");
  EXPECT_STREQ(document.relations[1].object, "IfcSlab");
}

TEST_F(ImportPsd, ReportsWhatItLeavesOutOrChanges) {
  psd("a.xml", psetDef("Pset_A",
                       singleValue("Pressure", "IfcPressureMeasure") + singleValue("Maybe", "IfcLogical") +
                           singleValue("Complex", "IfcComplexNumber") + singleValue("Untyped", "") + bounded("Range") +
                           singleValue("Long", "IfcLabel", std::string(600, 'd')),
                       {"IfcActuator/ELECTRICACTUATOR", "IfcActuator/HYDRAULICACTUATOR", ""}));
  psd("b.xml", "<Other/>\n");
  psd("c.xml", "<PropertySetDef><Name>Broken");
  psd("d.xml", qtoDef("Qto_D", {{"Length", "Q_LENGTH"}}, "IfcWall"));
  const CliResult result = run({"import-psd", psdFolder(), "-o", path("out.xml"), "--verbose"});
  ASSERT_EQ(result.status, 0) << result.err;
  for (const char* line :
       {"Read 4 files: 1 property sets, 1 quantity sets.",
        "  1  bounded value (a range of values)\n        Pset_A.Range\n",
        "  1  data type not representable\n        Pset_A.Complex (IfcComplexNumber)\n",
        "  1  empty applicable class\n        Pset_A\n",
        "  1  quantity set (no --qto file given)\n        Qto_D\n",
        "  2  file that is not a set definition\n",
        "b.xml (neither a PropertySetDef nor a QtoSetDef)", "c.xml (not well-formed XML)",
        "  1  unit not representable, kept as Real without unit\n        Pset_A.Pressure (IfcPressureMeasure)\n",
        "  1  IfcLogical kept as Boolean (its UNKNOWN state is lost)\n",
        "  1  no data type given, kept as String\n        Pset_A.Untyped\n",
        "  1  description cut to 511 bytes\n        Pset_A.Long\n",
        "  2  predefined type dropped from an applicable class\n        Pset_A: IfcActuator/ELECTRICACTUATOR\n"})
    EXPECT_TRUE(contains(result.out, line)) << line << "\n---\n" << result.out;
  const CIfcProyectPSet document = loadProperties(path("out.xml"));
  const CIfcPropertySet& set = *findSet(document, "Pset_A");
  EXPECT_EQ(set.properties.size(), 4u);  // Pressure, Maybe, Untyped, Long
  EXPECT_EQ(std::strlen(findProperty(set, "Long")->description), 511u);
  ASSERT_EQ(document.relations.size(), 1u);  // both actuator types relate the set to IfcActuator once
  EXPECT_STREQ(document.relations[0].object, "IfcActuator");
}

TEST_F(ImportPsd, WithoutVerboseOnlyCountsAreShown) {
  psd("a.xml", psetDef("Pset_A", bounded("Range") + bounded("Other"), {"IfcWall"}));
  const CliResult result = run({"import-psd", psdFolder(), "-o", path("out.xml")});
  EXPECT_TRUE(contains(result.out, "Left out:\n  2  bounded value (a range of values)\nAdd --verbose to list every item.\n"))
      << result.out;
}

TEST_F(ImportPsd, EnumeratedTypesAreNamedSoEveryPropertyKeepsItsOwnValues) {
  psd("a.xml", psetDef("Pset_A", enumerated("Status", "PEnum_Status", {"NEW", "OLD"}) +
                                     enumerated("Shape", "PEnum_Shape", {"ROUND", "SQUARE"}), {"IfcWall"}));
  // Same name, other values: kept apart under a longer name.
  psd("b.xml", psetDef("Pset_B", enumerated("Shape", "PEnum_Shape", {"FLAT"}), {"IfcSlab"}));
  psd("d.xml", psetDef("Pset_D", enumerated("Shape", "PEnum_Shape", {"FLAT"}), {"IfcColumn"}));
  // Unnamed lists: the name of an identical list, or PEnum_<property>.
  psd("c.xml", psetDef("Pset_C", enumerated("Condition", "", {"NEW", "OLD"}) + enumerated("Finish", "", {"MATT", "GLOSS"}),
                       {"IfcBeam"}));
  const CliResult result = run({"import-psd", psdFolder(), "-o", path("out.xml")});
  ASSERT_EQ(result.status, 0) << result.err;
  const CIfcProyectPSet document = loadProperties(path("out.xml"));
  ASSERT_EQ(document.enums.size(), 4u);
  const auto typeOf = [&](const std::string& set, const std::string& property) {
    return std::string(findProperty(*findSet(document, set), property)->enumName);
  };
  EXPECT_EQ(typeOf("Pset_A", "Status"), "PEnum_Status");
  EXPECT_EQ(typeOf("Pset_A", "Shape"), "PEnum_Shape");
  EXPECT_EQ(typeOf("Pset_B", "Shape"), "PEnum_Shape_Pset_B");
  EXPECT_EQ(typeOf("Pset_D", "Shape"), "PEnum_Shape_Pset_B");
  EXPECT_EQ(typeOf("Pset_C", "Condition"), "PEnum_Status");
  EXPECT_EQ(typeOf("Pset_C", "Finish"), "PEnum_Finish");
  EXPECT_EQ(valuesOf(*findEnum(document, "PEnum_Shape_Pset_B")), std::vector<std::string>{"FLAT"});
  EXPECT_EQ(valuesOf(*findEnum(document, "PEnum_Finish")), (std::vector<std::string>{"MATT", "GLOSS"}));
  EXPECT_EQ(findEnum(document, "PEnum_Status")->elements[1].value, 2);
}

TEST_F(ImportPsd, QuantitySetsGoToTheQtoDocument) {
  psd("q.xml", qtoDef("Qto_Wall", {{"Length", "Q_LENGTH"}, {"NetArea", "Q_AREA"}, {"NetVolume", "Q_VOLUME"},
                                   {"Weight", "Q_WEIGHT"}, {"Pieces", "Q_COUNT"}},
                      "IfcWall"));
  const CliResult result = run({"import-psd", psdFolder(), "-o", path("out.xml"), "--qto", path("q.xml"), "-v"});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_TRUE(contains(result.out, "Wrote " + path("q.xml") + ": 1 quantity sets, 3 quantities, 1 element types."));
  EXPECT_TRUE(contains(result.out, "quantity kind Q_WEIGHT (only lengths, areas and volumes are kept)\n        Qto_Wall.Weight"));
  EXPECT_TRUE(contains(result.out, "quantity kind Q_COUNT"));
  CIfcProyectQSet document;
  ASSERT_EQ(document.lee(path("q.xml").c_str()), 1);
  ASSERT_EQ(document.quantitySets.size(), 1u);
  const CIfcQuantitySet& set = document.quantitySets[0];
  EXPECT_STREQ(set.typeZep, "IfcWall");
  ASSERT_EQ(set.quantities.size(), 3u);
  EXPECT_EQ(set.quantities[1].measureType, 1);
  EXPECT_STREQ(set.quantities[2].description, "The NetVolume");
  ASSERT_EQ(document.types.size(), 3u);
  EXPECT_STREQ(document.types[2].name, "IfcVolumeMeasure");
  ASSERT_EQ(document.objects.size(), 1u);
  EXPECT_STREQ(document.objects[0].name, "IfcWall");
}

TEST_F(ImportPsd, AnExistingOutputIsKeptAsBackup) {
  psd("a.xml", psetDef("Pset_A", singleValue("W", "IfcReal"), {"IfcWall"}));
  const std::string previous = write("out.xml", "previous");
  ASSERT_EQ(run({"import-psd", psdFolder(), "-o", previous}).status, 0);
  EXPECT_EQ(readBytes(path("out.xml.bak")), "previous");
}

TEST_F(ImportPsd, RefusesPathsAndOutputsItCannotUse) {
  const std::string file = psd("a.xml", psetDef("Pset_A", singleValue("W", "IfcReal"), {"IfcWall"}));
  expectError(run({"import-psd", path("nowhere"), "-o", path("out.xml")}), "nowhere: no such file or folder");
  expectError(run({"import-psd", file, "-o", path("no/folder/out.xml")}), "does not exist");
  expectError(run({"import-psd", file, "-o", path("out.xml"), "--qto", path("out.xml")}), "the output must be another file");
  expectError(run({"import-psd", psdFolder(), "-o", file}), "the output must be another file than " + file);
  std::filesystem::create_directory(dir.path() / "empty");
  expectError(run({"import-psd", path("empty"), "-o", path("out.xml")}), "no property-set or quantity-set definitions found");
  EXPECT_FALSE(exists("out.xml"));
}

}  // namespace
