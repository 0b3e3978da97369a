// QuantityAssignView: the window of CCuantificadoresObjetosIFCDlg: the quantity sets of a host object
// and their values, read-only.
#ifndef ORVANE_UI_QUANTITY_ASSIGN_VIEW_H
#define ORVANE_UI_QUANTITY_ASSIGN_VIEW_H

#include <memory>

#include "editors/qsets/quantity_assign_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class QuantityAssignView;
}

namespace orvane {

class QuantityAssignView : public DialogView {
  Q_OBJECT

 public:
  QuantityAssignView(CCuantificadoresObjetosIFCDlg& logic, QWidget* parent = nullptr);
  ~QuantityAssignView() override;

  void showState() override;

 private:
  CCuantificadoresObjetosIFCDlg& logic_;
  std::unique_ptr<Ui::QuantityAssignView> ui_;
};

}  // namespace orvane

#endif
