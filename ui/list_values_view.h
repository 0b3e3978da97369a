// ListValuesView: the window of CListValuesDlg: one enumerated type and its values.
#ifndef ORVANE_UI_LIST_VALUES_VIEW_H
#define ORVANE_UI_LIST_VALUES_VIEW_H

#include <memory>

#include "editors/psets/list_values_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class ListValuesView;
}

namespace orvane {

class ListValuesView : public DialogView {
  Q_OBJECT

 public:
  ListValuesView(CListValuesDlg& logic, QWidget* parent = nullptr);
  ~ListValuesView() override;

  void showState() override;

 protected:
  void collectEdits() override;

 private:
  CListValuesDlg& logic_;
  std::unique_ptr<Ui::ListValuesView> ui_;
};

}  // namespace orvane

#endif
