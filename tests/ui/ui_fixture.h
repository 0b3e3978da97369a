// Common ground for the view tests: services that record message boxes instead of blocking on them,
// and small helpers that click and read widgets.
#ifndef ORVANE_TESTS_UI_FIXTURE_H
#define ORVANE_TESTS_UI_FIXTURE_H

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "editors/common/messages.h"
#include "editors/editor_fixture.h"
#include "offscreen.h"
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

class UiTest : public OffscreenTest {
 protected:
  void SetUp() override {
    OffscreenTest::SetUp();
    setRutaMensajes(ORVANE_TEST_DATA "/messages.txt");
  }
  void TearDown() override {
    OffscreenTest::TearDown();
    liberaMensajes();
  }

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

inline void clickRow(QTableWidget* list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, list->visualItemRect(list->item(row, 0)).center());
}

// QTest's double click is the second press alone; a person's is press, release, press, release.
inline void doubleClickAt(QWidget* widget, QPoint position, Qt::MouseButton button = Qt::LeftButton) {
  QTest::mousePress(widget, button, Qt::NoModifier, position);
  QTest::mouseRelease(widget, button, Qt::NoModifier, position);
  QTest::mouseDClick(widget, button, Qt::NoModifier, position);
  QTest::mouseRelease(widget, button, Qt::NoModifier, position);
}

inline void doubleClickRow(QTableWidget* list, int row, Qt::MouseButton button = Qt::LeftButton) {
  doubleClickAt(list->viewport(), list->visualItemRect(list->item(row, 0)).center(), button);
}

// What a user choosing entry `index` of a drop-down list does to it.
inline void choose(const QWidget& window, const char* comboName, int index) {
  if (auto* combo = child<QComboBox>(window, comboName)) {
    combo->setCurrentIndex(index);
    emit combo->activated(index);
  }
}

// Lets the event loop run what the last action posted, and what that posted in turn.
inline void settle() {
  for (int round = 0; round < 5; ++round) QCoreApplication::processEvents();
}

// What the named controls of `window` show, joined by " | " for one comparison: an edit's, label's,
// button's or drop-down's text, "on" or "off" for a check box or radio button, a list's or grid's
// column titles and rows ("Name,Type: a,b; c,d"); "-" for a hidden control, "!" before a disabled one's.
inline std::string look(const QWidget& window, const QString& names) {
  QStringList shown;
  for (const QString& name : names.split(' ')) {
    const auto* widget = child<QWidget>(window, name.toLatin1().constData());
    QString text;
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) text = edit->text();
    if (const auto* label = qobject_cast<const QLabel*>(widget)) text = label->text();
    if (const auto* combo = qobject_cast<const QComboBox*>(widget)) text = combo->currentText();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
      text = !button->isCheckable() ? button->text() : button->isChecked() ? "on" : "off";
    if (const auto* items = qobject_cast<const QAbstractItemView*>(widget)) {
      const QAbstractItemModel& model = *items->model();
      QStringList titles, rows;
      for (int column = 0; column < model.columnCount(); ++column)
        titles.append(model.headerData(column, Qt::Horizontal).toString());
      for (int row = 0; row < model.rowCount(); ++row) {
        rows.append(QString());
        for (int column = 0; column < model.columnCount(); ++column)
          rows.back() += (column > 0 ? "," : "") + model.index(row, column).data().toString();
      }
      text = (titles.join(',') + ": " + rows.join("; ")).trimmed();
    }
    shown.append(widget == nullptr || widget->isHidden() ? "-" : widget->isEnabled() ? text : "!" + text);
  }
  return shown.join(" | ").toStdString();
}

inline QStringList entries(const QComboBox* combo) {
  QStringList texts;
  for (int i = 0; i < combo->count(); ++i) texts.append(combo->itemText(i));
  return texts;
}

}  // namespace orvane::test

#endif
