// CListValuesDlg: edits one enumerated type (name, description, values). A property that takes its
// default from the type also uses it to pick one value: then a value must be chosen.
#ifndef ORVANE_EDITORS_PSETS_LIST_VALUES_DLG_H
#define ORVANE_EDITORS_PSETS_LIST_VALUES_DLG_H

#include "editors/common/dialog.h"
#include "orvane/ifc_property_set.h"

namespace orvane {

class CListValuesDlg : public Dialog {
 public:
  // `selectionNotRequired` is true when the type is only edited, false when a value is picked.
  CListValuesDlg(DialogServices& services, const CIfcEnum& type, bool selectionNotRequired);

  void start() override;
  void insert();
  void edit();
  void remove();
  void selectRow(int row);
  void ok();

  CIfcEnum type;
  bool selectionNotRequired;
  int currentRow = -1;  // also the value chosen, for a caller that picks one

  std::u16string caption, nameLabel, descriptionLabel;
  std::u16string insertLabel, removeLabel, editLabel, okLabel, cancelLabel;
  std::u16string nameText, descriptionText;
  ListViewState values;

 private:
  void takeEdits();
  void rebuildList();
  bool repeatsAnother(const CIfcNodoEnum& candidate, int exceptRow) const;
};

}  // namespace orvane

#endif
