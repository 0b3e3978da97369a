#include "editors/psets/list_enums_dlg.h"

#include <algorithm>

#include "editors/common/text_codec.h"
#include "editors/psets/list_values_dlg.h"
#include "model/names.h"

namespace orvane {

CListEnumsDlg::CListEnumsDlg(DialogServices& services, const std::vector<CIfcEnum>& initial)
    : Dialog(services), enums(initial) {}

void CListEnumsDlg::start() {
  caption = textoMensaje(3, 11);
  insertLabel = textoMensaje(3, 3);
  removeLabel = textoMensaje(3, 4);
  editLabel = textoMensaje(3, 9);
  okLabel = textoMensaje(3, 5);
  cancelLabel = textoMensaje(3, 6);
  currentRow = -1;
  rebuildList();
}

void CListEnumsDlg::rebuildList() {
  types.columns = {{u"Nombre", 2}, {u"Descripción", 2}};
  types.rows.clear();
  for (const CIfcEnum& type : enums) types.rows.push_back({fromUtf8(type.name), fromUtf8(type.description)});
}

void CListEnumsDlg::sortAndRebuild() {
  sortByName(enums);
  rebuildList();
}

void CListEnumsDlg::insert() {
  CListValuesDlg editor(services(), CIfcEnum(), true);
  if (editor.run() != kDialogOk) return;
  enums.push_back(editor.type);
  sortAndRebuild();
  selectRow(-1);  // nothing current, and nothing shown selected either
}

void CListEnumsDlg::edit() {
  if (!validIndex(currentRow, enums.size())) return;
  CListValuesDlg editor(services(), enums[currentRow], true);
  if (editor.run() != kDialogOk) return;
  enums[currentRow] = editor.type;
  sortAndRebuild();
}

void CListEnumsDlg::remove() {
  if (!validIndex(currentRow, enums.size())) return;
  if (!services().askYesNo(kConfirmDelete)) return;
  enums.erase(enums.begin() + currentRow);
  rebuildList();
}

void CListEnumsDlg::selectRow(int row) {
  currentRow = row;
  types.revealRow = row;
}

}  // namespace orvane
