// The quantity-set files as the document they load: contents and messages; the result is always 1.
#include <gtest/gtest.h>

#include <string>

#include "document_kinds.h"

using namespace orvane::test;

namespace {

std::string emptySet(const std::string& name) {
  return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"\"/>";
}

TEST(QsetDocument, FilesLoadAs) {
  const std::string area =
      " TypeQuorsel=\"IfcAreaMeasure\"><Description>d</Description><Value>1</Value></QuantityName>";
  const std::string quantityError = "Error lectura XML. CIfcQuantityName";
  expectLoads<CIfcProyectQSet>({
      {"another root reads as empty, without a message", psetFile("", propertySet("A")), 1, {}, {}},
      {"missing lists read as empty",
       "<QuantitiesSetQuorsel><QuantitiesSet>" + emptySet("S") + "</QuantitiesSet></QuantitiesSetQuorsel>", 1,
       {"set S:"}, {}},
      {"sets sorted by name, types and objects in file order",
       qsetFile("<TypeQuorsel>z</TypeQuorsel><TypeQuorsel>a</TypeQuorsel>",
                "<ObjectQuorsel>Superficie</ObjectQuorsel><ObjectQuorsel>Eje</ObjectQuorsel>",
                emptySet("b") + emptySet("A") + emptySet("c")),
       1, {"type z", "type a", "object Superficie", "object Eje", "set A:", "set b:", "set c:"}, {}},
      {"a quantity missing a required part is left out with its message",
       qsetFile("", "", "<QuantitySet Name=\"S\" Description=\"\" typeZep=\"\"><QuantityName Name=\"A\"" + area +
                            "<QuantityName Name=\"B\" Export=\"Yes\"><Description/></QuantityName>"
                            "<QuantityName Name=\"C\" Export=\"No\"" + area + "</QuantitySet>"),
       1, {"set S: C,"}, {quantityError, quantityError}},
      {"a set missing an attribute ends the reading of sets",
       qsetFile("", "", emptySet("A") + "<QuantitySet Name=\"B\" Description=\"\"/>" + emptySet("C")), 1, {"set A:"},
       {"Error lectura XML. CIfcQuantitySet"}},
      {"a type or object without text ends its list only",
       qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel><TypeQuorsel/><TypeQuorsel>IfcVolumeMeasure</TypeQuorsel>",
                "<ObjectQuorsel>Eje</ObjectQuorsel><ObjectQuorsel></ObjectQuorsel><ObjectQuorsel>Muro</ObjectQuorsel>",
                emptySet("S")),
       1, {"type IfcLengthMeasure", "object Eje", "set S:"},
       {"Error lectura XML. CIfcType", "Error lectura XML. CIfcObject"}},
  });
}

}  // namespace
