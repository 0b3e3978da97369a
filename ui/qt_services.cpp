#include "ui/qt_services.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QThread>
#include <cstdio>
#include <memory>

#include "editors/common/text_codec.h"
#include "ui/dialog_view.h"
#include "ui/view_helpers.h"
#include "ui/view_registry.h"

namespace orvane {
namespace {

// On Windows "*.*" matches every file; here it would miss names without a dot.
QString qtPattern(const std::u16string& pattern) {
  return pattern == u"*.*" ? QStringLiteral("*") : toQString(pattern);
}

// The filter keeps its own description on screen ("All Files (*.*)") and filters with Qt's pattern:
// the dialog hides the pattern part Qt reads from the last parentheses.
QStringList nameFilters(const FilePickerOptions& options) {
  QStringList filters;
  for (const FileFilter& filter : options.filters)
    filters.append(toQString(filter.description) + QStringLiteral(" (") + qtPattern(filter.pattern) +
                   QStringLiteral(")"));
  return filters;
}

}  // namespace

bool haveWidgetApplication() {
  return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr &&
         QThread::currentThread() == QCoreApplication::instance()->thread();
}

QWidget* QtDialogServices::ownerWindow() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : QApplication::activeWindow();
}

void QtDialogServices::showMessage(std::u16string_view text) { showBox(QMessageBox::Warning, text); }

void QtDialogServices::showInformation(std::u16string_view text) { showBox(QMessageBox::Information, text); }

void QtDialogServices::showBox(int icon, std::u16string_view text) {
  if (!haveWidgetApplication()) {
    std::fprintf(stderr, "orvane: %s\n", toAnsi(text).c_str());
    return;
  }
  QMessageBox box(static_cast<QMessageBox::Icon>(icon), toQString(kMessageBoxTitle), toQString(text), QMessageBox::Ok,
                  ownerWindow());
  box.exec();
}

bool QtDialogServices::askYesNo(std::u16string_view text) {
  if (!haveWidgetApplication()) return false;
  QMessageBox box(QMessageBox::Question, toQString(kMessageBoxTitle), toQString(text),
                  QMessageBox::Yes | QMessageBox::No, ownerWindow());
  // The questions ask before deleting: Enter alone must not delete.
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

std::optional<std::u16string> QtDialogServices::pickFileToOpen(const FilePickerOptions& options) {
  return pickFile(options, false);
}

std::optional<std::u16string> QtDialogServices::pickFileToSave(const FilePickerOptions& options) {
  return pickFile(options, true);
}

// Qt's own dialog, the same on every desktop, so the filters show as the editors name them.
std::optional<std::u16string> QtDialogServices::pickFile(const FilePickerOptions& options, bool forSaving) {
  if (!haveWidgetApplication()) return std::nullopt;
  QFileDialog picker(ownerWindow());
  picker.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::HideNameFilterDetails);
  picker.setAcceptMode(forSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  picker.setFileMode(options.fileMustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  picker.setNameFilters(nameFilters(options));
  picker.setDefaultSuffix(toQString(options.defaultExtension));
  if (!options.startFolder.empty()) picker.setDirectory(toQString(options.startFolder));
  if (picker.exec() != QDialog::Accepted || picker.selectedFiles().isEmpty()) return std::nullopt;
  return picker.selectedFiles().constFirst().toStdU16String();
}

int QtDialogServices::runModal(Dialog& dialog) {
  std::unique_ptr<DialogView> view = haveWidgetApplication() ? createView(dialog, ownerWindow()) : nullptr;
  if (!view) {
    dialog.cancel();
    return dialog.result();
  }
  dialog.start();
  view->showState();
  view->exec();
  if (!dialog.ended()) dialog.cancel();
  return dialog.result();
}

}  // namespace orvane
