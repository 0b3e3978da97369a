#include "ui/properties_of_set_view.h"

#include "ui/view_helpers.h"
#include "ui_properties_of_set_view.h"

namespace orvane {

PropertiesOfSetView::PropertiesOfSetView(CPropertiesOfSetDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::PropertiesOfSetView>()) {
  ui_->setupUi(this);
  ui_->properties->setKeyButtons(ui_->insertButton, ui_->editButton, ui_->removeButton);
  onClicked(ui_->insertButton, [this] { logic_.insert(); });
  onClicked(ui_->editButton, [this] { logic_.edit(); });
  onClicked(ui_->removeButton, [this] { logic_.remove(); });
  onClicked(ui_->valueListsButton, [this] { logic_.editEnums(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->properties, &ReportList::rowClicked, this,
          [this](int row) { perform([this, row] { logic_.selectRow(row); }); });
  connect(ui_->properties, &ReportList::rowDoubleClicked, this,
          [this](int row) { perform([this, row] { logic_.doubleClick(row); }); });
}

PropertiesOfSetView::~PropertiesOfSetView() = default;

void PropertiesOfSetView::collectEdits() {
  logic_.nameText = toU16(ui_->nameEdit->text());
  logic_.descriptionText = toU16(ui_->descriptionEdit->text());
}

void PropertiesOfSetView::showState() {
  setWindowTitle(toQString(logic_.caption));
  ui_->nameLabel->setText(toQString(logic_.nameLabel));
  ui_->descriptionLabel->setText(toQString(logic_.descriptionLabel));
  ui_->insertButton->setText(toQString(logic_.insertLabel));
  ui_->editButton->setText(toQString(logic_.editLabel));
  ui_->removeButton->setText(toQString(logic_.removeLabel));
  ui_->valueListsButton->setText(toQString(logic_.valueListsLabel));
  ui_->okButton->setText(toQString(logic_.okLabel));
  ui_->cancelButton->setText(toQString(logic_.cancelLabel));
  showText(ui_->nameEdit, logic_.nameText);
  showText(ui_->descriptionEdit, logic_.descriptionText);
  ui_->properties->showState(logic_.properties);
}

}  // namespace orvane
