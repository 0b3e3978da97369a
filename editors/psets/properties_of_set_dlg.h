// CPropertiesOfSetDlg: edits one property set, its name, description and properties.
#ifndef ORVANE_EDITORS_PSETS_PROPERTIES_OF_SET_DLG_H
#define ORVANE_EDITORS_PSETS_PROPERTIES_OF_SET_DLG_H

#include <vector>

#include "editors/assign/catalogue.h"
#include "editors/common/dialog.h"
#include "editors/psets/property_data_dlg.h"
#include "orvane/ifc_property_set.h"

namespace orvane {

class CPropertiesOfSetDlg : public Dialog {
 public:
  // `allSets` (may be null) is the caller's whole list, for the duplicate-name check.
  CPropertiesOfSetDlg(DialogServices& services, int mode, const CIfcPropertySet& set,
                      const std::vector<CIfcEnum>& enums, const std::vector<CIfcPropertySet>* allSets,
                      const CConjuntoVariableZep* catalogue);

  void start() override;
  void insert();
  void edit();
  void doubleClick(int row);  // makes the row current, then edits it
  void remove();
  void editEnums();           // "Lista de Valores..."
  void selectRow(int row);
  void ok();

  CIfcPropertySet set;
  std::vector<CIfcEnum> enums;
  int mode;
  bool nameChanged = false;
  int currentRow = -1;

  std::u16string caption, nameLabel, descriptionLabel;
  std::u16string insertLabel, editLabel, removeLabel, valueListsLabel, okLabel, cancelLabel;
  std::u16string nameText, descriptionText;
  ListViewState properties;

 private:
  void takeEdits();
  void refresh();

  const std::vector<CIfcPropertySet>* allSets_;
  const CConjuntoVariableZep* catalogue_;
};

}  // namespace orvane

#endif
