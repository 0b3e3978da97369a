// The quantity records as they are read from and written to their XML elements.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "document_kinds.h"

using namespace orvane::test;

namespace {

TEST(QuantityRecords, ElementsFillTheirFields) {
  TempDir dir;
  MessageRecorder messages;
  const struct { std::string attributes, value, fields; } rows[] = {
      {"Export=\"yEs\" TypeQuorsel=\"ifcareameasure\"", "<Value>1</Value>", "1 exported 1 'd'"},  // any case
      {"Export=\"true\" TypeQuorsel=\"IfcVolumeMeasure\"", "<Value>12,5</Value>", "2 12 'd'"},
      {"Export=\"No\" TypeQuorsel=\"IfcMassMeasure\"", "<Value/>", "0 0 'd'"},  // an unknown kind is a length
      {"Export=\"No\"", "<Value>2</Value>", "0 2 'd'"},                           // so is none, as a save writes kind 7
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.attributes);
    const std::string quantity =
        "<QuantityName Name=\"A\" " + row.attributes + "><Description>d</Description>" + row.value + "</QuantityName>";
    const CIfcProyectQSet doc = load<CIfcProyectQSet>(
        dir, qsetFile("", "", "<QuantitySet Name=\"S\" Description=\"\" typeZep=\"\">" + quantity + "</QuantitySet>"));
    ASSERT_EQ(doc.quantitySets.size(), 1u);
    ASSERT_EQ(doc.quantitySets[0].quantities.size(), 1u);
    const CIfcQuantityName& q = doc.quantitySets[0].quantities[0];
    std::ostringstream fields;
    fields << q.measureType << (q.exported ? " exported " : " ") << q.value << " '" << q.description << "'";
    EXPECT_EQ(fields.str(), row.fields);
  }
  EXPECT_TRUE(messages.messages().empty());
}

TEST(QuantityRecords, AKindOutsideTheThreeIsWrittenWithoutOne) {
  TempDir dir;
  CIfcProyectQSet doc;
  doc.quantitySets.emplace_back().quantities.emplace_back().measureType = 7;
  EXPECT_EQ(roundTrip(dir, doc).quantitySets.at(0).quantities.at(0).measureType, LengthMeasure);
  EXPECT_EQ(readBytes(dir.file("round.xml")).find("TypeQuorsel"), std::string::npos);
}

}  // namespace
