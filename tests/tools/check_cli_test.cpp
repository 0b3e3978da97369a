// orvane check: what it finds in property-set and quantity-set documents.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/documents.h"
#include "tools/tool_fixture.h"

using namespace orvane::test;

namespace {

const std::string kColores =
    "<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">Rojo</Element>"
    "<Element Value=\"2\">Azul</Element></Elements></TypeEnum>";

std::string cleanDocument() {
  return psetFile(kColores,
                  propertySet("Muro", property("Alto", "Real", "2.5") + property("Piezas", "Integer", "+3") +
                                          property("Color", "Colores", "azul") + property("Portante", "Boolean", "yes") +
                                          property("Eje", "Real", "Ejes.PK$") + property("Vacio", "Integer", "")),
                  "<RelationIfcElementWithPSet PSet=\"MURO\" Object=\"IfcWall\"/>");
}

class Check : public ToolTest {
 protected:
  CliResult check(const std::string& document, const std::vector<std::string>& extra = {}) {
    std::vector<std::string> args{"check", write("doc.xml", document)};
    args.insert(args.end(), extra.begin(), extra.end());
    return run(args);
  }
};

TEST_F(Check, ACleanDocumentPassesWithStatusZero) {
  const CliResult result = check(cleanDocument(), {"--catalog", write("cat.txt", "Ejes;PK,Cota\r\n")});
  EXPECT_EQ(result.status, 0) << result.out << result.err;
  EXPECT_EQ(result.out, "No problems found in " + path("doc.xml") + ".\n");
}

TEST_F(Check, JsonGivesTheSameFindingsForMachines) {
  const std::string document = psetFile("", propertySet("Muro", property("Alto", "Integer", "2,5")), "");
  const CliResult text = check(document);
  const CliResult json = check(document, {"--format", "json"});
  EXPECT_EQ(json.status, 1);
  const auto report = nlohmann::json::parse(json.out);
  EXPECT_EQ(report["file"], path("doc.xml"));
  ASSERT_EQ(report["problems"].size(), 1u);
  const std::string line = report["problems"][0]["where"].get<std::string>() + ": " +
                           report["problems"][0]["what"].get<std::string>();
  EXPECT_EQ(text.out.rfind(line + "\n", 0), 0u) << text.out;
}

TEST_F(Check, ReportsEachSurpriseOfAPropertyDocument) {
  const std::string longName(256, 'L');
  const std::string document = psetFile(
      kColores + "<TypeEnum Name=\"COLORES\" Description=\"\"><Elements/></TypeEnum>",
      propertySet("Muro", property("Forma", "Formas", "") + property("Color", "Colores", "Verde") +
                              property("Piezas", "Integer", "12abc") + property("Alto", "Real", "1,5") +
                              property("Portante", "Boolean", "true") + property("Ref", "String", "$ANCHO") +
                              property("alto", "Real", "2") + property(longName, "String", "")) +
          propertySet("muro"),
      "<RelationIfcElementWithPSet PSet=\"Arco\" Object=\"IfcBeam\"/>");
  const CliResult result = check(document);
  EXPECT_EQ(result.status, 1) << result.err;
  const std::vector<std::string> expected{
      "Muro.Forma: enumerated type \"Formas\" is missing",
      "Muro.Color: value \"Verde\" is not a value of \"Colores\"",
      "Muro.Piezas: value \"12abc\" is not an Integer",
      "Muro.Alto: value \"1,5\" is not a Real number",
      "Muro.Portante: value \"true\" is not Yes or No (it reads as No)",
      "Muro.Ref: host variable reference \"$ANCHO\" is not of the form Group.Variable$",
      "set Muro: property names differ only in case: \"Alto\", \"alto\"",
      "Muro." + longName + ": property name is 256 bytes long; flat records carry 255",
      "document: set names differ only in case:",
      "document: enumerated type names differ only in case:",
      "relation Arco - IfcBeam: set \"Arco\" is missing",
  };
  for (const std::string& finding : expected) EXPECT_NE(result.out.find(finding), std::string::npos) << finding << "\n" << result.out;
  EXPECT_NE(result.out.find(std::to_string(expected.size()) + " problems found"), std::string::npos) << result.out;
}

TEST_F(Check, HostVariablesAreLookedUpInTheCatalogue) {
  const std::string document = psetFile(
      "", propertySet("S", property("Known", "Real", "ejes.pk$") + property("Dotted", "Integer", "Eje.Sur.Cota$") +
                               property("Unknown", "String", "Ejes.Ancho$") + property("NoGroup", "Real", "Muros.PK$")));
  const std::string catalogue = write("cat.txt", "Ejes;PK,,Cota\nEje.Sur;Cota\nSinVariables;\nbroken line\n");
  const CliResult withCatalogue = check(document, {"--catalog", catalogue});
  EXPECT_EQ(withCatalogue.status, 1);
  EXPECT_EQ(lines(withCatalogue.out),
            (std::vector<std::string>{"S.Unknown: host variable \"Ejes.Ancho$\" is not in the catalogue",
                                      "S.NoGroup: host variable \"Muros.PK$\" is not in the catalogue",
                                      "2 problems found in " + path("doc.xml") + "."}));
  // Without a catalogue only the form of a reference can be checked.
  EXPECT_EQ(check(document).status, 0);
}

TEST_F(Check, ReportsEachSurpriseOfAQuantityDocument) {
  const std::string longName(300, 'Q');
  const std::string document = qsetFile(
      "<TypeQuorsel>IfcAreaMeasure</TypeQuorsel>", "<ObjectQuorsel>Muro</ObjectQuorsel>",
      "<QuantitySet Name=\"Walls\" Description=\"\" typeZep=\"Losa\">"
      "<QuantityName Name=\"Area\" TypeQuorsel=\"IfcAreaMeasure\" Export=\"Yes\"><Description/><Value>1</Value></QuantityName>"
      "<QuantityName Name=\"AREA\" TypeQuorsel=\"IfcAreaMeasure\" Export=\"Yes\"><Description/><Value>1</Value></QuantityName>"
      "</QuantitySet><QuantitySet Name=\"" + longName + "\" Description=\"\" typeZep=\"muro\"/>");
  const CliResult result = check(document);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(lines(result.out),
            (std::vector<std::string>{
                "document: the quantity kinds are not IfcLengthMeasure, IfcAreaMeasure, IfcVolumeMeasure in this order, so "
                "the editors would give quantities the wrong kind",
                "set " + longName + ": set name is 300 bytes long; flat records carry 255 and cut the rest",
                "set Walls: quantity names differ only in case: \"Area\", \"AREA\"",
                "set Walls: linked element type \"Losa\" is not among the document's element types",
                "4 problems found in " + path("doc.xml") + "."}));
}

TEST_F(Check, UnreadableInputIsAnErrorNotAFinding) {
  expectError(run({"check", path("none.xml")}), "no such file");
  expectError(run({"check", write("bad.xml", "<PropertySetsBIM><")}), "not well-formed XML");
  expectError(run({"check", write("doc.xml", cleanDocument()), "--catalog", path("none.txt")}), "catalogue");
}

}  // namespace
