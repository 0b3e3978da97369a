// The property records as they are read from and written to their XML elements.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "document_kinds.h"
#include "model/text.h"

using namespace orvane::test;

namespace {

// The fields an element fills, in one line.
std::string fields(const CIfcPropertyName& p) {
  static const char* const types[] = {"Integer", "Real", "String", "Enumerated", "Boolean", "DateTime"};
  std::ostringstream out;
  out << (p.valueType >= 0 && p.valueType < 6 ? types[p.valueType] : "?") << " " << p.intValue << " " << p.realValue
      << " '" << p.textValue << "' '" << p.enumName << "' unit " << p.unit << (p.optional ? " optional" : "") << " '"
      << p.description << "' '" << p.rule << "'";
  return out.str();
}

std::string withAttributes(const std::string& type, const std::string& optional, const std::string& unit) {
  return property("P", type, "1", "Optional=\"" + optional + "\" " + unit + " Rule=\"\"");
}

TEST(PropertyRecords, ElementsFillTheirFields) {
  TempDir dir;
  MessageRecorder messages;
  const std::string rest = "'' unit 0 'd' ''";
  const struct { std::string element, fields; } rows[] = {
      // Type words in any case; any other word names an enumerated type.
      {property("P", "iNTEGER", "3"), "Integer 3 0 '' " + rest},
      {property("P", "real", "2.5"), "Real 0 2.5 '' " + rest},
      {property("P", "string", std::string(900, 'v')), "String 0 0 '" + std::string(511, 'v') + "' " + rest},
      {property("P", "datetime", "2026-11-21"), "DateTime 0 0 '2026-11-21' " + rest},
      {property("P", "Colores", "Rojo"), "Enumerated 0 0 'Rojo' 'Colores' unit 0 'd' ''"},
      // A Boolean is 1 only for "yes", in any case.
      {property("P", "boolean", "yEs"), "Boolean 1 0 '' " + rest},
      {property("P", "Boolean", "1"), "Boolean 0 0 '' " + rest},
      // Integer and Real keep host variable references as text.
      {property("P", "Integer", "$ANCHO"), "Integer 0 0 '$ANCHO' " + rest},
      {property("P", "Real", "Eje.Cota$"), "Real 0 0 'Eje.Cota$' " + rest},
      // Optional only for "Yes" in any case; units found ignoring case, an unknown or missing one is none.
      {withAttributes("String", "yES", "Unit=\"\""), "String 0 0 '1' '' unit 0 optional 'd' ''"},
      {withAttributes("String", "true", "Unit=\"M2\""), "String 0 0 '1' '' unit 2 'd' ''"},
      {withAttributes("String", "No", "Unit=\"\xBA" "c\""), "String 0 0 '1' '' unit 4 'd' ''"},
      {withAttributes("String", "No", "Unit=\"km\""), "String 0 0 '1' " + rest},
      {withAttributes("String", "No", ""), "String 0 0 '1' " + rest},
      {"<PropertyName Name=\"A\" Optional=\"No\" Rule=\"r\" Type=\"Real\"><Description/><Value></Value></PropertyName>",
       "Real 0 0 '' '' unit 0 '' 'r'"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.element.substr(0, 100));
    const CIfcProyectPSet doc = load<CIfcProyectPSet>(dir, psetFile("", propertySet("S", row.element)));
    ASSERT_EQ(doc.propertySets.size(), 1u);
    ASSERT_EQ(doc.propertySets[0].properties.size(), 1u);
    EXPECT_EQ(fields(doc.propertySets[0].properties[0]), row.fields);
  }
  EXPECT_TRUE(messages.messages().empty());
}

// Every type's value as written is in the golden file; these are the values it has no room for.
TEST(PropertyRecords, ValueTextsAreWrittenByType) {
  TempDir dir;
  const struct { int32_t type, whole; const char *text, *written; } rows[] = {
      {PropertyBoolean, 2, "", "<Value>No</Value>"},  // only 1 means yes
      // A numeric property's text is printed as a format, any other's is not.
      {PropertyInteger, 0, "Eje.100%%$", "<Value>Eje.100%$</Value>"},
      {PropertyString, 0, "Eje.100%%$", "<Value>Eje.100%%$</Value>"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.written);
    CIfcProyectPSet doc;
    CIfcPropertyName& p = doc.propertySets.emplace_back().properties.emplace_back();
    p.valueType = row.type;
    p.intValue = row.whole;
    orvane::copyText(p.textValue, row.text);
    ASSERT_EQ(doc.graba(dir.file("out.xml").c_str()), 1);
    EXPECT_NE(readBytes(dir.file("out.xml")).find(row.written), std::string::npos);
  }
}

// A type without values is written so that it reads back; the editors' selection is not written.
TEST(PropertyRecords, EmptyTypesAndTheSelectedFlag) {
  TempDir dir;
  CIfcProyectPSet doc;
  doc.enums.emplace_back();
  doc.propertySets.emplace_back().selected = true;
  EXPECT_EQ(roundTrip(dir, doc).enums.size(), 1u);
  EXPECT_EQ(readBytes(dir.file("round.xml")).find("elected"), std::string::npos);
}

}  // namespace
