// orvane import-psd: a folder of small PSD files that shows every rule, then the whole IFC4 library.
#include <tinyxml2.h>

#include <cstring>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
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

std::string text(const XMLElement* element) {
  std::string value = element != nullptr && element->GetText() != nullptr ? element->GetText() : "";
  value.erase(0, value.find_first_not_of(" \t\r\n"));
  return value.erase(value.find_last_not_of(" \t\r\n") + 1);
}

std::string lower(std::string value) {
  for (char& c : value) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return value;
}

std::vector<const XMLElement*> children(const XMLElement* parent, const char* name) {
  std::vector<const XMLElement*> found;
  for (auto* e = parent ? parent->FirstChildElement(name) : nullptr; e; e = e->NextSiblingElement(name)) found.push_back(e);
  return found;
}

// The whole buildingSMART IFC4 library. The expected figures are worked out here from the PSD files
// themselves, with the rules the README gives, not taken from the tool.
TEST_F(CliTest, ImportPsdCarriesTheWholeIfc4Library) {
  if (!fs::is_directory(ORVANE_PSD_DIR)) GTEST_SKIP() << "no IFC4 PSD files at " << ORVANE_PSD_DIR << " (set ORVANE_PSD_DIR)";
  std::size_t sets = 0, properties = 0, relations = 0, quantitySets = 0, quantities = 0;
  std::map<std::string, Values> enumerated;             // "Set.Property" -> its values
  std::set<std::pair<std::string, Values>> namedLists;  // (folded list name, values)
  std::set<Values> unnamedLists;
  for (const fs::directory_entry& entry : fs::directory_iterator(ORVANE_PSD_DIR)) {
    tinyxml2::XMLDocument xml;
    if (entry.path().extension() != ".xml" || xml.LoadFile(entry.path().c_str()) != tinyxml2::XML_SUCCESS) continue;
    const XMLElement* root = xml.RootElement();
    const std::string kind = root->Name(), set = text(root->FirstChildElement("Name"));
    quantitySets += kind == "QtoSetDef";
    for (const XMLElement* quantity : children(root->FirstChildElement("QtoDefs"), "QtoDef"))
      quantities += std::set<std::string>{"Q_LENGTH", "Q_AREA", "Q_VOLUME"}.count(text(quantity->FirstChildElement("QtoType")));
    if (kind != "PropertySetDef") continue;
    ++sets;
    for (const XMLElement* property : children(root->FirstChildElement("PropertyDefs"), "PropertyDef")) {
      const XMLElement* shape = property->FirstChildElement("PropertyType")->FirstChildElement();
      if (std::strcmp(shape->Name(), "TypePropertySingleValue") == 0) {
        const char* type = shape->FirstChildElement("DataType")->Attribute("type");
        properties += type == nullptr || std::strcmp(type, "IfcComplexNumber") != 0;
      }
      if (std::strcmp(shape->Name(), "TypePropertyEnumeratedValue") != 0) continue;
      ++properties;
      Values& values = enumerated[set + "." + text(property->FirstChildElement("Name"))];
      for (const XMLElement* item : children(shape->FirstChildElement("EnumList"), "EnumItem")) values.push_back(text(item));
      for (const XMLElement* constant : children(values.empty() ? shape->FirstChildElement("ConstantList") : nullptr, "ConstantDef"))
        values.push_back(text(constant->FirstChildElement("Name")));
      const char* list = shape->FirstChildElement("EnumList")->Attribute("name");
      if (list != nullptr) namedLists.insert({lower(list), values});
      else unnamedLists.insert(values);
    }
    std::set<std::string> entities;
    for (const XMLElement* name : children(root->FirstChildElement("ApplicableClasses"), "ClassName")) {
      const std::string entity = text(name).substr(0, text(name).find('/'));
      if (!entity.empty()) entities.insert(lower(entity));
    }
    relations += entities.size();
  }
  // One enumerated type per named list (a name reused for other values is a type of its own), plus
  // one per unnamed list whose values no named list has.
  std::size_t enumTypes = namedLists.size();
  for (const Values& values : unnamedLists)
    enumTypes += std::none_of(namedLists.begin(), namedLists.end(), [&](const auto& named) { return named.second == values; });

  const CliResult result = run({"import-psd", ORVANE_PSD_DIR, "-o", "psets.xml", "--qto", "qsets.xml"});
  ASSERT_EQ(result.status, 0) << result.err;
  // samples/ifc4 is remade with `cmake --build <dir> --target ifc4-samples` after a change to the import.
  EXPECT_EQ(read("psets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-psets.xml"));
  EXPECT_EQ(read("qsets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-qsets.xml"));
  CIfcProyectPSet document;
  CIfcProyectQSet quantityDocument;
  ASSERT_EQ(document.lee(dir.file("psets.xml").c_str()), 1);
  ASSERT_EQ(quantityDocument.lee(dir.file("qsets.xml").c_str()), 1);

  EXPECT_EQ(sets, 420u);
  EXPECT_EQ(document.propertySets.size(), sets);
  EXPECT_EQ(document.relations.size(), relations);
  EXPECT_EQ(document.enums.size(), enumTypes);
  std::map<std::string, const CIfcEnum*> types;
  for (const CIfcEnum& type : document.enums) types[lower(type.name)] = &type;
  std::map<std::string, std::pair<int, int>> typeAndUnit;  // "Set.Property" -> (value type, unit)
  std::set<std::string> used;
  std::size_t propertyCount = 0, enumeratedCount = 0;
  for (const CIfcPropertySet& set : document.propertySets) {
    for (const CIfcPropertyName& property : set.properties) {
      const std::string where = std::string(set.name) + "." + property.name;
      typeAndUnit[where] = {property.valueType, property.unit};
      ++propertyCount;
      if (property.valueType != PropertyEnumerated) continue;
      ++enumeratedCount;
      const CIfcEnum* type = types[lower(property.enumName)];
      ASSERT_NE(type, nullptr) << where << " names " << property.enumName;
      Values values;
      for (const CIfcNodoEnum& node : type->elements) values.emplace_back(node.text);
      EXPECT_EQ(values, enumerated.at(where)) << where;
      used.insert(lower(type->name));
    }
  }
  EXPECT_EQ(propertyCount, properties);
  EXPECT_EQ(enumeratedCount, enumerated.size());
  EXPECT_EQ(used.size(), document.enums.size()) << "every enumerated type serves a property";
  // Units follow the data types: a plane angle in rad, an area in m2, a thermal transmittance none of the ten.
  EXPECT_EQ(typeAndUnit["Pset_DoorCommon.FireExit"], std::make_pair(int(PropertyBoolean), 0));
  EXPECT_EQ(typeAndUnit["Pset_SlabCommon.PitchAngle"], std::make_pair(int(PropertyReal), 7));
  EXPECT_EQ(typeAndUnit["Pset_SpaceCommon.GrossPlannedArea"], std::make_pair(int(PropertyReal), 2));
  EXPECT_EQ(typeAndUnit["Pset_BuildingCommon.NumberOfStoreys"], std::make_pair(int(PropertyInteger), 0));
  EXPECT_EQ(typeAndUnit["Pset_WallCommon.ThermalTransmittance"], std::make_pair(int(PropertyReal), 0));

  std::size_t quantityCount = 0;
  for (const CIfcQuantitySet& set : quantityDocument.quantitySets) quantityCount += set.quantities.size();
  EXPECT_EQ(quantityDocument.quantitySets.size(), quantitySets);
  EXPECT_EQ(quantityCount, quantities);
}

}  // namespace
