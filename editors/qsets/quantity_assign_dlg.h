// CCuantificadoresObjetosIFCDlg: attaches quantity sets to one host object, taking the values the
// host measured for it. Assigned sets and their values are shown read-only.
#ifndef ORVANE_EDITORS_QSETS_QUANTITY_ASSIGN_DLG_H
#define ORVANE_EDITORS_QSETS_QUANTITY_ASSIGN_DLG_H

#include <cstdint>
#include <vector>

#include "editors/common/dialog.h"
#include "editors/common/grid_model.h"
#include "orvane/ifc_quantity_set.h"

namespace orvane {

class CCuantificadoresObjetosIFCDlg : public Dialog {
 public:
  // `objectKind` names the host object's kind (at most 255 bytes are kept); `hostValues` holds
  // `hostValueCount` measured values, read only during the call. `types` and `objects` are the
  // definition file's lists, offered to the set list editor so the sets made there can have kinds
  // and linked elements.
  CCuantificadoresObjetosIFCDlg(DialogServices& services, const std::vector<CIfcQuantitySet>& definitions,
                                const std::vector<CIfcQuantitySet>& assignments, const char* objectKind,
                                const double* hostValues, int32_t hostValueCount,
                                const std::vector<CIfcType>& types = {}, const std::vector<CIfcObject>& objects = {});

  void start() override;
  void chooseSet(int row);  // a click on the list of assigned sets
  void insert();            // "Insertar...": assign a definition set with the host's values
  void remove();            // "Borrar"
  void ok() { end(kDialogOk); }

  std::vector<CIfcQuantitySet> definitions;
  std::vector<CIfcQuantitySet> assignments;
  char objectKind[256];
  int selectedSet = -1;
  std::vector<CIfcType> types;
  std::vector<CIfcObject> objects;

  ListViewState sets;
  GridModel grid;

 private:
  void fillList();
  void buildGrid();
  bool takesHostValues() const;

  const double* hostValues_;
  int32_t hostValueCount_;
};

}  // namespace orvane

#endif
