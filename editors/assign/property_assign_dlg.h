// CPropiedadesObjetosIFCDlg: which property sets one host object carries, and the value of each of
// their properties, literal or a reference to a host variable, edited in a grid.
#ifndef ORVANE_EDITORS_ASSIGN_PROPERTY_ASSIGN_DLG_H
#define ORVANE_EDITORS_ASSIGN_PROPERTY_ASSIGN_DLG_H

#include <vector>

#include "editors/assign/catalogue.h"
#include "editors/common/dialog.h"
#include "editors/common/grid_model.h"
#include "orvane/ifc_property_set.h"

namespace orvane {

// The grid's value column and the texts it shows.
inline constexpr int kGridValueColumn = 3;

class CPropiedadesObjetosIFCDlg : public Dialog {
 public:
  CPropiedadesObjetosIFCDlg(DialogServices& services, const std::vector<CIfcPropertySet>& setDefinitions,
                            const std::vector<CIfcEnum>& enumerations,
                            const std::vector<CIfcPropertySet>& assignedSets);

  void start() override;
  void chooseSet(int row);  // a click on the list of assigned sets (-1: no item)
  void insert();            // "Insertar...": assign a set chosen in the set list editor
  void remove();            // "Borrar": the chosen set, without a question
  // The end of an in-place edit of a grid cell, with the cell's new text.
  void endEdit(int row, int column, const std::u16string& text);
  void doubleClick(int row, int column);
  void ok() { end(kDialogOk); }

  int selectedSet = -1;
  std::vector<CIfcPropertySet> setDefinitions;
  std::vector<CIfcEnum> enumerations;
  std::vector<CIfcPropertySet> assignedSets;
  CConjuntoVariableZep catalogue;
  std::u16string documentFolder;  // handed to the set list it opens, for its pickers

  std::u16string caption, setsFrame, valuesFrame, insertLabel, removeLabel, okLabel, cancelLabel;
  bool excelVisible = false;  // the template's "Excel..." button: hidden, no action
  ListViewState sets;
  GridModel grid;

 private:
  void fillList();
  void buildGrid();
  void fillPropertyRow(int row, const CIfcPropertyName& property);
  CIfcPropertyName* propertyAt(int row);
};

}  // namespace orvane

#endif
