// CPropertyDataDlg: edits one property definition: name, description, type, value list, optional
// flag, unit, default value and validation rule.
#ifndef ORVANE_EDITORS_PSETS_PROPERTY_DATA_DLG_H
#define ORVANE_EDITORS_PSETS_PROPERTY_DATA_DLG_H

#include <vector>

#include "editors/assign/catalogue.h"
#include "editors/common/dialog.h"
#include "editors/common/edit_mode.h"
#include "orvane/ifc_property_set.h"

namespace orvane {

class CPropertyDataDlg : public Dialog {
 public:
  // `ownerSet` (may be null) is the set the property belongs to, for the duplicate-name check;
  // `catalogue` (may be null) offers the host's variables to the value chooser.
  CPropertyDataDlg(DialogServices& services, int mode, const CIfcPropertyName& property,
                   const std::vector<CIfcEnum>& enums, const CIfcPropertySet* ownerSet,
                   const CConjuntoVariableZep* catalogue);

  void start() override;
  void changeType(int index);       // a selection in "Tipo"
  void chooseValueList(int index);  // a selection in "Lista de Valores": pick the default there
  void editValueList();             // "Editar..."
  void chooseValue();               // "...": a host variable or a literal for the default
  void ok();

  CIfcPropertyName property;
  std::vector<CIfcEnum> enums;
  int mode;
  bool nameChanged = false;

  std::u16string caption, setNameLabel, nameLabel, descriptionLabel, typeLabel, valueListLabel;
  std::u16string optionalLabel, defaultValueLabel, ruleLabel, unitLabel;
  std::u16string editLabel, okLabel, cancelLabel;

  std::u16string setName;  // shown read-only at the top
  std::u16string nameText, descriptionText, defaultValueText, ruleText;
  bool optionalChecked = false;
  bool booleanChecked = false;  // the default of a Boolean property
  ComboState types, valueLists, units;

  bool defaultValueVisible = true, defaultValueEnabled = true, booleanCheckVisible = false;
  bool editValueListEnabled = true;

 private:
  void fill();
  void fillValueLists();
  void updateEnabledState();
  bool takeEdits();

  const CIfcPropertySet* ownerSet_;
  const CConjuntoVariableZep* catalogue_;
};

}  // namespace orvane

#endif
