// PropertiesSetView: the window of CPropertiesSetDlg: the sets of a document (or its quantity sets), with
// several rows selectable for "Guardar como...".
#ifndef ORVANE_UI_PROPERTIES_SET_VIEW_H
#define ORVANE_UI_PROPERTIES_SET_VIEW_H

#include <memory>

#include "editors/psets/properties_set_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class PropertiesSetView;
}

namespace orvane {

class PropertiesSetView : public DialogView {
  Q_OBJECT

 public:
  PropertiesSetView(CPropertiesSetDlg& logic, QWidget* parent = nullptr);
  ~PropertiesSetView() override;

  void showState() override;

 private:
  CPropertiesSetDlg& logic_;
  std::unique_ptr<Ui::PropertiesSetView> ui_;
};

}  // namespace orvane

#endif
