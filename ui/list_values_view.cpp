#include "ui/list_values_view.h"

#include "ui/view_helpers.h"
#include "ui_list_values_view.h"

namespace orvane {

ListValuesView::ListValuesView(CListValuesDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::ListValuesView>()) {
  ui_->setupUi(this);
  ui_->values->setKeyButtons(ui_->insertButton, ui_->editButton, ui_->removeButton);
  onClicked(ui_->insertButton, [this] { logic_.insert(); });
  onClicked(ui_->removeButton, [this] { logic_.remove(); });
  onClicked(ui_->editButton, [this] { logic_.edit(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->values, &ReportList::rowClicked, this, [this](int row) { perform([this, row] { logic_.selectRow(row); }); });
}

ListValuesView::~ListValuesView() = default;

void ListValuesView::collectEdits() {
  logic_.nameText = toU16(ui_->nameEdit->text());
  logic_.descriptionText = toU16(ui_->descriptionEdit->text());
}

void ListValuesView::showState() {
  setWindowTitle(toQString(logic_.caption));
  ui_->nameLabel->setText(toQString(logic_.nameLabel));
  ui_->descriptionLabel->setText(toQString(logic_.descriptionLabel));
  ui_->insertButton->setText(toQString(logic_.insertLabel));
  ui_->removeButton->setText(toQString(logic_.removeLabel));
  ui_->editButton->setText(toQString(logic_.editLabel));
  ui_->okButton->setText(toQString(logic_.okLabel));
  ui_->cancelButton->setText(toQString(logic_.cancelLabel));
  showText(ui_->nameEdit, logic_.nameText);
  showText(ui_->descriptionEdit, logic_.descriptionText);
  ui_->values->showState(logic_.values);
}

}  // namespace orvane
