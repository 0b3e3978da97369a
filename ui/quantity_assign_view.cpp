#include "ui/quantity_assign_view.h"

#include "ui/view_helpers.h"
#include "ui_quantity_assign_view.h"

namespace orvane {

// The captions are the template's own; the "Excel..." button is there and does nothing.
QuantityAssignView::QuantityAssignView(CCuantificadoresObjetosIFCDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::QuantityAssignView>()) {
  ui_->setupUi(this);
  ui_->sets->setKeyButtons(ui_->insertButton, nullptr, ui_->removeButton);
  onClicked(ui_->insertButton, [this] { logic_.insert(); });
  onClicked(ui_->removeButton, [this] { logic_.remove(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->sets, &ReportList::rowClicked, this, [this](int row) { perform([this, row] { logic_.chooseSet(row); }); });
}

QuantityAssignView::~QuantityAssignView() = default;

void QuantityAssignView::showState() {
  ui_->sets->showState(logic_.sets);
  ui_->grid->display(logic_.grid);
}

}  // namespace orvane
