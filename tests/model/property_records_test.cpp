// The property records as they are read from and written to their XML elements. Whole files, their
// order and their malformed parts are in pset_document_test.cpp.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "model/text.h"
#include "support/documents.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

// The fields an element fills, in one line.
std::string fields(const CIfcPropertyName& p) {
  static const char* const types[] = {"Integer", "Real", "String", "Enumerated", "Boolean", "DateTime"};
  std::ostringstream out;
  out << (p.valueType >= 0 && p.valueType < 6 ? types[p.valueType] : "?") << " int " << p.intValue << " real "
      << p.realValue << " text '" << p.textValue << "' enum '" << p.enumName << "' unit " << p.unit
      << (p.optional ? " optional" : "") << " desc '" << p.description << "' rule '" << p.rule << "'";
  return out.str();
}

class PropertyRecords : public ::testing::Test {
 protected:
  // The one property of a file holding one set with one property.
  CIfcPropertyName loadProperty(const std::string& element) {
    CIfcProyectPSet doc = load<CIfcProyectPSet>(dir, psetFile("", propertySet("S", element)));
    EXPECT_EQ(doc.propertySets.size(), 1u);
    EXPECT_EQ(doc.propertySets.at(0).properties.size(), 1u);
    return doc.propertySets.at(0).properties.at(0);
  }

  TempDir dir;
  MessageRecorder messages;
};

std::string withAttributes(const std::string& type, const std::string& value, const std::string& optional,
                           const std::string& unit) {
  return property("P", type, value, "Optional=\"" + optional + "\" " + unit + " Rule=\"\"");
}

}  // namespace

TEST_F(PropertyRecords, ElementsFillTheirFields) {
  const std::string rest = " enum '' unit 0 desc 'd' rule ''";
  const struct {
    std::string element;
    std::string fields;
  } rows[] = {
      // Type words in any case; any other word names an enumerated type.
      {property("P", "integer", "3"), "Integer int 3 real 0 text ''" + rest},
      {property("P", "INTEGER", "3"), "Integer int 3 real 0 text ''" + rest},
      {property("P", "InTeGeR", "3"), "Integer int 3 real 0 text ''" + rest},
      {property("P", "real", "2.5"), "Real int 0 real 2.5 text ''" + rest},
      {property("P", "string", "1"), "String int 0 real 0 text '1'" + rest},
      {property("P", "datetime", "2026-11-21"), "DateTime int 0 real 0 text '2026-11-21'" + rest},
      {property("P", "Colores", "Rojo"), "Enumerated int 0 real 0 text 'Rojo' enum 'Colores' unit 0 desc 'd' rule ''"},
      // A Boolean is 1 only for "yes", in any case.
      {property("P", "boolean", "yes"), "Boolean int 1 real 0 text ''" + rest},
      {property("P", "Boolean", "1"), "Boolean int 0 real 0 text ''" + rest},
      // Integer and Real keep host variable references as text; other values read like atoi.
      {property("P", "Integer", "$ANCHO"), "Integer int 0 real 0 text '$ANCHO'" + rest},
      {property("P", "Real", "Eje.Cota$"), "Real int 0 real 0 text 'Eje.Cota$'" + rest},
      {property("P", "Integer", "12abc"), "Integer int 12 real 0 text ''" + rest},
      // Optional only for "Yes" in any case.
      {withAttributes("String", "", "YES", "Unit=\"\""), "String int 0 real 0 text '' enum '' unit 0 optional desc 'd' rule ''"},
      {withAttributes("String", "", "yes", "Unit=\"\""), "String int 0 real 0 text '' enum '' unit 0 optional desc 'd' rule ''"},
      {withAttributes("String", "", "true", "Unit=\"\""), "String int 0 real 0 text ''" + rest},
      {withAttributes("String", "", "1", "Unit=\"\""), "String int 0 real 0 text ''" + rest},
      {withAttributes("String", "", "", "Unit=\"\""), "String int 0 real 0 text ''" + rest},
      // Units found ignoring case; an unknown or missing one is none.
      {withAttributes("Real", "1", "No", "Unit=\"M2\""), "Real int 0 real 1 text '' enum '' unit 2 desc 'd' rule ''"},
      {withAttributes("Real", "1", "No", "Unit=\"\xBA" "c\""), "Real int 0 real 1 text '' enum '' unit 4 desc 'd' rule ''"},
      {withAttributes("Real", "1", "No", "Unit=\"km\""), "Real int 0 real 1 text ''" + rest},
      {withAttributes("Real", "1", "No", ""), "Real int 0 real 1 text ''" + rest},
      // Empty description and value elements read as empty texts.
      {"<PropertyName Name=\"A\" Optional=\"No\" Rule=\"r\" Type=\"Real\"><Description/><Value></Value></PropertyName>",
       "Real int 0 real 0 text '' enum '' unit 0 desc '' rule 'r'"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.element);
    EXPECT_EQ(fields(loadProperty(row.element)), row.fields);
  }
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(PropertyRecords, OverlongTextsAreCutToTheField) {
  CIfcPropertyName p = loadProperty(property(std::string(700, 'n'), "String", std::string(900, 'v')));
  EXPECT_EQ(std::string(p.name), std::string(511, 'n'));
  EXPECT_EQ(std::string(p.textValue), std::string(511, 'v'));
}

// Every type's value as written (a whole document of every type is the golden file's).
TEST_F(PropertyRecords, ValueTextsAreWrittenByType) {
  const struct {
    int32_t type;
    int32_t whole;
    double real;
    const char* text;
    const char* written;
  } rows[] = {
      {PropertyReal, 0, 1.23456, "", "<Value>1.235</Value>"},
      {PropertyBoolean, 2, 0, "", "<Value>No</Value>"},  // only 1 means yes
      {PropertyInteger, -42, 0, "", "<Value>-42</Value>"},
      // A numeric property's text is printed as a format, any other's is not.
      {PropertyInteger, 0, 0, "Eje.100%%$", "<Value>Eje.100%$</Value>"},
      {PropertyString, 0, 0, "Eje.100%%$", "<Value>Eje.100%%$</Value>"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.written);
    CIfcProyectPSet doc;
    doc.propertySets.emplace_back();
    CIfcPropertyName& p = doc.propertySets[0].properties.emplace_back();
    p.valueType = row.type;
    p.intValue = row.whole;
    p.realValue = row.real;
    orvane::copyText(p.textValue, row.text);
    const std::string path = dir.file("out.xml");
    ASSERT_EQ(doc.graba(path.c_str()), 1);
    EXPECT_NE(readBytes(path).find(row.written), std::string::npos);
  }
}

TEST_F(PropertyRecords, EmptyTypesAndTheSelectedFlag) {
  CIfcProyectPSet doc;
  orvane::copyText(doc.enums.emplace_back().name, "Vacio");
  orvane::copyText(doc.propertySets.emplace_back().name, "S");
  doc.propertySets[0].selected = true;  // editor state: neither written nor read
  const std::string path = dir.file("out.xml");
  doc.graba(path.c_str());
  EXPECT_NE(readBytes(path).find("<Elements/>"), std::string::npos);
  EXPECT_EQ(readBytes(path).find("elected"), std::string::npos);
  CIfcProyectPSet again = roundTrip(dir, doc);
  ASSERT_EQ(again.enums.size(), 1u);
  EXPECT_TRUE(again.enums[0].elements.empty());
  EXPECT_FALSE(again.propertySets.at(0).selected);
  EXPECT_TRUE(messages.messages().empty());
}
