// DialogServices for tests: answers questions and file pickers from queues, records every message,
// and plays a script for each nested dialog, in the order the dialogs open.
#ifndef ORVANE_TESTS_SCRIPTED_SERVICES_H
#define ORVANE_TESTS_SCRIPTED_SERVICES_H

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <typeindex>
#include <vector>

#include "editors/common/dialog.h"

namespace orvane::test {

class ScriptedServices : public DialogServices {
 public:
  // The next nested dialog must be a `D`: it is started, then `script` works on it. A script that
  // does not end the dialog leaves it as if closed (Cancel).
  template <class D>
  void expectDialog(std::function<void(D&)> script) {
    scripts_.push_back({typeid(D), [script](Dialog& dialog) { script(static_cast<D&>(dialog)); }});
  }
  bool allScriptsPlayed() const { return scripts_.empty(); }

  std::deque<bool> answers;                               // for askYesNo, in order
  std::deque<std::optional<std::u16string>> pickedFiles;  // for both file pickers, in order

  std::vector<std::u16string> messages;   // every message box shown
  std::vector<std::u16string> questions;  // every Yes/No question asked
  std::vector<FilePickerOptions> pickers;
  std::vector<std::string> dialogsRun;    // the type names of the nested dialogs, in order

  void showMessage(std::u16string_view text) override;
  bool askYesNo(std::u16string_view text) override;
  std::optional<std::u16string> pickFileToOpen(const FilePickerOptions& options) override;
  std::optional<std::u16string> pickFileToSave(const FilePickerOptions& options) override;
  int runModal(Dialog& dialog) override;

 private:
  std::optional<std::u16string> nextFile(const FilePickerOptions& options);

  struct Script {
    std::type_index type;
    std::function<void(Dialog&)> play;
  };
  std::deque<Script> scripts_;
};

}  // namespace orvane::test

#endif
