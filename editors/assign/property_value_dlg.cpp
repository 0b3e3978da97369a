#include "editors/assign/property_value_dlg.h"

#include "editors/common/text_codec.h"
#include "model/text.h"

namespace orvane {

CPropiedadesObjetosValorIFCDlg::CPropiedadesObjetosValorIFCDlg(DialogServices& services,
                                                               const char* initialValue,
                                                               const CConjuntoVariableZep& source)
    : Dialog(services), catalogue(source) {
  copyText(value, initialValue != nullptr ? initialValue : "");
}

void CPropiedadesObjetosValorIFCDlg::start() {
  caption = textoMensaje(3, 7);
  const std::string_view initial(value);
  mode = endsAsReference(initial) ? kHostVariable : kLiteralText;
  valueText = fromUtf8(initial);  // a reference keeps its "$" in the edit box

  const ReferenceParts parts = partsOfValue(initial);  // a literal may name a group, and selects it
  if (endsAsReference(initial)) value[initial.size() - 1] = '\0';  // the dialog's copy loses its "$"
  fillLists(parts);
  enableForMode();
}

// Selects the last group named like parts.group (or the first group) and, in it, the last variable
// named like parts.variable (or the first one). With no group named, nothing is selected.
void CPropiedadesObjetosValorIFCDlg::fillLists(const ReferenceParts& parts) {
  if (catalogue.groups.empty()) return;
  const CatalogueIndex found = resolveReference(catalogue, parts);
  const bool select = !parts.group.empty();

  groups.entries.clear();
  for (const CZepGrupo& group : catalogue.groups) groups.entries.push_back(fromAnsi(group.name));
  groups.selected = select ? found.group : -1;

  variables.entries.clear();
  for (const CZepVariable& variable : catalogue.groups[found.group].variables)
    variables.entries.push_back(fromAnsi(variable.name));
  variables.selected = select && !variables.entries.empty() ? found.variable : -1;
}

void CPropiedadesObjetosValorIFCDlg::chooseGroup(int index) {
  ReferenceParts parts;
  if (validIndex(index, catalogue.groups.size())) parts.group = catalogue.groups[index].name;
  fillLists(parts);
}

void CPropiedadesObjetosValorIFCDlg::chooseSource(int source) {
  mode = source;
  enableForMode();
}

void CPropiedadesObjetosValorIFCDlg::enableForMode() {
  groups.enabled = variables.enabled = (mode == kHostVariable);
  valueTextEnabled = (mode == kLiteralText);
}

void CPropiedadesObjetosValorIFCDlg::ok() {
  if (mode == kLiteralText) {
    encodeUtf8(value, valueText);  // taken as typed: not parsed, not checked
    return end(kDialogOk);
  }
  // An incomplete choice keeps the dialog open without a message, as does a pair of names too
  // long to make a reference of.
  if (!validIndex(groups.selected, catalogue.groups.size())) return;
  const CZepGrupo& group = catalogue.groups[groups.selected];
  if (!validIndex(variables.selected, group.variables.size())) return;
  if (makeReference(group.name, group.variables[variables.selected].name, value)) end(kDialogOk);
}

}  // namespace orvane
