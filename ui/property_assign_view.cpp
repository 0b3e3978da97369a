#include "ui/property_assign_view.h"

#include "ui/view_helpers.h"
#include "ui_property_assign_view.h"

namespace orvane {

PropertyAssignView::PropertyAssignView(CPropiedadesObjetosIFCDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::PropertyAssignView>()) {
  ui_->setupUi(this);
  ui_->sets->setKeyButtons(ui_->insertButton, nullptr, ui_->removeButton);
  onClicked(ui_->insertButton, [this] { logic_.insert(); });
  onClicked(ui_->removeButton, [this] { logic_.remove(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->sets, &ReportList::rowClicked, this, [this](int row) { perform([this, row] { logic_.chooseSet(row); }); });
  connect(ui_->grid, &GridControl::cellEdited, this, [this](int row, int column, const QString& text) {
    perform([this, row, column, text] { logic_.endEdit(row, column, toU16(text)); });
  });
  connect(ui_->grid, &GridControl::cellDoubleClicked, this,
          [this](int row, int column) { perform([this, row, column] { logic_.doubleClick(row, column); }); });
}

// A cell still being edited is committed when the window hides, which QWidget's destructor does
// after this view is gone: that commit must not reach it.
PropertyAssignView::~PropertyAssignView() { ui_->grid->disconnect(this); }

void PropertyAssignView::showState() {
  setWindowTitle(toQString(logic_.caption));
  ui_->setsFrame->setTitle(toQString(logic_.setsFrame));
  ui_->valuesFrame->setTitle(toQString(logic_.valuesFrame));
  ui_->insertButton->setText(toQString(logic_.insertLabel));
  ui_->removeButton->setText(toQString(logic_.removeLabel));
  ui_->okButton->setText(toQString(logic_.okLabel));
  ui_->cancelButton->setText(toQString(logic_.cancelLabel));
  ui_->excelButton->setVisible(logic_.excelVisible);
  ui_->sets->showState(logic_.sets);
  ui_->grid->display(logic_.grid);
}

}  // namespace orvane
