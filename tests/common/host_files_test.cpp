// The host's text files read from real files: the line reader under every parser, the bounded
// opening, the variable catalogue and the message file. The host writes them with Windows line ends,
// but a copy through other tools may have lost them: every file without a CR of its own is read
// with both.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "editors/assign/catalogue.h"
#include "editors/common/line_reader.h"
#include "editors/common/messages.h"
#include "support/temp_dir.h"

using namespace orvane;
using Lines = std::vector<std::string>;

namespace {

const std::string kNone = "<none>";

// Each group as "Name:var1|var2|...", so a whole catalogue compares in one expectation.
Lines describe(const std::vector<CZepGrupo>& groups) {
  Lines out;
  for (const CZepGrupo& group : groups) {
    out.push_back(std::string(group.name) + ":");
    for (const CZepVariable& variable : group.variables)
      out.back() += (&variable == group.variables.data() ? "" : "|") + std::string(variable.name);
  }
  return out;
}

// A file's text and what a parser makes of it, one string per line read, group or row.
struct FileCase {
  const char* rule;
  std::string text;
  Lines expected;
};

class HostFiles : public ::testing::Test {
 protected:
  ~HostFiles() override {
    for (std::FILE* stream : streams_) std::fclose(stream);
  }
  // A stream over a new file holding `bytes`, closed when the test ends.
  std::FILE* open(std::string_view bytes) {
    std::FILE* stream = std::fopen(dir.write(std::to_string(streams_.size()), bytes).c_str(), "r");
    EXPECT_NE(stream, nullptr);
    if (stream != nullptr) streams_.push_back(stream);
    return stream;
  }
  // `parse` reads each case's text with LF and, unless it holds a CR of its own, with CR LF.
  static void expectParsed(const std::vector<FileCase>& cases, const std::function<Lines(const std::string&)>& parse) {
    for (const FileCase& file : cases) {
      std::string crlf;
      for (const char c : file.text) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
      EXPECT_EQ(parse(file.text), file.expected) << file.rule;
      if (file.text.find('\r') != std::string::npos) continue;
      EXPECT_EQ(parse(crlf), file.expected) << file.rule << ", CR LF";
    }
  }

  test::TempDir dir;
  std::vector<std::FILE*> streams_;
};

}  // namespace

// Each read gives one line with a single line feed, or kNone: the read fails and leaves the buffer
// as a parser's tokenizer left it. A parser that tests the end of the stream after the read of a
// last line without its end drops that line, so the reads show where the end is reached: "$" after
// a line, and a final kNone read.
TEST_F(HostFiles, LineReaderGivesEachLineWithASingleLineFeed) {
  const std::string x(600, 'x'), a(510, 'a'), b(511, 'b');
  const std::function<Lines(const std::string&)> readAll = [this](const std::string& bytes) {
    std::FILE* stream = open(bytes);
    Lines reads;
    char buffer[512] = "previa";
    while ((reads.empty() || !std::feof(stream)) && reads.size() < 10) {
      const std::string before = buffer;
      const char* got = readTextLine(buffer, sizeof buffer, stream);
      reads.push_back(got == buffer ? buffer : kNone);
      if (got != buffer && (got != nullptr || buffer != before || std::ferror(stream))) reads.back() = "a broken read";
      if (std::feof(stream)) reads.back() += "$";
      if (buffer[0] != '\0') buffer[0] = '#';
    }
    return reads;
  };
  const std::vector<FileCase> cases = {
      {"lines and an empty one", "3,\"I\"\nEje;PK\n\nfin\n", {"3,\"I\"\n", "Eje;PK\n", "\n", "fin\n", kNone + "$"}},
      {"no end on the last line", "uno\ndos", {"uno\n", "dos$"}},
      {"a long line comes in pieces", x + "\n", {x.substr(0, 511), x.substr(0, 89) + "\n", kNone + "$"}},
      {"bytes above 127", "Habitaci\xF3n \xBA\x80\x81\xFF", {"Habitaci\xF3n \xBA\x80\x81\xFF$"}},
      // CR LF in the buffer's last place is one character; just past a full buffer, the next read
      {"CR LF at the buffer's end", a + "\r\n" + b + "\r\nc", {a + "\n", b, "\n", "c$"}},
      {"lone carriage returns are ordinary characters", "a\rb\r\r\nc\n\r", {"a\rb\r\n", "c\n", "\r$"}},
      {"an empty file", "", {kNone + "$"}},
  };
  expectParsed(cases, readAll);
}

// A folder opened as a file fails with an error, not an end, and so ends a catalogue's read; a
// reader waiting for its end would hang, which kills the test (SIGALRM).
TEST_F(HostFiles, LineReaderRefusesDegenerateArgumentsAndStopsAtErrors) {
  std::FILE* stream = open("abc\n");
  char buffer[16] = "xyz";
  for (int size : {0, -5}) EXPECT_EQ(readTextLine(buffer, size, stream), nullptr);
  EXPECT_EQ(readTextLine(nullptr, 4, stream), nullptr);
  EXPECT_EQ(readTextLine(buffer, 4, nullptr), nullptr);
  EXPECT_STREQ(buffer, "xyz");
  EXPECT_EQ(readTextLine(buffer, 1, stream), buffer);  // room for the terminator only
  EXPECT_STREQ(buffer, "");
  EXPECT_STREQ(readTextLine(buffer, 4, stream), "abc");  // nothing was consumed
  std::FILE* cr = open("ab\r");  // the look-ahead past a CR ending the file in a full buffer is no read
  EXPECT_STREQ(readTextLine(buffer, 4, cr), "ab\r");
  EXPECT_FALSE(std::feof(cr));
  EXPECT_EQ(readTextLine(buffer, 4, cr), nullptr);
  EXPECT_TRUE(std::feof(cr));
  EXPECT_EQ(CConjuntoVariableZep().leeFichero(nullptr), 0);
  std::FILE* folder = std::fopen(dir.path().c_str(), "r");
  if (folder == nullptr) GTEST_SKIP() << "this system does not open folders as files";
  streams_.push_back(folder);
  EXPECT_EQ(readTextLine(buffer, sizeof buffer, folder), nullptr);
  EXPECT_TRUE(std::ferror(folder));
  EXPECT_STREQ(buffer, "ab\r");
  ::alarm(20);
  EXPECT_EQ(CConjuntoVariableZep().leeFichero(folder), 0);
  ::alarm(0);
}

// The message file, the catalogue and the CSV import open the host's files through HostTextFile:
// only a regular file within the input's bound opens. A FIFO would block the open, /dev/zero never
// ends, /dev/urandom floods memory; a hang ends the run (SIGALRM). The last file is one byte over.
TEST_F(HostFiles, OnlyARegularFileWithinItsBoundOpens) {
  ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0600), 0);
  const std::string twoLines = dir.write("two-lines", "A;x\r\nB;y");
  ::alarm(20);
  for (const auto& [path, bound] : {std::pair<std::string, std::size_t>{dir.file("pipe"), kMaxCatalogueBytes},
                                    {"/dev/zero", kMaxCsvBytes}, {"/dev/urandom", kMaxMessageFileBytes},
                                    {dir.path().string(), kMaxMessageFileBytes}, {dir.file("missing"), 1000},
                                    {twoLines, 7}})
    EXPECT_EQ(HostTextFile(path.c_str(), bound).stream(), nullptr) << path;
  ::alarm(0);
  const HostTextFile file(twoLines.c_str(), 8);  // reads as the file would, text-mode line ends included
  char line[16];
  EXPECT_STREQ(readTextLine(line, sizeof line, file.stream()), "A;x\n");
  EXPECT_STREQ(readTextLine(line, sizeof line, file.stream()), "B;y");
  EXPECT_TRUE(std::feof(file.stream()));
}

// No header, quoting or trimming: a group name, a semicolon, variables between commas. A trailing
// comma leaves the line feed as a name; "A;" has one variable, its line feed, and "C;" at the end none.
TEST_F(HostFiles, CatalogueLineFormat) {
  const std::string x(509, 'x'), y(85, 'y');
  const std::vector<FileCase> cases = {
      {"the last variable of a line keeps its line feed", "Eje;PK,Cota\nMuro;Alto\n", {"Eje:PK|Cota\n", "Muro:Alto\n"}},
      {"a last line without line feed keeps its variable bare", "Eje;PK\nMuro;Alto", {"Eje:PK\n", "Muro:Alto"}},
      {"an empty file", "", {}},
      {"empty lines", "\n\n\n", {}},
      {"empty variable names are skipped", "A;x,,y\nB;,z,\n", {"A:x|y\n", "B:z|\n"}},
      {"leading semicolons are skipped, later ones belong to names", ";;A;x\nA;x;y,z\n", {"A:x\n", "A:x;y|z\n"}},
      {"lines without variables are dropped", "Suelto\n;;;\nA;\nB;x\nC;", {"A:\n", "B:x\n"}},
      {"blanks and high bytes belong to names", " A\xF1o ; \xFAtil , \xBA" "C\n", {" A\xF1o : \xFAtil | \xBA" "C\n"}},
      {"duplicates are kept in file order", "Eje;PK,PK\nMuro;A\nEje;R\n", {"Eje:PK|PK\n", "Muro:A\n", "Eje:R\n"}},
      {"600 characters: 511, then the rest", "A;" + x + "B;" + y + ",z\n", {"A:" + x, "B:" + y + "|z\n"}},
  };
  expectParsed(cases, [this](const std::string& bytes) {
    CConjuntoVariableZep catalogue;
    const int result = catalogue.leeFichero(open(bytes));
    EXPECT_EQ(result, catalogue.groups.empty() ? 0 : 1);
    return describe(catalogue.groups);
  });
}

// Each read appends to the groups read before; the stream stays open.
TEST_F(HostFiles, CatalogueReadsAppendAndLeaveTheStreamOpen) {
  CConjuntoVariableZep catalogue;
  std::FILE* first = open("Eje;PK\n");
  EXPECT_EQ(catalogue.leeFichero(first), 1);
  EXPECT_TRUE(std::feof(first));
  EXPECT_EQ(catalogue.leeFichero(open("Muro;Alto\r\n")), 1);
  EXPECT_EQ(catalogue.leeFichero(open("")), 1);  // the groups read before still count
  EXPECT_EQ(catalogue.leeFichero(first), 1);     // at its end: nothing more
  ASSERT_EQ(std::fseek(first, 0, SEEK_SET), 0);  // still open: it reads again
  catalogue.leeFichero(first);
  EXPECT_EQ(describe(catalogue.groups), (Lines{"Eje:PK\n", "Muro:Alto\n", "Eje:PK\n"}));
}

TEST(CatalogueClasses, IndexesAreCheckedNamesCutAndGroupsCopyDeep) {
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(catalogue.getGrupo(0), nullptr);
  catalogue.groups = {CZepGrupo("Eje")};
  catalogue.groups[0].variables = {CZepVariable("PK"), CZepVariable("Cota")};
  for (int index : {-1, 1}) EXPECT_EQ(catalogue.getGrupo(index), nullptr) << index;
  ASSERT_NE(catalogue.getGrupo(0), nullptr);
  const CZepGrupo& group = *catalogue.getGrupo(0);
  EXPECT_EQ(group.getNumVariables(), 2);
  EXPECT_EQ(group.getVariable(1), &group.variables[1]);
  for (int index : {-1, 2}) EXPECT_EQ(group.getVariable(index), nullptr) << index;
  EXPECT_EQ(CZepVariable(std::string(600, 'v')).name, std::string(511, 'v'));
  EXPECT_EQ(CZepGrupo(std::string(512, 'g')).name, std::string(511, 'g'));
  CZepGrupo copy("Muro");
  copy.variables.resize(3);
  copy = group;
  copy.variables[0].name[0] = 'X';  // a deep copy: the source is not touched
  CZepGrupo& same = copy;
  copy = same;  // assigning a group to itself keeps its variables
  EXPECT_EQ(describe({copy, group}), (Lines{"Eje:XK|Cota", "Eje:PK|Cota"}));
}

namespace {

// Each test starts and ends with no table, the message file path in a fresh folder.
class MessageFile : public HostFiles {
 protected:
  void SetUp() override {
    descargaMensajes();
    setRutaMensajes(path.c_str());
  }
  void TearDown() override { descargaMensajes(); }
  void write(std::string_view bytes) const { test::writeBytes(path, bytes); }
  static std::string text(int32_t group, int32_t id) {
    const char* found = getMensaje(group, id);
    return found != nullptr ? found : kNone;
  }

  const std::string path = dir.file("mensajes.txt");
};

}  // namespace

// Rows "group,id,text": the numbers as atoi reads them, the text after any commas and quotes up to
// the next one. Only a line with all three is a row, and only with its line end; at most 512.
TEST_F(MessageFile, LineFormat) {
  const std::string a(507, 'a'), b(85, 'b');
  std::string rows513;
  for (int id = 1; id <= 513; ++id) rows513 += "1," + std::to_string(id) + ",t\n";
  const std::vector<FileCase> cases = {
      {"quoted rows", "3,3,\"Ins...\"\n3,4,\"Borrar\"\n", {"3,3:Ins...", "3,4:Borrar"}},
      {"an unquoted text keeps its line feed", "3,11,Listas\n", {"3,11:Listas\n"}},
      {"the last line is kept only with its line end", "3,1,\"uno\"\n3,2,\"dos\"", {"3,1:uno"}},
      {"empty lines and lines of two tokens are no rows", "\n-2,7,\"neg\"\n1,1\n", {"-2,7:neg"}},
      {"leading quotes and commas", "1,2,\"\"\"comillas\"\"\"\n1,3,,\"coma\"\n", {"1,2:comillas", "1,3:coma"}},
      {"a text ends at a comma", "1,4,\"a,b\"\n", {"1,4:a"}},
      {"numbers as atoi reads them", " 1, 5,blancos\n1x,6y,\"sufijos\"\n", {"1,5:blancos\n", "1,6:sufijos"}},
      {"600 characters: 511, then the rest", "3,1," + a + "4,5," + b + "\n", {"3,1:" + a, "4,5:" + b + "\n"}},
      {"ANSI bytes pass through", "3,10,\"Descripci\xF3n\"\n", {"3,10:Descripci\xF3n"}},
      {"at most 512 rows", rows513, {"512 rows, the last 1,512:t\n"}},
  };
  expectParsed(cases, [this](const std::string& bytes) {
    write(bytes);
    cargaMensajes();
    Lines rows;
    for (const MessageEntry& row : std::vector<MessageEntry>(MessageTable, MessageTable + numMensajes))
      rows.push_back(std::to_string(row.group) + "," + std::to_string(row.id) + ":" + row.text);
    if (rows.size() > 100) return Lines{std::to_string(rows.size()) + " rows, the last " + rows.back()};
    return rows;
  });
}

// A lookup walks the rows until it passes its key, so a row out of order hides the rows after it.
TEST_F(MessageFile, SortedLookup) {
  write("3,3,\"Ins\"\n3,4,\"B\"\n3,9,\"Ed\"\n");
  using Lookup = std::tuple<int32_t, int32_t, std::string>;
  for (const auto& [group, id, expected] :
       {Lookup{3, 4, "B"}, {3, 3, "Ins"}, {3, 9, "Ed"}, {3, 5, kNone}, {2, 1, kNone}, {3, 10, kNone}, {4, 1, kNone}})
    EXPECT_EQ(text(group, id), expected) << group << "," << id;
  write("3,9,\"Ed\"\n3,4,\"Borrar\"\n2,1,\"Antes\"\n");
  cargaMensajes();
  for (const auto& [group, id, expected] : {Lookup{3, 9, "Ed"}, {3, 4, kNone}, {2, 1, kNone}})
    EXPECT_EQ(text(group, id), expected) << group << "," << id;
}

// A file that does not open (HostTextFile decides which) gives no table, so each lookup tries again.
TEST_F(MessageFile, AFailedLoadIsRetriedAndTextsAreDecodedForTheEditors) {
  EXPECT_EQ(getMensaje(3, 4), nullptr);
  EXPECT_EQ(MessageTable, nullptr);
  EXPECT_EQ(textoMensaje(3, 4), u"");
  write("3,10,\"Descripci\xF3n\"\r\n4,5,\"Unidad \xBA" "C \x80\"\r\n");  // the host puts it in place later
  EXPECT_EQ(textoMensaje(3, 10), u"Descripción");
  EXPECT_EQ(textoMensaje(4, 5), u"Unidad ºC €");
  EXPECT_EQ(textoMensaje(4, 6), u"");
  const std::string longPath = "/" + std::string(700, 'p');
  setRutaMensajes(longPath.c_str());
  EXPECT_EQ(rutaMensajes, longPath.substr(0, 511));
  setRutaMensajes(nullptr);
  EXPECT_STREQ(rutaMensajes, "");
}

TEST_F(MessageFile, ReleaseReloadsExplicitLoadReplacesARowlessTableStays) {
  write("3,4,\"Borrar\"\n");
  EXPECT_EQ(text(3, 4), "Borrar");
  liberaMensajes();  // a table with rows is freed: the next lookup reloads
  EXPECT_EQ(MessageTable, nullptr);
  EXPECT_EQ(numMensajes, 0);
  write("3,5,\"OK\"\n");
  EXPECT_EQ(text(3, 5), "OK");
  write("3,6,\"Otro\"\n");
  cargaMensajes();
  EXPECT_EQ(text(3, 5), kNone);
  EXPECT_EQ(text(3, 6), "Otro");
  std::filesystem::remove(path);
  cargaMensajes();  // a file that does not open changes nothing
  EXPECT_EQ(text(3, 6), "Otro");
  for (const char* rowless : {"", "sin comas\n\n"}) {
    SCOPED_TRACE(rowless);
    descargaMensajes();
    write(rowless);
    EXPECT_EQ(getMensaje(3, 4), nullptr);
    ASSERT_NE(MessageTable, nullptr);
    EXPECT_EQ(numMensajes, 0);
    liberaMensajes();
    EXPECT_NE(MessageTable, nullptr);
    write("3,4,\"Borrar\"\n");
    EXPECT_EQ(getMensaje(3, 4), nullptr);  // the file is not read again
  }
}
