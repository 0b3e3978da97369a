#include "ui/quantity_data_view.h"

#include "ui/view_helpers.h"
#include "ui_quantity_data_view.h"

namespace orvane {

// The captions are the template's own: the host's message file does not name them.
QuantityDataView::QuantityDataView(CQuantityDataDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::QuantityDataView>()) {
  ui_->setupUi(this);
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->kindCombo, &QComboBox::activated, this,
          [this](int index) { perform([this, index] { logic_.changeKind(index); }); });
}

QuantityDataView::~QuantityDataView() = default;

void QuantityDataView::collectEdits() {
  logic_.nameText = toU16(ui_->nameEdit->text());
  logic_.descriptionText = toU16(ui_->descriptionEdit->text());
  logic_.exportChecked = ui_->exportCheck->isChecked();
  logic_.kinds.selected = ui_->kindCombo->currentIndex();
}

void QuantityDataView::showState() {
  ui_->setNameDisplay->setText(toQString(logic_.setName));
  showText(ui_->nameEdit, logic_.nameText);
  showText(ui_->descriptionEdit, logic_.descriptionText);
  ui_->exportCheck->setChecked(logic_.exportChecked);
  showCombo(ui_->kindCombo, logic_.kinds);
}

}  // namespace orvane
