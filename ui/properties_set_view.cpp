#include "ui/properties_set_view.h"

#include "ui/view_helpers.h"
#include "ui_properties_set_view.h"

namespace orvane {

PropertiesSetView::PropertiesSetView(CPropertiesSetDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::PropertiesSetView>()) {
  ui_->setupUi(this);
  ui_->sets->setKeyButtons(ui_->insertButton, ui_->editButton, ui_->removeButton);
  ui_->sets->allowSeveralRows(true);
  onClicked(ui_->insertButton, [this] { logic_.insert(); });
  onClicked(ui_->editButton, [this] { logic_.edit(); });
  onClicked(ui_->removeButton, [this] { logic_.remove(); });
  onClicked(ui_->saveAsButton, [this] { logic_.saveAs(ui_->sets->selectedRows()); });
  onClicked(ui_->importButton, [this] { logic_.importCsv(); });
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
  connect(ui_->sets, &ReportList::rowClicked, this, [this](int row) { perform([this, row] { logic_.selectRow(row); }); });
  // The click that came first has made the row current.
  connect(ui_->sets, &ReportList::rowDoubleClicked, this, [this](int, Qt::MouseButton button) {
    if (button == Qt::LeftButton) perform([this] { logic_.edit(); });
  });
}

PropertiesSetView::~PropertiesSetView() = default;

void PropertiesSetView::showState() {
  setWindowTitle(toQString(logic_.caption));
  ui_->insertButton->setText(toQString(logic_.insertLabel));
  ui_->editButton->setText(toQString(logic_.editLabel));
  ui_->removeButton->setText(toQString(logic_.removeLabel));
  ui_->saveAsButton->setText(toQString(logic_.saveAsLabel));
  ui_->importButton->setText(toQString(logic_.importLabel));
  ui_->okButton->setText(toQString(logic_.okLabel));
  ui_->cancelButton->setText(toQString(logic_.cancelLabel));
  ui_->sets->showState(logic_.sets);
}

}  // namespace orvane
