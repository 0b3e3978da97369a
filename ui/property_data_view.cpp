#include "ui/property_data_view.h"

#include "ui/view_helpers.h"
#include "ui_property_data_view.h"

namespace orvane {

PropertyDataView::PropertyDataView(CPropertyDataDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::PropertyDataView>()) {
  ui_->setupUi(this);
  onClicked(ui_->editValueListButton, [this] { logic_.editValueList(); });
  onClicked(ui_->chooseValueButton, [this] { logic_.chooseValue(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->typeCombo, &QComboBox::activated, this,
          [this](int index) { perform([this, index] { logic_.changeType(index); }); });
  connect(ui_->valueListCombo, &QComboBox::activated, this,
          [this](int index) { perform([this, index] { logic_.chooseValueList(index); }); });
}

PropertyDataView::~PropertyDataView() = default;

void PropertyDataView::collectEdits() {
  logic_.nameText = toU16(ui_->nameEdit->text());
  logic_.descriptionText = toU16(ui_->descriptionEdit->text());
  logic_.defaultValueText = toU16(ui_->defaultValueEdit->text());
  logic_.ruleText = toU16(ui_->ruleEdit->text());
  logic_.optionalChecked = ui_->optionalCheck->isChecked();
  logic_.booleanChecked = ui_->booleanCheck->isChecked();
  logic_.units.selected = ui_->unitCombo->currentIndex();
}

void PropertyDataView::showState() {
  setWindowTitle(toQString(logic_.caption));
  ui_->setNameLabel->setText(toQString(logic_.setNameLabel));
  ui_->nameLabel->setText(toQString(logic_.nameLabel));
  ui_->descriptionLabel->setText(toQString(logic_.descriptionLabel));
  ui_->typeLabel->setText(toQString(logic_.typeLabel));
  ui_->valueListLabel->setText(toQString(logic_.valueListLabel));
  ui_->optionalCheck->setText(toQString(logic_.optionalLabel));
  ui_->defaultValueLabel->setText(toQString(logic_.defaultValueLabel));
  ui_->ruleLabel->setText(toQString(logic_.ruleLabel));
  ui_->unitLabel->setText(toQString(logic_.unitLabel));
  ui_->editValueListButton->setText(toQString(logic_.editLabel));
  ui_->okButton->setText(toQString(logic_.okLabel));
  ui_->cancelButton->setText(toQString(logic_.cancelLabel));

  ui_->setNameDisplay->setText(toQString(logic_.setName));
  showText(ui_->nameEdit, logic_.nameText);
  showText(ui_->descriptionEdit, logic_.descriptionText);
  showText(ui_->defaultValueEdit, logic_.defaultValueText);
  showText(ui_->ruleEdit, logic_.ruleText);
  ui_->optionalCheck->setChecked(logic_.optionalChecked);
  ui_->booleanCheck->setChecked(logic_.booleanChecked);
  showCombo(ui_->typeCombo, logic_.types);
  showCombo(ui_->valueListCombo, logic_.valueLists);
  showCombo(ui_->unitCombo, logic_.units);

  ui_->defaultValueEdit->setVisible(logic_.defaultValueVisible);
  ui_->defaultValueEdit->setEnabled(logic_.defaultValueEnabled);
  ui_->booleanCheck->setVisible(logic_.booleanCheckVisible);
  ui_->editValueListButton->setEnabled(logic_.editValueListEnabled);
}

}  // namespace orvane
