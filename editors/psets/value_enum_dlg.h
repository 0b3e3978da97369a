// CValueEnumDlg: edits one value of an enumerated type, its code and its literal.
#ifndef ORVANE_EDITORS_PSETS_VALUE_ENUM_DLG_H
#define ORVANE_EDITORS_PSETS_VALUE_ENUM_DLG_H

#include "editors/common/dialog.h"
#include "orvane/ifc_property_set.h"

namespace orvane {

class CValueEnumDlg : public Dialog {
 public:
  CValueEnumDlg(DialogServices& services, const CIfcNodoEnum& value);

  void start() override;
  // Refuses an empty literal or code; otherwise stores both and ends with OK.
  void ok();

  CIfcNodoEnum value;

  std::u16string caption, codeLabel, textLabel, okLabel, cancelLabel;
  std::u16string codeText;   // the code edit
  std::u16string valueText;  // the literal edit
};

}  // namespace orvane

#endif
