// PropertyDataView: the window of CPropertyDataDlg: one property definition.
#ifndef ORVANE_UI_PROPERTY_DATA_VIEW_H
#define ORVANE_UI_PROPERTY_DATA_VIEW_H

#include <memory>

#include "editors/psets/property_data_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class PropertyDataView;
}

namespace orvane {

class PropertyDataView : public DialogView {
  Q_OBJECT

 public:
  PropertyDataView(CPropertyDataDlg& logic, QWidget* parent = nullptr);
  ~PropertyDataView() override;

  void showState() override;

 protected:
  void collectEdits() override;

 private:
  CPropertyDataDlg& logic_;
  std::unique_ptr<Ui::PropertyDataView> ui_;
};

}  // namespace orvane

#endif
