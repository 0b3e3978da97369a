// QuantityDataView: the window of CQuantityDataDlg: one quantity.
#ifndef ORVANE_UI_QUANTITY_DATA_VIEW_H
#define ORVANE_UI_QUANTITY_DATA_VIEW_H

#include <memory>

#include "editors/qsets/quantity_data_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class QuantityDataView;
}

namespace orvane {

class QuantityDataView : public DialogView {
  Q_OBJECT

 public:
  QuantityDataView(CQuantityDataDlg& logic, QWidget* parent = nullptr);
  ~QuantityDataView() override;

  void showState() override;

 protected:
  void collectEdits() override;

 private:
  CQuantityDataDlg& logic_;
  std::unique_ptr<Ui::QuantityDataView> ui_;
};

}  // namespace orvane

#endif
