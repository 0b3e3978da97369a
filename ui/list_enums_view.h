// ListEnumsView: the window of CListEnumsDlg: the enumerated types.
#ifndef ORVANE_UI_LIST_ENUMS_VIEW_H
#define ORVANE_UI_LIST_ENUMS_VIEW_H

#include <memory>

#include "editors/psets/list_enums_dlg.h"
#include "ui/dialog_view.h"

namespace Ui {
class ListEnumsView;
}

namespace orvane {

class ListEnumsView : public DialogView {
  Q_OBJECT

 public:
  ListEnumsView(CListEnumsDlg& logic, QWidget* parent = nullptr);
  ~ListEnumsView() override;

  void showState() override;

 private:
  CListEnumsDlg& logic_;
  std::unique_ptr<Ui::ListEnumsView> ui_;
};

}  // namespace orvane

#endif
