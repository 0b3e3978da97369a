#include "ui/dialog_view.h"

#include <QMessageBox>
#include <exception>
#include <new>

#include "ui/control_names.h"
#include "ui/qt_services.h"
#include "ui/view_helpers.h"

namespace orvane {

DialogView::DialogView(Dialog& logic, QWidget* parent) : QDialog(parent), logic_(logic) {}

void DialogView::reject() {
  logic_.cancel();
  done(kDialogCancel);
}

void DialogView::perform(const std::function<void()>& operation) {
  // An exception must not unwind through Qt's event loop: the operation is dropped, the dialog
  // stays open on the state it had, and the user is told.
  try {
    collectEdits();
    operation();
  } catch (const std::bad_alloc&) {
    QMessageBox::warning(this, toQString(kMessageBoxTitle), QStringLiteral("No queda memoria suficiente."));
  } catch (const std::exception& error) {
    QMessageBox::warning(this, toQString(kMessageBoxTitle), QString::fromLocal8Bit(error.what()));
  }
  if (logic_.ended()) return done(logic_.result());
  showState();
  finishState();
}

void DialogView::finishState() {
  nameControls(*this);
  giveMnemonics(*this);
}

void DialogView::showEvent(QShowEvent* event) {
  pairLabelsWithFields(*this);
  finishState();
  QDialog::showEvent(event);
}

void DialogView::onClicked(QAbstractButton* button, std::function<void()> operation) {
  connect(button, &QAbstractButton::clicked, this, [this, operation = std::move(operation)] { perform(operation); });
}

}  // namespace orvane
