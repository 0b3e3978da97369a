// ValueEnumView: the window of CValueEnumDlg: one value of an enumerated type.
#ifndef ORVANE_UI_VALUE_ENUM_VIEW_H
#define ORVANE_UI_VALUE_ENUM_VIEW_H

#include <memory>

#include "editors/psets/value_enum_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class ValueEnumView;
}

namespace orvane {

class ValueEnumView : public DialogView {
  Q_OBJECT

 public:
  ValueEnumView(CValueEnumDlg& logic, QWidget* parent = nullptr);
  ~ValueEnumView() override;

  void showState() override;

 protected:
  void collectEdits() override;

 private:
  CValueEnumDlg& logic_;
  std::unique_ptr<Ui::ValueEnumView> ui_;
};

}  // namespace orvane

#endif
