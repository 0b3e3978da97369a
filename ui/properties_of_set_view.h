// PropertiesOfSetView: the window of CPropertiesOfSetDlg: one property set and its properties.
#ifndef ORVANE_UI_PROPERTIES_OF_SET_VIEW_H
#define ORVANE_UI_PROPERTIES_OF_SET_VIEW_H

#include <memory>

#include "editors/psets/properties_of_set_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class PropertiesOfSetView;
}

namespace orvane {

class PropertiesOfSetView : public DialogView {
  Q_OBJECT

 public:
  PropertiesOfSetView(CPropertiesOfSetDlg& logic, QWidget* parent = nullptr);
  ~PropertiesOfSetView() override;

  void showState() override;

 protected:
  void collectEdits() override;

 private:
  CPropertiesOfSetDlg& logic_;
  std::unique_ptr<Ui::PropertiesOfSetView> ui_;
};

}  // namespace orvane

#endif
