// PropertyAssignView: the window of CPropiedadesObjetosIFCDlg: the property sets of a host object and
// their values in the grid.
#ifndef ORVANE_UI_PROPERTY_ASSIGN_VIEW_H
#define ORVANE_UI_PROPERTY_ASSIGN_VIEW_H

#include <memory>

#include "editors/assign/property_assign_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class PropertyAssignView;
}

namespace orvane {

class PropertyAssignView : public DialogView {
  Q_OBJECT

 public:
  PropertyAssignView(CPropiedadesObjetosIFCDlg& logic, QWidget* parent = nullptr);
  ~PropertyAssignView() override;

  void showState() override;

 private:
  CPropiedadesObjetosIFCDlg& logic_;
  std::unique_ptr<Ui::PropertyAssignView> ui_;
};

}  // namespace orvane

#endif
