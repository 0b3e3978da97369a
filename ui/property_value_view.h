// PropertyValueView: the window of CPropiedadesObjetosValorIFCDlg: a host variable or a literal value.
#ifndef ORVANE_UI_PROPERTY_VALUE_VIEW_H
#define ORVANE_UI_PROPERTY_VALUE_VIEW_H

#include <memory>

#include "editors/assign/property_value_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class PropertyValueView;
}

namespace orvane {

class PropertyValueView : public DialogView {
  Q_OBJECT

 public:
  PropertyValueView(CPropiedadesObjetosValorIFCDlg& logic, QWidget* parent = nullptr);
  ~PropertyValueView() override;

  void showState() override;

 protected:
  void collectEdits() override;

 private:
  CPropiedadesObjetosValorIFCDlg& logic_;
  std::unique_ptr<Ui::PropertyValueView> ui_;
  bool showing_ = false;  // the radio buttons are being set from the logic, not by the user
};

}  // namespace orvane

#endif
