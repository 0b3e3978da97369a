#include "editors/psets/properties_set_dlg.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>

#include "editors/common/edit_mode.h"
#include "editors/common/line_reader.h"
#include "editors/common/messages.h"
#include "editors/common/text_codec.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "model/names.h"
#include "model/numbers.h"
#include "model/text.h"

namespace orvane {
namespace {

// Splits a CSV line at ";" where runs of ";" count as one and leading ones are skipped, so there
// are no empty fields. The line end is no separator: it stays in the last field.
std::vector<std::string_view> csvFields(std::string_view line) {
  std::vector<std::string_view> fields;
  std::size_t start = 0;
  while (start < line.size()) {
    start = line.find_first_not_of(';', start);
    if (start == std::string_view::npos) break;
    const std::size_t stop = std::min(line.find(';', start), line.size());
    fields.push_back(line.substr(start, stop - start));
    start = stop;
  }
  return fields;
}

bool holdsProperty(const CIfcPropertySet& set, std::string_view name) {
  return std::any_of(set.properties.begin(), set.properties.end(),
                     [&](const CIfcPropertyName& p) { return equalsNoCase(p.name, name); });
}

}  // namespace

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
    std::sort(quantitySets.begin(), quantitySets.end(), NameLessNoCase{});
  } else {
    CPropertiesOfSetDlg editor(services(), kNewItem, CIfcPropertySet(), enums, &propertySets, &catalogue);
    if (editor.run() != kDialogOk) return;
    propertySets.push_back(editor.set);
    enums = editor.enums;
    std::sort(propertySets.begin(), propertySets.end(), NameLessNoCase{});
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
    std::sort(quantitySets.begin(), quantitySets.end(), NameLessNoCase{});
  } else {
    CPropertiesOfSetDlg editor(services(), kEditItem, propertySets[currentRow], enums, &propertySets,
                               &catalogue);
    if (editor.run() != kDialogOk) return;
    propertySets[currentRow] = editor.set;
    enums = editor.enums;
    std::sort(propertySets.begin(), propertySets.end(), NameLessNoCase{});
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
  const FilePickerOptions options{{{u"CSV Files (*.csv)", u"*.csv"}, {u"All Files (*.*)", u"*.*"}}, u"csv", true};
  const std::optional<std::u16string> chosen = services().pickFileToOpen(options);
  if (!chosen) return;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(toUtf8(*chosen).c_str(), "r"), std::fclose);
  if (!file) return;
  // Lines of at most 255 characters; a longer one is read in pieces. A last line without its line
  // end is left out, as the host's own importer always did.
  char line[256];
  while (readTextLine(line, sizeof line, file.get()) != nullptr && !std::feof(file.get())) importLine(line);
  rebuildList();
}

void CPropertiesSetDlg::importLine(const char* line) {
  const std::vector<std::string_view> fields = csvFields(line);
  if (fields.size() < 4) return;
  CIfcPropertyName property;
  copyText(property.name, fields[1]);
  copyText(property.description, fields[2]);
  const char* realWord = getMensaje(4, 3);
  property.valueType = (realWord != nullptr && equalsNoCase(fields[3], realWord)) ? PropertyReal : PropertyString;
  if (fields.size() > 4) {
    if (property.valueType == PropertyReal) property.realValue = readReal(std::string(fields[4]).c_str());
    else copyText(property.textValue, fields[4]);
  }

  bool named = false;
  for (CIfcPropertySet& set : propertySets) {
    if (!equalsNoCase(set.name, fields[0])) continue;
    named = true;
    if (!holdsProperty(set, fields[1])) {
      set.properties.push_back(property);
      return;
    }
  }
  if (named) return;  // every set of that name has the property already
  CIfcPropertySet set;
  copyText(set.name, fields[0]);
  set.properties.push_back(property);
  propertySets.push_back(set);
}

}  // namespace orvane
