// What the fuzz targets share: a scratch folder, checks that abort the run when an invariant breaks
// (libFuzzer and the corpus replay both catch that), the invariants every loaded document keeps,
// whatever file it came from, and how the merge targets split their input.
#ifndef ORVANE_FUZZ_DOCUMENT_CHECKS_H
#define ORVANE_FUZZ_DOCUMENT_CHECKS_H

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "editors/common/line_reader.h"
#include "model/message_sink.h"
#include "model/names.h"
#include "model/text.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"
#include "support/temp_dir.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace orvane::fuzz {

inline void check(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "broken invariant: %s\n", what);
  std::abort();
}

// Every text field is terminated within its size.
template <std::size_t... N>
bool terminated(const char (&... fields)[N]) {
  return ((std::memchr(fields, '\0', N) != nullptr) && ...);
}

// In memory where the system allows it: every save flushes its files to disk. The readers report
// damaged records; only crashes and broken invariants matter here, so messages go nowhere.
inline std::string scratchPath(const char* name) {
  static const test::TempDir folder(test::TempDir::Place::kMemory);
  static const MessageSink previous = setMessageSink([](std::string_view) {});
  return folder.file(name);
}

inline std::string writeScratchFile(const char* name, std::string_view bytes) {
  const std::string path = test::writeBytes(scratchPath(name), bytes);
  check(test::readBytes(path) == bytes, "the input could not be written to the scratch folder");
  return path;
}

// `loaded`: lee returned 1, so the lists are sorted.
inline void checkDocument(const CIfcProyectPSet& doc, bool loaded) {
  for (const CIfcEnum& type : doc.enums) {
    check(terminated(type.name, type.description), "a type's texts are terminated");
    for (const CIfcNodoEnum& value : type.elements) check(terminated(value.text), "a literal is terminated");
  }
  for (const CIfcPropertySet& set : doc.propertySets) {
    check(terminated(set.name, set.description), "a set's texts are terminated");
    for (const CIfcPropertyName& p : set.properties) {
      check(terminated(p.name, p.description, p.rule, p.textValue, p.enumName), "a property's texts are terminated");
      check(p.valueType >= PropertyInteger && p.valueType <= PropertyDateTime, "a property has one of the six types");
      check(p.unit >= 0 && p.unit < kUnitCount, "a property's unit indexes the unit table");
    }
  }
  for (const auto& relation : doc.relations)
    check(terminated(relation.pset, relation.object), "a relation's texts are terminated");
  check(!loaded || std::is_sorted(doc.enums.begin(), doc.enums.end(), NameLessNoCase{}), "types are sorted");
  check(!loaded || std::is_sorted(doc.propertySets.begin(), doc.propertySets.end(), NameLessNoCase{}),
        "property sets are sorted by name");
}

inline void checkDocument(const CIfcProyectQSet& doc, bool loaded) {
  for (const CIfcQuantitySet& set : doc.quantitySets) {
    check(terminated(set.name, set.description, set.typeZep), "a quantity set's texts are terminated");
    for (const CIfcQuantityName& quantity : set.quantities) {
      check(terminated(quantity.name, quantity.description), "a quantity's texts are terminated");
      check(quantity.measureType >= 0 && quantity.measureType < kQuantityMeasureCount, "a quantity has a kind");
    }
  }
  for (const CIfcType& type : doc.types) check(terminated(type.name), "a type name is terminated");
  for (const CIfcObject& object : doc.objects) check(terminated(object.name), "an object name is terminated");
  check(!loaded || std::is_sorted(doc.quantitySets.begin(), doc.quantitySets.end(), NameLessNoCase{}),
        "quantity sets are sorted by name");
}

// Any input as a document file: lee gives 0 or 1 and leaves a document that keeps the invariants.
template <class Document>
void readAnyFile(const uint8_t* data, size_t size, const char* name) {
  const std::string path = writeScratchFile(name, {reinterpret_cast<const char*>(data), size});
  Document doc;
  const int result = doc.lee(path.c_str());
  check(result == 0 || result == 1, "lee gives 0 or 1");
  checkDocument(doc, result == 1);
}

inline const std::vector<CIfcPropertySet>& setsOf(const CIfcProyectPSet& doc) { return doc.propertySets; }
inline const std::vector<CIfcQuantitySet>& setsOf(const CIfcProyectQSet& doc) { return doc.quantitySets; }
inline const std::vector<CIfcPropertyName>& membersOf(const CIfcPropertySet& set) { return set.properties; }
inline const std::vector<CIfcQuantityName>& membersOf(const CIfcQuantitySet& set) { return set.quantities; }
inline std::string_view memberNameOf(const FlatPropertyRecord& record) { return fieldText(record.propertyName); }
inline std::string_view memberNameOf(const FlatQuantityRecord& record) { return fieldText(record.quantityName); }

// The merged file at `path` loads and holds every set, and in it every member, a record names
// (ignoring case).
template <class Document, class Record>
void checkHoldsRecords(const std::string& path, const std::vector<Record>& records) {
  Document doc;
  check(doc.lee(path.c_str()) == 1, "a merged document loads");
  checkDocument(doc, true);
  for (const Record& record : records) {
    const auto& sets = setsOf(doc);
    const auto set = std::find_if(sets.begin(), sets.end(),
                                  [&](const auto& s) { return equalsNoCase(s.name, fieldText(record.setName)); });
    check(set != sets.end(), "every set a record names is in the document");
    check(std::any_of(membersOf(*set).begin(), membersOf(*set).end(),
                      [&](const auto& m) { return equalsNoCase(m.name, memberNameOf(record)); }),
          "every member a record names is in its set");
  }
}

// A merge target's input: one byte of flags, then as many host records as the flags ask for, as raw
// images (texts without terminators, any kind, any number; zeros where the input ends), then the
// bytes of the document file the records are merged into.
template <class Record>
struct MergeInput {
  bool saveDocument = false;    // bit 0 of the flags
  std::vector<Record> records;  // bits 1 to 3: 0 to 7 records
  std::string_view document;
};

template <class Record>
MergeInput<Record> splitMergeInput(const uint8_t* data, size_t size) {
  MergeInput<Record> input;
  if (size == 0) return input;
  input.saveDocument = (*data & 1) != 0;
  input.records.resize((*data >> 1) & 7);  // zeroed
  ++data, --size;
  for (Record& record : input.records) {
    const size_t taken = std::min(size, sizeof record);
    if (taken > 0) std::memcpy(&record, data, taken);
    data += taken, size -= taken;
  }
  input.document = {reinterpret_cast<const char*>(data), size};
  return input;
}

}  // namespace orvane::fuzz

#endif
