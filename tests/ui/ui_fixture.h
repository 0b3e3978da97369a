// Common ground for the view tests: a QApplication on the offscreen platform, services that record
// message boxes instead of blocking on them, a way to act on a modal dialog from inside its own
// event loop, and small helpers that click and read widgets.
#ifndef ORVANE_TESTS_UI_FIXTURE_H
#define ORVANE_TESTS_UI_FIXTURE_H

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <functional>
#include <typeinfo>

#include "editors/common/messages.h"
#include "editors/editor_fixture.h"
#include "support/scripted_answers.h"
#include "ui/grid/grid_control.h"
#include "ui/list_enums_view.h"
#include "ui/list_values_view.h"
#include "ui/properties_of_set_view.h"
#include "ui/properties_set_view.h"
#include "ui/property_assign_view.h"
#include "ui/property_data_view.h"
#include "ui/property_value_view.h"
#include "ui/qt_services.h"
#include "ui/quantities_of_set_view.h"
#include "ui/quantity_assign_view.h"
#include "ui/quantity_data_view.h"
#include "ui/report_list.h"
#include "ui/value_enum_view.h"

namespace orvane::test {

// Message boxes, questions and file pickers are recorded and answered from queues; nested dialogs
// open as real views.
class RecordingQtServices : public QtDialogServices, public ScriptedAnswers {
 public:
  void showMessage(std::u16string_view text) override { messages.emplace_back(text); }
  void showInformation(std::u16string_view text) override { messages.emplace_back(text); }
  bool askYesNo(std::u16string_view text) override { return nextAnswer(text); }
  std::optional<std::u16string> pickFileToOpen(const FilePickerOptions& options) override { return nextFile(options); }
  std::optional<std::u16string> pickFileToSave(const FilePickerOptions& options) override { return nextFile(options); }
};

// Calls `act` on the next modal dialog of type `Window` to open, from inside its event loop (a
// modal dialog opened by a click blocks the click until it closes). One that `act` leaves open is
// then rejected; one that never opens fails the test.
void whenModalOpens(const std::type_info& window, std::function<void(QWidget&)> act);

template <class Window>
void whenDialogOpens(std::function<void(Window&)> act) {
  whenModalOpens(typeid(Window), [act = std::move(act)](QWidget& widget) { act(dynamic_cast<Window&>(widget)); });
}

class UiTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Starts `logic` and shows `view` over it, as runModal does, but without blocking.
  template <class View, class Logic>
  void open(View& view, Logic& logic) {
    logic.start();
    view.showState();
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  }

  RecordingQtServices services;
};

// The named child of `window`; the test fails when there is none.
template <class Widget>
Widget* child(const QWidget& window, const char* name) {
  Widget* found = window.findChild<Widget*>(QString::fromLatin1(name));
  if (found == nullptr) ADD_FAILURE() << "no widget named " << name;
  return found;
}

void click(const QWidget& window, const char* buttonName);
void clickRow(QTableWidget* list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void doubleClickAt(QWidget* widget, QPoint position, Qt::MouseButton button = Qt::LeftButton);
void doubleClickRow(QTableWidget* list, int row, Qt::MouseButton button = Qt::LeftButton);
// The views read what an edit holds, however it got there.
inline void typeInto(const QWidget& window, const char* editName, const QString& text) {
  if (auto* edit = child<QLineEdit>(window, editName)) edit->setText(text);
}
// What a user choosing entry `index` of a drop-down list does to it.
void choose(const QWidget& window, const char* comboName, int index);
// Lets the event loop run what the last action posted, and what that posted in turn.
void settle();

// What the named controls of `window` show, joined by " | " for one comparison: an edit's, label's,
// button's or drop-down's text, "on" or "off" for a check box or radio button, a list's or grid's
// column titles and rows ("Name,Type: a,b; c,d"); "-" for a hidden control, "!" before a disabled one's.
std::string look(const QWidget& window, const QString& names);
QStringList entries(const QComboBox* combo);
inline std::u16string u(const char* utf8) { return QString::fromUtf8(utf8).toStdU16String(); }

}  // namespace orvane::test

#endif
