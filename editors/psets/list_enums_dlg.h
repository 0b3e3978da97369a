// CListEnumsDlg: the list of a document's enumerated types.
#ifndef ORVANE_EDITORS_PSETS_LIST_ENUMS_DLG_H
#define ORVANE_EDITORS_PSETS_LIST_ENUMS_DLG_H

#include <vector>

#include "editors/common/dialog.h"
#include "orvane/ifc_property_set.h"

namespace orvane {

class CListEnumsDlg : public Dialog {
 public:
  CListEnumsDlg(DialogServices& services, const std::vector<CIfcEnum>& enums);

  void start() override;
  void insert();
  void edit();
  void remove();
  void selectRow(int row);
  void ok() { end(kDialogOk); }

  std::vector<CIfcEnum> enums;
  int currentRow = -1;

  std::u16string caption, insertLabel, removeLabel, editLabel, okLabel, cancelLabel;
  ListViewState types;

 private:
  void sortAndRebuild();
  void rebuildList();
};

}  // namespace orvane

#endif
