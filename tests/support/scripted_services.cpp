#include "support/scripted_services.h"

#include <gtest/gtest.h>

namespace orvane::test {

void ScriptedServices::showMessage(std::u16string_view text) { messages.emplace_back(text); }

bool ScriptedServices::askYesNo(std::u16string_view text) {
  questions.emplace_back(text);
  if (answers.empty()) {
    ADD_FAILURE() << "a question nobody expected was asked";
    return false;
  }
  const bool answer = answers.front();
  answers.pop_front();
  return answer;
}

std::optional<std::u16string> ScriptedServices::nextFile(const FilePickerOptions& options) {
  pickers.push_back(options);
  if (pickedFiles.empty()) {
    ADD_FAILURE() << "a file picker nobody expected was shown";
    return std::nullopt;
  }
  std::optional<std::u16string> file = pickedFiles.front();
  pickedFiles.pop_front();
  return file;
}

std::optional<std::u16string> ScriptedServices::pickFileToOpen(const FilePickerOptions& options) {
  return nextFile(options);
}

std::optional<std::u16string> ScriptedServices::pickFileToSave(const FilePickerOptions& options) {
  return nextFile(options);
}

int ScriptedServices::runModal(Dialog& dialog) {
  dialogsRun.push_back(typeid(dialog).name());
  dialog.start();
  if (scripts_.empty() || scripts_.front().type != typeid(dialog)) {
    ADD_FAILURE() << "no script for the dialog " << typeid(dialog).name();
    dialog.cancel();
    return dialog.result();
  }
  Script script = std::move(scripts_.front());
  scripts_.pop_front();
  script.play(dialog);
  if (!dialog.ended()) dialog.cancel();
  return dialog.result();
}

}  // namespace orvane::test
