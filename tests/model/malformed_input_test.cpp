// Both documents as whole files, as a typed table: golden bytes, the empty document, loads that add
// to a document, malformed files and unusable paths (0 without a message, the document unchanged,
// never a crash), and saves to paths that name no regular file (1, nothing there changed).
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "document_kinds.h"
#include "support/golden.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

template <class Document>
constexpr bool kIsPset = std::is_same_v<Document, CIfcProyectPSet>;

template <class Document>
std::string withSetNamed(const std::string& name) {
  if constexpr (kIsPset<Document>)
    return psetFile("", propertySet(name, property("p", "String", "v")),
                    "<RelationIfcElementWithPSet PSet=\"" + name + "\" Object=\"IfcWall\"/>");
  else
    return qsetFile("", "", "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"\"/>");
}

// The document's root holding elements nested `depth` deep.
template <class Document>
std::string nested(int depth) {
  const std::string root = kIsPset<Document> ? "PropertySetsBIM" : "QuantitiesSetQuorsel";
  std::string open = "<" + root + ">", close = "</" + root + ">";
  for (int i = 0; i < depth; ++i) open += "<a>", close = "</a>" + close;
  return open + close;
}

// The bytes as UTF-16, each byte taken as one character.
std::string utf16(const std::string& text, bool bigEndian) {
  std::string out;
  for (char c : text) out += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
  return out;
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
  TypeParam empty;
  empty.graba(this->dir.file("empty.xml").c_str());
  EXPECT_EQ(readBytes(this->dir.file("empty.xml")),  // every list, even empty
            kIsPset<TypeParam> ? "<?xml version=\"1.0\" encoding=\"UTF8\"?>\r\n<PropertySetsBIM>\r\n    <TypesEnum/>\r\n"
                                 "    <PropertiesSet/>\r\n    <RelationsIfcElementWithPSet/>\r\n</PropertySetsBIM>\r\n"
                               : "<?xml version=\"1.0\"?>\r\n<QuantitiesSetQuorsel>\r\n    <TypesQuorsel/>\r\n"
                                 "    <ObjectsQuorsel/>\r\n    <QuantitiesSet/>\r\n</QuantitiesSetQuorsel>\r\n");
}

TYPED_TEST(DocumentFiles, ALoadAddsToTheDocumentAndSortsOldAndNewTogether) {
  TypeParam doc;
  for (const char* name : {"M", "a", "M"}) ASSERT_EQ(doc.lee(this->write(withSetNamed<TypeParam>(name)).c_str()), 1);
  EXPECT_EQ(setNames(doc), (std::vector<std::string>{"a", "M", "M"}));
  if constexpr (kIsPset<TypeParam>) { EXPECT_EQ(doc.relations.size(), 3u); }
}

TYPED_TEST(DocumentFiles, MalformedFilesGiveTheirResultAndMessage) {
  const std::string valid = withSetNamed<TypeParam>("Muros");
  const struct { const char* name; std::string bytes; Outcome outcome; } rows[] = {
      {"an empty file", "", Outcome::kNotXml},
      {"a byte-order mark alone", "\xEF\xBB\xBF", Outcome::kNotXml},
      {"text that is no XML", "Muros;Altura;Real\n", Outcome::kNotXml},
      {"a NUL byte inside", valid.substr(0, 60) + std::string(1, '\0') + valid.substr(60), Outcome::kNotXml},
      {"nesting deeper than the XML library allows", nested<TypeParam>(120), Outcome::kNotXml},
      {"UTF-16 with its byte-order mark", "\xFF\xFE" + utf16(valid, false), Outcome::kNotXml},
      {"UTF-16 without byte-order mark", utf16(valid, false), Outcome::kNotXml},
      {"UTF-16 big-endian", "\xFE\xFF" + utf16(valid, true), Outcome::kNotXml},
      {"a declaration alone", "<?xml version=\"1.0\"?>\n", Outcome::kNoRoot},
      {"nesting the XML library still allows", nested<TypeParam>(90), Outcome::kLoads},
      {"a byte-order mark before the document", "\xEF\xBB\xBF" + valid, Outcome::kLoads},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    this->expectOutcome(this->write(row.bytes).c_str(), row.outcome);
  }
}

// A FIFO would block an ordinary open until some writer came; it is no document either.
TYPED_TEST(DocumentFiles, PathsThatNameNoFileGiveZeroWithoutMessage) {
  const std::string folder = this->dir.path().string(), fifo = this->dir.file("pipe.xml");
  const std::string missingFolder = this->dir.file("no/such/folder/doc.xml"), missingFile = this->dir.file("none.xml");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  for (const char* path : {missingFile.c_str(), folder.c_str(), "/dev/null", missingFolder.c_str(), fifo.c_str(), "",
                           static_cast<const char*>(nullptr)}) {
    SCOPED_TRACE(path != nullptr ? path : "(null)");
    this->expectOutcome(path, Outcome::kNotXml);
  }
}

// A saved document cut anywhere: inside the declaration it is no XML; right after it, only blanks
// follow, which parses as a file without root; inside the root it is no XML again until its end tag.
TYPED_TEST(DocumentFiles, EveryPrefixOfASavedDocumentGivesItsResult) {
  TypeParam saved;
  ASSERT_EQ(saved.lee(this->write(withSetNamed<TypeParam>("Muros")).c_str()), 1);
  saved.graba(this->dir.file("full.xml").c_str());
  const std::string bytes = readBytes(this->dir.file("full.xml"));
  const std::size_t declarationEnd = bytes.find("?>") + 2, rootStart = bytes.find('<', declarationEnd);
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    SCOPED_TRACE(testing::Message() << "prefix of " << length << " bytes: " << bytes.substr(0, length));
    Outcome outcome = Outcome::kNotXml;
    if (length >= declarationEnd && length <= rootStart) outcome = Outcome::kNoRoot;
    if (length > bytes.rfind('>')) outcome = Outcome::kLoads;
    this->expectOutcome(this->write(bytes.substr(0, length)).c_str(), outcome);
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
    doc.graba(this->dir.file("out.xml").c_str());
    EXPECT_LT(fs::file_size(this->dir.file("out.xml")), 2000u);
    TypeParam again;
    ASSERT_EQ(again.lee(this->dir.file("out.xml").c_str()), 1);
    EXPECT_EQ(setNames(again), std::vector<std::string>{row.loaded});
    EXPECT_EQ(messages.messages(), std::vector<std::string>{});
  }
}

// Renaming over a folder or a device would destroy it.
TYPED_TEST(DocumentFiles, SavingToPathsThatNameNoRegularFileGivesOneAndChangesNothing) {
  TypeParam doc;
  addSet(doc, "Muros");
  const std::string folder = this->dir.file("folder"), withSlash = folder + "/";
  fs::create_directory(folder);
  const std::string missingFolder = this->dir.file("no/such/folder/doc.xml");
  for (const char* path : {folder.c_str(), withSlash.c_str(), missingFolder.c_str(), "/dev/null", "",
                           static_cast<const char*>(nullptr)}) {
    SCOPED_TRACE(path != nullptr ? path : "(null)");
    EXPECT_EQ(doc.graba(path), 1);
  }
  EXPECT_TRUE(fs::is_empty(folder));
  EXPECT_EQ(this->dir.names(), std::set<std::string>{"folder"});
  EXPECT_TRUE(fs::is_character_file("/dev/null")) << "/dev/null was replaced";
  EXPECT_FALSE(fs::exists("/dev/null.bak"));
}

}  // namespace
