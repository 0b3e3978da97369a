// How the documents read and write: numbers, bounded texts, names, each record's element, whole
// files as the document they load, malformed files and unusable paths.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <clocale>
#include <cstdio>
#include <sstream>

#include "document_kinds.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"
#include "support/golden.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

// Integers saturate; a real too long for a 256-byte record field ("%0.3lf" of 9e250 has 255
// characters, of 1e251 256) is written in the shortest form that reads back as the same double.
TEST(Numbers, IntegersSaturateAndRealsFitTheirBuffers) {
  const struct { const char* text; int32_t value; } rows[] = {
      {"12abc", 12}, {"  -7", -7}, {"+5", 5}, {"abc", 0}, {"", 0}, {"2.9", 2}, {nullptr, 0}, {"2147483647", INT_MAX},
      {"99999999999999999999", INT_MAX}, {"-99999999999999999999", INT_MIN}, {"-2147483648", INT_MIN}};
  for (const auto& row : rows) EXPECT_EQ(orvane::readInt(row.text), row.value) << (row.text ? row.text : "(null)");
  EXPECT_STREQ(orvane::formatInt(INT_MIN).c_str(), "-2147483648");
  EXPECT_EQ(orvane::readReal(nullptr), 0.0);
  // The largest double, 313 characters.
  EXPECT_EQ(std::string(orvane::formatReal3(1.7976931348623157e308).c_str()).substr(300), "124858368.000");
  const struct { double value; const char* text; } reals[] = {
      {9e250, nullptr}, {-9e249, nullptr}, {1e251, "1e+251"}, {-1.7976931348623157e308, "-1.7976931348623157e+308"}};
  for (const auto& row : reals)
    EXPECT_STREQ(orvane::formatRealForField(row.value, 256).c_str(),
                 row.text != nullptr ? row.text : orvane::formatReal3(row.value).c_str());
}

// LOCPATH points at a German locale made at build time; without it the test cannot run.
TEST(Numbers, IgnoreTheHostLocale) {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "no de_DE.UTF-8 locale";
  char printed[32];
  std::snprintf(printed, sizeof printed, "%.3f", 1.5);
  EXPECT_STREQ(printed, "1,500");  // the locale is really in force
  EXPECT_STREQ(orvane::formatReal3(1.23456).c_str(), "1.235");
  EXPECT_DOUBLE_EQ(orvane::readReal("2.75"), 2.75);
  std::setlocale(LC_ALL, previous.c_str());
}

TEST(CopyText, CutsAtTheFieldWithoutSplittingAUtf8Character) {
  const std::string a510(510, 'a'), a509(509, 'a'), a508(508, 'a');
  const struct { std::size_t fieldSize; std::string text, kept; } cuts[] = {
      {512, std::string(511, 'y'), std::string(511, 'y')},
      {256, std::string(300, 'n'), std::string(255, 'n')},
      {512, a510 + "\xC3\xB1", a510},                                // n-tilde over the cut
      {512, a509 + "\xE2\x82\xAC" "z", a509},                         // euro sign over the cut
      {512, a508 + "\xE2\x82\xAC" "z", a508 + "\xE2\x82\xAC"},        // euro sign just fitting
      {512, a509 + "\xBA\xBA\xBA", a509 + "\xBA\xBA"},                // 1252 bytes that continue nothing
      {512, a510 + "\xF1\xBA", a510 + "\xF1"},                        // 1252 lead byte without its sequence
  };
  for (const auto& cut : cuts) {
    SCOPED_TRACE(cut.kept.substr(cut.kept.size() > 4 ? cut.kept.size() - 4 : 0));
    char field[600];
    std::fill(std::begin(field), std::end(field), '#');
    orvane::copyText(field, cut.fieldSize, cut.text);
    EXPECT_EQ(std::string(field), cut.kept);
    EXPECT_EQ(field[cut.kept.size() + 1], '#');  // nothing written past the terminator
  }
}

TEST(NameComparison, FoldsOnlyAsciiLettersAndOrdersAsLowerCaseBytes) {
  const struct { const char *a, *b; int sign; } pairs[] = {
      {"Pset_WallCommon", "PSET_WALLCOMMON", 0},
      {"\xD1", "\xF1", -1},          // 1252 "Ñ" / "ñ" stay apart
      {"Pset_A", "PsetB", -1},       // "_" (0x5F) folds before every letter, as _stricmp
      {"Muro", "muros", -1},         // a prefix first
      {"\xE1rbol", "zeta", 1},       // bytes above 127 after ASCII
  };
  const auto sign = [](int v) { return (v > 0) - (v < 0); };
  for (const auto& pair : pairs) {
    SCOPED_TRACE(std::string(pair.a) + " / " + pair.b);
    EXPECT_EQ(sign(orvane::compareNoCase(pair.a, pair.b)), pair.sign);
    EXPECT_EQ(sign(orvane::compareNoCase(pair.b, pair.a)), -pair.sign);
    EXPECT_EQ(orvane::equalsNoCase(pair.a, pair.b), pair.sign == 0);
  }
}

// A member's fields as one line.
std::string fields(const CIfcPropertyName& p) {
  static const char* const types[] = {"Integer", "Real", "String", "Enumerated", "Boolean", "DateTime"};
  std::ostringstream out;
  out << (p.valueType >= 0 && p.valueType < 6 ? types[p.valueType] : "?") << " " << p.intValue << " " << p.realValue
      << " '" << p.textValue << "' '" << p.enumName << "' unit " << p.unit << (p.optional ? " optional" : "") << " '"
      << p.description << "' '" << p.rule << "'";
  return out.str();
}

std::string fields(const CIfcQuantityName& q) {
  std::ostringstream out;
  out << q.measureType << (q.exported ? " exported " : " ") << q.value << " '" << q.description << "'";
  return out.str();
}

// Loads one set holding each row's member element, and compares each member's fields with its row's;
// none of them shows a message.
template <class Document>
void expectMembers(const std::vector<std::pair<std::string, std::string>>& rows) {
  TempDir dir;
  MessageRecorder messages;
  std::string members;
  std::vector<std::string> expected, loaded;
  for (const auto& row : rows) members += row.first, expected.push_back(row.second);
  const Document doc = load<Document>(dir, kIsPset<Document> ? psetFile("", propertySet("S", members))
                                                               : qsetFile("", "", quantitySet("S", members)));
  for (const auto& member : membersOf(setsOf(doc).at(0))) loaded.push_back(fields(member));
  EXPECT_EQ(loaded, expected);
  EXPECT_TRUE(messages.messages().empty());
}

TEST(Records, ElementsFillTheirFields) {
  const std::string rest = "'' unit 0 'd' ''", optional = "Optional=\"yES\" Unit=\"\" Rule=\"\"";
  expectMembers<CIfcProyectPSet>({
      // Type words in any case; the golden file holds one value of every type.
      {property("P", "iNTEGER", "3"), "Integer 3 0 '' " + rest},
      {property("P", "string", std::string(900, 'v')), "String 0 0 '" + std::string(511, 'v') + "' " + rest},
      // A Boolean is 1 only for "yes", in any case.
      {property("P", "boolean", "yEs"), "Boolean 1 0 '' " + rest},
      {property("P", "Boolean", "1"), "Boolean 0 0 '' " + rest},
      // Real keeps a host variable reference as text (the golden file has an Integer one).
      {property("P", "Real", "Eje.Cota$"), "Real 0 0 'Eje.Cota$' " + rest},
      // Optional only for "Yes" in any case; units found ignoring case, an unknown or missing one is none.
      {property("P", "String", "1", optional), "String 0 0 '1' '' unit 0 optional 'd' ''"},
      {property("P", "String", "1", "Optional=\"true\" Unit=\"M2\" Rule=\"\""), "String 0 0 '1' '' unit 2 'd' ''"},
      {property("P", "String", "1", "Optional=\"No\" Unit=\"km\" Rule=\"\""), "String 0 0 '1' " + rest},
      {"<PropertyName Name=\"A\" Optional=\"No\" Rule=\"r\" Type=\"Real\"><Description/><Value></Value></PropertyName>",
       "Real 0 0 '' '' unit 0 '' 'r'"},
  });
  expectMembers<CIfcProyectQSet>({
      {quantity("A", "ifcareameasure", "1", "yEs"), "1 exported 1 'd'"},
      {quantity("A", "IfcVolumeMeasure", "12,5", "true"), "2 12 'd'"},
      {quantity("A", "IfcMassMeasure", "", "No"), "0 0 'd'"},  // an unknown kind reads as a length
  });
}

// What a save writes differently from what it holds; the golden file has every type's value.
TEST(Records, WrittenValuesAndWhatIsNotWritten) {
  TempDir dir;
  CIfcProyectPSet doc;
  doc.enums.emplace_back();                       // a type without values, which must read back
  doc.propertySets.emplace_back().selected = true;  // the editors' selection, which is not written
  const struct { int32_t type, whole; const char* text; } values[] = {
      {PropertyBoolean, 2, ""}, {PropertyInteger, 0, "Eje.100%%$"}, {PropertyString, 0, "Eje.100%%$"}};
  for (const auto& value : values) {
    CIfcPropertyName& p = doc.propertySets[0].properties.emplace_back();
    p.valueType = value.type;
    p.intValue = value.whole;
    orvane::copyText(p.textValue, value.text);
  }
  EXPECT_EQ(roundTrip(dir, doc).enums.size(), 1u);
  const std::string saved = readBytes(dir.file("round.xml"));
  // Only 1 is yes; a numeric property's text is printed as a format, any other's is not.
  for (const char* written : {"<Value>No</Value>", "<Value>Eje.100%$</Value>", "<Value>Eje.100%%$</Value>"})
    EXPECT_NE(saved.find(written), std::string::npos) << written;
  EXPECT_EQ(saved.find("elected"), std::string::npos);
  // A quantity kind outside the three is written without one.
  CIfcProyectQSet quantities;
  quantities.quantitySets.emplace_back().quantities.emplace_back().measureType = 7;
  EXPECT_EQ(roundTrip(dir, quantities).quantitySets.at(0).quantities.at(0).measureType, LengthMeasure);
  EXPECT_EQ(readBytes(dir.file("round.xml")).find("TypeQuorsel"), std::string::npos);
}

// A file as the document it loads (lee gives 1): what the document holds and the records whose
// reading failed, each shown as "Error lectura XML. CIfc" and the record's name.
struct LoadRow {
  const char* what;
  std::string file;
  Outline holds;
  std::vector<std::string> failed;
};

template <class Document>
void expectLoads(const std::vector<LoadRow>& rows) {
  TempDir dir;
  for (const LoadRow& row : rows) {
    SCOPED_TRACE(row.what);
    MessageRecorder shown;
    int result = -1;
    const Document doc = load<Document>(dir, row.file, &result);
    std::vector<std::string> messages;
    for (const std::string& record : row.failed) messages.push_back("Error lectura XML. CIfc" + record);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(outline(doc), row.holds);
    EXPECT_EQ(shown.messages(), messages);
  }
}

TEST(Documents, FilesLoadAs) {
  const auto type = [](const std::string& name, const std::string& elements = "<Elements/>") {
    return "<TypeEnum Name=\"" + name + "\" Description=\"\">" + elements + "</TypeEnum>";
  };
  const std::string noValue =
      "<PropertyName Name=\"B\" Optional=\"No\" Rule=\"\" Type=\"String\"><Description/></PropertyName>";
  const std::string noName =
      "<PropertyName Optional=\"No\" Rule=\"\" Type=\"String\"><Description/><Value/></PropertyName>";
  expectLoads<CIfcProyectPSet>({
      {"sets and types sorted by name ignoring case",
       psetFile(type("zona") + type("B"), propertySet("beta") + propertySet("Alfa") + propertySet("alpha")),
       {"type B:", "type zona:", "set Alfa:", "set alpha:", "set beta:"}, {}},
      {"a property missing a required part is left out with its message",
       psetFile("", propertySet("S", property("A", "String", "", "Optional=\"No\"") + property("Ok", "String", "v") +
                                         noValue + noName)),
       {"set S: Ok,"}, {"PropertyName", "PropertyName", "PropertyName"}},
      {"a set missing its description ends the reading of sets",
       psetFile("", propertySet("A") + "<PropertySet Name=\"B\"/>" + propertySet("C")), {"set A:"}, {"PropertySet"}},
      {"a type missing its elements ends the reading of types", psetFile(type("A", "") + type("B"), ""), {}, {"Enum"}},
      {"a value with an empty literal fails its type, and the reading of types ends there",
       psetFile(type("A", "<Elements><Element Value=\"0\"/></Elements>") + type("B"), ""), {}, {"Enum"}},
  });
  expectLoads<CIfcProyectQSet>({
      {"sets sorted by name, types and objects in file order",
       qsetFile("<TypeQuorsel>z</TypeQuorsel><TypeQuorsel>a</TypeQuorsel>",
                "<ObjectQuorsel>Superficie</ObjectQuorsel><ObjectQuorsel>Eje</ObjectQuorsel>",
                quantitySet("b", "") + quantitySet("A", "") + quantitySet("c", "")),
       {"type z", "type a", "object Superficie", "object Eje", "set A:", "set b:", "set c:"}, {}},
      {"a quantity missing a required part is left out with its message",
       qsetFile("", "", quantitySet("S", "<QuantityName Name=\"A\" TypeQuorsel=\"IfcAreaMeasure\"><Description/>"
                                         "<Value>1</Value></QuantityName><QuantityName Name=\"B\" Export=\"Yes\">"
                                         "<Description/></QuantityName>" + quantity("C", "IfcAreaMeasure", "1", "No"))),
       {"set S: C,"}, {"QuantityName", "QuantityName"}},
      {"a set missing an attribute ends the reading of sets",
       qsetFile("", "", quantitySet("A", "") + "<QuantitySet Name=\"B\" Description=\"\"/>" + quantitySet("C", "")),
       {"set A:"}, {"QuantitySet"}},
      {"a type or object without text ends its list only",
       qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel><TypeQuorsel/><TypeQuorsel>IfcVolumeMeasure</TypeQuorsel>",
                "<ObjectQuorsel>Eje</ObjectQuorsel><ObjectQuorsel></ObjectQuorsel><ObjectQuorsel>Muro</ObjectQuorsel>",
                quantitySet("S", "")),
       {"type IfcLengthMeasure", "object Eje", "set S:"}, {"Type", "Object"}},
  });
}

// Both documents as whole files, as a typed table: golden bytes, the empty document, loads that add
// to a document, malformed files and unusable paths (0 without a message, the document unchanged,
// never a crash), and saves to paths that name no regular file (1, nothing there changed).

template <class Document>
std::string withSetNamed(const std::string& name) {
  if constexpr (kIsPset<Document>)
    return psetFile("", propertySet(name, property("p", "String", "v")),
                    "<RelationIfcElementWithPSet PSet=\"" + name + "\" Object=\"IfcWall\"/>");
  else
    return qsetFile("", "", quantitySet(name, ""));
}

// The document's root holding elements nested `depth` deep.
template <class Document>
std::string nested(int depth) {
  const std::string root = kIsPset<Document> ? "PropertySetsBIM" : "QuantitiesSetQuorsel";
  std::string open = "<" + root + ">", close = "</" + root + ">";
  for (int i = 0; i < depth; ++i) open += "<a>", close = "</a>" + close;
  return open + close;
}

enum class Outcome { kNotXml, kNoRoot, kLoads };

template <class Document>
class DocumentFiles : public ::testing::Test {
 protected:
  // Reads `path` into a document that already holds a set, which a failed read must leave alone. A
  // well-formed file without the document's root is a read failure with the document's message for
  // property sets, and an empty document for quantity sets.
  void expectOutcome(const char* path, Outcome outcome) {
    MessageRecorder messages;
    Document doc;
    addSet(doc, "Previo");
    const int result = doc.lee(path);
    const bool failedRoot = outcome == Outcome::kNoRoot && kIsPset<Document>;
    EXPECT_EQ(result, outcome == Outcome::kLoads || (outcome == Outcome::kNoRoot && !failedRoot) ? 1 : 0);
    EXPECT_EQ(messages.messages(),
              failedRoot ? std::vector<std::string>{"Error lectura XML. CIfcProyectPSet"} : std::vector<std::string>{});
    if (outcome != Outcome::kLoads) { EXPECT_EQ(setNames(doc), std::vector<std::string>{"Previo"}); }
  }

  std::string write(const std::string& xml) { return dir.write("in.xml", xml); }

  TempDir dir;
};

TYPED_TEST_SUITE(DocumentFiles, DocumentTypes);

// With a golden file made from a document of one of everything, a read or a write that lost or
// changed a field would show here. ORVANE_UPDATE_GOLDEN=1 rewrites it from what a save now gives.
TYPED_TEST(DocumentFiles, TheGoldenFileLoadsAndSavesAsItWas) {
  const char* golden = kIsPset<TypeParam> ? "pset_small.xml" : "qset_small.xml";
  MessageRecorder messages;
  TypeParam doc;
  ASSERT_EQ(doc.lee((std::string(ORVANE_TEST_DATA) + "/golden/" + golden).c_str()), 1);
  ASSERT_EQ(doc.graba(this->dir.file("again.xml").c_str()), 1);
  expectGolden(this->dir.file("again.xml"), golden);
  EXPECT_TRUE(messages.messages().empty());
  TypeParam().graba(this->dir.file("empty.xml").c_str());
  EXPECT_EQ(readBytes(this->dir.file("empty.xml")),  // every list, even empty
            kIsPset<TypeParam> ? "<?xml version=\"1.0\" encoding=\"UTF8\"?>\r\n<PropertySetsBIM>\r\n    <TypesEnum/>\r\n"
                                 "    <PropertiesSet/>\r\n    <RelationsIfcElementWithPSet/>\r\n</PropertySetsBIM>\r\n"
                               : "<?xml version=\"1.0\"?>\r\n<QuantitiesSetQuorsel>\r\n    <TypesQuorsel/>\r\n"
                                 "    <ObjectsQuorsel/>\r\n    <QuantitiesSet/>\r\n</QuantitiesSetQuorsel>\r\n");
}

// A load adds to the document, sorting old and new together. Malformed files, and a saved document
// cut anywhere: inside the declaration it is no XML; right after it, only blanks follow, which parses
// as a file without root; inside the root it is no XML again until its end tag.
TYPED_TEST(DocumentFiles, LoadsAddAndMalformedOrCutFilesGiveTheirResultAndMessage) {
  TypeParam saved;
  for (const char* name : {"M", "a", "M"}) ASSERT_EQ(saved.lee(this->write(withSetNamed<TypeParam>(name)).c_str()), 1);
  EXPECT_EQ(setNames(saved), (std::vector<std::string>{"a", "M", "M"}));
  if constexpr (kIsPset<TypeParam>) { EXPECT_EQ(saved.relations.size(), 3u); }
  saved.graba(this->dir.file("full.xml").c_str());
  const std::string bytes = readBytes(this->dir.file("full.xml"));
  std::vector<std::pair<std::string, Outcome>> rows = {
      {bytes.substr(0, 60) + std::string(1, '\0') + bytes.substr(60), Outcome::kNotXml},
      {nested<TypeParam>(120), Outcome::kNotXml},  // deeper than the XML library allows
      {std::string("\xFF\xFE<\0a\0/\0>\0", 10), Outcome::kNotXml},  // UTF-16
      {nested<TypeParam>(90), Outcome::kLoads},
      {"\xEF\xBB\xBF" + bytes, Outcome::kLoads}};
  const std::size_t declarationEnd = bytes.find("?>") + 2, rootStart = bytes.find('<', declarationEnd);
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    const bool noRoot = length >= declarationEnd && length <= rootStart;
    rows.emplace_back(bytes.substr(0, length), noRoot ? Outcome::kNoRoot
                                               : length > bytes.rfind('>') ? Outcome::kLoads : Outcome::kNotXml);
  }
  for (const auto& [file, outcome] : rows) {
    SCOPED_TRACE(testing::Message() << file.size() << " bytes: " << file.substr(0, 200));
    this->expectOutcome(this->write(file).c_str(), outcome);
    if (::testing::Test::HasFailure()) return;
  }
}

// A name past its field is cut on load and saved cut; invalid UTF-8 passes through unchanged; a
// carriage return, which XML reads back as a line feed unless written as a reference, survives.
TYPED_TEST(DocumentFiles, OddNamesLoadAndSaveAsTheyWereRead) {
  const std::string invalidUtf8 = "\xC3\x28\xFF\xFE\xED\xA0\x80\xC0\xAF";
  const struct { std::string inFile, loaded; } rows[] = {
      {invalidUtf8, invalidUtf8},
      {std::string(1 << 20, 'n'), std::string(kTextFieldSize - 1, 'n')},
      {"l\xC3\xADnea 1&#13;&#10;l\xC3\xADnea 2&#13;fin&#10;", "l\xC3\xADnea 1\r\nl\xC3\xADnea 2\rfin\n"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.loaded.substr(0, 20));
    MessageRecorder messages;
    TypeParam doc;
    ASSERT_EQ(doc.lee(this->write(withSetNamed<TypeParam>(row.inFile)).c_str()), 1);
    ASSERT_EQ(setNames(doc), std::vector<std::string>{row.loaded});
    EXPECT_EQ(setNames(roundTrip(this->dir, doc)), std::vector<std::string>{row.loaded});
    EXPECT_LT(fs::file_size(this->dir.file("round.xml")), 2000u);
    EXPECT_EQ(messages.messages(), std::vector<std::string>{});
  }
}

// A read gives 0 without a message, a save 1 changing nothing there: renaming over a folder or a
// device would destroy it, and a FIFO would block an ordinary open until some writer came.
TYPED_TEST(DocumentFiles, PathsThatNameNoRegularFileAreNeitherReadNorReplaced) {
  const std::string folder = this->dir.file("folder"), withSlash = folder + "/", fifo = this->dir.file("pipe.xml");
  const std::string missingFolder = this->dir.file("no/such/folder/doc.xml"), missingFile = this->dir.file("none.xml");
  fs::create_directory(folder);
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  TypeParam doc;
  addSet(doc, "Muros");
  const struct { const char* path; bool alsoSaved; } rows[] = {
      {missingFile.c_str(), false}, {fifo.c_str(), false}, {folder.c_str(), true}, {withSlash.c_str(), true},
      {missingFolder.c_str(), true}, {"/dev/null", true}, {"", true}, {nullptr, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path != nullptr ? row.path : "(null)");
    this->expectOutcome(row.path, Outcome::kNotXml);
    if (row.alsoSaved) { EXPECT_EQ(doc.graba(row.path), 1); }
  }
  EXPECT_TRUE(fs::is_empty(folder));
  EXPECT_EQ(this->dir.names(), (std::set<std::string>{"folder", "pipe.xml"}));
  EXPECT_TRUE(fs::is_character_file("/dev/null")) << "/dev/null was replaced";
  EXPECT_FALSE(fs::exists("/dev/null.bak"));
}

}  // namespace
