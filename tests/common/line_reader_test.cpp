// The line reader every parser of host files uses: Windows text-mode lines on real files, and the
// end-of-file state the parsers' loops depend on.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "common/line_ends.h"
#include "editors/common/line_reader.h"
#include "support/temp_dir.h"

using orvane::readTextLine;
using orvane::test::LineEnd;
using orvane::test::TempDir;

namespace {

// One read: the line it gives (none: the read fails), and whether the stream is at its end after.
struct Read {
  std::optional<std::string> line;
  bool atEnd;
};

struct Lines {
  const char* what;
  std::string bytes;
  std::vector<Read> reads;
  int bufferSize = 512;
};

// Opens a file holding `lines.bytes` and checks each read in turn. A failed read leaves the buffer
// as the previous read (and a parser's tokenizer) left it.
void expectReads(const Lines& lines) {
  SCOPED_TRACE(lines.what);
  TempDir dir;
  orvane::test::writeBytes(dir.file("lines.txt"), lines.bytes);
  std::FILE* stream = std::fopen(dir.file("lines.txt").c_str(), "r");
  ASSERT_NE(stream, nullptr);
  char buffer[512] = "previa";
  for (std::size_t i = 0; i < lines.reads.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "read " << i + 1);
    const std::string before = buffer;
    const char* got = readTextLine(buffer, lines.bufferSize, stream);
    if (lines.reads[i].line) {
      EXPECT_EQ(got, buffer);
      EXPECT_EQ(std::string(buffer), *lines.reads[i].line);
    } else {
      EXPECT_EQ(got, nullptr);
      EXPECT_EQ(std::string(buffer), before);
      EXPECT_FALSE(std::ferror(stream));
    }
    EXPECT_EQ(std::feof(stream) != 0, lines.reads[i].atEnd);
    if (buffer[0] != '\0') buffer[0] = '#';  // as a tokenizer would leave it
  }
  std::fclose(stream);
}

class LineReaderEnds : public ::testing::TestWithParam<LineEnd> {};

}  // namespace

// Each line comes with a single line feed whichever ends the file has.
TEST_P(LineReaderEnds, GivesEachLineWithASingleLineFeed) {
  const std::string x(600, 'x');
  const Lines table[] = {
      {"lines and an empty one", "3,3,\"Insertar...\"\nEje;PK,Cota\n\nfin\n",
       {{"3,3,\"Insertar...\"\n", false}, {"Eje;PK,Cota\n", false}, {"\n", false}, {"fin\n", false},
        {std::nullopt, true}}},  // a parser that tests the end after "fin" keeps it
      {"a last line without its end", "uno\ndos",
       {{"uno\n", false}, {"dos", true}}},  // so a parser that tests the end here drops "dos"
      {"a long line comes in pieces of size - 1", x + "\nsiguiente\n",
       {{x.substr(0, 511), false}, {x.substr(0, 89) + "\n", false}, {"siguiente\n", false}}},
      {"bytes above 127", "Habitaci\xF3n;Superficie \xFAtil \xBA\x80\x81\xFF\n",
       {{"Habitaci\xF3n;Superficie \xFAtil \xBA\x80\x81\xFF\n", false}}},
  };
  for (Lines lines : table) {
    lines.bytes = orvane::test::withLineEnds(lines.bytes, GetParam());
    expectReads(lines);
  }
}

INSTANTIATE_TEST_SUITE_P(LineEnds, LineReaderEnds, ::testing::Values(LineEnd::LF, LineEnd::CRLF),
                         ::testing::PrintToStringParamName());

TEST(LineReader, CarriageReturnsAtTheEdges) {
  const std::string a(510, 'a'), b(511, 'b');
  const Lines table[] = {
      // 510 characters and CR LF make a whole line of 511: the pair is one character, even in the
      // buffer's last place; a CR LF just past a full buffer is the whole next read.
      {"CR LF at the buffer's end", a + "\r\n" + b + "\r\nc",
       {{a + "\n", false}, {b, false}, {"\n", false}, {"c", true}}},
      {"lone carriage returns are ordinary characters", "a\rb\r\r\nc\n\r",
       {{"a\rb\r\n", false}, {"c\n", false}, {"\r", true}}},  // the last went on looking for its end
      // The look-ahead past the CR is no read of the line.
      {"a CR ending the file in a full buffer", "ab\r", {{"ab\r", false}, {std::nullopt, true}}, 4},
      {"an empty file", "", {{std::nullopt, true}}},
  };
  for (const Lines& lines : table) expectReads(lines);
}

TEST(LineReader, DegenerateArgumentsReadNothing) {
  TempDir dir;
  orvane::test::writeBytes(dir.file("lines.txt"), "abc\n");
  std::FILE* stream = std::fopen(dir.file("lines.txt").c_str(), "r");
  ASSERT_NE(stream, nullptr);
  char buffer[4] = "xyz";
  EXPECT_EQ(readTextLine(buffer, 0, stream), nullptr);
  EXPECT_EQ(readTextLine(buffer, -5, stream), nullptr);
  EXPECT_EQ(readTextLine(nullptr, 4, stream), nullptr);
  EXPECT_EQ(readTextLine(buffer, 4, nullptr), nullptr);
  EXPECT_STREQ(buffer, "xyz");
  EXPECT_EQ(readTextLine(buffer, 1, stream), buffer);  // room for the terminator only
  EXPECT_STREQ(buffer, "");
  ASSERT_NE(readTextLine(buffer, 4, stream), nullptr);  // and nothing was consumed
  EXPECT_STREQ(buffer, "abc");
  std::fclose(stream);
}

TEST(LineReader, FolderOpenedAsFileFailsWithAnErrorNotAnEnd) {
  TempDir dir;
  std::FILE* stream = std::fopen(dir.path().c_str(), "r");
  if (stream == nullptr) GTEST_SKIP() << "this system does not open folders as files";
  char buffer[16] = "previa";
  EXPECT_EQ(readTextLine(buffer, sizeof buffer, stream), nullptr);
  EXPECT_TRUE(std::ferror(stream));
  EXPECT_STREQ(buffer, "previa");
  std::fclose(stream);
}

// The message file, the catalogue and the CSV import open the host's files through HostTextFile:
// only a regular file within the input's size bound opens. A FIFO would block the open,
// /dev/zero never ends, /dev/urandom floods memory; a hang here ends the run (SIGALRM).
TEST(HostTextFile, OnlyARegularFileWithinItsBoundOpens) {
  TempDir dir;
  ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0600), 0);
  orvane::test::writeBytes(dir.file("two-lines"), "A;x\r\nB;y");
  const struct {
    std::string path;
    std::size_t bound;
    bool opens;
  } cases[] = {
      {dir.file("pipe"), orvane::kMaxCatalogueBytes, false},
      {"/dev/zero", orvane::kMaxCsvBytes, false},
      {"/dev/urandom", orvane::kMaxMessageFileBytes, false},
      {dir.path().string(), orvane::kMaxMessageFileBytes, false},
      {dir.file("missing"), orvane::kMaxMessageFileBytes, false},
      {dir.file("two-lines"), 7, false},  // one byte over the bound
      {dir.file("two-lines"), 8, true},
  };
  ::alarm(20);
  for (const auto& test : cases) {
    const orvane::HostTextFile file(test.path.c_str(), test.bound);
    EXPECT_EQ(file.stream() != nullptr, test.opens) << test.path << " within " << test.bound;
  }
  ::alarm(0);
  // What opens reads as the file would, text-mode line ends included.
  const orvane::HostTextFile file(dir.file("two-lines").c_str(), 8);
  char line[16];
  ASSERT_NE(readTextLine(line, sizeof line, file.stream()), nullptr);
  EXPECT_STREQ(line, "A;x\n");
  ASSERT_NE(readTextLine(line, sizeof line, file.stream()), nullptr);
  EXPECT_STREQ(line, "B;y");
  EXPECT_TRUE(std::feof(file.stream()));
}

