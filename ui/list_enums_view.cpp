#include "ui/list_enums_view.h"

#include "ui/view_helpers.h"
#include "ui_list_enums_view.h"

namespace orvane {

ListEnumsView::ListEnumsView(CListEnumsDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::ListEnumsView>()) {
  ui_->setupUi(this);
  ui_->types->setKeyButtons(ui_->insertButton, ui_->editButton, ui_->removeButton);
  onClicked(ui_->insertButton, [this] { logic_.insert(); });
  onClicked(ui_->removeButton, [this] { logic_.remove(); });
  onClicked(ui_->editButton, [this] { logic_.edit(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->types, &ReportList::rowClicked, this, [this](int row) { perform([this, row] { logic_.selectRow(row); }); });
}

ListEnumsView::~ListEnumsView() = default;

void ListEnumsView::showState() {
  setWindowTitle(toQString(logic_.caption));
  ui_->insertButton->setText(toQString(logic_.insertLabel));
  ui_->removeButton->setText(toQString(logic_.removeLabel));
  ui_->editButton->setText(toQString(logic_.editLabel));
  ui_->okButton->setText(toQString(logic_.okLabel));
  ui_->cancelButton->setText(toQString(logic_.cancelLabel));
  ui_->types->showState(logic_.types);
}

}  // namespace orvane
