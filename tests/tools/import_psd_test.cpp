// orvane import-psd: a folder of small PSD files that shows every rule, then the whole IFC4 library.
#include <tinyxml2.h>

#include <cstring>
#include <map>
#include <regex>
#include <nlohmann/json.hpp>
#include <set>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "tools/cli.h"

using namespace orvane::test;
using tinyxml2::XMLElement;
namespace fs = std::filesystem;

namespace {

using Values = std::vector<std::string>;

std::string single(const std::string& name, const std::string& type, const std::string& definition = "") {
  return "<PropertyDef><Name>" + name + "</Name><Definition>" + definition + "</Definition><PropertyType>"
         "<TypePropertySingleValue><DataType type=\"" + type + "\"/></TypePropertySingleValue></PropertyType></PropertyDef>";
}

std::string enumerated(const std::string& name, const std::string& list, const Values& items) {
  std::string names, constants;
  for (const std::string& item : items) {
    names += "<EnumItem>" + item + "</EnumItem>";
    constants += "<ConstantDef><Name>" + item + "</Name></ConstantDef>";
  }
  return "<PropertyDef><Name>" + name + "</Name><PropertyType><TypePropertyEnumeratedValue>" +
         (list.empty() ? "<EnumList>" : "<EnumList name=\"" + list + "\">" + names) + "</EnumList><ConstantList>" +
         constants + "</ConstantList></TypePropertyEnumeratedValue></PropertyType></PropertyDef>";
}

std::string psetDef(const std::string& name, const std::string& properties, const Values& classes,
                    const std::string& xmlns = " xmlns=\"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\"") {
  std::string classNames;
  for (const std::string& c : classes) classNames += "<ClassName>" + c + "</ClassName>";
  return "<?xml version=\"1.0\"?>\n<PropertySetDef" + xmlns + "><Name>" + name + "</Name><Definition>About " + name +
         "</Definition><ApplicableClasses>" + classNames + "</ApplicableClasses><PropertyDefs>" + properties +
         "</PropertyDefs></PropertySetDef>\n";
}

TEST_F(CliTest, ImportPsdCarriesWhatTheDocumentsHoldAndReportsTheRest) {
  fs::create_directory(dir.path() / "psd");
  const std::string bounded = "<PropertyDef><Name>Range</Name><PropertyType><TypePropertyBoundedValue><DataType "
                              "type=\"IfcReal\"/></TypePropertyBoundedValue></PropertyType></PropertyDef>";
  write("psd/a.xml", psetDef("Pset_A",
                             single("Width", "IfcPositiveLengthMeasure", "The width") + single("Pressure", "IfcPressureMeasure") +
                                 single("Maybe", "IfcLogical") + single("Complex", "IfcComplexNumber") +
                                 single("Untyped", "") + bounded + single("Long", "IfcLabel", std::string(600, 'd')) +
                                 enumerated("Status", "PEnum_Status", {"NEW", "OLD"}) +
                                 enumerated("Shape", "PEnum_Shape", {"ROUND", "SQUARE"}),
                             {"IfcActuator/ELECTRICACTUATOR", "IfcActuator/HYDRAULICACTUATOR", ""}));
  // Every element with a namespace prefix; the same name for other values is a type of its own.
  write("psd/b.xml", std::regex_replace(psetDef("Pset_B", single("Label", "IfcLabel") + enumerated("Shape", "PEnum_Shape", {"FLAT"}),
                                                {"IfcSlab"}, " xmlns:psd=\"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\""),
                                        std::regex("<(/?)([A-Z])"), "<$1psd:$2"));
  // No namespace; unnamed lists take the name of an identical list, or PEnum_<property>.
  write("psd/c.xml", psetDef("Pset_C", single("Count", "IfcCountMeasure") + enumerated("Condition", "", {"NEW", "OLD"}) +
                                           enumerated("Finish", "", {"MATT", "GLOSS"}), {"IfcBeam"}, ""));
  write("psd/d.xml", psetDef("Pset_D", enumerated("Shape", "PEnum_Shape", {"FLAT"}), {"IfcColumn"}));
  write("psd/e.xml", "<Other/>\n");
  write("psd/f.xml", "<PropertySetDef><Name>Broken");
  std::string qto;
  for (const char* kind : {"LENGTH", "AREA", "VOLUME", "WEIGHT", "COUNT"})
    qto += std::string("<QtoDef><Name>Q") + kind + "</Name><Definition>The " + kind + "</Definition><QtoType>Q_" + kind + "</QtoType></QtoDef>";
  write("psd/q.xml", "<QtoSetDef><Name>Qto_Wall</Name><Definition>W</Definition><ApplicableClasses><ClassName>IfcWall</ClassName>"
                     "</ApplicableClasses><QtoDefs>" + qto + "</QtoDefs></QtoSetDef>\n");
  write("out.xml", "previous");

  const CliResult verbose = run({"import-psd", "psd", "-o", "out.xml", "--qto", "q.xml", "-v"});
  ASSERT_EQ(verbose.status, 0) << verbose.err;
  EXPECT_EQ(read("out.xml.bak"), "previous");
  for (const char* line :
       {"Read 7 files: 4 property sets, 1 quantity sets.", "Wrote out.xml: 4 sets, 13 properties, 4 enumerated types, 4 relations.",
        "Wrote q.xml: 1 quantity sets, 3 quantities, 1 element types.",
        "  1  bounded value (a range of values)\n        Pset_A.Range\n",
        "  1  data type not representable\n        Pset_A.Complex (IfcComplexNumber)\n", "  1  empty applicable class\n        Pset_A\n",
        "  2  file that is not a set definition\n", "e.xml (neither a PropertySetDef nor a QtoSetDef)", "f.xml (not well-formed XML)",
        "  1  unit not representable, kept as Real without unit\n        Pset_A.Pressure (IfcPressureMeasure)\n",
        "  1  IfcLogical kept as Boolean (its UNKNOWN state is lost)\n", "  1  no data type given, kept as String\n        Pset_A.Untyped\n",
        "  1  description cut to 511 bytes\n        Pset_A.Long\n",
        "  2  predefined type dropped from an applicable class\n        Pset_A: IfcActuator/ELECTRICACTUATOR\n",
        "quantity kind Q_WEIGHT (only lengths, areas and volumes are kept)\n        Qto_Wall.QWEIGHT", "quantity kind Q_COUNT"})
    EXPECT_NE(verbose.out.find(line), std::string::npos) << line << "\n---\n" << verbose.out;
  EXPECT_EQ(run({"psets", "list", "out.xml", "--format", "csv"}).out,
            "set,property,type,value,unit,enum\n"
            "Pset_A,Width,Real,0.000,m,\nPset_A,Pressure,Real,0.000,,\nPset_A,Maybe,Boolean,,,\nPset_A,Untyped,String,,,\n"
            "Pset_A,Long,String,,,\nPset_A,Status,Enumerated,,,PEnum_Status\nPset_A,Shape,Enumerated,,,PEnum_Shape\n"
            "Pset_B,Label,String,,,\nPset_B,Shape,Enumerated,,,PEnum_Shape_Pset_B\nPset_C,Count,Integer,0,,\n"
            "Pset_C,Condition,Enumerated,,,PEnum_Status\nPset_C,Finish,Enumerated,,,PEnum_Finish\n"
            "Pset_D,Shape,Enumerated,,,PEnum_Shape_Pset_B\n");
  EXPECT_EQ(run({"psets", "enums", "out.xml", "PEnum_Finish", "--format", "csv"}).out, "value\nMATT\nGLOSS\n");
  EXPECT_EQ(run({"psets", "enums", "out.xml", "PEnum_Shape_Pset_B", "--format", "csv"}).out, "value\nFLAT\n");
  CIfcProyectPSet properties;
  ASSERT_EQ(properties.lee(dir.file("out.xml").c_str()), 1);
  const CIfcPropertySet& a = properties.propertySets[0];
  EXPECT_STREQ(a.description, "About Pset_A");
  EXPECT_STREQ(a.properties[0].description, "The width");
  EXPECT_TRUE(a.properties[0].optional);
  EXPECT_EQ(std::strlen(a.properties[4].description), 511u);
  EXPECT_EQ(properties.enums[0].elements.at(1).value, 2);
  // Both actuator types relate the set to IfcActuator once.
  ASSERT_EQ(properties.relations.size(), 4u);
  EXPECT_STREQ(properties.relations[0].object, "IfcActuator");
  EXPECT_STREQ(properties.relations[1].object, "IfcSlab");
  CIfcProyectQSet quantities;
  ASSERT_EQ(quantities.lee(dir.file("q.xml").c_str()), 1);
  ASSERT_EQ(quantities.quantitySets.size(), 1u);
  EXPECT_STREQ(quantities.quantitySets[0].typeZep, "IfcWall");
  ASSERT_EQ(quantities.quantitySets[0].quantities.size(), 3u);
  EXPECT_EQ(quantities.quantitySets[0].quantities[1].measureType, 1);
  EXPECT_STREQ(quantities.quantitySets[0].quantities[2].description, "The VOLUME");
  ASSERT_EQ(quantities.types.size(), 3u);
  EXPECT_STREQ(quantities.types[2].name, "IfcVolumeMeasure");
  ASSERT_EQ(quantities.objects.size(), 1u);

  // Without --verbose only counts; with -o - the document goes to standard output and the report to stderr.
  const CliResult counts = run({"import-psd", "psd", "-o", "plain.xml"});
  EXPECT_NE(counts.out.find("Left out:\n  2  file that is not a set definition\n  1  bounded value (a range of values)\n"), std::string::npos) << counts.out;
  EXPECT_NE(counts.out.find("  1  quantity set (no --qto file given)\n"), std::string::npos) << counts.out;
  EXPECT_NE(counts.out.find("Add --verbose to list every item.\n"), std::string::npos) << counts.out;
  const CliResult piped = run({"import-psd", "psd", "-o", "-"});
  EXPECT_EQ(piped.out, read("plain.xml"));
  EXPECT_NE(piped.err.find("Left out:"), std::string::npos);
  EXPECT_EQ(run({"import-psd", "psd", "-o", "quiet.xml", "-q"}).out, "");
  const CliResult json = run({"import-psd", "psd", "-o", "json.xml", "--format", "json"});
  EXPECT_EQ(read("json.xml"), read("plain.xml"));
  EXPECT_TRUE(nlohmann::json::accept(json.out)) << json.out;
}

// The whole buildingSMART IFC4 library. The expected figures are worked out here from the PSD files
// themselves, with the rules the README gives, not taken from the tool.
std::string text(const XMLElement* parent, const char* name) {
  const XMLElement* child = name == nullptr ? parent : parent != nullptr ? parent->FirstChildElement(name) : nullptr;
  std::string value = child != nullptr && child->GetText() != nullptr ? child->GetText() : "";
  value.erase(0, value.find_first_not_of(" \t\r\n"));
  value.erase(value.find_last_not_of(" \t\r\n") + 1);
  return value;
}

std::string lower(std::string value) {
  for (char& c : value) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return value;
}

template <class Visit>
void eachChild(const XMLElement* parent, const char* name, Visit visit) {
  for (auto* e = parent ? parent->FirstChildElement(name) : nullptr; e; e = e->NextSiblingElement(name)) visit(e);
}

struct Expected {
  std::size_t sets = 0, properties = 0, relations = 0, quantitySets = 0, quantities = 0;
  std::map<std::string, Values> enumerated;             // "Set.Property" -> its values
  std::set<std::pair<std::string, Values>> namedLists;  // (folded list name, values)
  std::set<Values> unnamedLists;
  // One enumerated type per named list (a name reused for other values is a type of its own), plus
  // one per unnamed list whose values no named list has.
  std::size_t enumTypes() const {
    std::size_t types = namedLists.size();
    for (const Values& values : unnamedLists)
      types += std::none_of(namedLists.begin(), namedLists.end(), [&](const auto& named) { return named.second == values; });
    return types;
  }
};

Expected expectedFrom(const fs::path& folder) {
  Expected expected;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    tinyxml2::XMLDocument xml;
    if (entry.path().extension() != ".xml" || xml.LoadFile(entry.path().c_str()) != tinyxml2::XML_SUCCESS) continue;
    const XMLElement* root = xml.RootElement();
    if (std::strcmp(root->Name(), "QtoSetDef") == 0) {
      ++expected.quantitySets;
      eachChild(root->FirstChildElement("QtoDefs"), "QtoDef", [&](const XMLElement* q) {
        expected.quantities += std::set<std::string>{"Q_LENGTH", "Q_AREA", "Q_VOLUME"}.count(text(q, "QtoType"));
      });
    }
    if (std::strcmp(root->Name(), "PropertySetDef") != 0) continue;
    ++expected.sets;
    eachChild(root->FirstChildElement("PropertyDefs"), "PropertyDef", [&](const XMLElement* property) {
      const XMLElement* shape = property->FirstChildElement("PropertyType")->FirstChildElement();
      if (std::strcmp(shape->Name(), "TypePropertySingleValue") == 0) {
        const char* type = shape->FirstChildElement("DataType")->Attribute("type");
        expected.properties += type == nullptr || std::strcmp(type, "IfcComplexNumber") != 0;
      } else if (std::strcmp(shape->Name(), "TypePropertyEnumeratedValue") == 0) {
        ++expected.properties;
        Values values;
        eachChild(shape->FirstChildElement("EnumList"), "EnumItem", [&](const XMLElement* item) { values.push_back(text(item, nullptr)); });
        if (values.empty())
          eachChild(shape->FirstChildElement("ConstantList"), "ConstantDef", [&](const XMLElement* c) { values.push_back(text(c, "Name")); });
        expected.enumerated[text(root, "Name") + "." + text(property, "Name")] = values;
        const char* list = shape->FirstChildElement("EnumList")->Attribute("name");
        if (list != nullptr) expected.namedLists.insert({lower(list), values});
        else expected.unnamedLists.insert(values);
      }
    });
    std::set<std::string> entities;
    eachChild(root->FirstChildElement("ApplicableClasses"), "ClassName", [&](const XMLElement* name) {
      const std::string entity = text(name, nullptr).substr(0, text(name, nullptr).find('/'));
      if (!entity.empty()) entities.insert(lower(entity));
    });
    expected.relations += entities.size();
  }
  return expected;
}

TEST_F(CliTest, ImportPsdCarriesTheWholeIfc4Library) {
  if (!fs::is_directory(ORVANE_PSD_DIR)) GTEST_SKIP() << "no IFC4 PSD files at " << ORVANE_PSD_DIR << " (set ORVANE_PSD_DIR)";
  const Expected expected = expectedFrom(ORVANE_PSD_DIR);
  const CliResult result = run({"import-psd", ORVANE_PSD_DIR, "-o", "psets.xml", "--qto", "qsets.xml"});
  ASSERT_EQ(result.status, 0) << result.err;
  // samples/ifc4 is remade with `cmake --build <dir> --target ifc4-samples` after a change to the import.
  EXPECT_EQ(read("psets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-psets.xml"));
  EXPECT_EQ(read("qsets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-qsets.xml"));
  CIfcProyectPSet document;
  CIfcProyectQSet quantities;
  ASSERT_EQ(document.lee(dir.file("psets.xml").c_str()), 1);
  ASSERT_EQ(quantities.lee(dir.file("qsets.xml").c_str()), 1);

  EXPECT_EQ(expected.sets, 420u);
  EXPECT_EQ(document.propertySets.size(), expected.sets);
  EXPECT_EQ(document.relations.size(), expected.relations);
  EXPECT_EQ(document.enums.size(), expected.enumTypes());
  std::map<std::string, const CIfcEnum*> types;
  for (const CIfcEnum& type : document.enums) types[lower(type.name)] = &type;
  std::map<std::string, std::pair<int, int>> typeAndUnit;  // "Set.Property" -> (value type, unit)
  std::set<std::string> used;
  std::size_t properties = 0, enumerated = 0;
  for (const CIfcPropertySet& set : document.propertySets) {
    for (const CIfcPropertyName& property : set.properties) {
      const std::string where = std::string(set.name) + "." + property.name;
      typeAndUnit[where] = {property.valueType, property.unit};
      ++properties;
      if (property.valueType != PropertyEnumerated) continue;
      ++enumerated;
      const CIfcEnum* type = types[lower(property.enumName)];
      ASSERT_NE(type, nullptr) << where << " names " << property.enumName;
      Values values;
      for (const CIfcNodoEnum& node : type->elements) values.emplace_back(node.text);
      EXPECT_EQ(values, expected.enumerated.at(where)) << where;
      used.insert(lower(type->name));
    }
  }
  EXPECT_EQ(properties, expected.properties);
  EXPECT_EQ(enumerated, expected.enumerated.size());
  EXPECT_EQ(used.size(), document.enums.size()) << "every enumerated type serves a property";
  // Units follow the data types: a plane angle in rad, an area in m2, a thermal transmittance none of the ten.
  EXPECT_EQ(typeAndUnit["Pset_DoorCommon.FireExit"], std::make_pair(int(PropertyBoolean), 0));
  EXPECT_EQ(typeAndUnit["Pset_SlabCommon.PitchAngle"], std::make_pair(int(PropertyReal), 7));
  EXPECT_EQ(typeAndUnit["Pset_SpaceCommon.GrossPlannedArea"], std::make_pair(int(PropertyReal), 2));
  EXPECT_EQ(typeAndUnit["Pset_BuildingCommon.NumberOfStoreys"], std::make_pair(int(PropertyInteger), 0));
  EXPECT_EQ(typeAndUnit["Pset_WallCommon.ThermalTransmittance"], std::make_pair(int(PropertyReal), 0));
  EXPECT_EQ(typeAndUnit["Pset_WallCommon.Status"].first, PropertyEnumerated);
  EXPECT_EQ(typeAndUnit["Pset_WallCommon.Combustible"].first, PropertyBoolean);
  EXPECT_EQ(typeAndUnit["Pset_WallCommon.AcousticRating"].first, PropertyString);

  std::size_t quantityCount = 0;
  for (const CIfcQuantitySet& set : quantities.quantitySets) quantityCount += set.quantities.size();
  EXPECT_EQ(quantities.quantitySets.size(), expected.quantitySets);
  EXPECT_EQ(quantityCount, expected.quantities);
}

}  // namespace
