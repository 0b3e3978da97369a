// CQuantityDataDlg: edits one quantity of a quantity set.
#ifndef ORVANE_EDITORS_QSETS_QUANTITY_DATA_DLG_H
#define ORVANE_EDITORS_QSETS_QUANTITY_DATA_DLG_H

#include <vector>

#include "editors/common/dialog.h"
#include "orvane/ifc_quantity_set.h"

namespace orvane {

class CQuantityDataDlg : public Dialog {
 public:
  // `ownerSet` (may be null) is the set being edited, for the duplicate-name check.
  CQuantityDataDlg(DialogServices& services, int mode, const CIfcQuantityName& quantity,
                   const CIfcQuantitySet* ownerSet, const std::vector<CIfcType>& types);

  void start() override;
  void changeKind(int index);  // a selection in "Tipo"
  void ok();

  CIfcQuantityName quantity;
  std::vector<CIfcType> types;
  int mode;
  bool nameChanged = false;

  std::u16string setName;  // shown read-only
  std::u16string nameText, descriptionText;
  bool exportChecked = true;
  ComboState kinds;  // the names of the document's types; the position is the kind code

 private:
  bool saveControls();

  const CIfcQuantitySet* ownerSet_;
};

}  // namespace orvane

#endif
