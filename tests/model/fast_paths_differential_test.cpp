// The exchange functions read and merge straight from the XML tree; the plain path reads the whole
// document into records, merges those and saves documents. Over every document at hand (samples,
// fuzz corpora, generated ones with ties, duplicates, failing
// entries, over-long and multi-byte texts, carriage returns), both must leave the same result,
// records, files, backups and messages, byte for byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <tuple>
#include <vector>

#include "api/name_index.h"
#include "api/record_conversion.h"
#include "fuzz/document_checks.h"
#include "fuzz/merge_input.h"
#include "model/document_outline.h"
#include "model/file_system.h"
#include "model/text.h"
#include "orvane/orvane.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using orvane::fieldText;
using orvane::test::readBytes;

constexpr int kMaxRecords = 600;

template <class Document, class Record>
int plainGet(const char* path, Record* records, int maxRecords) {
  Document doc;
  doc.lee(path);
  int filled = 0;
  for (const auto& set : orvane::fuzz::setsOf(doc))
    for (const auto& member : orvane::fuzz::membersOf(set)) {
      if (filled >= maxRecords) return filled;
      orvane::api::fillRecord(records[filled++], fieldText(set.name), member);
    }
  return filled;
}

// Both merges put every record's set into both lists first, then each record into both.
template <class Set, class Member, std::vector<Member> Set::*Members, class Record, class Put>
void mergePlainly(std::vector<Set>& named, std::vector<Set>& sets, const Record* records, int count, Put put) {
  orvane::api::IndexedSets<Set, Member, Members> inNamed(named), inDoc(sets);
  std::vector<std::pair<std::size_t, std::size_t>> positions;
  for (int i = 0; i < count; ++i)
    positions.emplace_back(inNamed.findOrAppend(fieldText(records[i].setName)),
                           inDoc.findOrAppend(fieldText(records[i].setName)));
  for (int i = 0; i < count; ++i) {
    put(inNamed, positions[static_cast<std::size_t>(i)].first, records[i]);
    put(inDoc, positions[static_cast<std::size_t>(i)].second, records[i]);
  }
}

int plainSetProperties(const char* path, const char* partialPath, const FlatPropertyRecord* records, int count,
                       int saveDocument) {
  CIfcProyectPSet doc;
  doc.lee(path);
  CIfcProyectPSet partial;
  mergePlainly<CIfcPropertySet, CIfcPropertyName, &CIfcPropertySet::properties>(
      partial.propertySets, doc.propertySets, records, count,
      [](auto& sets, std::size_t set, const FlatPropertyRecord& record) {
        CIfcPropertyName property;
        orvane::api::propertyFrom(record, property);
        if (CIfcPropertyName* existing = sets.findMember(set, fieldText(property.name)))
          orvane::api::update(*existing, record);
        else
          sets.appendMember(set, property);
      });
  if (!partial.propertySets.empty()) {
    partial.enums = doc.enums;
    partial.graba(partialPath);
  }
  if (saveDocument != 0) doc.graba(path);
  return 1;
}

int plainSetQuantities(const char* path, const char* pathOut, const FlatQuantityRecord* records, int count) {
  CIfcProyectQSet doc;
  doc.lee(path);
  CIfcProyectQSet out;
  mergePlainly<CIfcQuantitySet, CIfcQuantityName, &CIfcQuantitySet::quantities>(
      out.quantitySets, doc.quantitySets, records, count,
      [](auto& sets, std::size_t set, const FlatQuantityRecord& record) {
        CIfcQuantityName quantity;
        orvane::api::quantityFrom(record, quantity);
        if (sets.findMember(set, fieldText(quantity.name)) == nullptr) sets.appendMember(set, quantity);
      });
  if (!out.quantitySets.empty()) out.graba(pathOut);
  doc.graba(path);
  out.graba(pathOut);
  return 1;
}

// What a call left: its result, the host's record array, every file of its folder, its messages.
using Outcome = std::tuple<int, std::string, std::map<std::string, std::string>, std::vector<std::string>>;

// Runs `call(path, otherPath, records)` in a fresh folder holding `document` (when there is one) and
// an older second file, with `records` as the host's array.
template <class Call>
Outcome run(const std::string* document, std::string records, Call call) {
  orvane::test::TempDir dir(orvane::test::TempDir::Place::kMemory);
  if (document != nullptr) dir.write("doc.xml", *document);
  dir.write("other.xml", "older");
  orvane::test::MessageRecorder recorder;
  const int result = call(dir.file("doc.xml").c_str(), dir.file("other.xml").c_str(), records.data());
  std::map<std::string, std::string> files;
  for (const std::string& name : dir.names()) files[name] = readBytes(dir.path() / name);
  return {result, std::move(records), files, recorder.messages()};
}

// Records for a merge: what the document gives, some sets in other letter cases, repeats, new sets
// and properties, names without terminators.
template <class Record>
std::vector<Record> mergeRecords(const std::string& got, int filled, unsigned seed) {
  std::vector<Record> records(static_cast<std::size_t>(std::min(filled, 40)));
  if (!records.empty()) std::memcpy(records.data(), got.data(), records.size() * sizeof(Record));
  std::mt19937 random(seed);
  for (Record& record : records) {
    if (random() % 4 == 0) record.setName[0] = char(std::toupper(static_cast<unsigned char>(record.setName[0])));
    if (random() % 5 == 0) record = records[random() % records.size()];
  }
  for (int extra = 0; extra < 6; ++extra) {
    Record& record = records.emplace_back();
    std::memset(&record, extra == 5 ? 'x' : 0, sizeof record);  // the last one has no terminators at all
    std::snprintf(record.setName, sizeof record.setName, "%s", extra < 3 ? "Nuevo" : extra == 3 ? "NUEVO" : "nuevo 4");
    if constexpr (std::is_same_v<Record, FlatPropertyRecord>) {
      record.valueType = extra % 6;
      std::snprintf(record.propertyName, sizeof record.propertyName, "p%d", extra % 2);
      std::snprintf(record.valueText, sizeof record.valueText, extra == 2 ? "Muro.Alto$" : "%d.5", extra);
      std::snprintf(record.enumName, sizeof record.enumName, "Lista");
      record.unit = extra;
    } else {
      std::snprintf(record.quantityName, sizeof record.quantityName, "q%d", extra % 2);
      record.measureType = extra % 4;
      record.value = extra * 1.25;
    }
    if (extra == 5) std::memset(record.setName, 'x', sizeof record.setName);
  }
  return records;
}

// Compares the exported reader with the plain one, then each variant of the merge, called through
// `merge(function, variant, path, otherPath, records, count)`, on the records given or some made
// from what the reader gave.
template <class Document, class Record, class FastSet, class PlainSet, class Merge>
void compare(const std::string* document, unsigned seed, const std::vector<Record>* given,
             int (*fastGet)(const char*, Record*, int), FastSet fastSet, PlainSet plainSet, Merge merge) {
  const auto get = [&](auto function) {
    return run(document, std::string(kMaxRecords * sizeof(Record), '\xA5'),  // bytes the library must leave alone
               [&](const char* p, const char*, char* r) {
                 return function(p, reinterpret_cast<Record*>(r), kMaxRecords);
               });
  };
  const Outcome fast = get(fastGet);
  ASSERT_TRUE(fast == get(plainGet<Document, Record>)) << "reading";
  const std::vector<Record> records =
      given != nullptr ? *given : mergeRecords<Record>(std::get<1>(fast), std::get<0>(fast), seed);
  for (int variant : {0, 1}) {
    const auto merged = [&](auto function) {
      const std::string bytes(reinterpret_cast<const char*>(records.data()), records.size() * sizeof(Record));
      return run(document, bytes, [&](const char* p, const char* other, char* r) {
        return merge(function, variant, p, other, reinterpret_cast<const Record*>(r), int(records.size()));
      });
    };
    ASSERT_TRUE(merged(fastSet) == merged(plainSet)) << "merging, variant " << variant;
  }
}

// Saving the document or not (and then with no records).
void compareProperties(const std::string* document, unsigned seed, const std::vector<FlatPropertyRecord>* given) {
  compare<CIfcProyectPSet>(document, seed, given, getPropiedadesFichero, setPropiedadesFichero, plainSetProperties,
                           [](auto set, int save, const char* p, const char* partial, auto* r, int n) {
                             return set(p, partial, r, save * n, save);
                           });
}

// The output file another one, or the document itself.
void compareQuantities(const std::string* document, unsigned seed, const std::vector<FlatQuantityRecord>* given) {
  compare<CIfcProyectQSet>(document, seed, given, getCuantificadoresFichero, setCuantificadoresFichero,
                           plainSetQuantities, [](auto set, int intoItself, const char* p, const char* out, auto* r,
                                                  int n) { return set(p, intoItself ? p : out, r, n); });
}

std::string text(std::mt19937& random, std::size_t length) {
  static const char* const pieces[] = {"Muro", "muro", "MURO", "\xC3\xA9", "\xE2\x82\xAC", "\r\n",
                                       "\r",    "<&>",  "\xBA", " ",        "a"};
  std::string out;
  while (out.size() < length) out += pieces[random() % std::size(pieces)];
  return out;
}

// Markup escaped; carriage returns as references in attributes and as they are in texts (where the
// parser reads CR LF as LF).
std::string escaped(const std::string& value, bool inAttribute) {
  std::string out;
  for (char c : value)
    out += c == '<' ? "&lt;" : c == '&' ? "&amp;" : c == '"' ? "&quot;"
         : c == '\r' && inAttribute ? "&#13;" : std::string(1, c);
  return out;
}

std::string attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + escaped(value, true) + "\"";
}

std::string element(const char* name, const std::string& value) {
  return std::string("<") + name + ">" + escaped(value, false) + "</" + name + ">";
}

// Sets with names that tie ignoring case, in shuffled order; repeated properties; a property that
// fails (no Rule) here and there; texts from empty to past the field, cut inside a character; a
// failing set near the end that cuts the list.
std::string propertyDocument(unsigned seed) {
  std::mt19937 random(seed);
  const char* const types[] = {"Integer", "REAL", "string", "Boolean", "DateTime", "Lista", "integer"};
  std::string xml = "<?xml version=\"1.0\"?><PropertySetsBIM><TypesEnum><TypeEnum Name=\"Lista\" Description=\"d\">"
                    "<Elements><Element Value=\"1\">uno</Element></Elements></TypeEnum></TypesEnum><PropertiesSet>";
  const int sets = 20 + static_cast<int>(random() % 40);
  for (int s = 0; s < sets; ++s) {
    const bool failing = s == sets - 2 && seed % 2 == 0;
    xml += "<PropertySet" + attribute("Name", text(random, random() % 3 == 0 ? 515 : random() % 12)) +
           (failing ? "" : attribute("Description", text(random, random() % 600))) + ">";
    for (int p = static_cast<int>(random() % 6); p > 0; --p) {
      xml += "<PropertyName" + attribute("Name", text(random, random() % 2 ? 300 : random() % 6)) +
             attribute("Optional", random() % 2 ? "yes" : "1") + attribute("Unit", random() % 2 ? "M2" : "\xBA" "c");
      if (random() % 7 != 0) xml += attribute("Rule", text(random, random() % 20));
      xml += attribute("Type", types[random() % std::size(types)]) + ">" +
             element("Description", text(random, random() % 520)) +
             element("Value", random() % 3 == 0 ? "$X" : random() % 2 ? "12.34567abc" : text(random, random() % 514)) +
             "</PropertyName>";
    }
    xml += "</PropertySet>";
  }
  return xml + "</PropertiesSet><RelationsIfcElementWithPSet><RelationIfcElementWithPSet PSet=\"a\" Object=\"b\"/>"
               "<RelationIfcElementWithPSet PSet=\"a\"/></RelationsIfcElementWithPSet></PropertySetsBIM>";
}

std::string quantityDocument(unsigned seed) {
  std::mt19937 random(seed);
  const char* const kinds[] = {"IfcAreaMeasure", "ifcvolumemeasure", "IfcMassMeasure"};
  std::string xml = "<QuantitiesSetQuorsel><TypesQuorsel><TypeQuorsel>IfcLengthMeasure</TypeQuorsel></TypesQuorsel>"
                    "<ObjectsQuorsel><ObjectQuorsel>Muro</ObjectQuorsel></ObjectsQuorsel><QuantitiesSet>";
  const int sets = 20 + static_cast<int>(random() % 40);
  for (int s = 0; s < sets; ++s) {
    xml += "<QuantitySet" + attribute("Name", text(random, random() % 3 == 0 ? 515 : random() % 12)) +
           attribute("Description", text(random, random() % 30)) +
           (s == sets - 2 && seed % 2 == 0 ? "" : attribute("typeZep", text(random, 520))) + ">";
    for (int q = static_cast<int>(random() % 6); q > 0; --q) {
      xml += "<QuantityName" + attribute("Name", text(random, random() % 4)) +
             attribute("TypeQuorsel", kinds[random() % 3]);
      if (random() % 7 != 0) xml += attribute("Export", random() % 2 ? "YES" : "no");
      xml += ">" + element("Description", text(random, random() % 515)) + element("Value", "12,5") + "</QuantityName>";
    }
    xml += "</QuantitySet>";
  }
  return xml + "</QuantitiesSet></QuantitiesSetQuorsel>";
}

// The files of the project's `folders` ending in `extension`, sorted.
std::vector<fs::path> filesIn(const std::vector<const char*>& folders, const char* extension) {
  std::vector<fs::path> files;
  for (const char* folder : folders)
    for (const auto& entry : fs::directory_iterator(fs::path(ORVANE_TEST_DATA) / ".." / ".." / folder))
      if (entry.path().extension() == extension) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

// The merge corpora hold host records of any bytes with the document they go into.
template <class Record, class Compare>
void compareMergeCorpus(const char* folder, Compare compareDocument) {
  for (const fs::path& file : filesIn({folder}, ".bin")) {
    SCOPED_TRACE(file.string());
    const std::string bytes = readBytes(file);
    const auto input =
        orvane::fuzz::splitMergeInput<Record>(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    const std::string document(input.document);
    compareDocument(&document, 0, &input.records);
  }
}

// Only the bytes written count here, not how a disk keeps them: saves skip their syncs, and the
// folders are made in memory where the system allows.
const bool kSyncsSkipped = [] {
  orvane::FileSystem quick = orvane::posixFileSystem();
  quick.fsync = [](int) { return 0; };
  orvane::setFileSystem(quick);
  return true;
}();

TEST(DifferentialTest, GeneratedSampleAndCorpusDocuments) {
  compareProperties(nullptr, 0, nullptr);  // no file at all
  compareQuantities(nullptr, 0, nullptr);
  for (unsigned seed = 1; seed <= 24; ++seed) {
    SCOPED_TRACE(seed);
    const std::string properties = propertyDocument(seed), quantities = quantityDocument(seed);
    compareProperties(&properties, seed, nullptr);
    compareQuantities(&quantities, seed, nullptr);
  }
  const std::vector<fs::path> files = filesIn(
      {"samples", "samples/ifc4", "fuzz/corpus/pset_reader", "fuzz/corpus/qset_reader", "fuzz/corpus/round_trip"}, ".xml");
  ASSERT_GT(files.size(), 40u);
  for (std::size_t i = 0; i < files.size(); ++i) {
    SCOPED_TRACE(files[i].string());
    const std::string document = readBytes(files[i]);
    compareProperties(&document, unsigned(i + 1), nullptr);
    compareQuantities(&document, unsigned(i + 1), nullptr);
  }
  compareMergeCorpus<FlatPropertyRecord>("fuzz/corpus/property_merge", compareProperties);
  compareMergeCorpus<FlatQuantityRecord>("fuzz/corpus/quantity_merge", compareQuantities);
}

// A save prints in 64 KB chunks; the file must be what one whole print gives, with every carriage
// return of a text as "&#13;" (also where it falls at a chunk's end) and CR LF line ends.
TEST(DifferentialTest, ChunkedSaveMatchesOneWholePrint) {
  CIfcProyectPSet doc;
  std::mt19937 random(7);
  for (int s = 0; s < 300; ++s) {
    CIfcPropertySet& set = doc.propertySets.emplace_back();
    orvane::copyText(set.name, text(random, 40));
    for (int p = 0; p < 4; ++p) {
      CIfcPropertyName& property = set.properties.emplace_back();
      orvane::copyText(property.name, text(random, static_cast<std::size_t>(random() % 300)));
      orvane::copyText(property.description, text(random, static_cast<std::size_t>(random() % 511)));
    }
  }
  tinyxml2::XMLPrinter whole;
  orvane::xml::printPropertyDocument(
      whole, doc.enums, [&] { for (const auto& set : doc.propertySets) orvane::xml::writePropertySet(whole, set); },
      [] {});
  std::string expected;
  for (const char* c = whole.CStr(); *c != '\0'; ++c)
    expected += *c == '\r' ? "&#13;" : *c == '\n' ? "\r\n" : std::string(1, *c);
  ASSERT_GT(expected.size(), 4u * 65536u);
  orvane::test::TempDir dir(orvane::test::TempDir::Place::kMemory);
  doc.graba(dir.file("doc.xml").c_str());
  EXPECT_TRUE(readBytes(dir.file("doc.xml")) == expected);
}

}  // namespace
