#include "ui/quantities_of_set_view.h"

#include "ui/view_helpers.h"
#include "ui_quantities_of_set_view.h"

namespace orvane {

// The captions are the template's own: the host's message file does not name them.
QuantitiesOfSetView::QuantitiesOfSetView(CQuantitiesOfSetDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::QuantitiesOfSetView>()) {
  ui_->setupUi(this);
  ui_->quantities->setKeyButtons(ui_->insertButton, ui_->editButton, ui_->removeButton);
  onClicked(ui_->insertButton, [this] { logic_.insert(); });
  onClicked(ui_->editButton, [this] { logic_.edit(); });
  onClicked(ui_->removeButton, [this] { logic_.remove(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->quantities, &ReportList::rowClicked, this,
          [this](int row) { perform([this, row] { logic_.selectRow(row); }); });
  connect(ui_->quantities, &ReportList::rowDoubleClicked, this,
          [this](int row) { perform([this, row] { logic_.doubleClick(row); }); });
}

QuantitiesOfSetView::~QuantitiesOfSetView() = default;

void QuantitiesOfSetView::collectEdits() {
  logic_.nameText = toU16(ui_->nameEdit->text());
  logic_.descriptionText = toU16(ui_->descriptionEdit->text());
  logic_.linkedElement.selected = ui_->linkedElementCombo->currentIndex();
}

void QuantitiesOfSetView::showState() {
  showText(ui_->nameEdit, logic_.nameText);
  showText(ui_->descriptionEdit, logic_.descriptionText);
  showCombo(ui_->linkedElementCombo, logic_.linkedElement);
  ui_->quantities->showState(logic_.quantities);
}

}  // namespace orvane
