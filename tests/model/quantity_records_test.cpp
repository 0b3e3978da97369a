// The quantity-set records as they are read from and written to their XML elements.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/documents.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

std::string quantity(const std::string& attributes, const std::string& value = "<Value>1</Value>") {
  return "<QuantityName " + attributes + "><Description>d</Description>" + value + "</QuantityName>";
}

std::string quantitySet(const std::string& name, const std::string& quantities) {
  return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"\">" + quantities + "</QuantitySet>";
}

class QuantityRecords : public ::testing::Test {
 protected:
  CIfcQuantityName loadQuantity(const std::string& element) {
    CIfcProyectQSet doc = load<CIfcProyectQSet>(dir, qsetFile("", "", quantitySet("S", element)));
    EXPECT_EQ(doc.quantitySets.size(), 1u);
    EXPECT_EQ(doc.quantitySets.at(0).quantities.size(), 1u);
    return doc.quantitySets.at(0).quantities.at(0);
  }
  std::string saved(CIfcProyectQSet& doc) {
    doc.graba(dir.file("out.xml").c_str());
    return readBytes(dir.file("out.xml"));
  }
  static CIfcProyectQSet withQuantity(const CIfcQuantityName& q) {
    CIfcProyectQSet doc;
    doc.quantitySets.emplace_back();
    std::strcpy(doc.quantitySets[0].name, "S");
    doc.quantitySets[0].quantities.push_back(q);
    return doc;
  }

  TempDir dir;
  MessageRecorder messages;
};

TEST_F(QuantityRecords, QuantityIsWrittenWithKindExportAndThreeDecimals) {
  CIfcQuantityName q;
  std::strcpy(q.name, "Volumen");
  q.measureType = VolumeMeasure;
  q.exported = true;
  q.value = 0.1;
  CIfcProyectQSet doc = withQuantity(q);
  EXPECT_NE(saved(doc).find("<QuantityName Name=\"Volumen\" TypeQuorsel=\"IfcVolumeMeasure\" Export=\"Yes\">\r\n"
                            "                <Description></Description>\r\n"
                            "                <Value>0.100</Value>"),
            std::string::npos);
}

TEST_F(QuantityRecords, ExportIsTrueOnlyForYesInAnyCase) {
  for (const char* yes : {"Yes", "YES", "yes", "yEs"})
    EXPECT_TRUE(loadQuantity(quantity(std::string("Name=\"A\" Export=\"") + yes + "\" TypeQuorsel=\"IfcAreaMeasure\"")).exported);
  for (const char* no : {"No", "no", "true", "1"})
    EXPECT_FALSE(loadQuantity(quantity(std::string("Name=\"A\" Export=\"") + no + "\" TypeQuorsel=\"IfcAreaMeasure\"")).exported);
}

TEST_F(QuantityRecords, KindLiteralsReadIgnoringCaseAndUnknownOnesAreLengths) {
  EXPECT_EQ(loadQuantity(quantity("Name=\"A\" Export=\"Yes\" TypeQuorsel=\"ifcareameasure\"")).measureType, AreaMeasure);
  EXPECT_EQ(loadQuantity(quantity("Name=\"A\" Export=\"Yes\" TypeQuorsel=\"IfcVolumeMeasure\"")).measureType, VolumeMeasure);
  EXPECT_EQ(loadQuantity(quantity("Name=\"A\" Export=\"Yes\" TypeQuorsel=\"IfcMassMeasure\"")).measureType, LengthMeasure);
}

TEST_F(QuantityRecords, ValuesReadLikeAtof) {
  EXPECT_DOUBLE_EQ(loadQuantity(quantity("Name=\"A\" Export=\"Yes\" TypeQuorsel=\"IfcAreaMeasure\"", "<Value>12,5</Value>")).value, 12.0);
  EXPECT_DOUBLE_EQ(loadQuantity(quantity("Name=\"A\" Export=\"Yes\" TypeQuorsel=\"IfcAreaMeasure\"", "<Value/>")).value, 0.0);
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(QuantityRecords, EmptyDescriptionReadsAsEmpty) {
  CIfcQuantityName q = loadQuantity(
      "<QuantityName Name=\"A\" Export=\"Yes\" TypeQuorsel=\"IfcAreaMeasure\"><Description/><Value>2</Value></QuantityName>");
  EXPECT_STREQ(q.description, "");
  EXPECT_DOUBLE_EQ(q.value, 2.0);
}

TEST_F(QuantityRecords, RoundTripKeepsFieldsButRoundsValuesAndUnknownKinds) {
  CIfcQuantityName q;
  std::strcpy(q.name, "Longitud");
  std::strcpy(q.description, "Longitud del eje");
  q.exported = false;
  q.measureType = 7;  // written without a kind
  q.value = 12.34567;
  CIfcProyectQSet doc = withQuantity(q);
  std::strcpy(doc.quantitySets[0].description, "Ejes");
  std::strcpy(doc.quantitySets[0].typeZep, "Eje");
  CIfcProyectQSet again = roundTrip(dir, doc);
  ASSERT_EQ(again.quantitySets.size(), 1u);
  EXPECT_STREQ(again.quantitySets[0].description, "Ejes");
  EXPECT_STREQ(again.quantitySets[0].typeZep, "Eje");
  ASSERT_EQ(again.quantitySets[0].quantities.size(), 1u);
  const CIfcQuantityName& back = again.quantitySets[0].quantities[0];
  EXPECT_STREQ(back.name, "Longitud");
  EXPECT_STREQ(back.description, "Longitud del eje");
  EXPECT_FALSE(back.exported);
  EXPECT_EQ(back.measureType, LengthMeasure);
  EXPECT_DOUBLE_EQ(back.value, 12.346);
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(QuantityRecords, SetWithoutQuantitiesReadsWithAnEmptyList) {
  CIfcProyectQSet doc = load<CIfcProyectQSet>(dir, qsetFile("", "", quantitySet("S", "")));
  ASSERT_EQ(doc.quantitySets.size(), 1u);
  EXPECT_TRUE(doc.quantitySets[0].quantities.empty());
}

TEST_F(QuantityRecords, QuantityMissingARequiredPartIsLeftOutWithItsMessage) {
  const std::string noExport = quantity("Name=\"A\" TypeQuorsel=\"IfcAreaMeasure\"");
  const std::string noValue = "<QuantityName Name=\"B\" Export=\"Yes\"><Description/></QuantityName>";
  const std::string good = quantity("Name=\"C\" Export=\"No\" TypeQuorsel=\"IfcAreaMeasure\"");
  CIfcProyectQSet doc = load<CIfcProyectQSet>(dir, qsetFile("", "", quantitySet("S", noExport + noValue + good)));
  ASSERT_EQ(doc.quantitySets.size(), 1u);
  ASSERT_EQ(doc.quantitySets[0].quantities.size(), 1u);
  EXPECT_STREQ(doc.quantitySets[0].quantities[0].name, "C");
  EXPECT_EQ(messages.messages(), std::vector<std::string>(2, "Error lectura XML. CIfcQuantityName"));
}

TEST_F(QuantityRecords, SetMissingAnAttributeEndsTheReadingOfSets) {
  int result = 0;
  CIfcProyectQSet doc = load<CIfcProyectQSet>(
      dir, qsetFile("", "", quantitySet("A", "") + "<QuantitySet Name=\"B\" Description=\"\"/>" + quantitySet("C", "")),
      &result);
  EXPECT_EQ(result, 1);
  ASSERT_EQ(doc.quantitySets.size(), 1u);
  EXPECT_STREQ(doc.quantitySets[0].name, "A");
  EXPECT_EQ(messages.messages(), std::vector<std::string>{"Error lectura XML. CIfcQuantitySet"});
}

TEST_F(QuantityRecords, TypeWithoutTextEndsTheTypeListOnly) {
  CIfcProyectQSet doc = load<CIfcProyectQSet>(
      dir, qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel><TypeQuorsel/><TypeQuorsel>IfcVolumeMeasure</TypeQuorsel>",
                    "<ObjectQuorsel>Eje</ObjectQuorsel><ObjectQuorsel></ObjectQuorsel><ObjectQuorsel>Muro</ObjectQuorsel>",
                    quantitySet("S", "")));
  ASSERT_EQ(doc.types.size(), 1u);
  EXPECT_STREQ(doc.types[0].name, "IfcLengthMeasure");
  ASSERT_EQ(doc.objects.size(), 1u);
  EXPECT_STREQ(doc.objects[0].name, "Eje");
  EXPECT_EQ(doc.quantitySets.size(), 1u);
  EXPECT_EQ(messages.messages(),
            (std::vector<std::string>{"Error lectura XML. CIfcType", "Error lectura XML. CIfcObject"}));
}

}  // namespace
