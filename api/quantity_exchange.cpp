// Quantities of a quantity-set file to and from the host's arrays of FlatQuantityRecord.
//
// As with properties, only the fields a quantity gives are written (never the padding, nor past a
// name's terminator), and the host's names are read only up to the end of their fields.
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "api/guard.h"
#include "api/name_index.h"
#include "model/text.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"

using orvane::copyText;
using orvane::fieldText;
using orvane::api::guarded;

namespace {

using IndexedQuantitySets = orvane::api::IndexedSets<CIfcQuantitySet, CIfcQuantityName, &CIfcQuantitySet::quantities>;

// The merge only adds: a quantity already in the set keeps its value, kind, description and flag.
void addIfMissing(IndexedQuantitySets& sets, std::size_t set, const CIfcQuantityName& quantity) {
  if (sets.findMember(set, fieldText(quantity.name)) == nullptr) sets.appendMember(set, quantity);
}

}  // namespace

extern "C" {

int getCuantificadoresFichero(const char* path, FlatQuantityRecord* records, int maxRecords) noexcept {
  if (path == nullptr || records == nullptr || maxRecords <= 0) return 0;
  return guarded(0, [&] {
    CIfcProyectQSet doc;
    doc.lee(path);  // a file that doesn't read gives no records
    int filled = 0;
    for (const CIfcQuantitySet& set : doc.quantitySets) {
      for (const CIfcQuantityName& quantity : set.quantities) {
        if (filled >= maxRecords) return filled;
        FlatQuantityRecord& record = records[filled];
        record.measureType = quantity.measureType;
        copyText(record.setName, fieldText(set.name));
        copyText(record.quantityName, fieldText(quantity.name));
        record.value = quantity.value;
        ++filled;
      }
    }
    return filled;
  });
}

int setCuantificadoresFichero(const char* path, const char* pathOut, const FlatQuantityRecord* records,
                              int count) noexcept {
  if (path == nullptr || pathOut == nullptr) return 0;
  if (count > 0 && records == nullptr) return 0;
  return guarded(0, [&] {
    const std::size_t n = count > 0 ? static_cast<std::size_t>(count) : 0;
    CIfcProyectQSet doc;
    doc.lee(path);  // a missing file merges into an empty document
    CIfcProyectQSet out;
    {
      IndexedQuantitySets inOut(out.quantitySets);
      IndexedQuantitySets inDoc(doc.quantitySets);
      // All sets first, so a set's position, taken once per record, holds for the whole merge.
      std::vector<std::pair<std::size_t, std::size_t>> positions;
      positions.reserve(n);
      for (std::size_t i = 0; i < n; ++i) {
        const std::string_view setName = fieldText(records[i].setName);
        positions.emplace_back(inOut.findOrAppend(setName), inDoc.findOrAppend(setName));
      }
      for (std::size_t i = 0; i < n; ++i) {
        CIfcQuantityName quantity;  // empty description, exported
        copyText(quantity.name, fieldText(records[i].quantityName));
        quantity.measureType = records[i].measureType;
        quantity.value = records[i].value;
        addIfMissing(inOut, positions[i].first, quantity);
        addIfMissing(inDoc, positions[i].second, quantity);
      }
    }
    // pathOut is saved both before and after the document, so when records were given its ".bak"
    // ends up holding the new contents too, as hosts expect.
    if (!out.quantitySets.empty()) out.graba(pathOut);
    doc.graba(path);
    out.graba(pathOut);
    return 1;
  });
}

}  // extern "C"
