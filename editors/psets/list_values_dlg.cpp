#include "editors/psets/list_values_dlg.h"

#include "editors/common/text_codec.h"
#include "editors/psets/value_enum_dlg.h"
#include "model/names.h"
#include "model/numbers.h"

namespace orvane {

CListValuesDlg::CListValuesDlg(DialogServices& services, const CIfcEnum& initial, bool notRequired)
    : Dialog(services), type(initial), selectionNotRequired(notRequired) {}

void CListValuesDlg::start() {
  // This dialog keeps the texts of its own template; the host's message file does not name them.
  caption = u"Definición de Lista de Valores";
  nameLabel = u"Lista de Valores";
  descriptionLabel = u"Descripción";
  insertLabel = u"Insertar...";
  removeLabel = u"Borrar";
  editLabel = u"Editar...";
  okLabel = u"OK";
  cancelLabel = u"Cancelar";
  nameText = fromUtf8(type.name);
  descriptionText = fromUtf8(type.description);
  rebuildList();
}

void CListValuesDlg::takeEdits() {
  encodeUtf8(type.name, nameText);
  encodeUtf8(type.description, descriptionText);
}

void CListValuesDlg::rebuildList() {
  values.columns = {{u"Valor", 2}, {u"Descripción", 2}};
  values.rows.clear();
  for (const CIfcNodoEnum& value : type.elements)
    values.rows.push_back({fromUtf8(formatInt(value.value).c_str()), fromUtf8(value.text)});
}

// Two values clash when their literals are equal ignoring case, or their codes are equal.
bool CListValuesDlg::repeatsAnother(const CIfcNodoEnum& candidate, int exceptRow) const {
  for (int i = 0; i < static_cast<int>(type.elements.size()); ++i) {
    if (i == exceptRow) continue;
    const CIfcNodoEnum& other = type.elements[i];
    if (equalsNoCase(other.text, candidate.text) || other.value == candidate.value) return true;
  }
  return false;
}

void CListValuesDlg::insert() {
  selectRow(-1);  // nothing current, and nothing shown selected either
  takeEdits();
  CValueEnumDlg editor(services(), CIfcNodoEnum());
  if (editor.run() != kDialogOk) return;
  if (repeatsAnother(editor.value, -1)) return services().showMessage(u"Elemento repetido");
  type.elements.push_back(editor.value);
  rebuildList();
}

void CListValuesDlg::edit() {
  if (!validIndex(currentRow, type.elements.size())) return;
  takeEdits();
  CValueEnumDlg editor(services(), type.elements[currentRow]);
  if (editor.run() != kDialogOk) return;
  if (repeatsAnother(editor.value, currentRow)) return services().showMessage(u"Elemento repetido");
  type.elements[currentRow] = editor.value;
  rebuildList();
}

void CListValuesDlg::remove() {
  if (!validIndex(currentRow, type.elements.size())) return;
  if (!services().askYesNo(kConfirmDelete)) return;
  type.elements.erase(type.elements.begin() + currentRow);
  rebuildList();
}

void CListValuesDlg::selectRow(int row) {
  currentRow = row;
  values.revealRow = row;
}

void CListValuesDlg::ok() {
  takeEdits();
  if (type.name[0] == '\0') return services().showMessage(u"Debe de introducir un nombre válido");
  if (type.elements.empty()) return services().showMessage(u"Debe de existir al menos un elemento");
  // A picking caller reads the chosen value at currentRow, so a row past the end counts as none.
  if (!selectionNotRequired && !validIndex(currentRow, type.elements.size()))
    return services().showMessage(u"Debe seleccionar un elemento");
  end(kDialogOk);
}

}  // namespace orvane
