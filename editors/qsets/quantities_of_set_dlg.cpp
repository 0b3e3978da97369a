#include "editors/qsets/quantities_of_set_dlg.h"

#include "editors/common/edit_mode.h"
#include "editors/common/text_codec.h"
#include "editors/qsets/quantity_data_dlg.h"
#include "model/names.h"
#include "model/text.h"

namespace orvane {

CQuantitiesOfSetDlg::CQuantitiesOfSetDlg(DialogServices& services, int editMode, const CIfcQuantitySet& initial,
                                         const std::vector<CIfcQuantitySet>* allSets,
                                         const std::vector<CIfcType>& kindNames,
                                         const std::vector<CIfcObject>& objectNames)
    : Dialog(services), set(initial), types(kindNames), objects(objectNames), mode(editMode), allSets_(allSets) {}

void CQuantitiesOfSetDlg::start() { refresh(); }

// Quantity texts are shown as ANSI text and stored as UTF-8, as they always were.
void CQuantitiesOfSetDlg::refresh() {
  nameText = fromAnsi(set.name);
  descriptionText = fromAnsi(set.description);

  linkedElement.entries.clear();
  linkedElement.selected = objects.empty() ? -1 : 0;
  for (int i = 0; i < static_cast<int>(objects.size()); ++i) {
    linkedElement.entries.push_back(fromAnsi(objects[i].name));
    if (equalsNoCase(objects[i].name, set.typeZep)) linkedElement.selected = i;
  }

  quantities.columns = {{u"Nombre", 6}, {u"Descripción", 6}, {u"Tipo", 6}, {u"Exportar", 6}};
  quantities.rows.clear();
  for (const CIfcQuantityName& q : set.quantities) {
    const char* kind = validIndex(q.measureType, kQuantityMeasureCount) ? QuantityMeasureNames[q.measureType] : "";
    quantities.rows.push_back({fromAnsi(q.name), fromAnsi(q.description), fromAnsi(kind), q.exported ? u"Si" : u"No"});
  }
  quantities.fitColumnsToContents = !quantities.rows.empty();
}

void CQuantitiesOfSetDlg::saveControls() {
  const std::string name = toUtf8Bounded(nameText, kTextFieldSize - 1);
  if (mode == kEditItem && !equalsNoCase(name, set.name)) nameChanged = true;
  copyText(set.name, name);
  encodeUtf8(set.description, descriptionText);
  // With no host element types to link, the set stays unlinked.
  copyText(set.typeZep, linkedElement.hasSelection() && validIndex(linkedElement.selected, objects.size())
                            ? objects[linkedElement.selected].name
                            : "");
}

void CQuantitiesOfSetDlg::insert() {
  saveControls();
  CQuantityDataDlg editor(services(), kNewItem, CIfcQuantityName(), &set, types);
  if (editor.run() != kDialogOk) return;
  set.quantities.push_back(editor.quantity);
  types = editor.types;
  refresh();
}

void CQuantitiesOfSetDlg::edit() {
  saveControls();
  if (!validIndex(currentRow, set.quantities.size())) return;
  CQuantityDataDlg editor(services(), kEditItem, set.quantities[currentRow], &set, types);
  if (editor.run() != kDialogOk) return;
  set.quantities[currentRow] = editor.quantity;
  types = editor.types;
  refresh();
}

void CQuantitiesOfSetDlg::doubleClick(int row) {
  selectRow(row);
  edit();
}

void CQuantitiesOfSetDlg::remove() {
  saveControls();
  if (!validIndex(currentRow, set.quantities.size())) return;
  set.quantities.erase(set.quantities.begin() + currentRow);
  refresh();
  quantities.revealRow = currentRow;
}

void CQuantitiesOfSetDlg::selectRow(int row) {
  currentRow = row;
  quantities.revealRow = row;
}

void CQuantitiesOfSetDlg::ok() {
  saveControls();
  if (set.name[0] == '\0') return services().showMessage(u"Debe de introducir un nombre válido");
  if (allSets_ == nullptr || allSets_->empty() || (mode == kEditItem && !nameChanged)) return end(kDialogOk);
  const std::string name = toUtf8Bounded(nameText, 255);
  for (const CIfcQuantitySet& other : *allSets_)
    if (equalsNoCase(other.name, name)) return services().showMessage(u"Conjunto de Propiedades existe en la lista");
  end(kDialogOk);
}

}  // namespace orvane
