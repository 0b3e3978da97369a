#include "ui/value_enum_view.h"

#include "ui/view_helpers.h"
#include "ui_value_enum_view.h"

namespace orvane {

ValueEnumView::ValueEnumView(CValueEnumDlg& logic, QWidget* parent)
    : DialogView(logic, parent), logic_(logic), ui_(std::make_unique<Ui::ValueEnumView>()) {
  ui_->setupUi(this);
  onClicked(ui_->okButton, [this] { logic_.ok(); });
  connect(ui_->cancelButton, &QPushButton::clicked, this, &DialogView::reject);
}

ValueEnumView::~ValueEnumView() = default;

void ValueEnumView::collectEdits() {
  logic_.codeText = toU16(ui_->codeEdit->text());
  logic_.valueText = toU16(ui_->textEdit->text());
}

void ValueEnumView::showState() {
  setWindowTitle(toQString(logic_.caption));
  ui_->codeLabel->setText(toQString(logic_.codeLabel));
  ui_->textLabel->setText(toQString(logic_.textLabel));
  ui_->okButton->setText(toQString(logic_.okLabel));
  ui_->cancelButton->setText(toQString(logic_.cancelLabel));
  showText(ui_->codeEdit, logic_.codeText);
  showText(ui_->textEdit, logic_.valueText);
}

}  // namespace orvane
