#include "support/scripted_services.h"

#include <gtest/gtest.h>

namespace orvane::test {

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
