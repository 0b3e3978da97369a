// The host's text files read from real files: the line reader under every parser, the bounded
// opening, the variable catalogue and the references to its variables, and the message file. The
// host writes them with Windows line ends, but a copy through other tools may have lost them: every
// file without a CR of its own is read with both.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>

#include "editors/assign/host_variable.h"
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

// What a file is read into: the line reader's reads, the catalogue's groups or the message table's rows.
enum Parser { kReads, kGroups, kRows };

// Each test starts and ends with no message table, the message file's path in a fresh folder.
class HostFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    descargaMensajes();
    setRutaMensajes(messageFile.c_str());
  }
  void TearDown() override { descargaMensajes(); }
  // A stream over a new file holding `bytes`, closed when the test ends.
  std::FILE* open(std::string_view bytes) {
    streams_.emplace_back(std::fopen(dir.write(std::to_string(streams_.size()), bytes).c_str(), "r"), std::fclose);
    EXPECT_NE(streams_.back(), nullptr);
    return streams_.back().get();
  }
  void write(std::string_view bytes) const { test::writeBytes(messageFile, bytes); }
  // Each read in a buffer of `size` gives one line with a single line feed, or kNone: the read fails
  // and leaves the buffer as a parser's tokenizer left it. A parser that tests the end of the stream
  // after the read of a last line without its end drops that line, so the reads show where the end
  // is reached: "$" after a line, and a final kNone read.
  static Lines reads(std::FILE* stream, int size = 512) {
    Lines out;
    char buffer[512] = "previa";
    while ((out.empty() || !std::feof(stream)) && out.size() < 10) {
      const std::string before = buffer;
      const char* got = readTextLine(buffer, size, stream);
      out.push_back(got == buffer ? buffer : kNone);
      if (got != buffer && (got != nullptr || buffer != before || std::ferror(stream))) out.back() = "a broken read";
      if (std::feof(stream)) out.back() += "$";
      if (buffer[0] != '\0') buffer[0] = '#';
    }
    return out;
  }
  // Groups as describe() gives them, rows as "group,id:text".
  Lines parse(Parser parser, const std::string& bytes) {
    if (parser == kReads) return reads(open(bytes));
    if (parser == kGroups) {
      CConjuntoVariableZep catalogue;
      catalogue.leeFichero(open(bytes));
      return describe(catalogue.groups);
    }
    write(bytes);
    cargaMensajes();
    Lines rows;
    for (int i = 0; i < numMensajes; ++i)
      rows.push_back(std::to_string(MessageTable[i].group) + "," + std::to_string(MessageTable[i].id) + ":" +
                     MessageTable[i].text);
    return rows;
  }
  // The texts found for the keys, "-" for none, each followed by "|"; then the table as it is left.
  static std::string lookup(const std::vector<std::pair<int32_t, int32_t>>& keys) {
    std::string out;
    for (const auto& [group, id] : keys) out += std::string(getMensaje(group, id) ? getMensaje(group, id) : "-") + "|";
    return out + std::to_string(numMensajes) + (MessageTable == nullptr ? " rows, no table" : " rows");
  }

  test::TempDir dir;
  const std::string messageFile = dir.file("mensajes.txt");
  std::vector<std::unique_ptr<std::FILE, int (*)(std::FILE*)>> streams_;
};

}  // namespace

// Catalogue: no header, quoting or trimming; a group name, a semicolon, variables between commas. A
// trailing comma leaves the line feed as a name. Message file: rows "group,id,text", the numbers as
// atoi reads them, the text after any commas and quotes up to the next one; only a line with all
// three is a row, and only with its line end.
TEST_F(HostFiles, EachParserReadsItsFilesWithEitherLineEnd) {
  const std::string x(600, 'x'), a(510, 'a'), b(511, 'b'), c(509, 'x'), y(85, 'y'), d(507, 'a');
  const std::tuple<Parser, const char*, std::string, Lines> cases[] = {
      {kReads, "an empty line", "3,\"I\"\nEje;PK\n\nfin\n", {"3,\"I\"\n", "Eje;PK\n", "\n", "fin\n", kNone + "$"}},
      {kReads, "no end on the last line", "uno\ndos", {"uno\n", "dos$"}},
      {kReads, "a long line comes in pieces", x + "\n", {x.substr(0, 511), x.substr(0, 89) + "\n", kNone + "$"}},
      {kReads, "bytes above 127", "Habitaci\xF3n \xBA\x80\x81\xFF", {"Habitaci\xF3n \xBA\x80\x81\xFF$"}},
      // CR LF in the buffer's last place is one character; just past a full buffer, the next read
      {kReads, "CR LF at the buffer's end", a + "\r\n" + b + "\r\nc", {a + "\n", b, "\n", "c$"}},
      {kReads, "lone CRs are characters", "a\rb\r\r\nc\n\r", {"a\rb\r\n", "c\n", "\r$"}},
      {kReads, "an empty file", "", {kNone + "$"}},
      {kGroups, "a last line without line feed keeps it bare", "Eje;PK\nMuro;Alto", {"Eje:PK\n", "Muro:Alto"}},
      {kGroups, "an empty file", "", {}},
      {kGroups, "empty variable names are skipped", "A;x,,y\nB;,z,\n", {"A:x|y\n", "B:z|\n"}},
      {kGroups, "leading semicolons are skipped, later ones named", ";;A;x\nA;x;y,z\n", {"A:x\n", "A:x;y|z\n"}},
      {kGroups, "blanks, high bytes named", " A\xF1o ; \xFAtil , \xBA" "C\n", {" A\xF1o : \xFAtil | \xBA" "C\n"}},
      {kGroups, "600 characters: 511, the rest", "A;" + c + "B;" + y + ",z\n", {"A:" + c, "B:" + y + "|z\n"}},
      {kRows, "an unquoted text keeps its line feed", "3,11,Listas\n", {"3,11:Listas\n"}},
      {kRows, "the last line is kept only with its line end", "3,1,\"uno\"\n3,2,\"dos\"", {"3,1:uno"}},
      {kRows, "empty lines and lines of two tokens are no rows", "\n-2,7,\"neg\"\n1,1\n", {"-2,7:neg"}},
      {kRows, "leading quotes, commas", "1,2,\"\"\"comillas\"\"\"\n1,3,,\"coma\"\n", {"1,2:comillas", "1,3:coma"}},
      {kRows, "numbers as atoi reads them", " 1, 5,blancos\n1x,6y,\"sufijos\"\n", {"1,5:blancos\n", "1,6:sufijos"}},
      {kRows, "600 characters: 511, then the rest", "3,1," + d + "4,5," + y + "\n", {"3,1:" + d, "4,5:" + y + "\n"}},
  };
  for (const auto& [parser, rule, text, expected] : cases) {
    std::string crlf;
    for (const char byte : text) crlf += byte == '\n' ? std::string("\r\n") : std::string(1, byte);
    EXPECT_EQ(parse(parser, text), expected) << rule;
    if (text.find('\r') != std::string::npos) continue;
    EXPECT_EQ(parse(parser, crlf), expected) << rule << ", CR LF";
  }
}

// Degenerate arguments are refused, and a folder opened as a file fails with an error, not an end,
// which ends a catalogue's read. The message file, the catalogue and the CSV import open the host's
// files through HostTextFile: only a regular file within the input's bound opens (the last one is a
// byte over). A FIFO would block the open, /dev/zero never ends, /dev/urandom floods memory and a
// reader waiting for a folder's end would hang: a hang ends the run (SIGALRM).
TEST_F(HostFiles, ReadersRefuseDegenerateInputsAndStopAtErrors) {
  std::FILE* stream = open("abc\n");
  char buffer[16] = "xyz";
  for (int size : {0, -5}) EXPECT_EQ(readTextLine(buffer, size, stream), nullptr);
  EXPECT_EQ(readTextLine(nullptr, 4, stream), nullptr);
  EXPECT_EQ(readTextLine(buffer, 4, nullptr), nullptr);
  EXPECT_STREQ(buffer, "xyz");
  EXPECT_EQ(readTextLine(buffer, 1, stream), buffer);  // room for the terminator only
  EXPECT_STREQ(buffer, "");
  EXPECT_STREQ(readTextLine(buffer, 4, stream), "abc");  // nothing was consumed
  // The look-ahead past a CR ending the file in a full buffer is no read.
  EXPECT_EQ(reads(open("ab\r"), 4), (Lines{"ab\r", kNone + "$"}));
  EXPECT_EQ(CConjuntoVariableZep().leeFichero(nullptr), 0);
  ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0600), 0);
  const std::string twoLines = dir.write("two-lines", "A;x\r\nB;y");
  // Read as the file would be, text-mode line ends included.
  EXPECT_EQ(reads(HostTextFile(twoLines.c_str(), 8).stream()), (Lines{"A;x\n", "B;y$"}));
  streams_.emplace_back(std::fopen(dir.path().c_str(), "r"), std::fclose);
  ASSERT_NE(streams_.back(), nullptr) << "this system does not open folders as files";
  ::alarm(20);
  for (const auto& [path, bound] : {std::pair<std::string, std::size_t>{dir.file("pipe"), kMaxCatalogueBytes},
                                    {"/dev/zero", kMaxCsvBytes}, {"/dev/urandom", kMaxMessageFileBytes},
                                    {dir.path().string(), kMaxMessageFileBytes}, {dir.file("missing"), 1000},
                                    {twoLines, 7}})
    EXPECT_EQ(HostTextFile(path.c_str(), bound).stream(), nullptr) << path;
  EXPECT_STREQ(readTextLine(buffer, sizeof buffer, streams_.back().get()) ? "a line" : buffer, "abc");  // buffer kept
  EXPECT_EQ(CConjuntoVariableZep().leeFichero(streams_.back().get()), 0);
  ::alarm(0);
}

// Made: the catalogue's bytes are taken as they are, line feed included. 511 characters are the most
// that fit with the terminator; a pair that does not fit is refused and leaves the value as it was.
// Read: a literal is all group part. Leading full stops are skipped, the group runs to the next one
// and the rest is taken unchanged, so a group's own full stop is lost.
TEST(References, AreMadeRecognisedAndSplitAsTheEditorsDo) {
  const std::string g255(255, 'g'), v254(254, 'v'), unchanged(511, '#');
  const std::tuple<std::string, std::string, std::string> rows[] = {  // "" for a pair refused
      {"Eje", "PK", "Eje.PK$"}, {"Eje", "Pendiente\n", "Eje.Pendiente\n$"}, {"", "", ".$"},
      {g255, v254, g255 + "." + v254 + "$"}, {std::string(509, 'g'), "", std::string(509, 'g') + ".$"},
      {g255, v254 + "v", ""}, {std::string(510, 'g'), "", ""}, {std::string(4000, 'g'), std::string(4000, 'v'), ""},
  };
  for (const auto& [group, variable, made] : rows) {
    char value[512];
    std::copy(unchanged.c_str(), unchanged.c_str() + 512, value);
    EXPECT_EQ(makeReference(group, variable, value), !made.empty()) << group.size();
    EXPECT_EQ(value, made.empty() ? unchanged : made) << group.size() << " + " << variable.size();
  }
  // "E" if the value ends as a reference, "C" if it contains one, then the parts the value editor preselects.
  const std::pair<const char*, const char*> texts[] = {
      {"Eje.PK$", "EC Eje|PK"}, {"$", "EC |"}, {"", "-- |"}, {"$ANCHO", "-C $ANCHO|"}, {"Eje.PK$ ", "-C Eje.PK$ |"},
      {"12.5", "-- 12.5|"}, {"Eje.PK.1$", "EC Eje|PK.1"}, {"..Eje.PK$", "EC Eje|PK"}, {"Eje..PK$", "EC Eje|.PK"},
      {"Eje$", "EC Eje|"}, {"Eje.$", "EC Eje|"}, {"...$", "EC |"}, {"Ej.e.PK$", "EC Ej|e.PK"},
  };
  for (const auto& [value, expected] : texts) {
    const ReferenceParts parts = partsOfValue(value);
    const std::string kinds = std::string(endsAsReference(value) ? "E" : "-") + (containsReference(value) ? "C" : "-");
    EXPECT_EQ(kinds + " " + parts.group + "|" + parts.variable, expected) << value;
  }
}

// Reads append and leave the stream open. Indexes are checked, names cut to their field, groups
// copy deep. A reference resolves to the last group of that name, else the first; in it the last
// variable of that name, else the first. Names compare whole (the line feed of a line's last
// variable too), folding ASCII letters only: 1252 "Ñ" and "ñ" stay apart. An empty catalogue or
// group gives positions with nothing there.
TEST_F(HostFiles, CatalogueAppendsIndexesCopiesAndResolvesReferences) {
  CConjuntoVariableZep catalogue;
  EXPECT_EQ(catalogue.getGrupo(0), nullptr);
  EXPECT_EQ(resolveReference(catalogue, {"Eje", "PK"}), (CatalogueIndex{0, 0}));
  EXPECT_EQ(catalogue.leeFichero(open("Eje;PK,Cota\nMuro;Alto,Alto,Ancho\nEje;Radio,PK,Cota\n")), 1);
  std::FILE* last = open("A\xD1O;Mes\r\n");
  EXPECT_EQ(catalogue.leeFichero(last), 1);  // each read appends to the groups read before
  EXPECT_TRUE(std::feof(last));
  EXPECT_EQ(catalogue.leeFichero(open("")), 1);  // the groups read before still count
  EXPECT_EQ(catalogue.leeFichero(last), 1);      // at its end: nothing more
  ASSERT_EQ(std::fseek(last, 0, SEEK_SET), 0);   // still open: it reads again
  catalogue.leeFichero(last);
  catalogue.groups.emplace_back("Vacio");
  ASSERT_EQ(describe(catalogue.groups), (Lines{"Eje:PK|Cota\n", "Muro:Alto|Alto|Ancho\n", "Eje:Radio|PK|Cota\n",
                                               "A\xD1O:Mes\n", "A\xD1O:Mes\n", "Vacio:"}));
  for (int index : {-1, 6}) EXPECT_EQ(catalogue.getGrupo(index), nullptr) << index;
  const CZepGrupo& muro = *catalogue.getGrupo(1);
  EXPECT_EQ(muro.getNumVariables(), 3);
  EXPECT_EQ(muro.getVariable(2), &muro.variables[2]);
  for (int index : {-1, 3}) EXPECT_EQ(muro.getVariable(index), nullptr) << index;
  EXPECT_EQ(CZepVariable(std::string(600, 'v')).name, std::string(511, 'v'));
  EXPECT_EQ(CZepGrupo(std::string(512, 'g')).name, std::string(511, 'g'));
  CZepGrupo copy("Losa");
  copy.variables.resize(5);
  copy = muro;
  CZepGrupo& same = copy;
  copy = same;  // assigning a group to itself keeps its variables
  EXPECT_EQ(describe({copy}), (Lines{"Muro:Alto|Alto|Ancho\n"}));
  const std::tuple<const char*, const char*, CatalogueIndex> rows[] = {
      {"EJE", "pk", {2, 1}}, {"muro", "ALTO", {1, 1}}, {"Eje", "Cota", {2, 0}}, {"Eje", "Cota\n", {2, 2}},
      {"Losa", "PK", {0, 0}}, {"Muro", "Largo", {1, 0}}, {"a\xF1o", "Mes\n", {0, 0}}, {"a\xD1o", "MES\n", {4, 0}},
      {"vacio", "PK", {5, 0}}, {"Mur", "Alto", {0, 0}},
  };
  for (const auto& [group, variable, found] : rows)
    EXPECT_EQ(resolveReference(catalogue, {group, variable}), found) << group << "." << variable;
  EXPECT_EQ(catalogue.getGrupo(5)->getVariable(0), nullptr);
}

// A file that does not open (HostTextFile decides which) gives no table, so each lookup tries again.
// A table with rows is freed and the next lookup reloads it; an explicit load replaces it unless the
// file does not open; a table without rows stays, and its file is not read again. A lookup walks the
// rows until it passes its key, so a row out of order hides the rows after it.
TEST_F(HostFiles, MessageTableLoadsOnDemandIsSearchedInOrderAndDecodedForTheEditors) {
  EXPECT_EQ(lookup({{3, 4}}), "-|0 rows, no table");
  write("3,10,\"Descripci\xF3n\"\r\n4,5,\"Unidad \xBA" "C \x80\"\r\n");  // the host puts it in place later
  EXPECT_EQ(textoMensaje(3, 10) + u"|" + textoMensaje(4, 5) + u"|" + textoMensaje(4, 6), u"Descripción|Unidad ºC €|");
  // The file's new bytes (null: as it was), then the call, the keys looked up and what they find.
  const char kRemoved[] = "removed";
  const std::tuple<const char*, void (*)(), std::vector<std::pair<int32_t, int32_t>>, std::string> steps[] = {
      {nullptr, liberaMensajes, {}, "0 rows, no table"},
      {"3,5,\"OK\"\n", nullptr, {{3, 5}, {3, 10}}, "OK|-|1 rows"},
      {"3,6,\"Otro\"\n", cargaMensajes, {{3, 5}, {3, 6}}, "-|Otro|1 rows"},
      {kRemoved, cargaMensajes, {{3, 6}}, "Otro|1 rows"},
      {"3,3,\"Ins\"\n3,4,\"B\"\n3,9,\"Ed\"\n", cargaMensajes, {{3, 4}, {3, 3}, {3, 9}, {3, 5}, {2, 1}, {3, 10}, {4, 1}},
       "B|Ins|Ed|-|-|-|-|3 rows"},
      {"3,9,\"Ed\"\n3,4,\"Borrar\"\n2,1,\"Antes\"\n", cargaMensajes, {{3, 9}, {3, 4}, {2, 1}}, "Ed|-|-|3 rows"},
      {"", descargaMensajes, {{3, 4}}, "-|0 rows"},
      {"3,4,\"Borrar\"\n", liberaMensajes, {{3, 4}}, "-|0 rows"},
  };
  for (const auto& [bytes, call, keys, found] : steps) {
    if (bytes == kRemoved) std::remove(messageFile.c_str());
    else if (bytes != nullptr) write(bytes);
    if (call != nullptr) call();
    EXPECT_EQ(lookup(keys), found) << (bytes != nullptr ? bytes : "kept");
  }
  const std::string longPath = "/" + std::string(700, 'p');
  setRutaMensajes(longPath.c_str());
  EXPECT_EQ(rutaMensajes, longPath.substr(0, 511));
  setRutaMensajes(nullptr);
  EXPECT_STREQ(rutaMensajes, "");
}
