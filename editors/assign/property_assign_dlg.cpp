#include "editors/assign/property_assign_dlg.h"

#include "editors/assign/host_variable.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/common/text_codec.h"
#include "editors/psets/properties_set_dlg.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"

namespace orvane {
namespace {

// How the grid names each value type: the types without a value of their own read "Lista".
const char16_t* gridTypeText(int32_t valueType) {
  switch (valueType) {
    case PropertyInteger: return u"Entero";
    case PropertyReal: return u"Real";
    case PropertyString: return u"String";
    default: return u"Lista";
  }
}

std::u16string gridValueText(const CIfcPropertyName& p) {
  switch (p.valueType) {
    case PropertyInteger: return fromUtf8(p.textValue[0] != '\0' ? p.textValue : formatInt(p.intValue).c_str());
    case PropertyReal: return fromUtf8(p.textValue[0] != '\0' ? p.textValue : formatReal3(p.realValue).c_str());
    case PropertyString:
    case PropertyEnumerated: return fromUtf8(p.textValue);
    default: return u"Lista";
  }
}

// The values of the last enumerated type of that name, for a drop-down cell.
std::vector<std::u16string> choicesOf(const std::vector<CIfcEnum>& enumerations, const char* enumName) {
  const CIfcEnum* found = nullptr;
  for (const CIfcEnum& type : enumerations)
    if (equalsNoCase(type.name, enumName)) found = &type;
  std::vector<std::u16string> choices;
  if (found != nullptr)
    for (const CIfcNodoEnum& value : found->elements) choices.push_back(fromUtf8(value.text));
  return choices;
}

}  // namespace

CPropiedadesObjetosIFCDlg::CPropiedadesObjetosIFCDlg(DialogServices& services,
                                                     const std::vector<CIfcPropertySet>& definitions,
                                                     const std::vector<CIfcEnum>& types,
                                                     const std::vector<CIfcPropertySet>& assigned)
    : Dialog(services), setDefinitions(definitions), enumerations(types), assignedSets(assigned) {}

void CPropiedadesObjetosIFCDlg::start() {
  caption = textoMensaje(3, 7);
  setsFrame = textoMensaje(3, 1);
  valuesFrame = textoMensaje(3, 2);
  insertLabel = textoMensaje(3, 3);
  removeLabel = textoMensaje(3, 4);
  okLabel = textoMensaje(3, 5);
  cancelLabel = textoMensaje(3, 6);
  grid.defaultBackground = kLightYellow;
  grid.compareCellsAsNumbers = true;
  fillList();
  buildGrid();
}

void CPropiedadesObjetosIFCDlg::fillList() {
  sets.columns = {{u"Nombre", 2}, {u"Descripción", 2}};
  sets.rows.clear();
  for (const CIfcPropertySet& set : assignedSets) sets.rows.push_back({fromUtf8(set.name), fromUtf8(set.description)});
  sets.fitColumnsToContents = !sets.rows.empty();
}

void CPropiedadesObjetosIFCDlg::buildGrid() {
  grid.clear();
  const CIfcPropertySet* set = validIndex(selectedSet, assignedSets.size()) ? &assignedSets[selectedSet] : nullptr;
  const int rows = 1 + (set != nullptr ? static_cast<int>(set->properties.size()) : 0);
  if (!grid.setShape(rows, 4, 1, 0)) return services().showMessage(u"No queda memoria suficiente.");
  const char16_t* titles[] = {u"Nombre", u"Descripción", u"Tipo", u"Valor"};
  for (int column = 0; column < 4; ++column) {
    GridCell& header = grid.cell(0, column);
    header.text = titles[column];
    header.background = kHeaderGrey;
    header.readOnly = true;
  }
  if (set != nullptr)
    for (int i = 0; i < static_cast<int>(set->properties.size()); ++i) fillPropertyRow(i + 1, set->properties[i]);
  grid.fillWidth = true;
}

void CPropiedadesObjetosIFCDlg::fillPropertyRow(int row, const CIfcPropertyName& property) {
  const std::u16string texts[] = {fromUtf8(property.name), fromUtf8(property.description),
                                  gridTypeText(property.valueType)};
  for (int column = 0; column < 3; ++column) {
    GridCell& cell = grid.cell(row, column);
    cell.text = texts[column];
    cell.background = kWhite;
    cell.readOnly = true;
  }
  GridCell& value = grid.cell(row, kGridValueColumn);
  value.background = kWhite;
  value.text = gridValueText(property);
  if (property.valueType == PropertyEnumerated) {
    // A drop-down even when it holds a reference: the choices are the type's values.
    value.dropDown = true;
    value.choices = choicesOf(enumerations, property.enumName);
  } else {
    value.readOnly = containsReference(property.textValue);  // changed only through the chooser
  }
}

CIfcPropertyName* CPropiedadesObjetosIFCDlg::propertyAt(int row) {
  if (!validIndex(selectedSet, assignedSets.size())) return nullptr;
  std::vector<CIfcPropertyName>& properties = assignedSets[selectedSet].properties;
  return validIndex(row - 1, properties.size()) ? &properties[row - 1] : nullptr;
}

void CPropiedadesObjetosIFCDlg::chooseSet(int row) {
  selectedSet = row;
  buildGrid();
}

// Only the value column counts. A number edit sets only the number: a numeric property that holds
// a text keeps showing it.
void CPropiedadesObjetosIFCDlg::endEdit(int row, int column, const std::u16string& text) {
  CIfcPropertyName* property = column == kGridValueColumn ? propertyAt(row) : nullptr;
  if (property == nullptr) return;
  grid.cell(row, column).text = text;
  switch (property->valueType) {
    case PropertyInteger: property->intValue = readInt(toUtf8(text).c_str()); break;
    case PropertyReal: property->realValue = readReal(toUtf8(text).c_str()); break;
    case PropertyString:
    case PropertyEnumerated: encodeUtf8(property->textValue, text); break;
    default: return;  // Boolean and DateTime values are not edited here
  }
  buildGrid();
}

void CPropiedadesObjetosIFCDlg::doubleClick(int row, int column) {
  if (row <= 0 || column <= 0 || !grid.contains(row, column)) return;
  CIfcPropertyName* property = propertyAt(row);
  if (column == kGridValueColumn && property != nullptr) {
    const std::string current = toUtf8Bounded(grid.cell(row, column).text, kTextFieldSize - 1);
    CPropiedadesObjetosValorIFCDlg chooser(services(), current.c_str(), catalogue);
    if (chooser.run() == kDialogOk) copyText(property->textValue, chooser.value);
  }
  buildGrid();
}

void CPropiedadesObjetosIFCDlg::insert() {
  CPropertiesSetDlg chooser(services(), setDefinitions, enumerations);
  chooser.catalogue = catalogue;
  chooser.documentFolder = documentFolder;
  if (chooser.run() == kDialogOk) {
    setDefinitions = chooser.propertySets;
    enumerations = chooser.enums;
  }
  // The set chosen in the list is assigned however that editor ended, Cancel included.
  if (!validIndex(chooser.currentRow, chooser.propertySets.size())) return;
  const CIfcPropertySet& chosen = chooser.propertySets[chooser.currentRow];
  for (const CIfcPropertySet& set : assignedSets)
    if (equalsNoCase(set.name, chosen.name)) return;  // already assigned: nothing to add
  assignedSets.push_back(chosen);
  fillList();
}

void CPropiedadesObjetosIFCDlg::remove() {
  if (!validIndex(selectedSet, assignedSets.size())) return;
  assignedSets.erase(assignedSets.begin() + selectedSet);
  selectedSet = -1;
  fillList();
  buildGrid();
}

}  // namespace orvane
