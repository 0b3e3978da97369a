// CPropiedadesObjetosValorIFCDlg: gives one property value, either as a host variable chosen from
// the catalogue (written "Group.Variable$") or as literal text.
#ifndef ORVANE_EDITORS_ASSIGN_PROPERTY_VALUE_DLG_H
#define ORVANE_EDITORS_ASSIGN_PROPERTY_VALUE_DLG_H

#include "editors/assign/catalogue.h"
#include "editors/assign/host_variable.h"
#include "editors/common/dialog.h"
#include "orvane/ifc_property_set.h"

namespace orvane {

// Where the value comes from; the two radio buttons.
enum ValueSource : int { kHostVariable = 0, kLiteralText = 1 };

class CPropiedadesObjetosValorIFCDlg : public Dialog {
 public:
  // `initialValue` is UTF-8; `catalogue` must outlive the dialog.
  CPropiedadesObjetosValorIFCDlg(DialogServices& services, const char* initialValue,
                                 const CConjuntoVariableZep& catalogue);

  void start() override;
  // A new group chosen in the first list: the lists are filled again for it.
  void chooseGroup(int index);
  void chooseVariable(int index) { variables.selected = index; }
  // A click on either radio button, with the value source it now shows.
  void chooseSource(int source);
  // Ends with OK when the choice is complete: a group and one of its variables, or any literal.
  void ok();

  char value[kTextFieldSize];  // the result after OK (UTF-8)
  const CConjuntoVariableZep& catalogue;
  int mode = kHostVariable;

  std::u16string caption;
  std::u16string valueText;  // the literal edit box
  ComboState groups;         // "Objeto"
  ComboState variables;      // "Propiedad"
  bool valueTextEnabled = true;

 private:
  void fillLists(const ReferenceParts& parts);
  void enableForMode();
};

}  // namespace orvane

#endif
