// DialogServices for tests: answers questions and file pickers from queues, records every message,
// and plays a script for each nested dialog, in the order the dialogs open.
#ifndef ORVANE_TESTS_SCRIPTED_SERVICES_H
#define ORVANE_TESTS_SCRIPTED_SERVICES_H

#include <functional>
#include <typeinfo>

#include "support/scripted_answers.h"

namespace orvane::test {

class ScriptedServices : public DialogServices, public ScriptedAnswers {
 public:
  // The next nested dialog must be a `D`: it is started, then `script` works on it. A script that
  // does not end the dialog leaves it as if closed (Cancel).
  template <class D>
  void expectDialog(std::function<void(D&)> script) {
    scripts_.emplace_back(&typeid(D), [script](Dialog& dialog) { script(static_cast<D&>(dialog)); });
  }
  bool allScriptsPlayed() const { return scripts_.empty(); }

  void showMessage(std::u16string_view text) override { messages.emplace_back(text); }
  bool askYesNo(std::u16string_view text) override { return nextAnswer(text); }
  std::optional<std::u16string> pickFileToOpen(const FilePickerOptions& options) override { return nextFile(options); }
  std::optional<std::u16string> pickFileToSave(const FilePickerOptions& options) override { return nextFile(options); }
  int runModal(Dialog& dialog) override {
    dialog.start();
    const auto [type, script] = next(scripts_, "dialog");
    const bool scripted = type != nullptr && *type == typeid(dialog);
    EXPECT_TRUE(type == nullptr || scripted) << "the next script is not for the dialog " << typeid(dialog).name();
    if (scripted) script(dialog);
    if (!dialog.ended()) dialog.cancel();
    return dialog.result();
  }

 private:
  std::deque<std::pair<const std::type_info*, std::function<void(Dialog&)>>> scripts_;
};

}  // namespace orvane::test

#endif
