// The interface text table on real message files: the line format, the sorted lookup, the row
// limit and the load / release rules the entry points rely on.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "common/line_ends.h"
#include "editors/common/messages.h"
#include "support/temp_dir.h"

using orvane::getMensaje;
using orvane::test::LineEnd;
using orvane::test::TempDir;

namespace {

constexpr const char* kNone = "<none>";

// Each test starts with no table and a message file path in a fresh folder, and leaves no table.
class MessageTableTest : public ::testing::Test {
 protected:
  void SetUp() override {
    orvane::descargaMensajes();
    path_ = dir_.file("mensajes.txt");
    orvane::setRutaMensajes(path_.c_str());
  }
  void TearDown() override { orvane::descargaMensajes(); }

  void writeFile(std::string_view bytes) const { orvane::test::writeBytes(path_, bytes); }

  // The text of (group, id) as a string, or kNone when there is no text.
  static std::string text(int32_t group, int32_t id) {
    const char* found = getMensaje(group, id);
    return found != nullptr ? found : kNone;
  }

  TempDir dir_;
  std::string path_;
};

class MessageFileEnds : public MessageTableTest, public ::testing::WithParamInterface<LineEnd> {};

struct Lookup {
  int32_t group, id;
  std::string text;
};

struct FileCase {
  const char* rule;
  std::string lines;
  std::vector<Lookup> lookups;
  int32_t rows;
};

}  // namespace

TEST_P(MessageFileEnds, LineFormatAndSortedLookup) {
  const std::string a(507, 'a'), b(85, 'b');
  const FileCase cases[] = {
      {"exact rows only", "3,3,\"Insertar...\"\n3,4,\"Borrar\"\n3,9,\"Editar...\"\n",
       {{3, 4, "Borrar"}, {3, 3, "Insertar..."}, {3, 9, "Editar..."},
        {3, 5, kNone}, {2, 1, kNone}, {3, 10, kNone}, {4, 1, kNone}}, 3},  // between, before, after
      {"rows out of order hide the rows after them", "3,9,\"Editar...\"\n3,4,\"Borrar\"\n2,1,\"Antes\"\n",
       {{3, 9, "Editar..."}, {3, 4, kNone}, {2, 1, kNone}}, 3},  // (3,9), then group 3, stop the walk
      {"an unquoted text keeps its line feed", "3,11,Listas\n3,12,\"Listas\"\n",
       {{3, 11, "Listas\n"}, {3, 12, "Listas"}}, 2},
      {"the last line is kept only with its line end", "3,1,\"uno\"\n3,2,\"dos\"",
       {{3, 1, "uno"}, {3, 2, kNone}}, 1},
      {"tokens follow the commas and quotes",
       "\n"                              // empty line: no row
       "-2,7,\"negativo\"\n"
       "1,1\n"                           // two tokens: no row
       "1,2,\"\"\"con comillas\"\"\"\n"  // leading quotes skipped
       "1,3,,\"tras coma\"\n"            // a comma before the quote too
       "1,4,\"a,b\"\n"                   // a text ends at a comma
       " 1, 5,blancos\n"                 // numbers as atoi reads them
       "1x,6y,\"sufijos\"\n",            // reading stops at the first non-digit
       {{-2, 7, "negativo"}, {1, 2, "con comillas"}, {1, 3, "tras coma"}, {1, 4, "a"}, {1, 5, "blancos\n"},
        {1, 6, "sufijos"}, {1, 1, kNone}}, 6},
      // 600 characters: the first 511 are one row, the other 89 (with the line feed) another.
      {"a long line counts as two", "3,1," + a + "4,5," + b + "\n", {{3, 1, a}, {4, 5, b + "\n"}}, 2},
      {"ANSI bytes pass through", "3,10,\"Descripci\xF3n\"\n", {{3, 10, "Descripci\xF3n"}}, 1},
  };
  for (const FileCase& file : cases) {
    SCOPED_TRACE(file.rule);
    orvane::descargaMensajes();
    writeFile(orvane::test::withLineEnds(file.lines, GetParam()));
    for (const Lookup& lookup : file.lookups)
      EXPECT_EQ(text(lookup.group, lookup.id), lookup.text) << lookup.group << "," << lookup.id;
    EXPECT_EQ(orvane::numMensajes, file.rows);
  }
}

INSTANTIATE_TEST_SUITE_P(LineEnds, MessageFileEnds, ::testing::Values(LineEnd::LF, LineEnd::CRLF),
                         ::testing::PrintToStringParamName());

TEST_F(MessageTableTest, AnsiTextsAreDecodedForTheEditors) {
  writeFile("3,10,\"Descripci\xF3n\"\r\n4,5,\"Unidad \xBA" "C \x80\"\r\n");
  EXPECT_EQ(orvane::textoMensaje(3, 10), u"Descripción");
  EXPECT_EQ(orvane::textoMensaje(4, 5), u"Unidad ºC €");
  EXPECT_EQ(orvane::textoMensaje(4, 6), u"");
}

TEST_F(MessageTableTest, KeepsAtMost512Rows) {
  std::string lines;
  for (int id = 1; id <= 513; ++id) lines += "1," + std::to_string(id) + ",\"t" + std::to_string(id) + "\"\n";
  writeFile(lines);
  EXPECT_EQ(text(1, 512), "t512");
  EXPECT_EQ(text(1, 513), kNone);
  EXPECT_EQ(orvane::numMensajes, 512);
}

TEST_F(MessageTableTest, AFileThatDoesNotOpenIsRetriedAtEachLookup) {
  orvane::setRutaMensajes(dir_.path().c_str());  // a folder is no message file
  EXPECT_EQ(getMensaje(3, 4), nullptr);
  EXPECT_EQ(orvane::MessageTable, nullptr);
  orvane::setRutaMensajes(path_.c_str());  // missing
  EXPECT_EQ(getMensaje(3, 4), nullptr);
  EXPECT_EQ(orvane::MessageTable, nullptr);
  EXPECT_EQ(orvane::textoMensaje(3, 4), u"");
  writeFile("3,4,\"Borrar\"\n");  // the host puts the file in place later
  EXPECT_EQ(text(3, 4), "Borrar");
}

// A folder, a FIFO (which would block the open) or a device (/dev/zero never ends) is no message
// file; a hang ends the run (SIGALRM).
TEST_F(MessageTableTest, OnlyARegularFileIsAMessageFile) {
  ASSERT_EQ(::mkfifo(dir_.file("pipe").c_str(), 0600), 0);
  ::alarm(20);
  for (const std::string& path : {dir_.path().string(), dir_.file("pipe"), std::string("/dev/zero")}) {
    orvane::setRutaMensajes(path.c_str());
    EXPECT_EQ(getMensaje(3, 4), nullptr) << path;
    EXPECT_EQ(orvane::MessageTable, nullptr) << path;  // so it is tried again, as a missing file is
  }
  ::alarm(0);
}

TEST_F(MessageTableTest, ReleaseFreesATableWithRowsAndTheNextLookupReloads) {
  writeFile("3,4,\"Borrar\"\n");
  EXPECT_EQ(text(3, 4), "Borrar");
  orvane::liberaMensajes();
  EXPECT_EQ(orvane::MessageTable, nullptr);
  EXPECT_EQ(orvane::numMensajes, 0);
  writeFile("3,4,\"Eliminar\"\n");
  EXPECT_EQ(text(3, 4), "Eliminar");
}

TEST_F(MessageTableTest, TableLoadedWithoutRowsStaysLoaded) {
  for (const char* rowless : {"", "sin comas\n\n"}) {
    SCOPED_TRACE(rowless);
    orvane::descargaMensajes();
    writeFile(rowless);
    EXPECT_EQ(getMensaje(3, 4), nullptr);
    ASSERT_NE(orvane::MessageTable, nullptr);
    EXPECT_EQ(orvane::numMensajes, 0);
    orvane::liberaMensajes();
    EXPECT_NE(orvane::MessageTable, nullptr);
    writeFile("3,4,\"Borrar\"\n");
    EXPECT_EQ(getMensaje(3, 4), nullptr);  // the file is not read again
  }
}

TEST_F(MessageTableTest, ExplicitLoadReplacesTheTable) {
  writeFile("3,4,\"Borrar\"\n");
  orvane::cargaMensajes();
  writeFile("3,5,\"OK\"\n");
  orvane::cargaMensajes();
  EXPECT_EQ(text(3, 4), kNone);
  EXPECT_EQ(text(3, 5), "OK");
  std::filesystem::remove(path_);
  orvane::cargaMensajes();  // a file that does not open changes nothing
  EXPECT_EQ(text(3, 5), "OK");
}

TEST(MessagePath, IsStoredWithinItsBuffer) {
  const std::string longPath = "/" + std::string(700, 'p');
  orvane::setRutaMensajes(longPath.c_str());
  EXPECT_EQ(std::string(orvane::rutaMensajes), longPath.substr(0, 511));
  orvane::setRutaMensajes(nullptr);
  EXPECT_STREQ(orvane::rutaMensajes, "");
}
