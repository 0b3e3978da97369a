// Property-set definitions (PSD) turned into a property-set document and a quantity-set document,
// with a report of everything the documents cannot hold as it was.
#ifndef ORVANE_TOOLS_PSD_IMPORT_H
#define ORVANE_TOOLS_PSD_IMPORT_H

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "psd_reader.h"

namespace orvane::cli {

// What an import left out or changed, by reason, with the items ("Pset_WallCommon.Status").
class ImportReport {
 public:
  void leftOut(const std::string& reason, const std::string& item) { leftOut_[reason].push_back(item); }
  void changed(const std::string& reason, const std::string& item) { changed_[reason].push_back(item); }

  const std::map<std::string, std::vector<std::string>>& leftOut() const { return leftOut_; }
  const std::map<std::string, std::vector<std::string>>& changed() const { return changed_; }

  // Each reason with its count, most frequent first; with `items`, every item under its reason.
  void print(std::ostream& out, bool items) const;

 private:
  std::map<std::string, std::vector<std::string>> leftOut_;
  std::map<std::string, std::vector<std::string>> changed_;
};

struct ImportResult {
  CIfcProyectPSet properties;  // sets and enumerated types sorted by name, as lee leaves them
  CIfcProyectQSet quantities;
};

// Builds the documents from `sets` (in the order given: of two sets of one name, the first is
// kept). Quantity sets are left out, and reported, unless `withQuantities`.
ImportResult importSets(const std::vector<PsdSet>& sets, bool withQuantities, ImportReport& report);

}  // namespace orvane::cli

#endif
