#include "editors/qsets/quantity_assign_dlg.h"

#include "editors/common/text_codec.h"
#include "editors/psets/properties_set_dlg.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"

namespace orvane {

CCuantificadoresObjetosIFCDlg::CCuantificadoresObjetosIFCDlg(
    DialogServices& services, const std::vector<CIfcQuantitySet>& definitionSets,
    const std::vector<CIfcQuantitySet>& assignedSets, const char* kind, const double* hostValues,
    int32_t hostValueCount, const std::vector<CIfcType>& kindNames, const std::vector<CIfcObject>& objectNames)
    : Dialog(services),
      definitions(definitionSets),
      assignments(assignedSets),
      types(kindNames),
      objects(objectNames),
      hostValues_(hostValues),
      hostValueCount_(hostValues != nullptr ? hostValueCount : 0) {
  copyText(objectKind, kind != nullptr ? kind : "");
}

void CCuantificadoresObjetosIFCDlg::start() {
  fillList();
  buildGrid();
}

void CCuantificadoresObjetosIFCDlg::fillList() {
  sets.columns = {{u"Nombre", 2}, {u"Descripción", 2}};
  sets.rows.clear();
  for (const CIfcQuantitySet& set : assignments) sets.rows.push_back({fromUtf8(set.name), fromUtf8(set.description)});
  sets.fitColumnsToContents = !sets.rows.empty();
}

void CCuantificadoresObjetosIFCDlg::buildGrid() {
  grid.clear();
  const CIfcQuantitySet* set = validIndex(selectedSet, assignments.size()) ? &assignments[selectedSet] : nullptr;
  const int rows = 1 + (set != nullptr ? static_cast<int>(set->quantities.size()) : 0);
  if (!grid.setShape(rows, 4, 1, 0)) return;
  const char16_t* titles[] = {u"Nombre", u"Descripción", u"Tipo", u"Valor"};
  for (int column = 0; column < 4; ++column) {
    grid.cell(0, column).text = titles[column];
    grid.cell(0, column).background = kHeaderGrey;
    grid.cell(0, column).readOnly = true;
  }
  for (int i = 0; set != nullptr && i < static_cast<int>(set->quantities.size()); ++i) {
    const CIfcQuantityName& q = set->quantities[i];
    const char* kind = validIndex(q.measureType, kQuantityMeasureCount) ? QuantityMeasureNames[q.measureType] : "";
    const std::u16string texts[] = {fromUtf8(q.name), fromUtf8(q.description), fromUtf8(kind),
                                    fromUtf8(formatReal3(q.value).c_str())};
    for (int column = 0; column < 4; ++column) {
      GridCell& cell = grid.cell(i + 1, column);
      cell.text = texts[column];
      cell.readOnly = true;
      cell.background = kWhite;
    }
  }
}

void CCuantificadoresObjetosIFCDlg::chooseSet(int row) {
  selectedSet = row;
  buildGrid();
}

// Only axes and surfaces are measured by the host in the order of a set's quantities.
bool CCuantificadoresObjetosIFCDlg::takesHostValues() const {
  return equalsNoCase(objectKind, "Eje") || equalsNoCase(objectKind, "Superficie");
}

void CCuantificadoresObjetosIFCDlg::insert() {
  CPropertiesSetDlg chooser(services(), definitions, types, objects);
  if (chooser.run() != kDialogOk) return;
  definitions = chooser.quantitySets;
  if (!validIndex(chooser.currentRow, definitions.size())) return;
  const CIfcQuantitySet& chosen = definitions[chooser.currentRow];
  for (const CIfcQuantitySet& set : assignments)
    if (equalsNoCase(set.name, chosen.name)) return;  // already assigned

  CIfcQuantitySet assigned;
  for (const CIfcQuantityName& quantity : chosen.quantities)
    if (quantity.exported) assigned.quantities.push_back(quantity);
  if (assigned.quantities.empty()) return;  // nothing that would be exported
  copyText(assigned.name, chosen.name);
  copyText(assigned.description, chosen.description);
  copyText(assigned.typeZep, chosen.typeZep);
  if (takesHostValues()) {
    for (int k = 0; k < 3; ++k)
      if (k < static_cast<int>(assigned.quantities.size()) && k < hostValueCount_)
        assigned.quantities[k].value = hostValues_[k];
  }
  assignments.push_back(assigned);
  fillList();
}

void CCuantificadoresObjetosIFCDlg::remove() {
  if (!validIndex(selectedSet, assignments.size())) return;
  assignments.erase(assignments.begin() + selectedSet);
  selectedSet = -1;
  fillList();
  buildGrid();
}

}  // namespace orvane
