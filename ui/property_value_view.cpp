#include "ui/property_value_view.h"

#include <QButtonGroup>

#include "ui/view_helpers.h"
#include "ui_property_value_view.h"

namespace orvane {

PropertyValueView::PropertyValueView(CPropiedadesObjetosValorIFCDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::PropertyValueView>()) {
  ui_->setupUi(this);
  // The two radio buttons sit in different frames, so they need a group to exclude each other.
  auto* sources = new QButtonGroup(this);
  sources->addButton(ui_->hostVariableRadio, kHostVariable);
  sources->addButton(ui_->literalRadio, kLiteralText);
  // Toggled, not clicked: a radio button checked with the keyboard or by an assistive technology
  // chooses the source as a click does.
  connect(sources, &QButtonGroup::idToggled, this, [this](int source, bool checked) {
    if (checked && !showing_) perform([this, source] { logic_.chooseSource(source); });
  });
  ui_->groupLabel->setBuddy(ui_->groupCombo);
  ui_->variableLabel->setBuddy(ui_->variableCombo);
  connect(ui_->groupCombo, &QComboBox::activated, this,
          [this](int index) { perform([this, index] { logic_.chooseGroup(index); }); });
  connect(ui_->variableCombo, &QComboBox::activated, this,
          [this](int index) { perform([this, index] { logic_.chooseVariable(index); }); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
}

PropertyValueView::~PropertyValueView() = default;

void PropertyValueView::collectEdits() {
  logic_.mode = ui_->literalRadio->isChecked() ? kLiteralText : kHostVariable;
  logic_.valueText = toU16(ui_->valueEdit->text());
}

void PropertyValueView::showState() {
  setWindowTitle(toQString(logic_.caption));
  showing_ = true;
  ui_->hostVariableRadio->setChecked(logic_.mode == kHostVariable);
  ui_->literalRadio->setChecked(logic_.mode == kLiteralText);
  showing_ = false;
  showCombo(ui_->groupCombo, logic_.groups);
  showCombo(ui_->variableCombo, logic_.variables);
  showText(ui_->valueEdit, logic_.valueText);
  ui_->valueEdit->setEnabled(logic_.valueTextEnabled);
}

}  // namespace orvane
