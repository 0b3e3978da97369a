// Load, save, load again: any file that loads as a property-set or quantity-set document saves to a
// file that loads, without losing a set, property, relation or quantity, and one save settles it:
// saving what was loaded from a saved file changes nothing (but for the "%%" of references).
#include <numeric>
#include <type_traits>

#include "fuzz/document_checks.h"
#include "model/property_records.h"
#include "model/quantity_records.h"

using namespace orvane::fuzz;

namespace {

// The records as they would be saved; sorted lists in an order of their own, as sets whose names
// differ only in case have no defined order between them.
template <class Records, class Write>
std::string printed(const Records& records, Write write, bool keepOrder) {
  std::vector<std::string> texts;
  for (const auto& record : records) {
    tinyxml2::XMLPrinter out;
    write(out, record);
    texts.emplace_back(out.CStr());
  }
  if (!keepOrder) std::sort(texts.begin(), texts.end());
  return std::accumulate(texts.begin(), texts.end(), std::string());
}

// Integer and Real values that refer to host variables are printed as formats, "%%" as "%", so a run
// of "%" halves at every save, as it always has: here a run counts as one "%".
std::string contents(CIfcProyectPSet doc) {
  for (CIfcPropertySet& set : doc.propertySets)
    for (CIfcPropertyName& property : set.properties) {
      if (property.valueType != PropertyInteger && property.valueType != PropertyReal) continue;
      std::string text = property.textValue;
      text.erase(std::unique(text.begin(), text.end(), [](char a, char b) { return a == '%' && b == '%'; }), text.end());
      orvane::copyText(property.textValue, text);
    }
  return printed(doc.enums, orvane::xml::writeEnum, false) +
         printed(doc.propertySets, orvane::xml::writePropertySet, false) +
         printed(doc.relations, orvane::xml::writeRelation, true);
}

std::string contents(const CIfcProyectQSet& doc) {
  return printed(doc.types, orvane::xml::writeType, true) + printed(doc.objects, orvane::xml::writeObject, true) +
         printed(doc.quantitySets, orvane::xml::writeQuantitySet, false);
}

template <class Document>
std::size_t memberCount(const Document& doc) {
  std::size_t count = setsOf(doc).size();
  for (const auto& set : setsOf(doc)) count += membersOf(set).size();
  if constexpr (std::is_same_v<Document, CIfcProyectPSet>) count += doc.relations.size();
  return count;
}

// An empty literal or type name is written as an element without text, which does not read back,
// so enumerated types and the type and object lists may shrink on the first save.
template <class Document>
void roundTrip(const std::string& input) {
  Document docs[3];
  if (docs[0].lee(input.c_str()) != 1) return;
  const std::string saved = scratchPath("saved.xml");
  for (int i = 1; i < 3; ++i) {
    check(docs[i - 1].graba(saved.c_str()) == 1, "graba gives 1");
    check(docs[i].lee(saved.c_str()) == 1, "a saved document loads");
    checkDocument(docs[i], true);
  }
  check(memberCount(docs[1]) == memberCount(docs[0]), "a save keeps every set, property, relation and quantity");
  check(contents(docs[2]) == contents(docs[1]), "saving a document loaded from a saved file changes nothing");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input = writeScratchFile("input.xml", {reinterpret_cast<const char*>(data), size});
  roundTrip<CIfcProyectPSet>(input);
  roundTrip<CIfcProyectQSet>(input);
  return 0;
}
