// The toolkit-free side of every editor dialog.
//
// Each dialog is a class that holds what its window shows (captions, edit texts, lists, drop-down
// entries, enabled and visible flags) and offers the operations its buttons and clicks trigger.
// A view maps widgets onto that state and calls the operations; after each call it shows the state
// again. Everything a dialog needs of the screen (message boxes, file pickers, running a nested
// dialog) goes through DialogServices, so tests can script it and the Qt views can show it.
#ifndef ORVANE_EDITORS_COMMON_DIALOG_H
#define ORVANE_EDITORS_COMMON_DIALOG_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editors/common/messages.h"  // textoMensaje: the host's captions and messages

namespace orvane {

// What a dialog ends with. The set list ends with kDialogSaveAs to ask for a partial copy.
enum DialogResult : int { kDialogOk = 1, kDialogCancel = 2, kDialogSaveAs = 4 };

// The message shown before a set, an enumerated type or a value is deleted.
inline constexpr char16_t kConfirmDelete[] = u"Se borrará el elemento seleccionado. ¿Continuar?";

struct FileFilter {
  std::u16string description;  // "CSV Files (*.csv)"
  std::u16string pattern;       // "*.csv"
};

struct FilePickerOptions {
  std::vector<FileFilter> filters;
  std::u16string defaultExtension;  // added to a name typed without one
  bool fileMustExist = true;
  std::u16string startFolder;  // where the picker opens; empty for the process's working folder
};

// The folder of the document at `path` (UTF-8), where a picker for files that go with it opens.
std::u16string folderOf(const char* path);

class Dialog;

class DialogServices {
 public:
  virtual ~DialogServices();

  // A message box with one OK button: a refusal or a warning.
  virtual void showMessage(std::u16string_view text) = 0;
  // A message box with one OK button that reports an operation done ("Copia guardada.").
  virtual void showInformation(std::u16string_view text) { showMessage(text); }
  // A question with Yes and No buttons; true for Yes.
  virtual bool askYesNo(std::u16string_view text) = 0;
  // The file the user chose, or nothing when the picker was cancelled.
  virtual std::optional<std::u16string> pickFileToOpen(const FilePickerOptions& options) = 0;
  virtual std::optional<std::u16string> pickFileToSave(const FilePickerOptions& options) = 0;
  // Starts `dialog`, shows it modally until it ends and returns its result. A dialog closed
  // without one of its own results (the window's close button) ends with kDialogCancel.
  virtual int runModal(Dialog& dialog) = 0;
};

class Dialog {
 public:
  explicit Dialog(DialogServices& services) : services_(services) {}
  virtual ~Dialog();
  // A dialog may be moved before it is shown, never copied.
  Dialog(Dialog&&) = default;
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  // Sets the dialog up before it is shown: captions, lists, selections.
  virtual void start() = 0;

  void cancel() { end(kDialogCancel); }
  bool ended() const { return result_ != 0; }
  int result() const { return result_; }

  // Shows this dialog modally through the services and returns its result. A dialog shown again
  // (the set list after a save-as) starts without its previous result.
  int run() {
    result_ = 0;
    return services_.runModal(*this);
  }

 protected:
  void end(int result) { result_ = result; }
  DialogServices& services() const { return services_; }

 private:
  DialogServices& services_;
  int result_ = 0;
};

// A report-style list: columns with their titles, rows of texts, and what to reveal. The widths
// are the ones the host's dialogs start with; the Qt list fits every column to its contents and
// title all the same, so no column starts off-screen.
struct ListColumn {
  std::u16string title;
  int widthDivisor = 2;  // starts at the list's width divided by this
};

struct ListViewState {
  std::vector<ListColumn> columns;
  std::vector<std::vector<std::u16string>> rows;
  // After filling, each column takes the wider of its contents and its title.
  bool fitColumnsToContents = false;
  // The row to mark selected and focused and scroll into view; -1 for none, shown with no row
  // selected.
  int revealRow = -1;
};

// A drop-down list: its entries and the selected position (-1 for none).
struct ComboState {
  std::vector<std::u16string> entries;
  int selected = -1;
  bool enabled = true;

  bool hasSelection() const { return selected >= 0 && selected < static_cast<int>(entries.size()); }
};

// Whether `index` points into a list of `size` elements.
inline bool validIndex(int index, std::size_t size) {
  return index >= 0 && static_cast<std::size_t>(index) < size;
}

}  // namespace orvane

#endif
