// The quantity records as they are read from and written to their XML elements. Whole files, their
// order and their malformed parts are in qset_document_test.cpp.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "model/text.h"
#include "support/documents.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

std::string quantity(const std::string& attributes, const std::string& value = "<Value>1</Value>") {
  return "<QuantityName " + attributes + "><Description>d</Description>" + value + "</QuantityName>";
}

// The fields an element fills, in one line.
std::string fields(const CIfcQuantityName& q) {
  std::ostringstream out;
  out << "kind " << q.measureType << (q.exported ? " exported" : "") << " value " << q.value << " desc '"
      << q.description << "'";
  return out.str();
}

class QuantityRecords : public ::testing::Test {
 protected:
  CIfcProyectQSet withQuantity(const CIfcQuantityName& q) {
    CIfcProyectQSet doc;
    orvane::copyText(doc.quantitySets.emplace_back().name, "S");
    doc.quantitySets[0].quantities.push_back(q);
    return doc;
  }

  TempDir dir;
  MessageRecorder messages;
};

}  // namespace

TEST_F(QuantityRecords, ElementsFillTheirFields) {
  const std::string area = " TypeQuorsel=\"IfcAreaMeasure\"";
  const struct {
    std::string element;
    std::string fields;
  } rows[] = {
      // Export only for "Yes", in any case.
      {quantity("Name=\"A\" Export=\"Yes\"" + area), "kind 1 exported value 1 desc 'd'"},
      {quantity("Name=\"A\" Export=\"yEs\"" + area), "kind 1 exported value 1 desc 'd'"},
      {quantity("Name=\"A\" Export=\"true\"" + area), "kind 1 value 1 desc 'd'"},
      {quantity("Name=\"A\" Export=\"1\"" + area), "kind 1 value 1 desc 'd'"},
      // Kinds read ignoring case; an unknown one is a length.
      {quantity("Name=\"A\" Export=\"No\" TypeQuorsel=\"ifcareameasure\""), "kind 1 value 1 desc 'd'"},
      {quantity("Name=\"A\" Export=\"No\" TypeQuorsel=\"IfcVolumeMeasure\""), "kind 2 value 1 desc 'd'"},
      {quantity("Name=\"A\" Export=\"No\" TypeQuorsel=\"IfcMassMeasure\""), "kind 0 value 1 desc 'd'"},
      // Values read like atof; empty elements as empty.
      {quantity("Name=\"A\" Export=\"No\"" + area, "<Value>12,5</Value>"), "kind 1 value 12 desc 'd'"},
      {quantity("Name=\"A\" Export=\"No\"" + area, "<Value/>"), "kind 1 value 0 desc 'd'"},
      {"<QuantityName Name=\"A\" Export=\"No\"" + area + "><Description/><Value>2</Value></QuantityName>",
       "kind 1 value 2 desc ''"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.element);
    const CIfcProyectQSet doc = load<CIfcProyectQSet>(
        dir, qsetFile("", "", "<QuantitySet Name=\"S\" Description=\"\" typeZep=\"\">" + row.element + "</QuantitySet>"));
    ASSERT_EQ(doc.quantitySets.size(), 1u);
    ASSERT_EQ(doc.quantitySets[0].quantities.size(), 1u);
    EXPECT_EQ(fields(doc.quantitySets[0].quantities[0]), row.fields);
  }
  EXPECT_TRUE(messages.messages().empty());
}

TEST_F(QuantityRecords, QuantityIsWrittenWithKindExportAndThreeDecimals) {
  CIfcQuantityName q;
  orvane::copyText(q.name, "Volumen");
  q.measureType = VolumeMeasure;
  q.value = 0.1;
  CIfcProyectQSet doc = withQuantity(q);
  const std::string path = dir.file("out.xml");
  doc.graba(path.c_str());
  EXPECT_NE(readBytes(path).find("<QuantityName Name=\"Volumen\" TypeQuorsel=\"IfcVolumeMeasure\" Export=\"Yes\">\r\n"
                                 "                <Description></Description>\r\n"
                                 "                <Value>0.100</Value>"),
            std::string::npos);
}

TEST_F(QuantityRecords, RoundTripKeepsFieldsButRoundsValuesAndUnknownKinds) {
  CIfcQuantityName q;
  orvane::copyText(q.name, "Longitud");
  orvane::copyText(q.description, "Longitud del eje");
  q.exported = false;
  q.measureType = 7;  // written without a kind
  q.value = 12.34567;
  CIfcProyectQSet doc = withQuantity(q);
  orvane::copyText(doc.quantitySets[0].description, "Ejes");
  orvane::copyText(doc.quantitySets[0].typeZep, "Eje");
  CIfcProyectQSet again = roundTrip(dir, doc);
  ASSERT_EQ(again.quantitySets.size(), 1u);
  EXPECT_STREQ(again.quantitySets[0].description, "Ejes");
  EXPECT_STREQ(again.quantitySets[0].typeZep, "Eje");
  ASSERT_EQ(again.quantitySets[0].quantities.size(), 1u);
  EXPECT_STREQ(again.quantitySets[0].quantities[0].name, "Longitud");
  EXPECT_EQ(fields(again.quantitySets[0].quantities[0]), "kind 0 value 12.346 desc 'Longitud del eje'");
  EXPECT_TRUE(messages.messages().empty());
}
