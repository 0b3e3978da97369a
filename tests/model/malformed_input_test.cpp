// Malformed document files and unusable paths, for both documents, as a table: each gives its result
// (0 for a file that can't be read or isn't well-formed XML, without a message, the document
// unchanged), never a crash. Saving to an unusable path gives 1 and changes nothing there; saving
// over a document keeps the previous one as its backup.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "model/text.h"
#include "support/documents.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

// What the table needs to know of each document.
// A well-formed file without the document's root element is a read failure with the document's
// message for property sets, and an empty document for quantity sets.
struct PsetKind {
  using Document = CIfcProyectPSet;
  static constexpr int kResultWithoutRoot = 0;
  static std::vector<std::string> messagesWithoutRoot() { return {"Error lectura XML. CIfcProyectPSet"}; }
  static std::string root(const std::string& inside) {
    return "<?xml version=\"1.0\" encoding=\"UTF8\"?>\n<PropertySetsBIM>" + inside + "</PropertySetsBIM>\n";
  }
  static std::string withSetNamed(const std::string& name) {
    return psetFile("", propertySet(name, property("p", "String", "v")));
  }
  static std::vector<std::string> setNames(const Document& doc) {
    std::vector<std::string> names;
    for (const CIfcPropertySet& set : doc.propertySets) names.emplace_back(set.name);
    return names;
  }
  static void addSet(Document& doc, const char* name) {
    doc.propertySets.emplace_back();
    std::strcpy(doc.propertySets.back().name, name);
  }
};

struct QsetKind {
  using Document = CIfcProyectQSet;
  static constexpr int kResultWithoutRoot = 1;
  static std::vector<std::string> messagesWithoutRoot() { return {}; }
  static std::string root(const std::string& inside) {
    return "<?xml version=\"1.0\"?>\n<QuantitiesSetQuorsel>" + inside + "</QuantitiesSetQuorsel>\n";
  }
  static std::string withSetNamed(const std::string& name) {
    return qsetFile("", "", "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"\"/>");
  }
  static std::vector<std::string> setNames(const Document& doc) {
    std::vector<std::string> names;
    for (const CIfcQuantitySet& set : doc.quantitySets) names.emplace_back(set.name);
    return names;
  }
  static void addSet(Document& doc, const char* name) {
    doc.quantitySets.emplace_back();
    std::strcpy(doc.quantitySets.back().name, name);
  }
};

std::string nested(int depth) {
  std::string xml;
  for (int i = 0; i < depth; ++i) xml += "<a>";
  for (int i = 0; i < depth; ++i) xml += "</a>";
  return xml;
}

// The bytes as UTF-16, little- or big-endian, each byte taken as one character.
std::string utf16(const std::string& text, bool bigEndian) {
  std::string out;
  for (char c : text) {
    out += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
  }
  return out;
}

std::string writeAndName(const TempDir& dir, const std::string& xml) {
  const std::string path = dir.file("in.xml");
  writeBytes(path, xml);
  return path;
}

enum class Outcome {
  kNotXml,   // can't be parsed: 0 without a message
  kNoRoot,   // parses, but holds no document root
  kLoads,    // 1 without a message
};

struct Case {
  const char* name;
  std::string bytes;
  Outcome outcome;
};

template <class Kind>
std::vector<Case> malformedFiles() {
  const std::string valid = Kind::withSetNamed("Muros");
  return {
      {"an empty file", "", Outcome::kNotXml},
      {"a byte-order mark alone", "\xEF\xBB\xBF", Outcome::kNotXml},
      {"text that is no XML", "Muros;Altura;Real\n", Outcome::kNotXml},
      {"a NUL byte inside", valid.substr(0, 60) + std::string(1, '\0') + valid.substr(60), Outcome::kNotXml},
      {"nesting deeper than the XML library allows", Kind::root(nested(120)), Outcome::kNotXml},
      {"UTF-16 with its byte-order mark", "\xFF\xFE" + utf16(valid, false), Outcome::kNotXml},
      {"UTF-16 without byte-order mark", utf16(valid, false), Outcome::kNotXml},
      {"UTF-16 big-endian", "\xFE\xFF" + utf16(valid, true), Outcome::kNotXml},
      {"a declaration alone", "<?xml version=\"1.0\"?>\n", Outcome::kNoRoot},
      {"nesting the XML library still allows", Kind::root(nested(90)), Outcome::kLoads},
      {"a byte-order mark before the document", "\xEF\xBB\xBF" + valid, Outcome::kLoads},
  };
}

template <class Kind>
class MalformedInput : public ::testing::Test {
 protected:
  using Document = typename Kind::Document;

  // Reads `path` into a document that already holds a set, which a failed read must leave alone,
  // and checks the result and the messages `outcome` gives.
  void expectOutcome(const char* path, Outcome outcome) {
    MessageRecorder messages;
    Document doc;
    Kind::addSet(doc, "Previo");
    const int result = doc.lee(path);
    switch (outcome) {
      case Outcome::kNotXml:
        EXPECT_EQ(result, 0);
        EXPECT_EQ(messages.messages(), std::vector<std::string>{});
        EXPECT_EQ(Kind::setNames(doc), std::vector<std::string>{"Previo"});
        break;
      case Outcome::kNoRoot:
        EXPECT_EQ(result, Kind::kResultWithoutRoot);
        EXPECT_EQ(messages.messages(), Kind::messagesWithoutRoot());
        EXPECT_EQ(Kind::setNames(doc), std::vector<std::string>{"Previo"});
        break;
      case Outcome::kLoads:
        EXPECT_EQ(result, 1);
        EXPECT_EQ(messages.messages(), std::vector<std::string>{});
        break;
    }
  }

  TempDir dir;
};

using Kinds = ::testing::Types<PsetKind, QsetKind>;
TYPED_TEST_SUITE(MalformedInput, Kinds);

TYPED_TEST(MalformedInput, FilesGiveTheirResultAndMessage) {
  for (const Case& row : malformedFiles<TypeParam>()) {
    SCOPED_TRACE(row.name);
    const std::string path = this->dir.file("in.xml");
    writeBytes(path, row.bytes);
    this->expectOutcome(path.c_str(), row.outcome);
  }
}

// A FIFO would block an ordinary open until some writer came; it is no document either.
TYPED_TEST(MalformedInput, PathsThatNameNoFileGiveZeroWithoutMessage) {
  const std::string folder = this->dir.path().string();
  const std::string missingFolder = this->dir.file("no/such/folder/doc.xml");
  const std::string missingFile = this->dir.file("missing.xml");
  const std::string fifo = this->dir.file("pipe.xml");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  for (const char* path : {missingFile.c_str(), folder.c_str(), "/dev/null", missingFolder.c_str(), fifo.c_str(), "",
                           static_cast<const char*>(nullptr)}) {
    SCOPED_TRACE(path != nullptr ? path : "(null)");
    this->expectOutcome(path, Outcome::kNotXml);
  }
}

// A saved document cut anywhere: inside the declaration it is no XML; right after it, only blanks
// follow, which parses as a file without root; inside the root it is no XML again until the root's
// end tag is in.
TYPED_TEST(MalformedInput, EveryPrefixOfASavedDocumentGivesItsResult) {
  typename TypeParam::Document saved;
  ASSERT_EQ(saved.lee(writeAndName(this->dir, TypeParam::withSetNamed("Muros")).c_str()), 1);
  const std::string full = this->dir.file("full.xml");
  saved.graba(full.c_str());
  const std::string bytes = readBytes(full);
  const std::size_t declarationEnd = bytes.find("?>") + 2;
  const std::size_t rootStart = bytes.find('<', declarationEnd);
  const std::size_t rootEnd = bytes.rfind('>') + 1;
  const std::string path = this->dir.file("prefix.xml");
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    SCOPED_TRACE(testing::Message() << "prefix of " << length << " bytes: " << bytes.substr(0, length));
    writeBytes(path, bytes.substr(0, length));
    Outcome outcome = Outcome::kNotXml;
    if (length >= declarationEnd && length <= rootStart) outcome = Outcome::kNoRoot;
    if (length >= rootEnd) outcome = Outcome::kLoads;
    this->expectOutcome(path.c_str(), outcome);
    if (::testing::Test::HasFailure()) return;
  }
}

// A name past its field is cut on load and saved cut; invalid UTF-8 passes through unchanged; neither
// gives a message.
TYPED_TEST(MalformedInput, OddNamesLoadAndSaveAsTheyWereRead) {
  const std::string invalidUtf8 = "\xC3\x28\xFF\xFE\xED\xA0\x80\xC0\xAF";
  const std::string huge(1 << 20, 'n');
  for (const auto& [name, loaded] : {std::pair{invalidUtf8, invalidUtf8}, std::pair{huge, std::string(kTextFieldSize - 1, 'n')}}) {
    SCOPED_TRACE(name.substr(0, 20));
    MessageRecorder messages;
    typename TypeParam::Document doc;
    ASSERT_EQ(doc.lee(writeAndName(this->dir, TypeParam::withSetNamed(name)).c_str()), 1);
    ASSERT_EQ(TypeParam::setNames(doc), std::vector<std::string>{loaded});
    const std::string out = this->dir.file("out.xml");
    doc.graba(out.c_str());
    EXPECT_LT(fs::file_size(out), 2000u);
    typename TypeParam::Document again;
    ASSERT_EQ(again.lee(out.c_str()), 1);
    EXPECT_EQ(TypeParam::setNames(again), std::vector<std::string>{loaded});
    EXPECT_EQ(messages.messages(), std::vector<std::string>{});
  }
}

// XML reads a carriage return, bare or before a line feed, as a line feed; a saved one must not
// change, or every save and load of a text typed with Windows line breaks would alter it.
TYPED_TEST(MalformedInput, CarriageReturnsInTextsSurviveASave) {
  const std::string name = "l\xC3\xADnea 1\r\nl\xC3\xADnea 2\rfin\n";
  typename TypeParam::Document doc;
  TypeParam::addSet(doc, name.c_str());
  const std::string path = this->dir.file("out.xml");
  doc.graba(path.c_str());
  EXPECT_NE(readBytes(path).find("&#13;\r\n"), std::string::npos);
  typename TypeParam::Document again;
  ASSERT_EQ(again.lee(path.c_str()), 1);
  EXPECT_EQ(TypeParam::setNames(again), std::vector<std::string>{name});
}

TYPED_TEST(MalformedInput, SavingKeepsThePreviousFileAsBackup) {
  const std::string path = this->dir.file("doc.xml");
  typename TypeParam::Document doc;
  ASSERT_EQ(doc.graba(path.c_str()), 1);
  EXPECT_FALSE(fs::exists(path + ".bak"));  // nothing to keep the first time
  const std::string firstSave = readBytes(path);
  TypeParam::addSet(doc, "Nuevo");
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), firstSave);
  const std::string secondSave = readBytes(path);
  EXPECT_NE(secondSave, firstSave);
  doc.graba(path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), secondSave);
}

// A save to a path that names no regular file gives 1 and leaves what is there as it was: renaming
// over a folder or a device would destroy it.
TYPED_TEST(MalformedInput, SavingToUnusablePathsGivesOneAndChangesNothing) {
  typename TypeParam::Document doc;
  TypeParam::addSet(doc, "Muros");
  const std::string folder = this->dir.file("folder");
  fs::create_directory(folder);
  const std::string missingFolder = this->dir.file("no/such/folder/doc.xml");
  for (const char* path : {folder.c_str(), missingFolder.c_str(), "", static_cast<const char*>(nullptr)}) {
    SCOPED_TRACE(path != nullptr ? path : "(null)");
    EXPECT_EQ(doc.graba(path), 1);
  }
  EXPECT_TRUE(fs::is_directory(folder));
  EXPECT_TRUE(fs::is_empty(folder));
  EXPECT_EQ(std::distance(fs::directory_iterator(this->dir.path()), fs::directory_iterator()), 1);

  EXPECT_EQ(doc.graba("/dev/null"), 1);
  struct stat info {};
  ASSERT_EQ(::stat("/dev/null", &info), 0);
  EXPECT_TRUE(S_ISCHR(info.st_mode)) << "/dev/null was replaced";
  EXPECT_FALSE(fs::exists("/dev/null.bak"));
}

}  // namespace
