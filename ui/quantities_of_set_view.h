// QuantitiesOfSetView: the window of CQuantitiesOfSetDlg: one quantity set and its quantities.
#ifndef ORVANE_UI_QUANTITIES_OF_SET_VIEW_H
#define ORVANE_UI_QUANTITIES_OF_SET_VIEW_H

#include <memory>

#include "editors/qsets/quantities_of_set_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class QuantitiesOfSetView;
}

namespace orvane {

class QuantitiesOfSetView : public DialogView {
  Q_OBJECT

 public:
  QuantitiesOfSetView(CQuantitiesOfSetDlg& logic, QWidget* parent = nullptr);
  ~QuantitiesOfSetView() override;

  void showState() override;

 protected:
  void collectEdits() override;

 private:
  CQuantitiesOfSetDlg& logic_;
  std::unique_ptr<Ui::QuantitiesOfSetView> ui_;
};

}  // namespace orvane

#endif
