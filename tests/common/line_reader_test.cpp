// The line reader every parser of host files uses: Windows text-mode lines on real files, and the
// end-of-file state the parsers' loops depend on.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "common/line_ends.h"
#include "editors/common/line_reader.h"
#include "support/temp_dir.h"

using orvane::readTextLine;
using orvane::test::LineEnd;
using orvane::test::TempDir;
using orvane::test::withLineEnds;

namespace {

// An open file holding `bytes`, closed when the test ends.
class OpenFile {
 public:
  OpenFile(const TempDir& dir, std::string_view bytes) {
    const std::string path = dir.file("lines.txt");
    orvane::test::writeBytes(path, bytes);
    stream_ = std::fopen(path.c_str(), "r");
  }
  ~OpenFile() {
    if (stream_ != nullptr) std::fclose(stream_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  std::FILE* get() const { return stream_; }

 private:
  std::FILE* stream_ = nullptr;
};

class LineReaderEnds : public ::testing::TestWithParam<LineEnd> {
 protected:
  std::string file(std::string_view text) const { return withLineEnds(text, GetParam()); }
  TempDir dir_;
};

}  // namespace

TEST_P(LineReaderEnds, GivesEachLineWithASingleLineFeed) {
  OpenFile in(dir_, file("3,3,\"Insertar...\"\nEje;PK,Cota\n\nfin\n"));
  ASSERT_NE(in.get(), nullptr);
  char buffer[512];
  ASSERT_EQ(readTextLine(buffer, sizeof buffer, in.get()), buffer);
  EXPECT_STREQ(buffer, "3,3,\"Insertar...\"\n");
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "Eje;PK,Cota\n");
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "\n");
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "fin\n");
  EXPECT_FALSE(std::feof(in.get()));
}

TEST_P(LineReaderEnds, LastLineWithItsEndLeavesTheEndForAFailedReadThatKeepsTheBuffer) {
  OpenFile in(dir_, file("uno\ndos\n"));
  char buffer[512];
  readTextLine(buffer, sizeof buffer, in.get());
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "dos\n");
  EXPECT_FALSE(std::feof(in.get()));  // a parser that tests here keeps "dos"

  buffer[1] = '#';  // as a tokenizer would leave it
  EXPECT_EQ(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_TRUE(std::feof(in.get()));
  EXPECT_FALSE(std::ferror(in.get()));
  EXPECT_STREQ(buffer, "d#s\n");  // untouched by the failed read
}

TEST_P(LineReaderEnds, LastLineWithoutItsEndSetsEndOfFileOnTheReadThatGivesIt) {
  OpenFile in(dir_, file("uno\ndos"));
  char buffer[512];
  readTextLine(buffer, sizeof buffer, in.get());
  EXPECT_FALSE(std::feof(in.get()));
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "dos");
  EXPECT_TRUE(std::feof(in.get()));  // so a parser that tests here drops "dos"
}

TEST_P(LineReaderEnds, LongLineComesInPiecesOfSizeMinusOne) {
  const std::string line(600, 'x');
  OpenFile in(dir_, file(line + "\nsiguiente\n"));
  char buffer[512];
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_EQ(std::string(buffer), std::string(511, 'x'));
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_EQ(std::string(buffer), std::string(89, 'x') + "\n");
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "siguiente\n");
}

TEST_P(LineReaderEnds, BytesAbove127PassUnchanged) {
  OpenFile in(dir_, file("Habitaci\xF3n;Superficie \xFAtil \xBA\x80\x81\xFF\n"));
  char buffer[512];
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "Habitaci\xF3n;Superficie \xFAtil \xBA\x80\x81\xFF\n");
}

INSTANTIATE_TEST_SUITE_P(LineEnds, LineReaderEnds, ::testing::Values(LineEnd::LF, LineEnd::CRLF),
                         ::testing::PrintToStringParamName());

TEST(LineReader, CrLfTakesOnePlaceInTheBuffer) {
  TempDir dir;
  // 510 characters and CR LF make a whole line of 511: the pair is one character, even in the
  // buffer's last place.
  OpenFile in(dir, std::string(510, 'a') + "\r\n" + std::string(511, 'b') + "\r\nc");
  char buffer[512];
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_EQ(std::string(buffer), std::string(510, 'a') + "\n");
  // A CR LF that falls just past a full buffer is the whole next read.
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_EQ(std::string(buffer), std::string(511, 'b'));
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "\n");
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "c");
}

TEST(LineReader, LoneCarriageReturnsAreOrdinaryCharacters) {
  TempDir dir;
  OpenFile in(dir, "a\rb\r\r\nc\n\r");
  char buffer[64];
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "a\rb\r\n");
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "c\n");
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "\r");
  EXPECT_TRUE(std::feof(in.get()));  // the line went on looking for its end
}

TEST(LineReader, CarriageReturnEndingTheFileInAFullBufferLeavesTheEndToTheNextRead) {
  TempDir dir;
  OpenFile in(dir, "ab\r");
  char buffer[4];
  ASSERT_NE(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_STREQ(buffer, "ab\r");
  EXPECT_FALSE(std::feof(in.get()));  // the look-ahead past the CR is no read of the line
  EXPECT_EQ(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_TRUE(std::feof(in.get()));
}

TEST(LineReader, EmptyFileGivesNullAndKeepsTheBuffer) {
  TempDir dir;
  OpenFile in(dir, "");
  char buffer[8] = "previa";
  EXPECT_EQ(readTextLine(buffer, sizeof buffer, in.get()), nullptr);
  EXPECT_TRUE(std::feof(in.get()));
  EXPECT_STREQ(buffer, "previa");
}

TEST(LineReader, DegenerateArgumentsReadNothing) {
  TempDir dir;
  OpenFile in(dir, "abc\n");
  char buffer[4] = "xyz";
  EXPECT_EQ(readTextLine(buffer, 0, in.get()), nullptr);
  EXPECT_EQ(readTextLine(buffer, -5, in.get()), nullptr);
  EXPECT_EQ(readTextLine(nullptr, 4, in.get()), nullptr);
  EXPECT_EQ(readTextLine(buffer, 4, nullptr), nullptr);
  EXPECT_STREQ(buffer, "xyz");
  EXPECT_EQ(readTextLine(buffer, 1, in.get()), buffer);  // room for the terminator only
  EXPECT_STREQ(buffer, "");
  ASSERT_NE(readTextLine(buffer, 4, in.get()), nullptr);  // and nothing was consumed
  EXPECT_STREQ(buffer, "abc");
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

