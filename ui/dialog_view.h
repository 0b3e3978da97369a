// The base of every editor window: a QDialog over one toolkit-free dialog class. A view shows the
// logic's state, and each button or click runs one of the logic's operations and shows the state
// again; when the operation ended the logic, the window closes with the logic's result.
#ifndef ORVANE_UI_DIALOG_VIEW_H
#define ORVANE_UI_DIALOG_VIEW_H

#include <QAbstractButton>
#include <QDialog>
#include <functional>

#include "editors/common/dialog.h"

namespace orvane {

class DialogView : public QDialog {
  Q_OBJECT

 public:
  DialogView(Dialog& logic, QWidget* parent);

  // Puts the logic's captions, texts, lists and enabled states on the widgets. Called once the
  // logic has started and after each operation.
  virtual void showState() = 0;

  // Esc, "Cancelar" and the window's close button: the logic ends with Cancel.
  void reject() override;

  // Names the controls after the captions shown and gives the buttons their mnemonics.
  void finishState();

 protected:
  // Hands what the user typed, checked or chose to the logic, whose operations read it from there.
  virtual void collectEdits() {}

  // Runs one operation of the logic on what the widgets hold, then closes or shows the new state.
  void perform(const std::function<void()>& operation);

  // A click on `button` performs `operation`.
  void onClicked(QAbstractButton* button, std::function<void()> operation);

  void showEvent(QShowEvent* event) override;

 private:
  Dialog& logic_;
};

}  // namespace orvane

#endif
