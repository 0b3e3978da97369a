// The property-set files as the document they load: result, contents and messages. (Golden bytes,
// malformed files and saves of both documents are in malformed_input_test.cpp.)
#include <gtest/gtest.h>

#include <string>

#include "document_kinds.h"

using namespace orvane::test;

TEST(PsetDocument, FilesLoadAs) {
  const std::string noRule =
      "<PropertyName Name=\"A\" Optional=\"No\" Type=\"String\"><Description/><Value/></PropertyName>";
  const std::string noValue =
      "<PropertyName Name=\"B\" Optional=\"No\" Rule=\"\" Type=\"String\"><Description/></PropertyName>";
  const std::string noName =
      "<PropertyName Optional=\"No\" Rule=\"\" Type=\"String\"><Description/><Value/></PropertyName>";
  const std::string propertyError = "Error lectura XML. CIfcPropertyName", enumError = "Error lectura XML. CIfcEnum";
  const std::string emptyType = "<TypeEnum Name=\"B\" Description=\"\"><Elements/></TypeEnum>";
  expectLoads<CIfcProyectPSet>({
      {"the root alone", "<PropertySetsBIM/>", 1, {}, {}},
      {"another root", "<?xml version=\"1.0\"?><QuantitiesSetQuorsel/>", 0, {}, {"Error lectura XML. CIfcProyectPSet"}},
      {"sets and types sorted by name ignoring case",
       psetFile("<TypeEnum Name=\"zona\" Description=\"\"><Elements/></TypeEnum>" + emptyType,
                propertySet("beta") + propertySet("Alfa") + propertySet("alpha")),
       1, {"type B:", "type zona:", "set Alfa:", "set alpha:", "set beta:"}, {}},
      {"relations in file order; one missing a name left out silently",
       psetFile("", "",
                "<RelationIfcElementWithPSet PSet=\"Z\" Object=\"IfcWall\"/><RelationIfcElementWithPSet PSet=\"Q\"/>"
                "<RelationIfcElementWithPSet PSet=\"A\" Object=\"IfcSlab\"/>"),
       1, {"relation Z IfcWall", "relation A IfcSlab"}, {}},
      {"enumerated values keep codes (no digits: 0) and order",
       psetFile("<TypeEnum Name=\"Colores\" Description=\"c\"><Elements><Element Value=\"7\">Rojo</Element>"
                "<Element Value=\"x\">Azul</Element><Element Value=\"-2\">Verde</Element></Elements></TypeEnum>", ""),
       1, {"type Colores: 7 Rojo, 0 Azul, -2 Verde,"}, {}},
      {"a property missing a required part is left out with its message",
       psetFile("", propertySet("S", noRule + property("Ok", "String", "v") + noValue + noName)),
       1, {"set S: Ok,"}, {propertyError, propertyError, propertyError}},
      {"a set missing its description ends the reading of sets",
       psetFile("", propertySet("A") + "<PropertySet Name=\"B\"/>" + propertySet("C")), 1, {"set A:"},
       {"Error lectura XML. CIfcPropertySet"}},
      {"a type missing its elements ends the reading of types",
       psetFile("<TypeEnum Name=\"A\" Description=\"\"/>" + emptyType, ""), 1, {}, {enumError}},
      {"a value with an empty literal fails its type, and the reading of types ends there",
       psetFile("<TypeEnum Name=\"A\" Description=\"\"><Elements><Element Value=\"0\"/></Elements></TypeEnum>" +
                    emptyType,
                ""),
       1, {}, {enumError}},
  });
}
