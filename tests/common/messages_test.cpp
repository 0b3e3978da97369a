// The interface text table on real message files: the line format, the sorted lookup, the row
// limit and the load / release rules the entry points rely on.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "common/line_ends.h"
#include "editors/common/messages.h"
#include "support/temp_dir.h"

using orvane::getMensaje;
using orvane::test::LineEnd;
using orvane::test::TempDir;
using orvane::test::withLineEnds;

namespace {

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

  // The text of (group, id) as a string, or "<none>" when there is no text.
  static std::string text(int32_t group, int32_t id) {
    const char* found = getMensaje(group, id);
    return found != nullptr ? found : "<none>";
  }

  TempDir dir_;
  std::string path_;
};

class MessageFileEnds : public MessageTableTest, public ::testing::WithParamInterface<LineEnd> {
 protected:
  void writeLines(std::string_view text) const { writeFile(withLineEnds(text, GetParam())); }
};

}  // namespace

TEST_P(MessageFileEnds, SortedLookupFindsExactRowsOnly) {
  writeLines("3,3,\"Insertar...\"\n3,4,\"Borrar\"\n3,9,\"Editar...\"\n");
  EXPECT_EQ(text(3, 4), "Borrar");
  EXPECT_EQ(text(3, 3), "Insertar...");
  EXPECT_EQ(text(3, 9), "Editar...");
  EXPECT_EQ(text(3, 5), "<none>");   // between rows
  EXPECT_EQ(text(2, 1), "<none>");   // before the first
  EXPECT_EQ(text(3, 10), "<none>");  // after the last
  EXPECT_EQ(text(4, 1), "<none>");
  EXPECT_EQ(orvane::numMensajes, 3);
}

TEST_P(MessageFileEnds, RowsOutOfOrderHideTheRowsAfterThem) {
  writeLines("3,9,\"Editar...\"\n3,4,\"Borrar\"\n2,1,\"Antes\"\n");
  EXPECT_EQ(text(3, 9), "Editar...");
  EXPECT_EQ(text(3, 4), "<none>");  // (3,9) stops the walk first
  EXPECT_EQ(text(2, 1), "<none>");  // group 3 stops it
}

TEST_P(MessageFileEnds, UnquotedTextKeepsItsLineFeed) {
  writeLines("3,11,Listas\n3,12,\"Listas\"\n");
  EXPECT_EQ(text(3, 11), "Listas\n");
  EXPECT_EQ(text(3, 12), "Listas");
}

TEST_P(MessageFileEnds, LastLineIsKeptOnlyWithItsLineEnd) {
  writeLines("3,1,\"uno\"\n3,2,\"dos\"");
  EXPECT_EQ(text(3, 1), "uno");
  EXPECT_EQ(text(3, 2), "<none>");
  orvane::descargaMensajes();
  writeLines("3,1,\"uno\"\n3,2,\"dos\"\n");
  EXPECT_EQ(text(3, 2), "dos");
}

TEST_P(MessageFileEnds, TokensFollowTheCommasAndQuotes) {
  writeLines(
      "\n"                                // empty line: no row
      "1,1\n"                             // two tokens: no row
      "1,2,\"\"\"con comillas\"\"\"\n"    // leading quotes skipped
      "1,3,,\"tras coma\"\n"              // a comma before the quote too
      "1,4,\"a,b\"\n"                     // a text ends at a comma
      " 1, 5,blancos\n"                   // numbers as atoi reads them
      "1x,6y,\"sufijos\"\n"               // reading stops at the first non-digit
      "-2,7,\"negativo\"\n");
  EXPECT_EQ(text(1, 2), "con comillas");
  EXPECT_EQ(text(1, 3), "tras coma");
  EXPECT_EQ(text(1, 4), "a");
  EXPECT_EQ(text(1, 5), "blancos\n");
  EXPECT_EQ(text(1, 6), "sufijos");
  EXPECT_EQ(text(1, 1), "<none>");
  EXPECT_EQ(orvane::numMensajes, 6);
  EXPECT_EQ(orvane::MessageTable[5].group, -2);  // out of order, so only in the table
}

TEST_P(MessageFileEnds, LongLineCountsAsTwoLines) {
  // 600 characters: the first 511 are one row, the other 89 (with the line feed) another.
  const std::string first = "3,1," + std::string(507, 'a');
  const std::string second = "4,5," + std::string(85, 'b');
  ASSERT_EQ(first.size() + second.size(), 600u);
  writeLines(first + second + "\n");
  EXPECT_EQ(text(3, 1), std::string(507, 'a'));
  EXPECT_EQ(text(4, 5), std::string(85, 'b') + "\n");
}

TEST_P(MessageFileEnds, AnsiBytesArePassedThroughAndDecodedForTheEditors) {
  writeLines("3,10,\"Descripci\xF3n\"\n4,5,\"Unidad \xBA" "C \x80\"\n");
  EXPECT_EQ(text(3, 10), "Descripci\xF3n");
  EXPECT_EQ(orvane::textoMensaje(3, 10), u"Descripción");
  EXPECT_EQ(orvane::textoMensaje(4, 5), u"Unidad ºC €");
  EXPECT_EQ(orvane::textoMensaje(4, 6), u"");
}

INSTANTIATE_TEST_SUITE_P(LineEnds, MessageFileEnds, ::testing::Values(LineEnd::LF, LineEnd::CRLF),
                         ::testing::PrintToStringParamName());

TEST_F(MessageTableTest, KeepsAtMost512Rows) {
  std::string lines;
  for (int id = 1; id <= 513; ++id) lines += "1," + std::to_string(id) + ",\"t" + std::to_string(id) + "\"\n";
  writeFile(lines);
  EXPECT_EQ(text(1, 512), "t512");
  EXPECT_EQ(text(1, 513), "<none>");
  EXPECT_EQ(orvane::numMensajes, 512);
}

TEST_F(MessageTableTest, MissingFileIsRetriedAtEachLookup) {
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
  writeFile("sin comas\n\n");
  EXPECT_EQ(getMensaje(3, 4), nullptr);
  ASSERT_NE(orvane::MessageTable, nullptr);
  EXPECT_EQ(orvane::numMensajes, 0);
  orvane::liberaMensajes();
  EXPECT_NE(orvane::MessageTable, nullptr);
  writeFile("3,4,\"Borrar\"\n");
  EXPECT_EQ(getMensaje(3, 4), nullptr);  // the file is not read again
}

TEST_F(MessageTableTest, EmptyFileLoadsAnEmptyTable) {
  writeFile("");
  EXPECT_EQ(getMensaje(1, 1), nullptr);
  EXPECT_NE(orvane::MessageTable, nullptr);
  EXPECT_EQ(orvane::numMensajes, 0);
}

TEST_F(MessageTableTest, ExplicitLoadReplacesTheTable) {
  writeFile("3,4,\"Borrar\"\n");
  orvane::cargaMensajes();
  writeFile("3,5,\"OK\"\n");
  orvane::cargaMensajes();
  EXPECT_EQ(text(3, 4), "<none>");
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
  orvane::setRutaMensajes("/host/mensajes.txt");
  EXPECT_STREQ(orvane::rutaMensajes, "/host/mensajes.txt");
}
