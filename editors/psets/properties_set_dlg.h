// CPropertiesSetDlg: the list of a document's property sets, or of its quantity sets.
//
// In property mode it adds, edits and deletes sets, imports sets and properties from a CSV file,
// and ends with kDialogSaveAs to ask its caller for a copy of part of the list. It switches to
// quantity mode when it is given quantity sets and no property sets.
#ifndef ORVANE_EDITORS_PSETS_PROPERTIES_SET_DLG_H
#define ORVANE_EDITORS_PSETS_PROPERTIES_SET_DLG_H

#include <array>
#include <cstdint>
#include <vector>

#include "editors/assign/catalogue.h"
#include "editors/common/dialog.h"
#include "orvane/ifc_property_set.h"
#include "orvane/ifc_quantity_set.h"

namespace orvane {

// The rows selected for "Guardar como...": how many, and their indices (-1 where unused).
struct SaveAsSelection {
  static constexpr int kMaxRows = 100;
  int32_t count = 0;
  std::array<int32_t, kMaxRows> rows{};
};

class CPropertiesSetDlg : public Dialog {
 public:
  CPropertiesSetDlg(DialogServices& services, const std::vector<CIfcPropertySet>& propertySets,
                    const std::vector<CIfcEnum>& enums);
  // A list over quantity sets, with the quantity document's two other lists.
  CPropertiesSetDlg(DialogServices& services, const std::vector<CIfcQuantitySet>& quantitySets,
                    const std::vector<CIfcType>& types, const std::vector<CIfcObject>& objects);

  void start() override;
  void insert();
  void edit();                 // also a double click on a row
  void remove();
  void importCsv();
  // "Guardar como...": `selectedRows` are the list's selected rows, from the top.
  void saveAs(const std::vector<int>& selectedRows);
  void selectRow(int row);
  void ok() { end(kDialogOk); }

  bool quantityMode() const { return quantityMode_; }

  std::vector<CIfcPropertySet> propertySets;
  std::vector<CIfcEnum> enums;
  CConjuntoVariableZep catalogue;  // the host's variables, for the default values of properties
  std::u16string documentFolder;   // where the CSV picker opens
  std::vector<CIfcQuantitySet> quantitySets;
  std::vector<CIfcType> types;
  std::vector<CIfcObject> objects;
  int currentRow = -1;
  SaveAsSelection selection;

  std::u16string caption, insertLabel, editLabel, removeLabel, okLabel, cancelLabel;
  std::u16string saveAsLabel, importLabel;
  ListViewState sets;

 private:
  void rebuildList();
  std::size_t rowCount() const { return quantityMode_ ? quantitySets.size() : propertySets.size(); }

  bool quantityMode_ = false;
};

}  // namespace orvane

#endif
