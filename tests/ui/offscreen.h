// Qt on the offscreen platform for the view tests and the end-to-end test (which links liborvane.so
// alone, so this header needs only Qt and gtest): one QApplication for the run, a way to act on a
// modal window from inside its own event loop, and helpers that find, click and fill named widgets.
#ifndef ORVANE_TESTS_UI_OFFSCREEN_H
#define ORVANE_TESTS_UI_OFFSCREEN_H

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <cstring>
#include <functional>
#include <memory>

namespace orvane::test {

// Made and destroyed while main runs: among the static objects at exit it would outlive Qt's own.
class OffscreenApplication : public ::testing::Environment {
 public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The platform notes each size hint, raise and keyboard grab it cannot honour; nothing to see.
    otherNotes = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
      if (!text.startsWith(QStringLiteral("This plugin does not support"))) otherNotes(type, context, text);
    });
    static int argc = 1;
    static char name[] = "orvane_ui_test";
    static char* argv[] = {name, nullptr};
    app_ = std::make_unique<QApplication>(argc, argv);
  }
  void TearDown() override { app_.reset(); }

 private:
  static inline QtMessageHandler otherNotes = nullptr;
  std::unique_ptr<QApplication> app_;
};
inline const ::testing::Environment* const kOffscreen = ::testing::AddGlobalTestEnvironment(new OffscreenApplication);

// Actions carry the test they belong to, so one left waiting by a failed test never acts in the next.
inline int currentTest = 0, pendingActions = 0;
constexpr int kPollMilliseconds = 10, kPolls = 500;

// Calls `act` on the next modal window of class `className` to open, from inside its event loop (the
// call that opened it blocks until it closes). A dialog `act` leaves open is then rejected; one that
// never opens fails the test.
inline void whenModalOpens(const char* className, std::function<void(QWidget&)> act, int pollsLeft = -1) {
  if (pollsLeft < 0) ++pendingActions;
  QTimer::singleShot(pollsLeft < 0 ? 0 : kPollMilliseconds, [=, test = currentTest] {
    if (test != currentTest) return;
    QWidget* modal = QApplication::activeModalWidget();
    const bool opened = modal != nullptr && std::strcmp(modal->metaObject()->className(), className) == 0;
    if (!opened && pollsLeft != 0) return whenModalOpens(className, act, pollsLeft < 0 ? kPolls : pollsLeft - 1);
    --pendingActions;
    if (!opened) {
      ADD_FAILURE() << "no " << className << " opened; the modal window is "
                    << (modal != nullptr ? modal->metaObject()->className() : "none");
      if (modal != nullptr) modal->close();
      return;
    }
    act(*modal);
    if (auto* dialog = qobject_cast<QDialog*>(modal); dialog != nullptr && dialog->isVisible()) dialog->reject();
  });
}

template <class Window>
void whenDialogOpens(std::function<void(Window&)> act) {
  whenModalOpens(Window::staticMetaObject.className(), [act](QWidget& widget) { act(dynamic_cast<Window&>(widget)); });
}

class OffscreenTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ++currentTest;
    pendingActions = 0;
  }
  void TearDown() override {
    for (int i = 0; i < kPolls && pendingActions > 0; ++i) QTest::qWait(kPollMilliseconds);
    EXPECT_EQ(pendingActions, 0) << "a dialog the test waited for never opened";
    ++currentTest;
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->isVisible()) window->close();
  }
};

// The named child of `window`; the test fails when there is none.
template <class Widget>
Widget* child(const QWidget& window, const char* name) {
  Widget* found = window.findChild<Widget*>(QString::fromLatin1(name));
  if (found == nullptr) ADD_FAILURE() << "no widget named " << name;
  return found;
}

inline void click(const QWidget& window, const char* buttonName) {
  if (auto* button = child<QAbstractButton>(window, buttonName)) QTest::mouseClick(button, Qt::LeftButton);
}

// The views read what an edit holds, however it got there.
inline void typeInto(const QWidget& window, const char* editName, const QString& text) {
  if (auto* edit = child<QLineEdit>(window, editName)) edit->setText(text);
}

}  // namespace orvane::test

#endif
