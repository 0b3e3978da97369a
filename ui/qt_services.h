// DialogServices on Qt Widgets: message boxes, the file pickers, and nested dialogs run modally
// with the view that fits their class. Each window opens above the modal dialog that is active.
#ifndef ORVANE_UI_QT_SERVICES_H
#define ORVANE_UI_QT_SERVICES_H

#include "editors/common/dialog.h"

class QWidget;

namespace orvane {

// The title of the library's message boxes.
inline constexpr char16_t kMessageBoxTitle[] = u"Orvane";

// Whether Qt widgets can be made here: a QApplication exists and this is its thread.
bool haveWidgetApplication();

class QtDialogServices : public DialogServices {
 public:
  void showMessage(std::u16string_view text) override;
  void showInformation(std::u16string_view text) override;
  bool askYesNo(std::u16string_view text) override;
  std::optional<std::u16string> pickFileToOpen(const FilePickerOptions& options) override;
  std::optional<std::u16string> pickFileToSave(const FilePickerOptions& options) override;
  // Creates the view of the dialog's class, starts the dialog, shows it modally and gives its
  // result: Cancel for a window closed by Esc or its close button, and for a dialog that has no
  // view or cannot be shown (no QApplication).
  int runModal(Dialog& dialog) override;

 protected:
  // The window new windows open above: the active modal dialog, else the active window.
  static QWidget* ownerWindow();

 private:
  std::optional<std::u16string> pickFile(const FilePickerOptions& options, bool forSaving);
  void showBox(int icon, std::u16string_view text);
};

}  // namespace orvane

#endif
