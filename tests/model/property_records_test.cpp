// The property-set records as they are read from and written to their XML elements.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/documents.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

class PropertyRecords : public ::testing::Test {
 protected:
  CIfcProyectPSet loadSets(const std::string& sets, int* result = nullptr) {
    return load<CIfcProyectPSet>(dir, psetFile("", sets), result);
  }
  // The one property of a file holding one set with one property.
  CIfcPropertyName loadProperty(const std::string& element) {
    CIfcProyectPSet doc = loadSets(propertySet("S", element));
    EXPECT_EQ(doc.propertySets.size(), 1u);
    EXPECT_EQ(doc.propertySets.at(0).properties.size(), 1u);
    return doc.propertySets.at(0).properties.at(0);
  }
  std::string saved(CIfcProyectPSet& doc) {
    doc.graba(dir.file("out.xml").c_str());
    return readBytes(dir.file("out.xml"));
  }
  static CIfcProyectPSet withProperty(const CIfcPropertyName& p) {
    CIfcProyectPSet doc;
    doc.propertySets.emplace_back();
    std::strcpy(doc.propertySets[0].name, "S");
    doc.propertySets[0].properties.push_back(p);
    return doc;
  }

  TempDir dir;
  MessageRecorder messages;
};

TEST_F(PropertyRecords, TypeWordsReadInAnyCaseAndAreWrittenCapitalised) {
  for (const char* word : {"integer", "INTEGER", "InTeGeR"}) {
    CIfcPropertyName p = loadProperty(property("P", word, "3"));
    EXPECT_EQ(p.valueType, PropertyInteger) << word;
    EXPECT_EQ(p.intValue, 3);
  }
  EXPECT_EQ(loadProperty(property("P", "real", "1")).valueType, PropertyReal);
  EXPECT_EQ(loadProperty(property("P", "string", "1")).valueType, PropertyString);
  EXPECT_EQ(loadProperty(property("P", "boolean", "1")).valueType, PropertyBoolean);
  EXPECT_EQ(loadProperty(property("P", "datetime", "1")).valueType, PropertyDateTime);

  CIfcProyectPSet doc = withProperty(loadProperty(property("P", "integer", "3")));
  EXPECT_NE(saved(doc).find("Type=\"Integer\""), std::string::npos);
}

TEST_F(PropertyRecords, AnyOtherTypeWordNamesAnEnumeratedType) {
  CIfcPropertyName p = loadProperty(property("Color", "Colores", "Rojo"));
  EXPECT_EQ(p.valueType, PropertyEnumerated);
  EXPECT_STREQ(p.enumName, "Colores");
  EXPECT_STREQ(p.textValue, "Rojo");
  CIfcProyectPSet doc = withProperty(p);
  EXPECT_NE(saved(doc).find("Type=\"Colores\""), std::string::npos);
}

TEST_F(PropertyRecords, IntegerAndRealKeepHostVariableReferencesAsText) {
  CIfcPropertyName anchor = loadProperty(property("Ancho", "Integer", "$ANCHO"));
  EXPECT_STREQ(anchor.textValue, "$ANCHO");
  EXPECT_EQ(anchor.intValue, 0);
  CIfcPropertyName real = loadProperty(property("Cota", "Real", "Eje.Cota$"));
  EXPECT_STREQ(real.textValue, "Eje.Cota$");

  CIfcPropertyName number = loadProperty(property("N", "Integer", "12abc"));
  EXPECT_EQ(number.intValue, 12);
  EXPECT_STREQ(number.textValue, "");

  CIfcProyectPSet doc = withProperty(anchor);
  EXPECT_NE(saved(doc).find("<Value>$ANCHO</Value>"), std::string::npos);
}

TEST_F(PropertyRecords, ValueTextsAreWrittenByType) {
  CIfcPropertyName p;
  std::strcpy(p.name, "P");
  p.valueType = PropertyReal;
  p.realValue = 1.23456;
  CIfcProyectPSet doc = withProperty(p);
  EXPECT_NE(saved(doc).find("<Value>1.235</Value>"), std::string::npos);

  p.valueType = PropertyBoolean;
  p.intValue = 2;  // only 1 means yes
  doc = withProperty(p);
  EXPECT_NE(saved(doc).find("<Value>No</Value>"), std::string::npos);
  p.intValue = 1;
  doc = withProperty(p);
  EXPECT_NE(saved(doc).find("<Value>Yes</Value>"), std::string::npos);

  p.valueType = PropertyInteger;
  p.intValue = -42;
  doc = withProperty(p);
  EXPECT_NE(saved(doc).find("<Value>-42</Value>"), std::string::npos);
}

TEST_F(PropertyRecords, NumericValueTextsArePrintedAsAFormatButOthersAreNot) {
  CIfcPropertyName p;
  std::strcpy(p.name, "P");
  p.valueType = PropertyInteger;
  std::strcpy(p.textValue, "Eje.100%%$");
  CIfcProyectPSet doc = withProperty(p);
  EXPECT_NE(saved(doc).find("<Value>Eje.100%$</Value>"), std::string::npos);

  p.valueType = PropertyString;
  doc = withProperty(p);
  EXPECT_NE(saved(doc).find("<Value>Eje.100%%$</Value>"), std::string::npos);
}

TEST_F(PropertyRecords, OptionalIsTrueOnlyForYesInAnyCase) {
  for (const char* yes : {"Yes", "YES", "yes"})
    EXPECT_TRUE(loadProperty(property("P", "String", "", std::string("Optional=\"") + yes + "\" Rule=\"\"")).optional);
  for (const char* no : {"No", "1", "true", ""})
    EXPECT_FALSE(loadProperty(property("P", "String", "", std::string("Optional=\"") + no + "\" Rule=\"\"")).optional);
}

TEST_F(PropertyRecords, BooleanValueIsOneOnlyForYes) {
  EXPECT_EQ(loadProperty(property("B", "Boolean", "yes")).intValue, 1);
  EXPECT_EQ(loadProperty(property("B", "Boolean", "1")).intValue, 0);
}

TEST_F(PropertyRecords, UnitsAreFoundIgnoringCaseAndUnknownOnesAreDropped) {
  EXPECT_EQ(loadProperty(property("P", "Real", "1", "Optional=\"No\" Unit=\"M2\" Rule=\"\"")).unit, 2);
  EXPECT_EQ(loadProperty(property("P", "Real", "1", "Optional=\"No\" Unit=\"\xBA" "c\" Rule=\"\"")).unit, 4);
  EXPECT_EQ(loadProperty(property("P", "Real", "1", "Optional=\"No\" Rule=\"\"")).unit, 0);
  CIfcPropertyName unknown = loadProperty(property("P", "Real", "1", "Optional=\"No\" Unit=\"km\" Rule=\"\""));
  EXPECT_EQ(unknown.unit, 0);
  CIfcProyectPSet doc = withProperty(unknown);
  EXPECT_NE(saved(doc).find("Unit=\"\""), std::string::npos);
}

TEST_F(PropertyRecords, DegreeUnitIsWrittenAsTheSingleByteBA) {
  CIfcPropertyName p;
  std::strcpy(p.name, "T");
  p.valueType = PropertyReal;
  p.unit = 4;
  CIfcProyectPSet doc = withProperty(p);
  EXPECT_NE(saved(doc).find("Unit=\"\xBA" "C\""), std::string::npos);
}

TEST_F(PropertyRecords, EnumeratedTypeWithoutValuesKeepsAnEmptyElementsList) {
  CIfcProyectPSet doc;
  doc.enums.emplace_back();
  std::strcpy(doc.enums[0].name, "Vacio");
  EXPECT_NE(saved(doc).find("<Elements/>"), std::string::npos);
  CIfcProyectPSet again = roundTrip(dir, doc);
  ASSERT_EQ(again.enums.size(), 1u);
  EXPECT_TRUE(again.enums[0].elements.empty());
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(PropertyRecords, EnumeratedValueWithEmptyLiteralDoesNotReadBack) {
  CIfcProyectPSet doc;
  doc.enums.resize(2);
  std::strcpy(doc.enums[0].name, "A");
  doc.enums[0].elements.resize(1);  // value 0 with an empty literal
  std::strcpy(doc.enums[1].name, "B");
  CIfcProyectPSet again = roundTrip(dir, doc);
  EXPECT_TRUE(again.enums.empty());  // A fails, and the reading of types ends there
  EXPECT_EQ(messages.messages(), std::vector<std::string>{"Error lectura XML. CIfcEnum"});
}

TEST_F(PropertyRecords, EnumeratedValuesKeepCodesAndOrder) {
  int result = 0;
  CIfcProyectPSet doc = load<CIfcProyectPSet>(
      dir,
      psetFile("<TypeEnum Name=\"Colores\" Description=\"c\"><Elements>"
               "<Element Value=\"7\">Rojo</Element><Element Value=\"x\">Azul</Element>"
               "<Element Value=\"-2\">Verde</Element></Elements></TypeEnum>",
               ""),
      &result);
  EXPECT_EQ(result, 1);
  ASSERT_EQ(doc.enums.size(), 1u);
  ASSERT_EQ(doc.enums[0].elements.size(), 3u);
  EXPECT_EQ(doc.enums[0].elements[0].value, 7);
  EXPECT_STREQ(doc.enums[0].elements[0].text, "Rojo");
  EXPECT_EQ(doc.enums[0].elements[1].value, 0);  // no digits
  EXPECT_EQ(doc.enums[0].elements[2].value, -2);
  EXPECT_STREQ(doc.enums[0].elements[2].text, "Verde");
}

TEST_F(PropertyRecords, PropertyMissingARequiredPartIsLeftOutWithItsMessage) {
  const std::string noRule =
      "<PropertyName Name=\"A\" Optional=\"No\" Type=\"String\"><Description/><Value/></PropertyName>";
  const std::string noValue =
      "<PropertyName Name=\"B\" Optional=\"No\" Rule=\"\" Type=\"String\"><Description/></PropertyName>";
  const std::string noName =
      "<PropertyName Optional=\"No\" Rule=\"\" Type=\"String\"><Description/><Value/></PropertyName>";
  CIfcProyectPSet doc = loadSets(propertySet("S", noRule + property("Ok", "String", "v") + noValue + noName));
  ASSERT_EQ(doc.propertySets.size(), 1u);
  ASSERT_EQ(doc.propertySets[0].properties.size(), 1u);
  EXPECT_STREQ(doc.propertySets[0].properties[0].name, "Ok");
  EXPECT_EQ(messages.messages(), std::vector<std::string>(3, "Error lectura XML. CIfcPropertyName"));
}

TEST_F(PropertyRecords, EmptyDescriptionAndValueElementsReadAsEmptyTexts) {
  CIfcPropertyName p = loadProperty(
      "<PropertyName Name=\"A\" Optional=\"No\" Rule=\"r\" Type=\"Real\"><Description/><Value></Value></PropertyName>");
  EXPECT_STREQ(p.description, "");
  EXPECT_EQ(p.realValue, 0.0);
  EXPECT_STREQ(p.rule, "r");
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(PropertyRecords, SetMissingItsDescriptionEndsTheReadingOfSets) {
  int result = 0;
  CIfcProyectPSet doc =
      loadSets(propertySet("A") + "<PropertySet Name=\"B\"/>" + propertySet("C"), &result);
  EXPECT_EQ(result, 1);
  ASSERT_EQ(doc.propertySets.size(), 1u);
  EXPECT_STREQ(doc.propertySets[0].name, "A");
  EXPECT_EQ(messages.messages(), std::vector<std::string>{"Error lectura XML. CIfcPropertySet"});
}

TEST_F(PropertyRecords, EnumeratedTypeMissingItsElementsFails) {
  CIfcProyectPSet doc = load<CIfcProyectPSet>(
      dir, psetFile("<TypeEnum Name=\"A\" Description=\"\"/><TypeEnum Name=\"B\" Description=\"\"><Elements/></TypeEnum>", ""));
  EXPECT_TRUE(doc.enums.empty());
  EXPECT_EQ(messages.messages(), std::vector<std::string>{"Error lectura XML. CIfcEnum"});
}

TEST_F(PropertyRecords, RelationMissingANameIsLeftOutSilently) {
  CIfcProyectPSet doc = load<CIfcProyectPSet>(
      dir, psetFile("", "",
                    "<RelationIfcElementWithPSet PSet=\"A\"/>"
                    "<RelationIfcElementWithPSet PSet=\"B\" Object=\"IfcWall\"/>"));
  ASSERT_EQ(doc.relations.size(), 1u);
  EXPECT_STREQ(doc.relations[0].pset, "B");
  EXPECT_STREQ(doc.relations[0].object, "IfcWall");
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(PropertyRecords, OverlongTextsAreCutToTheField) {
  const std::string longName(700, 'n');
  CIfcPropertyName p = loadProperty(property(longName, "String", std::string(900, 'v')));
  EXPECT_EQ(std::string(p.name), std::string(511, 'n'));
  EXPECT_EQ(std::string(p.textValue), std::string(511, 'v'));
}

TEST_F(PropertyRecords, SelectedFlagIsNeitherWrittenNorRead) {
  CIfcProyectPSet doc;
  doc.propertySets.emplace_back();
  std::strcpy(doc.propertySets[0].name, "S");
  doc.propertySets[0].selected = true;
  EXPECT_EQ(saved(doc).find("elected"), std::string::npos);
  EXPECT_FALSE(roundTrip(dir, doc).propertySets.at(0).selected);
}

}  // namespace
