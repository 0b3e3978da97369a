// CQuantitiesOfSetDlg: edits one quantity set: name, description, linked host element, quantities.
#ifndef ORVANE_EDITORS_QSETS_QUANTITIES_OF_SET_DLG_H
#define ORVANE_EDITORS_QSETS_QUANTITIES_OF_SET_DLG_H

#include <vector>

#include "editors/common/dialog.h"
#include "orvane/ifc_quantity_set.h"

namespace orvane {

class CQuantitiesOfSetDlg : public Dialog {
 public:
  // `allSets` (may be null) is the caller's list of sets, for the duplicate-name check.
  CQuantitiesOfSetDlg(DialogServices& services, int mode, const CIfcQuantitySet& set,
                      const std::vector<CIfcQuantitySet>* allSets, const std::vector<CIfcType>& types,
                      const std::vector<CIfcObject>& objects);

  void start() override;
  void insert();
  void edit();
  void doubleClick(int row);  // selects the row, then edits it
  void remove();
  void selectRow(int row);
  void ok();

  CIfcQuantitySet set;
  std::vector<CIfcType> types;
  std::vector<CIfcObject> objects;
  int mode;
  bool nameChanged = false;
  int currentRow = -1;

  std::u16string nameText, descriptionText;
  ComboState linkedElement;  // "Elemento vinculado": the names of objects
  ListViewState quantities;

 private:
  void refresh();
  void saveControls();

  const std::vector<CIfcQuantitySet>* allSets_;
};

}  // namespace orvane

#endif
