// Quantities of a quantity-set file to and from the host's arrays of FlatQuantityRecord.
//
// As with properties, only the fields a quantity gives are written (never the padding, nor past a
// name's terminator), and the host's names are read only up to the end of their fields.
#include <sys/stat.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "api/guard.h"
#include "api/merged_document.h"
#include "api/record_conversion.h"
#include "model/file_io.h"
#include "model/text.h"
#include "orvane/orvane.h"

using orvane::copyText;
using orvane::fieldText;
using orvane::api::guarded;

namespace orvane::api {

void fillRecord(FlatQuantityRecord& record, std::string_view setName, const CIfcQuantityName& quantity) {
  record.measureType = quantity.measureType;
  copyText(record.setName, setName);
  copyText(record.quantityName, fieldText(quantity.name));
  record.value = quantity.value;
}

// The description stays empty and the quantity exported.
void quantityFrom(const FlatQuantityRecord& record, CIfcQuantityName& quantity) {
  copyText(quantity.name, fieldText(record.quantityName));
  quantity.measureType = record.measureType;
  quantity.value = record.value;
}

}  // namespace orvane::api

namespace {

using orvane::api::MergedMember;
using orvane::api::MergedSet;
using orvane::api::MergedSets;
using tinyxml2::XMLElement;
using tinyxml2::XMLPrinter;

// The merge only adds: a quantity already in the set keeps its value, kind, description and flag.
void addIfMissing(MergedSets& sets, std::size_t set, const FlatQuantityRecord* records, int32_t i) {
  const std::string_view name = fieldText(records[i].quantityName);
  if (sets.findMember(set, name) == nullptr) sets.appendMember(set, MergedMember{name, nullptr, i, i});
}

// The quantity as a merge of whole records would hold it: read from its element, or made from its
// record with an empty description, exported.
void materialise(const MergedMember& member, const FlatQuantityRecord* records, CIfcQuantityName& quantity) {
  if (member.element != nullptr) orvane::xml::fillQuantity(*member.element, quantity);  // read once already
  else orvane::api::quantityFrom(records[member.first], quantity);
}

void printSets(XMLPrinter& out, const std::vector<MergedSet>& sets, const FlatQuantityRecord* records) {
  for (const MergedSet& set : sets) {
    char name[kTextFieldSize];
    char description[kTextFieldSize] = "";
    char typeZep[kTextFieldSize] = "";
    copyText(name, set.name);
    if (set.element != nullptr) {
      const orvane::xml::QuantitySetAttributes attributes = orvane::xml::quantitySetAttributes(*set.element);
      copyText(description, attributes.description);
      copyText(typeZep, attributes.typeZep);
    }
    orvane::xml::openQuantitySet(out, name, description, typeZep);
    for (const MergedMember& member : set.members) {
      CIfcQuantityName quantity;
      materialise(member, records, quantity);
      orvane::xml::writeQuantity(out, quantity);
    }
    out.CloseElement();
  }
}

// Which file a path names, and its state: a save replaces a file by another, never rewrites it.
struct FileIdentity {
  dev_t device;
  ino_t inode;
  off_t size;
  struct timespec modified;
  bool operator==(const FileIdentity& o) const {
    return device == o.device && inode == o.inode && size == o.size && modified.tv_sec == o.modified.tv_sec &&
           modified.tv_nsec == o.modified.tv_nsec;
  }
};

std::optional<FileIdentity> identityOf(const char* path) {
  struct stat info {};
  if (::stat(path, &info) != 0) return std::nullopt;
  return FileIdentity{info.st_dev, info.st_ino, info.st_size, info.st_mtim};
}

}  // namespace

extern "C" {

// Fills the host's records straight from the XML tree, without building the document's records.
int getCuantificadoresFichero(const char* path, FlatQuantityRecord* records, int maxRecords) noexcept {
  if (path == nullptr || records == nullptr || maxRecords <= 0) return 0;
  return guarded(0, [&] {
    tinyxml2::XMLDocument tree;
    if (!orvane::xml::loadTree(path, tree)) return 0;  // a file that doesn't read gives no records
    orvane::xml::QuantityOutline doc;
    orvane::xml::outlineQuantityDocument(tree, doc);
    int filled = 0;
    for (const orvane::xml::SetOutline& set : doc.sets) {
      for (const XMLElement* element : set.members) {
        if (filled >= maxRecords) return filled;
        CIfcQuantityName quantity;
        orvane::xml::fillQuantity(*element, quantity);  // read once already
        orvane::api::fillRecord(records[filled], set.name, quantity);
        ++filled;
      }
    }
    return filled;
  });
}

// Merges against the document's XML tree, as setPropiedadesFichero does.
int setCuantificadoresFichero(const char* path, const char* pathOut, const FlatQuantityRecord* records,
                              int count) noexcept {
  if (path == nullptr || pathOut == nullptr) return 0;
  if (count > 0 && records == nullptr) return 0;
  return guarded(0, [&] {
    const std::size_t n = count > 0 ? static_cast<std::size_t>(count) : 0;
    tinyxml2::XMLDocument tree;
    orvane::xml::QuantityOutline doc;
    // A missing file merges into an empty document.
    if (orvane::xml::loadTree(path, tree)) orvane::xml::outlineQuantityDocument(tree, doc);
    std::vector<MergedSet> sets = orvane::api::mergedSets(doc.sets);
    std::vector<MergedSet> out;  // the sets the records name, for the output document
    {
      MergedSets inOut(out);
      MergedSets inDoc(sets);
      const auto positions = orvane::api::setPositions(inOut, inDoc, records, n);
      for (std::size_t i = 0; i < n; ++i) {
        addIfMissing(inOut, positions[i].first, records, static_cast<int32_t>(i));
        addIfMissing(inDoc, positions[i].second, records, static_cast<int32_t>(i));
      }
    }
    const orvane::xml::PrintDocument printOut = [&](XMLPrinter& printer) {
      orvane::xml::printQuantityDocument(printer, {}, {}, [&] { printSets(printer, out, records); });
    };
    // pathOut is saved both before and after the document, so when records were given its ".bak"
    // ends up holding the new contents too, as hosts expect.
    std::optional<FileIdentity> written;
    if (!out.empty() && orvane::xml::saveWithBackup(pathOut, printOut)) written = identityOf(pathOut);
    orvane::xml::saveWithBackup(path, [&](XMLPrinter& printer) {
      orvane::xml::printQuantityDocument(printer, doc.types, doc.objects, [&] { printSets(printer, sets, records); });
    });
    // The second save would write again the very bytes the file holds, unless the document's save
    // replaced it (pathOut names the document, through a link say): while it is still the file
    // written above, copying it to its backup is all that second save changes.
    if (written && written == identityOf(pathOut)) orvane::backupFile(pathOut);
    else orvane::xml::saveWithBackup(pathOut, printOut);
    return 1;
  });
}

}  // extern "C"
