// The exported calls and the two document classes through liborvane.so, as hosts use them: one row
// per documented result. Files, saves and backups themselves are the model's tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cstring>
#include <filesystem>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/orvane.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane::test;
namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

namespace {

constexpr unsigned char kHost = 0x5A;  // what the host left in its records, so written bytes show

template <class Record>
std::vector<Record> hostRecords(std::size_t count) {
  std::vector<Record> records(count);
  std::memset(static_cast<void*>(records.data()), kHost, count * sizeof(Record));
  return records;
}

bool untouched(const void* from, std::size_t size) {
  const auto* bytes = static_cast<const unsigned char*>(from);
  return std::all_of(bytes, bytes + size, [](unsigned char b) { return b == kHost; });
}

// Whether `field` holds `text` with its terminator and the host's bytes after it; null: the host's only.
template <std::size_t N>
bool holds(const char (&field)[N], const char* text) {
  if (text == nullptr) return untouched(field, N);
  const std::size_t length = std::strlen(text);
  return std::string(field) == text && length < N && untouched(field + length + 1, N - length - 1);
}

// A host's text at the start of `field`; one that fills the field gets no terminator.
template <std::size_t N>
void put(char (&field)[N], std::string_view text) {
  std::memcpy(field, text.data(), std::min(text.size(), N));
  if (text.size() < N) field[text.size()] = '\0';
}

FlatPropertyRecord prop(int32_t type, std::string_view set, std::string_view name, std::string_view value,
                        int32_t unit = 0, std::string_view enumName = "") {
  FlatPropertyRecord record = hostRecords<FlatPropertyRecord>(1)[0];
  record.valueType = type;
  record.unit = unit;
  put(record.setName, set);
  put(record.propertyName, name);
  put(record.valueText, value);
  put(record.enumName, enumName);
  return record;
}

FlatQuantityRecord qty(int32_t kind, std::string_view set, std::string_view name, double value) {
  FlatQuantityRecord record = hostRecords<FlatQuantityRecord>(1)[0];
  record.measureType = kind;
  put(record.setName, set);
  put(record.quantityName, name);
  record.value = value;
  return record;
}

// The names of a file's types, sets, members and relations in the order the file holds them.
Lines namesIn(const std::string& path) {
  static const std::regex name(" (?:Name|PSet)=\"([^\"]*)\"");
  const std::string text = readBytes(path);
  Lines names;
  for (std::sregex_iterator it(text.begin(), text.end(), name), end; it != end; ++it) names.push_back((*it)[1]);
  return names;
}

// "Muro.Entero 0 12 0 '' enum '' unit 3 optional desc '' rule 'r1'": type, int, real, text, ...
std::string fields(const CIfcPropertySet& set, const CIfcPropertyName& p) {
  std::ostringstream out;
  out << set.name << '.' << p.name << ' ' << p.valueType << ' ' << p.intValue << ' ' << p.realValue << " '"
      << p.textValue << "' enum '" << p.enumName << "' unit " << p.unit << (p.optional ? " optional" : "")
      << " desc '" << p.description << "' rule '" << p.rule << "'";
  return out.str();
}

// A loaded document as lines: "Set 'description'", then one line per member.
Lines propertiesOf(const std::string& path) {
  CIfcProyectPSet doc;
  EXPECT_EQ(doc.lee(path.c_str()), 1) << path;
  Lines lines;
  for (const CIfcPropertySet& set : doc.propertySets) {
    lines.push_back(std::string(set.name) + " '" + set.description + "'");
    for (const CIfcPropertyName& p : set.properties) lines.push_back(fields(set, p));
  }
  return lines;
}

Lines quantitiesOf(const std::string& path) {
  CIfcProyectQSet doc;
  EXPECT_EQ(doc.lee(path.c_str()), 1) << path;
  Lines lines;
  for (const auto& type : doc.types) lines.push_back("type " + std::string(type.name));
  for (const auto& object : doc.objects) lines.push_back("object " + std::string(object.name));
  for (const CIfcQuantitySet& set : doc.quantitySets)
    for (const CIfcQuantityName& q : set.quantities) {
      std::ostringstream line;
      line << set.name << '.' << q.name << ' ' << q.measureType << ' ' << q.value << (q.exported ? " exported" : "")
           << " desc '" << q.description << "'";
      lines.push_back(line.str());
    }
  return lines;
}

// ---- Flat exchange -------------------------------------------------------------------------------

// maxRecords bounds what is read from `several` (a file of two members or more); no room, a missing,
// malformed or memberless file or a null argument gives nothing; a record not written keeps every host byte.
template <class Record>
void expectReadLimits(int (*get)(const char*, Record*, int), const TempDir& dir, const std::string& several,
                      const std::string& none) {
  const std::string empty = dir.write("none.xml", none), broken = dir.write("broken.xml", "<a><b>"),
                    missing = dir.file("missing.xml");
  auto records = hostRecords<Record>(2);
  const struct { const char* path; Record* records; int max, filled; } rows[] = {
      {several.c_str(), records.data(), 0, 0}, {several.c_str(), records.data(), -3, 0}, {several.c_str(), nullptr, 1, 0},
      {nullptr, records.data(), 1, 0},     {missing.c_str(), records.data(), 1, 0},
      {broken.c_str(), records.data(), 1, 0}, {empty.c_str(), records.data(), 1, 0},
      {several.c_str(), records.data(), 1, 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << (row.path ? row.path : "null") << " max " << row.max);
    EXPECT_EQ(get(row.path, row.records, row.max), row.filled);
    EXPECT_TRUE(untouched(&records[row.filled], sizeof(Record)));
  }
}

// Each row is a property of the file and the record it gives, in the order the records come: sets
// sorted ignoring case, properties in the file's order.
TEST(GetPropiedadesFichero, WritesEachValueTypeAsTextAndNothingMore) {
  std::string enye;
  for (int i = 0; i < 150; ++i) enye += "\xC3\xB1";  // 300 bytes: cut at 254, as 255 would split a character
  const std::string cut = enye.substr(0, 254), yes = "Optional=\"Yes\" Unit=\"m\" Rule=\"r\"";
  const struct { std::string set, name, word, value; int32_t type; const char *text, *enumName; int32_t unit;
                 std::string attributes = "Optional=\"No\" Unit=\"m2\" Rule=\"\""; } rows[] = {
      {"a", "Entero", "Integer", "-7", 0, "-7", nullptr, 1, yes},
      {"a", "Real", "Real", "2.5", 1, "2.500", nullptr, 2},
      {"a", "Referencia", "Integer", "Ejes.Ancho$", 0, "0", nullptr, 2},  // its number field
      {"B", "Texto", "String", "Ladrillo", 2, "Ladrillo", nullptr, 2},
      {"B", "Color", "Colores", "Azul", 3, "Azul", "Colores", 2},
      {"B", "Portante", "Boolean", "Yes", 4, nullptr, nullptr, 2},
      {"B", "Fecha", "DateTime", "2026-11-21", 5, nullptr, nullptr, 2},
      {"B", "Enorme", "Real", "1e308", 1, "1e+308", nullptr, 2},  // "%0.3lf" would not fit
      {"B", "Largo", "String", enye, 2, cut.c_str(), nullptr, 2},
      {std::string(300, 'S'), "Nombre", "String", "x", 2, "x", nullptr, 2},
  };
  std::map<std::string, std::string, std::greater<>> members;  // sets in the file: a, SSS, B
  for (const auto& row : rows) members[row.set] += property(row.name, row.word, row.value, row.attributes);
  std::string sets;
  for (const auto& [set, properties] : members) sets += propertySet(set, properties);
  TempDir dir;
  auto records = hostRecords<FlatPropertyRecord>(std::size(rows));
  const std::string path = dir.write("p.xml", psetFile("", sets));
  ASSERT_EQ(getPropiedadesFichero(path.c_str(), records.data(), 99), static_cast<int>(std::size(rows)));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const auto& row = rows[i];
    const FlatPropertyRecord& record = records[i];
    SCOPED_TRACE(row.name);
    EXPECT_EQ(record.valueType, row.type);
    EXPECT_TRUE(holds(record.setName, row.set.substr(0, 255).c_str()));
    EXPECT_TRUE(holds(record.propertyName, row.name.c_str()));
    EXPECT_TRUE(holds(record.valueText, row.text)) << record.valueText;
    EXPECT_TRUE(holds(record.enumName, row.enumName));
    EXPECT_EQ(record.unit, row.unit);
  }
  expectReadLimits(getPropiedadesFichero, dir, path, psetFile("", propertySet("S")));
}

// Texts that fill their fields have no terminator: merges read them to the field's end, no further.
const std::string s256(256, 'S'), n256(256, 'N'), v256(256, 'V');

// Sets C and Muro in this order, a property of every value type, an enumerated type and a relation.
const std::string kMuro = psetFile(
    "<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">Rojo</Element></Elements></TypeEnum>",
    propertySet("C", property("x", "String", "1")) +
        propertySet("Muro", property("Entero", "Integer", "-7", "Optional=\"Yes\" Unit=\"m\" Rule=\"r1\"") +
                                property("Real", "Real", "2.5", "Optional=\"No\" Unit=\"m2\" Rule=\"\"") +
                                property("Referencia", "Integer", "Ejes.Ancho$") + property("Texto", "String", "Ladrillo") +
                                property("Color", "Colores", "Azul", "Optional=\"No\" Unit=\"\" Rule=\"r2\"") +
                                property("Portante", "Boolean", "Yes") + property("Fecha", "DateTime", "2026-11-21")),
    "<RelationIfcElementWithPSet PSet=\"Muro\" Object=\"IfcWall\"/>");

// One merge of every kind of record into a document with sets, an enumerated type and a relation.
TEST(SetPropiedadesFichero, MergesRecordsIntoTheDocumentAndWritesThePartialOne) {
  TempDir dir;
  const std::string path = dir.write("p.xml", kMuro);
  const std::string partial = dir.file("partial.xml");
  const std::vector<FlatPropertyRecord> records = {
      prop(0, "MURO", "ENTERO", "12abc", 3), prop(1, "Muro", "Real", "1.23456"), prop(0, "Muro", "Referencia", "5"),
      prop(2, "Muro", "Texto", "Hormigon"),  prop(3, "Muro", "Color", "Verde", 0, "Otro"),
      prop(4, "Muro", "Portante", "Yes"),    prop(5, "Muro", "Fecha", "2030-01-01"),
      prop(3, "Z", "Color", "Rojo", 0, "Colores"), prop(0, "c", "n", "3"),
      prop(2, "A", "p", "primero"),          prop(2, "a", "P", "segundo"), prop(2, s256, n256, v256, 0, std::string(256, 'E'))};
  ASSERT_EQ(setPropiedadesFichero(path.c_str(), partial.c_str(), records.data(), static_cast<int>(records.size()), 1), 1);

  // Existing properties keep name, rule, optional flag and enumerated type; new sets go last.
  EXPECT_EQ(propertiesOf(path), (Lines{
      "A ''", "A.p 2 0 0 'segundo' enum '' unit 0 desc '' rule ''",
      "C ''", "C.x 2 0 0 '1' enum '' unit 0 desc 'd' rule ''", "C.n 0 3 0 '' enum '' unit 0 desc '' rule ''",
      "Muro ''", "Muro.Entero 0 12 0 '' enum '' unit 3 optional desc '' rule 'r1'",
      "Muro.Real 1 0 1.235 '' enum '' unit 0 desc '' rule ''",
      "Muro.Referencia 0 5 0 '' enum '' unit 0 desc '' rule ''",
      "Muro.Texto 2 0 0 'Hormigon' enum '' unit 0 desc '' rule ''",
      "Muro.Color 3 0 0 'Verde' enum 'Colores' unit 0 desc '' rule 'r2'",
      "Muro.Portante 4 0 0 '' enum '' unit 0 desc '' rule ''", "Muro.Fecha 5 0 0 '' enum '' unit 0 desc '' rule ''",
      s256 + " ''", s256 + '.' + n256 + " 2 0 0 '" + v256 + "' enum '' unit 0 desc '' rule ''", "Z ''", "Z.Color 3 0 0 'Rojo' enum 'Colores' unit 0 desc '' rule ''"}));

  // Only the first of sets and properties whose names differ in case alone is updated.
  const std::string twice = dir.write("twice.xml", psetFile("", propertySet("Muros", property("Alto", "String", "1") +
                                                                                    property("ALTO", "String", "2")) +
                                                               propertySet("MUROS", property("alto", "String", "3"))));
  Lines expected = propertiesOf(twice);  // the order of the two sets after loading is not fixed
  const FlatPropertyRecord record = prop(2, "muros", "alto", "nuevo");
  ASSERT_EQ(setPropiedadesFichero(twice.c_str(), dir.file("partial-twice.xml").c_str(), &record, 1, 1), 1);
  expected[1] = expected[1].substr(0, expected[1].find(' ')) + " 2 0 0 'nuevo' enum '' unit 0 desc '' rule ''";
  EXPECT_EQ(propertiesOf(twice), expected);
}

// A null path or record array with records to merge gives 0 and writes nothing; a null record array
// without records is no error.
TEST(FlatExchange, NullArgumentsWriteNothing) {
  TempDir dir;
  const std::string psets = psetFile("", propertySet("S", property("a", "String", "1"))),
                    qsets = qsetFile("", "", quantitySet("A", quantity("q", "IfcAreaMeasure", "2")));
  const std::string p = dir.write("p.xml", psets), q = dir.write("q.xml", qsets), second = dir.file("second.xml");
  const FlatPropertyRecord aProperty = prop(2, "N", "b", "2");
  const FlatQuantityRecord aQuantity = qty(1, "N", "q", 1.0);
  EXPECT_EQ((std::vector<int>{setPropiedadesFichero(nullptr, second.c_str(), &aProperty, 1, 1),
                              setPropiedadesFichero(p.c_str(), second.c_str(), nullptr, 1, 1),
                              setPropiedadesFichero(p.c_str(), nullptr, &aProperty, 1, 1),
                              setCuantificadoresFichero(nullptr, second.c_str(), &aQuantity, 1),
                              setCuantificadoresFichero(q.c_str(), nullptr, &aQuantity, 1),
                              setCuantificadoresFichero(q.c_str(), second.c_str(), nullptr, 1)}),
            std::vector<int>(6));
  EXPECT_EQ(dir.names(), (std::set<std::string>{"p.xml", "q.xml"}));
  EXPECT_EQ(readBytes(p) + readBytes(q), psets + qsets);
  EXPECT_EQ(setPropiedadesFichero(p.c_str(), second.c_str(), nullptr, -1, 1), 1);
  EXPECT_FALSE(fs::exists(second));
}

// Rows in the order the records come. The host's padding and the bytes after each name stay its own.
TEST(GetCuantificadoresFichero, GivesEveryQuantityInSortedSetOrder) {
  const struct { std::string set, name, kind, value; int32_t measure; double number; } rows[] = {
      {"A", "a1", "IfcVolumeMeasure", "3", 2, 3.0}, {"A", "a2", "IfcAreaMeasure", "4.25", 1, 4.25},
      {"b", "b1", "IfcLengthMeasure", "1", 0, 1.0}, {std::string(400, 'S'), std::string(300, 'Q'), "IfcAreaMeasure", "1.5", 1, 1.5}};
  std::map<std::string, std::string, std::greater<>> members;  // sets in the file: b, SSS, A
  for (std::size_t i = 0; i < std::size(rows); ++i)
    members[rows[i].set] += quantity(rows[i].name, rows[i].kind, rows[i].value, i == 1 ? "No" : "Yes");  // exported or not
  std::string sets;
  for (const auto& [set, quantities] : members) sets += quantitySet(set, quantities);
  TempDir dir;
  auto records = hostRecords<FlatQuantityRecord>(std::size(rows));
  const std::string path = dir.write("q.xml", qsetFile("", "", sets));
  ASSERT_EQ(getCuantificadoresFichero(path.c_str(), records.data(), 9), 4);
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    SCOPED_TRACE(rows[i].name.substr(0, 10));
    EXPECT_TRUE(holds(records[i].setName, rows[i].set.substr(0, 255).c_str()));
    EXPECT_TRUE(holds(records[i].quantityName, rows[i].name.substr(0, 255).c_str()));
    EXPECT_EQ(records[i].measureType, rows[i].measure);
    EXPECT_EQ(records[i].value, rows[i].number);
    EXPECT_TRUE(untouched(records[i].reserved, sizeof records[i].reserved));
  }
  expectReadLimits(getCuantificadoresFichero, dir, path, qsetFile("", "", quantitySet("S", "")));
}

// The merge only adds; the output holds the named sets with the records' quantities only.
TEST(SetCuantificadoresFichero, AddsWhatIsMissingAndWritesTheNamedSetsToTheOutputWhateverTheSetSize) {
  TempDir dir;
  const std::string path = dir.write(
      "q.xml", qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel>", "<ObjectQuorsel>Muro</ObjectQuorsel>",
                        quantitySet("walls", quantity("area", "IfcAreaMeasure", "3.0", "No")) +
                            quantitySet("otro", quantity("o", "IfcAreaMeasure", "1"))));
  const std::string out = dir.write("out.xml", "earlier output");
  const std::vector<FlatQuantityRecord> records = {qty(1, "Walls", "Area", 12.5), qty(2, "Zona", "Volumen", 7.0),
                                                   qty(0, "WALLS", "Largo", 4.0), qty(1, "zona", "VOLUMEN", 9.0),
                                                   qty(1, "Acera", "Superficie", 1.0), qty(2, s256, n256, 5.0)};
  ASSERT_EQ(setCuantificadoresFichero(path.c_str(), out.c_str(), records.data(), static_cast<int>(records.size())), 1);
  EXPECT_EQ(quantitiesOf(path), (Lines{"type IfcLengthMeasure", "object Muro", "Acera.Superficie 1 1 exported desc ''",
                                       "otro.o 1 1 exported desc 'd'", s256 + '.' + n256 + " 2 5 exported desc ''", "walls.area 1 3 desc 'd'",
                                       "walls.Largo 0 4 exported desc ''", "Zona.Volumen 2 7 exported desc ''"}));
  EXPECT_EQ(namesIn(out), (Lines{"Walls", "Area", "Largo", "Zona", "Volumen", "Acera", "Superficie", s256, n256}));

  // Large sets are searched through an index, small ones in order: either way the first member of a
  // name (ignoring case) is the one found, before and after a set grows past the index's threshold.
  std::string big;
  Lines inDocument{"big"}, inOutput{"BIG", "Q35", "extra", "nuevo"};
  std::vector<FlatQuantityRecord> more{qty(1, "BIG", "Q35", 99), qty(1, "big", "extra", 1), qty(1, "Big", "EXTRA", 2)};
  for (int i = 0; i < 40; ++i) {
    big += quantity("q" + std::to_string(i), "IfcAreaMeasure", "1");
    inDocument.push_back("q" + std::to_string(i));
    more.push_back(qty(2, "nuevo", "n" + std::to_string(i), i));
    inOutput.push_back("n" + std::to_string(i));
  }
  for (const char* again : {"N39", "n31", "N32", "n0"}) more.push_back(qty(2, "nuevo", again, -1));
  inDocument.insert(inDocument.end(), inOutput.begin() + 2, inOutput.end());  // "extra", then the set "nuevo"
  const std::string bigPath = dir.write("big.xml", qsetFile("", "", quantitySet("big", big))), bigOut = dir.file("big-out.xml");
  ASSERT_EQ(setCuantificadoresFichero(bigPath.c_str(), bigOut.c_str(), more.data(), static_cast<int>(more.size())), 1);
  EXPECT_EQ(namesIn(bigPath), inDocument);
  EXPECT_EQ(namesIn(bigOut), inOutput);
}

// Literals of a type found ignoring case, each cut at 511 bytes, at most maxValues, up to a null buffer.
TEST(GetEnumerados, CopiesTheTypesLiteralsAndNothingMore) {
  TempDir dir;
  const std::string path = dir.write(
      "p.xml", psetFile("<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">Rojo</Element>"
                        "<Element Value=\"2\">Azul</Element><Element Value=\"3\">Verde</Element></Elements></TypeEnum>"
                        "<TypeEnum Name=\"Largo\" Description=\"\"><Elements><Element Value=\"1\">" +
                            std::string(700, 'L') + "</Element></Elements></TypeEnum>",
                        ""));
  const std::string cut(511, 'L');
  const struct { const char *path, *type; bool buffers; int max, nullAt, copied; Lines literals; } rows[] = {
      {path.c_str(), "COLORES", true, 4, -1, 3, {"Rojo", "Azul", "Verde"}}, {path.c_str(), "colores", true, 2, -1, 2, {"Rojo", "Azul"}},
      {path.c_str(), "Colores", true, 4, 1, 1, {"Rojo"}},                   {path.c_str(), "Largo", true, 1, -1, 1, {cut}},
      {path.c_str(), "colores", true, 0, -1, 0, {}},  {path.c_str(), "colores", true, -1, -1, 0, {}},
      {path.c_str(), "Tamanos", true, 4, -1, 0, {}},  {nullptr, "Colores", true, 4, -1, 0, {}},
      {path.c_str(), nullptr, true, 4, -1, 0, {}},    {path.c_str(), "Colores", false, 4, -1, 0, {}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << (row.type ? row.type : "null") << " max " << row.max);
    char buffers[4][600];
    char* pointers[4] = {buffers[0], buffers[1], buffers[2], buffers[3]};
    std::memset(buffers, kHost, sizeof buffers);
    if (row.nullAt >= 0) pointers[row.nullAt] = nullptr;
    // The texts are read only: a write into them would fault.
    EXPECT_EQ(getEnumerados(const_cast<char*>(row.path), const_cast<char*>(row.type), row.buffers ? pointers : nullptr,
                            row.max),
              row.copied);
    for (std::size_t i = 0; i < 4; ++i)
      EXPECT_TRUE(holds(buffers[i], i < row.literals.size() ? row.literals[i].c_str() : nullptr)) << i;
  }
}

// ---- The document handle ------------------------------------------------------------------------

std::string orNull(const char* text) { return text != nullptr ? text : "(null)"; }

// Numbers from Integer and Real properties only, texts from String and Enumerated ones; an index
// outside its list gives the failure results. New sets go last and take the new properties; a
// search by name, ignoring case, stays in the first set that matches.
TEST(HandleDocument, EachCallByTypeIndexAndName) {
  TempDir dir;
  void* doc = cargaIfcProyectPSet(dir.write("p.xml", kMuro).c_str());
  ASSERT_NE(doc, nullptr);
  const struct { int set, property; const char* name; int unit; double number; const char* text; } rows[] = {
      {1, 0, "Entero", 1, -7.0, "(null)"},         {1, 1, "Real", 2, 2.5, "(null)"},
      {1, 2, "Referencia", 0, 0.0, "(null)"},      {1, 3, "Texto", 0, DBL_MAX, "Ladrillo"},
      {1, 4, "Color", 0, DBL_MAX, "Azul"},         {1, 5, "Portante", 0, DBL_MAX, "(null)"},
      {1, 7, "(null)", 0, DBL_MAX, "(null)"},      {1, -1, "(null)", 0, DBL_MAX, "(null)"},
      {2, 0, "(null)", 0, DBL_MAX, "(null)"},      {-1, 0, "(null)", 0, DBL_MAX, "(null)"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "set " << row.set << ", property " << row.property);
    EXPECT_EQ(orNull(getNombrePropiedad(doc, row.set, row.property)), row.name);
    EXPECT_EQ(getUnidadPropiedad(doc, row.set, row.property), row.unit);
    EXPECT_EQ(getValorPropiedadDoble(doc, row.set, row.property), row.number);
    EXPECT_EQ(orNull(getValorPropiedadStr(doc, row.set, row.property)), row.text);
  }
  ASSERT_NE(nuevoPSet(doc, "c"), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc, "X", "otro"), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc, "solo", "aqui"), nullptr);
  for (const auto& [set, name] : {std::pair{0, "C"}, {1, "Muro"}, {2, "c"}, {3, "(null)"}, {-1, "(null)"}})
    EXPECT_EQ(orNull(getPset(doc, set)), name);
  EXPECT_STREQ(getNombrePropiedad(doc, 2, 1), "solo");
  const struct { const char *set, *property, *text; } named[] = {
      {"MURO", "texto", "Ladrillo"}, {"c", "x", "1"},         {"C", "solo", "(null)"}, {"Muro", "Portante", "(null)"},
      {"Muros", "Texto", "(null)"},  {"Muro", "Nada", "(null)"}, {nullptr, "Texto", "(null)"}, {"Muro", nullptr, "(null)"}};
  for (const auto& row : named)
    EXPECT_EQ(orNull(getValorPropiedadStr2(doc, row.set, row.property)), row.text) << orNull(row.set) << orNull(row.property);
  liberaIfcProyectPset(doc);
}

// New records are filled as the host expects and cut to 511 bytes; null arguments, missing sets and
// files that do not load give the failure results, and a document without a set takes no property.
TEST(HandleDocument, NewRecordsAndFailureResults) {
  TempDir dir;
  liberaIfcProyectPset(nullptr);
  void* doc = nuevoIfcProyectPSet();
  using Nulls = std::vector<const void*>;
  EXPECT_EQ((Nulls{nuevaPropiedadEntera(doc, "a", 1), nuevaPropiedadDoble(doc, "b", 1.0), nuevaPropiedadStr(doc, "c", "x"),
                   nuevoPSet(doc, nullptr), getPset(doc, 0)}),
            Nulls(5));
  const auto* set = static_cast<CIfcPropertySet*>(nuevoPSet(doc, "Muros"));
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(std::string(set->name) + " '" + set->description + "'", "Muros ''");
  const Nulls nulls = {
      cargaIfcProyectPSet(nullptr), cargaIfcProyectPSet(dir.file("missing.xml").c_str()),
      cargaIfcProyectPSet(dir.write("broken.xml", "<PropertySetsBIM><PropertiesSet>").c_str()),
      cargaIfcProyectPSet(dir.write("other.xml", "<?xml version=\"1.0\"?><QuantitiesSetQuorsel/>").c_str()),
      nuevoPSet(nullptr, "S"), nuevaPropiedadEntera(nullptr, "a", 1), nuevaPropiedadDoble(nullptr, "a", 1.0),
      nuevaPropiedadStr(nullptr, "a", "x"), getPset(nullptr, 0), getNombrePropiedad(nullptr, 0, 0),
      getValorPropiedadStr(nullptr, 0, 0), getValorPropiedadStr2(nullptr, "Muros", "a"), nuevaPropiedadStr(doc, "a", nullptr),
      nuevaPropiedadStr(doc, nullptr, "x"), nuevaPropiedadDoble(doc, nullptr, 1.0), getNombrePropiedad(doc, 0, 0)};
  EXPECT_EQ(nulls, Nulls(nulls.size()));
  EXPECT_EQ((std::vector<double>{double(getUnidadPropiedad(nullptr, 0, 0)), getValorPropiedadDoble(nullptr, 0, 0),
                                 double(guardaIfcProyectPset(nullptr, dir.file("never.xml").c_str())),
                                 double(guardaIfcProyectPset(doc, nullptr))}),
            (std::vector<double>{0, DBL_MAX, 0, 0}));
  EXPECT_EQ(dir.names().count("never.xml"), 0u);
  // Each record is checked before the next call, which may move it.
  const auto expectFields = [&](void* property, const char* expected) {
    ASSERT_NE(property, nullptr);
    EXPECT_EQ(fields(*set, *static_cast<const CIfcPropertyName*>(property)), expected);
  };
  expectFields(nuevaPropiedadEntera(doc, "Plantas", -7), "Muros.Plantas 0 -7 0 '' enum '' unit 0 desc '' rule ''");
  expectFields(nuevaPropiedadDoble(doc, "Altura", 2.75), "Muros.Altura 1 0 2.75 '' enum '' unit 0 desc '' rule ''");
  expectFields(nuevaPropiedadStr(doc, "Acabado", "Liso"), "Muros.Acabado 2 0 0 'Liso' enum '' unit 0 desc '' rule ''");
  ASSERT_NE(nuevoPSet(doc, std::string(600, 'S').c_str()), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc, std::string(600, 'P').c_str(), std::string(600, 'V').c_str()), nullptr);
  EXPECT_EQ(orNull(getPset(doc, 1)) + orNull(getNombrePropiedad(doc, 1, 0)) + orNull(getValorPropiedadStr(doc, 1, 0)),
            std::string(511, 'S') + std::string(511, 'P') + std::string(511, 'V'));
  liberaIfcProyectPset(doc);
}

}  // namespace
