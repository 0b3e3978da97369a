#include "editors/psets/properties_set_dlg.h"

#include <algorithm>
#include <cstdio>

#include "editors/common/edit_mode.h"
#include "editors/common/line_reader.h"
#include "editors/common/messages.h"
#include "editors/common/text_codec.h"
#include "editors/psets/csv_import.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "model/names.h"

namespace orvane {

CPropertiesSetDlg::CPropertiesSetDlg(DialogServices& services, const std::vector<CIfcPropertySet>& initialSets,
                                     const std::vector<CIfcEnum>& initialEnums)
    : Dialog(services), propertySets(initialSets), enums(initialEnums) {}

CPropertiesSetDlg::CPropertiesSetDlg(DialogServices& services, const std::vector<CIfcQuantitySet>& initialSets,
                                     const std::vector<CIfcType>& kindNames,
                                     const std::vector<CIfcObject>& objectNames)
    : Dialog(services), quantitySets(initialSets), types(kindNames), objects(objectNames) {}

void CPropertiesSetDlg::start() {
  quantityMode_ = propertySets.empty() && !quantitySets.empty();
  rebuildList();
  caption = textoMensaje(3, 8);
  insertLabel = textoMensaje(3, 3);
  editLabel = textoMensaje(3, 9);
  removeLabel = textoMensaje(3, 4);
  okLabel = textoMensaje(3, 5);
  cancelLabel = textoMensaje(3, 6);
  saveAsLabel = textoMensaje(4, 1);
  importLabel = textoMensaje(4, 2);
}

void CPropertiesSetDlg::rebuildList() {
  sets.rows.clear();
  if (quantityMode_) {
    sets.columns = {{u"Nombre", 2}, {u"Descripción", 2}, {u"Tipo", 2}};
    for (const CIfcQuantitySet& set : quantitySets)
      sets.rows.push_back({fromUtf8(set.name), fromUtf8(set.description), fromUtf8(set.typeZep)});
  } else {
    sets.columns = {{textoMensaje(3, 18), 2}, {textoMensaje(3, 19), 2}};
    for (const CIfcPropertySet& set : propertySets)
      sets.rows.push_back({fromUtf8(set.name), fromUtf8(set.description)});
  }
  sets.fitColumnsToContents = true;
}

void CPropertiesSetDlg::insert() {
  if (quantityMode_) {
    CQuantitiesOfSetDlg editor(services(), kNewItem, CIfcQuantitySet(), &quantitySets, types, objects);
    if (editor.run() != kDialogOk) return;
    quantitySets.push_back(editor.set);
    types = editor.types;
    objects = editor.objects;
    sortByName(quantitySets);
  } else {
    CPropertiesOfSetDlg editor(services(), kNewItem, CIfcPropertySet(), enums, &propertySets, &catalogue);
    if (editor.run() != kDialogOk) return;
    propertySets.push_back(editor.set);
    enums = editor.enums;
    sortByName(propertySets);
  }
  rebuildList();
}

// The current row keeps its number after the sort, so it may then point at another set.
void CPropertiesSetDlg::edit() {
  if (!validIndex(currentRow, rowCount())) return;
  if (quantityMode_) {
    CQuantitiesOfSetDlg editor(services(), kEditItem, quantitySets[currentRow], &quantitySets, types, objects);
    if (editor.run() != kDialogOk) return;
    quantitySets[currentRow] = editor.set;
    types = editor.types;
    objects = editor.objects;
    sortByName(quantitySets);
  } else {
    CPropertiesOfSetDlg editor(services(), kEditItem, propertySets[currentRow], enums, &propertySets,
                               &catalogue);
    if (editor.run() != kDialogOk) return;
    propertySets[currentRow] = editor.set;
    enums = editor.enums;
    sortByName(propertySets);
  }
  rebuildList();
}

void CPropertiesSetDlg::remove() {
  if (!validIndex(currentRow, rowCount())) return;
  if (!services().askYesNo(kConfirmDelete)) return;
  if (quantityMode_) quantitySets.erase(quantitySets.begin() + currentRow);
  else propertySets.erase(propertySets.begin() + currentRow);
  rebuildList();
  sets.revealRow = currentRow;
}

void CPropertiesSetDlg::selectRow(int row) {
  currentRow = row;
  sets.revealRow = row;
}

void CPropertiesSetDlg::saveAs(const std::vector<int>& selectedRows) {
  selection.count = 0;
  selection.rows.fill(-1);
  for (int row : selectedRows) {
    if (selection.count == SaveAsSelection::kMaxRows) break;  // the rest are not recorded
    selection.rows[selection.count++] = row;
  }
  if (selection.count >= 1) return end(kDialogSaveAs);
  services().showMessage(textoMensaje(3, 39));
}

void CPropertiesSetDlg::importCsv() {
  const FilePickerOptions options{
      {{u"CSV Files (*.csv)", u"*.csv"}, {u"All Files (*.*)", u"*.*"}}, u"csv", true, documentFolder};
  const std::optional<std::u16string> chosen = services().pickFileToOpen(options);
  if (!chosen) return;
  const HostTextFile file(toUtf8(*chosen).c_str(), kMaxCsvBytes);  // a FIFO or a device is not read
  if (file.stream() == nullptr) return;
  importPropertySetsCsv(file.stream(), propertySets, getMensaje(4, 3));
  rebuildList();
}

}  // namespace orvane
