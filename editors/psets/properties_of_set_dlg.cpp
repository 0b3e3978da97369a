#include "editors/psets/properties_of_set_dlg.h"

#include "editors/common/text_codec.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/property_texts.h"
#include "model/names.h"
#include "model/text.h"

namespace orvane {
namespace {

// The type column's labels by value type: Integer, Real, String, Enumerated, Boolean, DateTime.
constexpr int32_t kTypeLabelIds[] = {13, 14, 15, 12, 16, 17};

std::u16string typeLabel(int32_t valueType) {
  return validIndex(valueType, std::size(kTypeLabelIds)) ? textoMensaje(3, kTypeLabelIds[valueType]) : std::u16string();
}

}  // namespace

CPropertiesOfSetDlg::CPropertiesOfSetDlg(DialogServices& services, int editMode, const CIfcPropertySet& initial,
                                         const std::vector<CIfcEnum>& types,
                                         const std::vector<CIfcPropertySet>* allSets,
                                         const CConjuntoVariableZep* catalogue)
    : Dialog(services), set(initial), enums(types), mode(editMode), allSets_(allSets), catalogue_(catalogue) {}

void CPropertiesOfSetDlg::start() {
  caption = textoMensaje(3, 8);
  nameLabel = textoMensaje(3, 8);
  descriptionLabel = textoMensaje(3, 10);
  insertLabel = textoMensaje(3, 3);
  editLabel = textoMensaje(3, 9);
  removeLabel = textoMensaje(3, 4);
  valueListsLabel = textoMensaje(3, 11);
  okLabel = textoMensaje(3, 5);
  cancelLabel = textoMensaje(3, 6);
  refresh();
}

void CPropertiesOfSetDlg::refresh() {
  nameText = fromUtf8(set.name);
  descriptionText = fromUtf8(set.description);
  properties.columns.clear();
  for (int32_t id : {18, 19, 20, 21, 22, 23}) properties.columns.push_back({textoMensaje(3, id), 6});
  properties.columns.push_back({textoMensaje(4, 5), 6});
  properties.rows.clear();
  for (const CIfcPropertyName& p : set.properties) {
    properties.rows.push_back({
        fromUtf8(p.name),
        fromUtf8(p.description),
        typeLabel(p.valueType),
        fromUtf8(p.valueType == PropertyEnumerated ? p.enumName : ""),
        fromUtf8(valueColumnText(p)),
        textoMensaje(3, p.optional ? 24 : 25),
        fromAnsi(validIndex(p.unit, kUnitCount) ? UnitTable[p.unit] : ""),
    });
  }
}

void CPropertiesOfSetDlg::takeEdits() {
  const std::string name = toUtf8Bounded(nameText, kTextFieldSize - 1);
  if (mode == kEditItem && !equalsNoCase(name, set.name)) nameChanged = true;
  copyText(set.name, name);
  encodeUtf8(set.description, descriptionText);
}

void CPropertiesOfSetDlg::insert() {
  takeEdits();
  CPropertyDataDlg editor(services(), kNewItem, CIfcPropertyName(), enums, &set, catalogue_);
  if (editor.run() != kDialogOk) return;
  set.properties.push_back(editor.property);
  enums = editor.enums;
  refresh();
}

void CPropertiesOfSetDlg::edit() {
  takeEdits();
  if (!validIndex(currentRow, set.properties.size())) return;
  CPropertyDataDlg editor(services(), kEditItem, set.properties[currentRow], enums, &set, catalogue_);
  if (editor.run() != kDialogOk) return;
  set.properties[currentRow] = editor.property;
  enums = editor.enums;
  refresh();
}

void CPropertiesOfSetDlg::doubleClick(int row) {
  selectRow(row);
  edit();
}

void CPropertiesOfSetDlg::remove() {
  takeEdits();
  if (!validIndex(currentRow, set.properties.size())) return;
  set.properties.erase(set.properties.begin() + currentRow);  // no question for a property
  refresh();
  properties.revealRow = currentRow;
}

void CPropertiesOfSetDlg::editEnums() {
  takeEdits();
  CListEnumsDlg editor(services(), enums);
  if (editor.run() != kDialogOk) return;
  enums = editor.enums;
  refresh();
}

void CPropertiesOfSetDlg::selectRow(int row) {
  currentRow = row;
  properties.revealRow = row;
}

void CPropertiesOfSetDlg::ok() {
  takeEdits();
  if (set.name[0] == '\0') return services().showMessage(textoMensaje(3, 26));
  if (allSets_ != nullptr && !allSets_->empty() && (mode != kEditItem || nameChanged)) {
    const std::string name = toUtf8Bounded(nameText, 255);
    for (const CIfcPropertySet& other : *allSets_)
      if (equalsNoCase(other.name, name)) return services().showMessage(textoMensaje(3, 27));
  }
  end(kDialogOk);
}

}  // namespace orvane
