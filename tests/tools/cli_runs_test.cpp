// orvane run as a user runs it, from a shell in a fresh folder: arguments, exit status, what is printed, the files
// it leaves; and documents across formats (import-psd, export and import back to the same bytes).
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "support/documents.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

const std::string kColores =
    "<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">Rojo</Element>"
    "<Element Value=\"2\">Azul</Element></Elements></TypeEnum>";

// Sets Muro and arco (listed arco first: sets sort by name ignoring case), every value type.
const std::string kWalls = psetFile(
    kColores + "<TypeEnum Name=\"Vacio\" Description=\"\"><Elements/></TypeEnum>",
    propertySet("Muro", property("Alto", "Real", "2.5", "Optional=\"No\" Unit=\"m\" Rule=\"\"") +
                            property("Color", "Colores", "Azul") + property("Portante", "Boolean", "Yes") +
                            property("Nota", "String", "a, &quot;b&quot;") +
                            property("Fecha", "DateTime", "2026-11-21")) +
        propertySet("arco", property("Piezas", "Integer", "-7")));

const std::string kWallsCsv =
    "set,property,type,value,unit,enum\narco,Piezas,Integer,-7,,\nMuro,Alto,Real,2.500,m,\nMuro,Color,Enumerated,Azul,,"
    "Colores\nMuro,Portante,Boolean,,,\nMuro,Nota,String,\"a, \"\"b\"\"\",,\nMuro,Fecha,DateTime,,,\n";

const std::string kQuantities = qsetFile(
    "<TypeQuorsel>IfcLengthMeasure</TypeQuorsel><TypeQuorsel>IfcAreaMeasure</TypeQuorsel>"
    "<TypeQuorsel>IfcVolumeMeasure</TypeQuorsel>", "<ObjectQuorsel>Muro</ObjectQuorsel>",
    quantitySet("walls", quantity("area", "IfcAreaMeasure", "3.0") + quantity("Volume", "IfcVolumeMeasure", "1.25")) +
        quantitySet("Beams", quantity("Length", "IfcLengthMeasure", "12.3456"), "Muro"));

// Every finding check makes, one each.
const std::string kSurprises = psetFile(
    kColores + "<TypeEnum Name=\"COLORES\" Description=\"\"><Elements/></TypeEnum>",
    propertySet("Muro", property("Forma", "Formas", "") + property("Color", "Colores", "Verde") +
                            property("Piezas", "Integer", "12abc") + property("Alto", "Real", "1,5") +
                            property("Portante", "Boolean", "true") + property("Ref", "String", "$ANCHO") +
                            property("alto", "Real", "2") + property(std::string(256, 'L'), "String", "") +
                            property("Known", "Real", "ejes.pk$") + property("Dotted", "Integer", "Eje.Sur.Cota$") +
                            property("Unknown", "String", "Ejes.Ancho$") + property("NoGroup", "Real", "Muros.PK$")) +
        propertySet("muro"),
    "<RelationIfcElementWithPSet PSet=\"Arco\" Object=\"IfcBeam\"/>");
const std::string kQuantitySurprises = qsetFile(
    "<TypeQuorsel>IfcAreaMeasure</TypeQuorsel>", "<ObjectQuorsel>Muro</ObjectQuorsel>",
    quantitySet("Walls", quantity("Area", "IfcAreaMeasure", "1") + quantity("AREA", "IfcAreaMeasure", "1"), "Losa") +
        quantitySet(std::string(300, 'Q'), "", "muro"));
const std::string kClean = psetFile(
    kColores, propertySet("Muro", property("Alto", "Real", "2.5") + property("Piezas", "Integer", "+3") +
                                      property("Color", "Colores", "azul") + property("Portante", "Boolean", "yes") +
                                      property("Eje", "Real", "Ejes.PK$") + property("Vacio", "Integer", "")),
    "<RelationIfcElementWithPSet PSet=\"MURO\" Object=\"IfcWall\"/>");

// "in" holds `input` and is standard input; `says` is on stdout, or on stderr for status 2; empty: stdout stays empty.
struct Row { std::string input, args; int status; std::string says; };

void PrintTo(const Row& run, std::ostream* os) { *os << "orvane " << run.args; }

std::vector<Row> runs() {
  const std::string L(256, 'L'), samples = ORVANE_SAMPLES_DIR, pm = "psets merge p.xml part.xml in", qm = "qsets merge q.xml out.xml in",
                    pi = "psets import in -o p.xml",
                    csv = "record,name,description,type,enumeratedType,unit,rule,optional,value\n",
                    setS = csv + "propertySet,S,,,,,,,\n",
                    pj = R"({"format":"orvane-psets","version":1,"enumeratedTypes":[],"relations":[],"propertySets":[)",
                    qj = R"({"format":"orvane-qsets","version":1,"types":[],"objects":[],"quantitySets":[)";
  std::vector<Row> rows{
      // Usage: status 2, what is wrong, a suggestion for a mistyped command, never for a word far from any.
      {"", "", 2, "a command is required; run with --help to see them"},
      {"", "frobnicate", 2, "The following argument was not expected: frobnicate\nRun with --help"},
      {"", "psets list", 2, "FILE is required"},
      {"", "psets lsit", 2, "Did you mean \"orvane psets list\"?"},
      {"", "import-pds folder", 2, "Did you mean \"orvane import-psd\"?"},
      {"", "--version", 0, "orvane " ORVANE_VERSION "\n"},
      {"", "--help", 0, "Every command takes --help. Exit status: 0 done, 1 check found problems, 2 error."},
      {"", "psets merge --help", 0, "set,property,type,value,unit,enum"},
      {"", "qsets merge --help", 0, "set,quantity,kind,value"},
      // Inputs that are no regular files are refused without reading them; nor is one replaced by an output.
      {"", "psets list pipe", 2, "document pipe: is not a regular file"},
      {"", "psets merge p.xml part.xml pipe", 2, "records file pipe: is not a regular"},
      {"", "check p.xml --catalog /dev/zero", 2, "catalogue /dev/zero: is not a regular file"},
      {"Muros,Alto,Real,4\n", "psets merge p.xml /dev/null in", 2, "/dev/null: is not a regular file"},
      {"", "psets list missing.xml", 2, "missing.xml: no such file"},
      {"", "psets list .", 2, "is a folder"},
      {"<PropertySetsBIM>", "psets list in", 2, "not well-formed XML"},
      {"", "psets list q.xml", 2, "a quantity-set document where a property-set document is expected"},
      {"<Other/>", "psets list in", 2, "root element is Other"},
      // Listings in every format.
      {"", "psets list p.xml", 0,
       "set   property  type        value   unit  enum\n----  --------  ----------  ------  ----  -------\n"
       "arco  Piezas    Integer     -7\nMuro  Alto      Real        2.500   m\n"
       "Muro  Color     Enumerated  Azul          Colores\nMuro  Portante  Boolean\n"
       "Muro  Nota      String      a, \"b\"\nMuro  Fecha     DateTime\n"},
      {"", "psets list p.xml --format csv", 0, kWallsCsv},
      {"", "psets list p.xml --format json", 0,
       "{\n    \"set\": \"Muro\",\n    \"property\": \"Alto\",\n    \"type\": \"Real\",\n    \"value\": \"2.500\",\n"
       "    \"unit\": \"m\",\n    \"enum\": \"\"\n  }"},
      {psetFile("", propertySet("S", property("T", "Real", "20", "Optional=\"No\" Unit=\"\xBA" "C\" Rule=\"\""))),
       "psets list - --format csv", 0, "S,T,Real,20.000,\xC2\xBA" "C,"},
      {"", "qsets list q.xml", 0, "------\nBeams  Length    length  12.346\nwalls  area      area    3.000\n"},
      {"", "qsets list q.xml --format csv", 0,
       "set,quantity,kind,value\nBeams,Length,length,12.346\nwalls,area,area,3.000\nwalls,Volume,volume,1.250\n"},
      {"", "qsets list q.xml --format json", 0,
       "\"set\": \"walls\",\n    \"quantity\": \"Volume\",\n    \"kind\": \"volume\",\n    \"value\": 1.25\n"},
      {"", "psets enums p.xml COLORES", 0, "value\n-----\nRojo\nAzul\n"},
      {"", "psets enums p.xml Vacio --format csv", 0, "value\n"},
      {"", "psets enums p.xml Formas", 2, "has no enumerated type \"Formas\""},
      // Records a merge refuses, with their line, writing nothing.
      {"S,P,Texto\n", "psets merge p.xml part.xml in --save", 2,
       "in:1: unknown type \"Texto\" (expected Integer, Real, String, Enumerated, Boolean or DateTime)"},
      {"S,P,String\nS,P\n", pm, 2, "in:2: 2 fields where set,property,type,value,unit,enum are expected"},
      {"S,P,String,v,,,extra\n", pm, 2, "in:1: 7 fields"},
      {"S,P,String\nS,Q,String,\"open\n\n", pm, 2, "in:2: a quoted field is never closed"},
      {"S,P,String,say \"hi\"\n", pm, 2, "in:1: a quote inside an unquoted field"},
      {"S,P,String,\"a\"b\n", pm, 2, "in:1: text after the closing quote"},
      {"S,P,Integer,12abc\n", pm, 2, "in:1: value \"12abc\" is not an Integer"},
      {"S,P,Integer,99999999999\n", pm, 2, "value \"99999999999\" is not an Integer"},
      {"S,P,Real,\"1,5\"\n", pm, 2, "in:1: value \"1,5\" is not a Real number"},
      {"S,P,Real,inf\n", pm, 2, "in:1: value \"inf\" is not a Real number"},
      {"S,P,Boolean,Yes\n", pm, 2, "in:1: Boolean values cannot be written through records"},
      {"S,P,Real,1,km\n", pm, 2, "in:1: unknown unit \"km\""},
      {"S,P,String,v,,Colores\n", pm, 2, "in:1: enum is only for Enumerated properties"},
      {",P,String\n", pm, 2, "in:1: set is empty"},
      {"S," + std::string(256, 'n') + ",String\n", pm, 2, "in:1: property is 256 bytes long; records hold at most 255"},
      {"set,type,property\nS,String,P\n", pm, 2,
       "in:1: a header line must name the columns set,property,type,value,unit,enum"},
      {"", pm, 2, "in: no records"},
      {"S,Q,weight,1\n", qm, 2, "in:1: unknown kind \"weight\" (expected length, area or volume)"},
      {"S,Q,area,\n", qm, 2, "in:1: value \"\" is not a number"},
      {"S,Q,area\n", qm, 2, "in:1: 3 fields where set,quantity,kind,value are expected"},
      {"set,quantity,value,kind\n", qm, 2, "in:1: a header line must name the columns set,quantity,kind,value"},
      // Files a merge would lose or cannot write.
      {"S,P,String\n", "psets merge p.xml p.xml in", 2, "the output must be another file"},
      {"S,P,String\n", "psets merge p.xml no/such/folder/p.xml in", 2, "does not exist"},
      {"S,P,String\n", "psets merge p.xml . in", 2, "is a folder"},
      {"", "psets merge p.xml part.xml missing.csv", 2, "records file"},
      {"S,Q,area,1\n", "qsets merge q.xml q.xml in", 2, "the output must be another file"},
      {"S,P,String\n", "psets merge p.xml part.xml in -q", 0, ""},
      {"S,P,String\n", pm, 0,
       "Wrote the sets they name to part.xml.\np.xml is unchanged; add --save to write the merge"},
      {"\xEF\xBB\xBFSET,Property,Type,Value\r\nMuro,Alto,Real,4\r\nMuro,Ancho,real,0.3,M\r\n\r\n", pm, 0,
       "Merged 2 records"},
      {"S,Q,area,1\n", qm, 0, "Wrote the sets they name to out.xml.\nq.xml is unchanged; add --save"},
      // check: the findings, the catalogue, status 1 for findings and 2 for what cannot be read.
      {kClean, "check in --catalog cat.txt", 0, "No problems found in in.\n"},
      {kSurprises, "check in", 1,
       "Muro.Piezas: value \"12abc\" is not an Integer\nMuro.Alto: value \"1,5\" is not a Real number\n"
       "Muro.Portante: value \"true\" is not Yes or No (it reads as No)\n"
       "document: set names differ only in case: \"Muro\", \"muro\"\n"
       "set Muro: property names differ only in case: \"Alto\", \"alto\"\n"
       "Muro.Forma: enumerated type \"Formas\" is missing\nMuro.Color: value \"Verde\" is not a value of \"Colores\"\n"
       "Muro.Ref: host variable reference \"$ANCHO\" is not of the form Group.Variable$\n"
       "Muro." + L + ": property name is 256 bytes long; flat records carry 255 and cut the rest\n"
       "document: enumerated type names differ only in case: \"Colores\", \"COLORES\"\n"
       "relation Arco - IfcBeam: set \"Arco\" is missing\n11 problems found in in.\n"},
      {kSurprises, "check in --catalog cat.txt", 1,
       "and cut the rest\nMuro.Unknown: host variable \"Ejes.Ancho$\" is not in the catalogue\n"
       "Muro.NoGroup: host variable \"Muros.PK$\" is not in the catalogue\ndocument: enumerated"},
      {kSurprises, "check in --format json", 1,
       "{\n  \"file\": \"in\",\n  \"problems\": [\n    {\n      \"where\": \"Muro.Piezas\",\n"
       "      \"what\": \"value \\\"12abc\\\" is not an Integer\""},
      {kQuantitySurprises, "check in", 1,
       "document: the quantity kinds are not IfcLengthMeasure, IfcAreaMeasure, IfcVolumeMeasure in this order, so the "
       "editors would give quantities the wrong kind\n"
       "set " + std::string(300, 'Q') + ": set name is 300 bytes long; flat records carry 255 and cut the rest\n"
       "set Walls: quantity names differ only in case: \"Area\", \"AREA\"\n"
       "set Walls: linked element type \"Losa\" is not among the document's element types\n4 problems found in in.\n"},
      {kClean, "check in --catalog none.txt", 2, "catalogue"},
      // The editors, without a display as CI runs: the entry points say so and nothing is edited.
      {"", "edit psets p.xml --messages " ORVANE_SAMPLES_DIR "/mensajes.txt", 2, "the editors need a display"},
      {"", "edit qsets q.xml", 2, "orvane: no editor could be shown; nothing was edited"},
      {"", "assign psets p.xml obj.xml --catalog " ORVANE_SAMPLES_DIR "/variables.txt", 2, "nothing was edited"},
      {"", "assign qsets q.xml objq.xml --kind Eje --values 12.5,3", 2, "nothing was edited"},
      {"<PropertySetsBIM>", "assign psets in obj.xml", 2, "not a readable property-set document"},
      // import-psd: what it cannot use.
      {"", "import-psd nowhere -o out.xml", 2, "nowhere: no such file or folder"},
      {"", "import-psd p.xml -o p.xml", 2, "the output must be another file than p.xml"},
      {"", "import-psd empty -o out.xml", 2, "no property-set or quantity-set definitions found"},
      // export-ids and export-ifc: a summary with the notes on stdout; a refusal writes nothing.
      {"", "export-ids " + samples + "/proyecto-psets.xml " + samples + "/proyecto-qsets.xml -o a.ids", 0,
       "note: Qto_Superficie: \"Superficie\" is no IFC entity name, not used as its element type\n"
       "Wrote a.ids: 6 specifications, 18 property requirements.\n"},
      {"", "export-ifc " + samples + "/proyecto-psets.xml -o a.ifc", 0, "a.ifc: 3 set templates, 11 property templates."},
      {"", "export-ifc p.xml -o p.xml", 2, "p.xml: the output must be another file than p.xml"},
      {"<PropertySetsBIM/>", "export-ids in -o d.ids", 2, "d.ids: not written"},
      // export/import: what import refuses, leaving the target alone.
      {"{", pi, 2, "not JSON"},
      {R"({"format":"orvane-qsets","version":1})", pi, 2, "\"format\" must be \"orvane-psets\""},
      {R"({"format":"orvane-qsets","version":2})", "qsets import in -o q.xml", 2, "\"version\" 2 is not known"},
      {R"({"format":"orvane-psets","version":1,"enumeratedTypes":[],"relations":[]})", "psets import - -o p.xml", 2,
       "document: \"propertySets\" is missing"},
      {pj + R"({"name":")" + std::string(512, 'x') + R"(","description":"","properties":[]}]})", pi,
       2, "propertySets[0].name: longer than the 511 bytes"},
      {pj + R"({"name":"S","description":"","properties":[]},{"name":"T","description":"","properties":[{"name":"p",)"
       R"("description":"","type":"Real","unit":"km","rule":"","optional":false,"value":1}]}]})", pi, 2,
       "propertySets[1].properties[0].unit: not one of the units"},
      {pj + R"({"name":{"windows-1252":"\u20ac\u0100"},"description":"","properties":[]}]})",
       pi, 2, "propertySets[0].name: a character that Windows-1252 does not have"},
      {qj + R"({"name":"Q","description":"","element":"","quantities":[{"name":"q","description":"",)"
       R"("kind":"IfcMass","export":true,"value":1}]}]})", "qsets import in -o q.xml", 2,
       "quantitySets[0].quantities[0].kind: IfcLengthMeasure, IfcAreaMeasure or IfcVolumeMeasure is expected"},
      {"name,description\n", pi, 2, "in:1: the first line must be the header record,name,"},
      {csv + "property,p,,Real,,,,No,1\n", pi, 2, "in:2: a propertySet line must come first"},
      {setS + "property,p,,Integer,,,,No,2.5\n", pi, 2, "in:3: \"2.5\" is not an integer"},
      {setS + "property,p,,Boolean,,,,maybe,Yes\n", pi, 2, "\"maybe\" where Yes or No is expected"},
      {csv + "set,S,,,,,,,\n", pi, 2, "in:2: unknown record \"set\""},
      {setS, "psets import in -o out.xml -q", 0, ""},
  };
  // The tool grows its record array until the library fills less than all of it.
  for (const int count : {0, 255, 256, 257, 600}) {
    std::string properties, listed = "set,property,type,value,unit,enum\n";
    for (int i = 0; i < count; ++i) {
      properties += property("P" + std::to_string(i), "Integer", std::to_string(i));
      listed += "Grande,P" + std::to_string(i) + ",Integer," + std::to_string(i) + ",,\n";
    }
    rows.push_back({psetFile("", propertySet("Grande", properties)), "psets list - --format csv", 0, listed});
  }
  return rows;
}

struct CliResult {
  int status = -1;  // the exit status; 128 + the signal when the tool was killed by one
  std::string out, err;
};

// orvane run in a fresh folder holding a property-set and a quantity-set document, a catalogue, a folder and a FIFO.
class Cli : public ::testing::Test {
 protected:
  // Runs `orvane args...` in the folder (no argument holds a single quote), standard input from the file `in` there
  // (/dev/null when empty), standard output into the result or onto the descriptor `out`.
  CliResult run(const std::vector<std::string>& args, const std::string& in = "", int out = -1) const {
    // Output goes to files rather than pipes, so a long listing cannot block the tool.
    const TempDir capture;
    std::string line = "cd '" + dir.path().string() + "' && exec '" ORVANE_CLI "'";
    for (const std::string& arg : args) line += " '" + arg + "'";
    line += " <'" + (in.empty() ? "/dev/null" : in) + "' 2>'" + capture.file("err") + "' >" +
            (out >= 0 ? "&" + std::to_string(out) : "'" + capture.file("out") + "'");
    const int status = std::system(line.c_str());
    const int exit = WIFEXITED(status) ? WEXITSTATUS(status) : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : -1;
    return {exit, out >= 0 ? "" : readBytes(capture.file("out")), readBytes(capture.file("err"))};
  }
  std::string write(const std::string& name, const std::string& bytes) const { return dir.write(name, bytes); }
  std::string read(const std::string& name) const { return readBytes(dir.file(name)); }
  void SetUp() override {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
    write("p.xml", kWalls);
    write("q.xml", kQuantities);
    write("cat.txt", "Ejes;PK,,Cota\r\nEje.Sur;Cota\nSinVariables;\nbroken line\n");
    fs::create_directory(dir.path() / "empty");
    ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0600), 0);
  }
  // Every regular file in the folder and its bytes.
  std::map<std::string, std::string> files() const {
    std::map<std::string, std::string> bytes;
    for (const auto& entry : fs::recursive_directory_iterator(dir.path()))
      if (entry.is_regular_file()) bytes[entry.path().string()] = readBytes(entry.path());
    return bytes;
  }
  // saved.xml exported as CSV to a file and as JSON to standard output, each imported again to
  // standard output (the JSON from standard input); gives the JSON.
  std::string roundTrip(const std::string& group) {
    const CliResult csv = run({group, "export", "saved.xml", "--format", "csv", "-o", "doc.csv"});
    EXPECT_EQ((std::pair{csv.status, csv.out}), (std::pair{0, std::string()})) << csv.err;
    const CliResult json = run({group, "export", "-"}, "saved.xml");
    EXPECT_EQ(json.status, 0) << json.err;
    write("doc.json", json.out);
    for (const auto& [file, in] : {std::pair{"doc.csv", ""}, {"-", "doc.json"}}) {
      SCOPED_TRACE(file);
      const CliResult imported = run({group, "import", file, "-o", "-"}, in);
      EXPECT_EQ((std::pair{imported.status, imported.out}), (std::pair{0, read("saved.xml")})) << imported.err;
    }
    return json.out;
  }
  TempDir dir;
};

class Runs : public Cli, public ::testing::WithParamInterface<Row> {};

TEST_P(Runs, ExitStatusOutputAndFiles) {
  const Row& row = GetParam();
  write("in", row.input);
  const auto before = files();
  std::istringstream words(row.args);
  const CliResult result = run({std::istream_iterator<std::string>(words), {}}, "in");
  EXPECT_EQ(result.status, row.status) << result.out << result.err;
  // Only a merge with --save changes a file that was there; a failed command writes none.
  const auto after = files();
  for (const auto& [name, bytes] : before) EXPECT_EQ(after.at(name), bytes) << name;
  // A failure says "orvane: ..." on stderr alone; any other run leaves stderr empty.
  const bool failed = row.status == 2;
  const std::string& said = failed ? result.err : result.out;
  EXPECT_EQ(failed ? result.out : result.err, "");
  EXPECT_NE(said.find(row.says), std::string::npos) << said;
  EXPECT_TRUE(!row.says.empty() || said.empty()) << said;
  EXPECT_TRUE(failed || row.args.find("json") == std::string::npos || nlohmann::json::accept(said)) << said;
  if (failed) {
    EXPECT_EQ(after.size(), before.size()) << "a failed command wrote a file";
    EXPECT_EQ(said.rfind("orvane: ", 0), 0u) << said;
  }
}

INSTANTIATE_TEST_SUITE_P(Cli, Runs, ::testing::ValuesIn(runs()));

// Inputs past 256 MiB are refused; an output on a full disk or a pipe whose reader is gone fails with a message.
TEST_F(Cli, InputsAndOutputsThatCannotBeUsedExitWithTwo) {
  write("in", "");
  fs::resize_file(dir.path() / "in", (std::uintmax_t{256} << 20) + 1);
  EXPECT_NE(run({"psets", "list", "in"}).err.find("document in: is larger than 256 MiB"), std::string::npos);
  const CliResult piped = run({"psets", "export", "-"}, "in");
  EXPECT_EQ(piped.status, 2);
  EXPECT_NE(piped.err.find("standard input: is larger than 256 MiB"), std::string::npos) << piped.err;
  int pipeEnds[2];
  ASSERT_EQ(::pipe(pipeEnds), 0);
  ::close(pipeEnds[0]);
  for (const int out : {::open("/dev/full", O_WRONLY), pipeEnds[1]}) {
    ASSERT_GE(out, 0);
    const CliResult result = run({"psets", "list", "p.xml"}, "", out);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err.rfind("orvane: cannot write the output", 0), 0u) << result.err;
    ::close(out);
  }
}

TEST_F(Cli, ExportIdsCarriesTheTitleGiven) {
  ASSERT_EQ(run({"export-ids", "p.xml", "-o", "a.ids", "--title", "Mi proyecto"}).status, 0);
  EXPECT_NE(read("a.ids").find("<title>Mi proyecto</title>"), std::string::npos);
}

// What list gives, edited, merges back into FILE with --save, the old one kept as FILE.bak (without --save FILE is
// left alone: the merge rows of the table).
TEST_F(Cli, MergeWritesTheDocumentOnlyWithSave) {
  std::string edited = kWallsCsv;
  edited.replace(edited.find("2.500"), 5, "3.125");
  const std::string added =
      "Muro,Acabado,enumerated,Rojo,,Colores\nMuro,Ancho,real,0.3,M\nNuevo,\"Uno, dos\",String,\"x\"\"y\nz\"\n";
  const struct { std::string group, file, records, says, listed; } cases[] = {
      {"psets", "p.xml", edited + added, "Merged 9 records",
       edited + "Muro,Acabado,Enumerated,Rojo,,Colores\nMuro,Ancho,Real,0.300,m,\n"
                "Nuevo,\"Uno, dos\",String,\"x\"\"y\nz\",,\n"},
      {"qsets", "q.xml", "set,quantity,kind,value\nwalls,Height,IfcLengthMeasure,2.75\nSlabs,Volume,VOLUME,0.1\n",
       "Merged 2 records",
       "Slabs,Volume,volume,0.100\nwalls,area,area,3.000\nwalls,Volume,volume,1.250\nwalls,Height,length,2.750\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.group);
    write("r.csv", c.records);
    const std::string document = read(c.file);
    const CliResult saved = run({c.group, "merge", c.file, "part.xml", "r.csv", "--save"});
    EXPECT_NE(saved.out.find(c.says), std::string::npos) << saved.out << saved.err;
    EXPECT_EQ(read(c.file + ".bak"), document);
    EXPECT_NE(run({c.group, "list", c.file, "--format", "csv"}).out.find(c.listed), std::string::npos);
  }
}

using Values = std::vector<std::string>;

constexpr const char* kPsd = "http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd";

// <tag attributes>content</tag>
std::string el(const std::string& tag, const std::string& content) {
  return "<" + tag + ">" + content + "</" + tag.substr(0, tag.find(' ')) + ">";
}

std::string single(const std::string& name, const std::string& type, const std::string& definition = "",
                   const std::string& kind = "TypePropertySingleValue") {
  return el("PropertyDef", el("Name", name) + el("Definition", definition) +
                               el("PropertyType", el(kind, "<DataType type=\"" + type + "\"/>")));
}

std::string enumerated(const std::string& name, const std::string& list, const Values& items) {
  std::string names, constants;
  for (const std::string& item : items) {
    names += el("EnumItem", item);
    constants += el("ConstantDef", el("Name", item));
  }
  const std::string values = list.empty() ? el("EnumList", "") : el("EnumList name=\"" + list + "\"", names);
  return el("PropertyDef", el("Name", name) + el("PropertyType", el("TypePropertyEnumeratedValue",
                                                                     values + el("ConstantList", constants))));
}

std::string psetDef(const std::string& name, const std::string& properties, const Values& classes,
                    const std::string& xmlns = std::string(" xmlns=\"") + kPsd + "\"") {
  std::string classNames;
  for (const std::string& c : classes) classNames += el("ClassName", c);
  return "<?xml version=\"1.0\"?>\n" +
         el("PropertySetDef" + xmlns, el("Name", name) + el("Definition", "About " + name) +
                                          el("ApplicableClasses", classNames) + el("PropertyDefs", properties));
}

TEST_F(Cli, ImportPsdCarriesWhatTheDocumentsHoldAndReportsTheRest) {
  fs::create_directory(dir.path() / "psd");
  write("psd/a.xml",
        psetDef("Pset_A",
                single("Width", "IfcPositiveLengthMeasure", "The width") + single("Pressure", "IfcPressureMeasure") +
                    single("Maybe", "IfcLogical") + single("Complex", "IfcComplexNumber") + single("Untyped", "") +
                    single("Range", "IfcReal", "", "TypePropertyBoundedValue") +
                    single("Long", "IfcLabel", std::string(600, 'd')) +
                    enumerated("Status", "PEnum_Status", {"NEW", "OLD"}) +
                    enumerated("Shape", "PEnum_Shape", {"ROUND", "SQUARE"}),
                {"IfcActuator/ELECTRICACTUATOR", "IfcActuator/HYDRAULICACTUATOR", ""}));
  // Every element with a namespace prefix; the same list name for other values is a type of its own.
  write("psd/b.xml", std::regex_replace(psetDef("Pset_B", single("Label", "IfcLabel") +
                                                              enumerated("Shape", "PEnum_Shape", {"FLAT"}),
                                                {"IfcSlab"}, std::string(" xmlns:psd=\"") + kPsd + "\""),
                                        std::regex("<(/?)([A-Z])"), "<$1psd:$2"));
  // No namespace; unnamed lists take the name of an identical list, or PEnum_<property>.
  write("psd/c.xml", psetDef("Pset_C",
                             single("Count", "IfcCountMeasure") + enumerated("Condition", "", {"NEW", "OLD"}) +
                                 enumerated("Finish", "", {"MATT", "GLOSS"}),
                             {"IfcBeam"}, ""));
  write("psd/d.xml", psetDef("Pset_D", enumerated("Shape", "PEnum_Shape", {"FLAT"}), {"IfcColumn"}));
  write("psd/e.xml", "<Other/>\n");
  write("psd/f.xml", "<PropertySetDef><Name>Broken");
  std::string qto;
  for (const std::string kind : {"LENGTH", "AREA", "VOLUME", "WEIGHT", "COUNT"})
    qto += el("QtoDef", el("Name", "Q" + kind) + el("Definition", "The " + kind) + el("QtoType", "Q_" + kind));
  write("psd/q.xml", el("QtoSetDef", el("Name", "Qto_Wall") + el("Definition", "W") +
                                         el("ApplicableClasses", el("ClassName", "IfcWall")) + el("QtoDefs", qto)));
  write("out.xml", "previous");

  const CliResult verbose = run({"import-psd", "psd", "-o", "out.xml", "--qto", "qto.xml", "-v"});
  ASSERT_EQ(verbose.status, 0) << verbose.err;
  EXPECT_EQ(read("out.xml.bak"), "previous");
  EXPECT_EQ(verbose.out,
            "Read 7 files: 4 property sets, 1 quantity sets.\n"
            "Wrote out.xml: 4 sets, 13 properties, 4 enumerated types, 4 relations.\n"
            "Wrote qto.xml: 1 quantity sets, 3 quantities, 1 element types.\nLeft out:\n"
            "  2  file that is not a set definition\n        psd/e.xml (neither a PropertySetDef nor a QtoSetDef)\n"
            "        psd/f.xml (not well-formed XML)\n  1  bounded value (a range of values)\n        Pset_A.Range\n"
            "  1  data type not representable\n        Pset_A.Complex (IfcComplexNumber)\n"
            "  1  empty applicable class\n        Pset_A\n"
            "  1  quantity kind Q_COUNT (only lengths, areas and volumes are kept)\n        Qto_Wall.QCOUNT\n"
            "  1  quantity kind Q_WEIGHT (only lengths, areas and volumes are kept)\n        Qto_Wall.QWEIGHT\n"
            "Kept with changes:\n  2  enumerated type renamed, its name was taken by other values\n"
            "        Pset_B.Shape: PEnum_Shape -> PEnum_Shape_Pset_B\n"
            "        Pset_D.Shape: PEnum_Shape -> PEnum_Shape_Pset_B\n"
            "  2  predefined type dropped from an applicable class\n        Pset_A: IfcActuator/ELECTRICACTUATOR\n"
            "        Pset_A: IfcActuator/HYDRAULICACTUATOR\n"
            "  1  IfcLogical kept as Boolean (its UNKNOWN state is lost)\n        Pset_A.Maybe (IfcLogical)\n"
            "  1  description cut to 511 bytes\n        Pset_A.Long\n"
            "  1  no data type given, kept as String\n        Pset_A.Untyped\n"
            "  1  unit not representable, kept as Real without unit\n        Pset_A.Pressure (IfcPressureMeasure)\n"
            "  1  unnamed value list given the name of an identical list\n        Pset_C.Condition: PEnum_Status\n"
            "  1  unnamed value list named PEnum_<property>\n        Pset_C.Finish: PEnum_Finish\n");
  // Without --verbose only counts; -o - gives the document on stdout and the report on stderr; -q and --format json
  // change only what is printed.
  const std::string counts = run({"import-psd", "psd", "-o", "plain.xml"}).out;
  for (const char* part : {"Left out:\n  2  file that is not a set definition\n  1  bounded value",
                           "  1  quantity set (no --qto file given)\nKept with changes:",
                           "named PEnum_<property>\nAdd --verbose to list every item.\n"})
    EXPECT_NE(counts.find(part), std::string::npos) << counts;
  const CliResult piped = run({"import-psd", "psd", "-o", "-"});
  EXPECT_EQ(piped.out, read("plain.xml"));
  EXPECT_NE(piped.err.find("Left out:"), std::string::npos);
  EXPECT_EQ(run({"import-psd", "psd", "-o", "quiet.xml", "-q"}).out, "");
  EXPECT_TRUE(nlohmann::json::accept(run({"import-psd", "psd", "-o", "json.xml", "--format", "json"}).out));
  for (const char* same : {"quiet.xml", "json.xml"}) EXPECT_EQ(read(same), read("plain.xml")) << same;
}

// The whole buildingSMART IFC4 library makes the shipped samples, byte for byte (samples/ifc4 is remade with
// `cmake --build <dir> --target ifc4-samples` after a change to the import).
TEST_F(Cli, ImportPsdCarriesTheWholeIfc4Library) {
  if (!fs::is_directory(ORVANE_PSD_DIR)) GTEST_SKIP() << "no IFC4 PSD files at " ORVANE_PSD_DIR " (set ORVANE_PSD_DIR)";
  const CliResult result = run({"import-psd", ORVANE_PSD_DIR, "-o", "psets.xml", "--qto", "qsets.xml"});
  ASSERT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find(" files: 420 property sets, "), std::string::npos) << result.out;
  EXPECT_EQ(read("psets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-psets.xml"));
  EXPECT_EQ(read("qsets.xml"), readBytes(ORVANE_SAMPLES_DIR "/ifc4/ifc4-qsets.xml"));
}

// Saves what the library reads of `source` to `saved`; false when it does not read it.
template <class Document>
bool saveOnce(const fs::path& source, const std::string& saved) {
  Document document;
  return document.lee(source.c_str()) == 1 && document.graba(saved.c_str()) == 1;
}


class DocumentJson : public Cli {};  // the name docs/cli.md gives these tests

// The samples (import-psd's IFC4 library among them, checked against the tool by ImportPsdCarriesTheWholeIfc4Library)
// and the fuzz corpora, each as the library saves it.
TEST_F(DocumentJson, EveryDocumentTheLibraryWritesComesBackByteForByte) {
  std::size_t checked = 0;
  for (const char* folder :
       {"", "ifc4", "../fuzz/corpus/pset_reader", "../fuzz/corpus/qset_reader", "../fuzz/corpus/round_trip"}) {
    for (const fs::directory_entry& source : fs::directory_iterator(fs::path(ORVANE_SAMPLES_DIR) / folder)) {
      SCOPED_TRACE(source.path().string());
      const std::string saved = dir.file("saved.xml");
      fs::remove(saved);
      // The property-set reader refuses any other root, so a document it saves is one.
      const std::string group = !source.is_regular_file()                            ? ""
                                : saveOnce<CIfcProyectPSet>(source.path(), saved) ? "psets"
                                : saveOnce<CIfcProyectQSet>(source.path(), saved) ? "qsets" : "";
      if (group.empty()) continue;
      roundTrip(group);
      ++checked;
    }
  }
  // The samples alone are five documents; the corpora add dozens.
  EXPECT_GT(checked, 40u);
}

TEST_F(DocumentJson, SingleByteTextsBecomeUtf8AndGoBackAsTheSameBytes) {
  // 0xBA is the degree sign of "ºC"; 0x81 is a byte Windows-1252 leaves undefined.
  const std::string saved =
      write("saved.xml",
            "<PropertySetsBIM><PropertiesSet><PropertySet Name=\"Muro\xE9\" Description=\"a\x81\">"
            "<PropertyName Name=\"T\" Optional=\"No\" Unit=\"\xBA" "C\" Rule=\"\" Type=\"Real\">"
            "<Description>caf\xC3\xA9</Description>"
            "<Value>G.V$</Value></PropertyName></PropertySet></PropertiesSet></PropertySetsBIM>");
  ASSERT_TRUE(saveOnce<CIfcProyectPSet>(saved, saved));
  // Texts already in UTF-8 go as they are.
  EXPECT_EQ(nlohmann::json::parse(roundTrip("psets"))["propertySets"][0], nlohmann::json::parse(R"({
    "name": {"windows-1252": "Muro\u00e9"}, "description": {"windows-1252": "a\u0081"}, "properties": [{"name": "T",
    "description": "caf\u00e9", "type": "Real", "unit": "\u00baC", "rule": "", "optional": false,
    "value": {"reference": "G.V$"}}]})"));
}

}  // namespace
