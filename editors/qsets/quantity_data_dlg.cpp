#include "editors/qsets/quantity_data_dlg.h"

#include "editors/common/edit_mode.h"
#include "editors/common/text_codec.h"
#include "model/names.h"
#include "model/text.h"

namespace orvane {

CQuantityDataDlg::CQuantityDataDlg(DialogServices& services, int editMode, const CIfcQuantityName& initial,
                                   const CIfcQuantitySet* ownerSet, const std::vector<CIfcType>& kindNames)
    : Dialog(services), quantity(initial), types(kindNames), mode(editMode), ownerSet_(ownerSet) {}

void CQuantityDataDlg::start() {
  // Quantity texts are shown as ANSI text and stored as UTF-8, as they always were.
  setName = ownerSet_ != nullptr ? fromAnsi(ownerSet_->name) : std::u16string();
  nameText = fromAnsi(quantity.name);
  descriptionText = fromAnsi(quantity.description);
  exportChecked = quantity.exported;
  kinds.entries.clear();
  for (const CIfcType& type : types) kinds.entries.push_back(fromAnsi(type.name));
  // The kind is a position in the type list: select the last entry named like that position's.
  kinds.selected = -1;
  if (validIndex(quantity.measureType, types.size())) {
    for (int i = 0; i < static_cast<int>(types.size()); ++i)
      if (equalsNoCase(types[i].name, types[quantity.measureType].name)) kinds.selected = i;
  }
}

bool CQuantityDataDlg::saveControls() {
  if (nameText.empty()) {
    services().showMessage(u"Debe de introducir un nombre válido");
    return false;
  }
  const std::string name = toUtf8Bounded(nameText, 255);
  if (mode == kEditItem && !equalsNoCase(name, quantity.name)) nameChanged = true;
  copyText(quantity.name, name);
  encodeUtf8(quantity.description, 256, descriptionText);
  if (kinds.hasSelection()) quantity.measureType = kinds.selected;  // no types: the kind stays
  quantity.exported = exportChecked;
  return true;
}

void CQuantityDataDlg::changeKind(int index) {
  kinds.selected = index;
  if (saveControls() && kinds.hasSelection()) quantity.measureType = index;
}

void CQuantityDataDlg::ok() {
  if (!saveControls()) return;
  const bool check = ownerSet_ != nullptr && !ownerSet_->quantities.empty() && (mode != kEditItem || nameChanged);
  if (check) {
    for (const CIfcQuantityName& other : ownerSet_->quantities)
      if (equalsNoCase(other.name, quantity.name)) return services().showMessage(u"Propiedad existente en la lista");
  }
  end(kDialogOk);
}

}  // namespace orvane
