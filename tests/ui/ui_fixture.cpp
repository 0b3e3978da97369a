#include "ui_fixture.h"

#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <memory>

namespace orvane::test {
namespace {

// The offscreen platform notes each size hint, raise and keyboard grab it cannot honour; nothing to see.
QtMessageHandler otherNotes = nullptr;

void quietOffscreenNotes(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (!message.startsWith(QStringLiteral("This plugin does not support"))) otherNotes(type, context, message);
}

// One QApplication for the whole run, on a platform that needs no display.
class QtEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    otherNotes = qInstallMessageHandler(quietOffscreenNotes);
    static int argc = 1;
    static char name[] = "ui_tests";
    static char* argv[] = {name, nullptr};
    app_ = std::make_unique<QApplication>(argc, argv);
  }
  void TearDown() override { app_.reset(); }

 private:
  std::unique_ptr<QApplication> app_;
};

const ::testing::Environment* const kQtEnvironment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);

// Actions scheduled by whenModalOpens carry the test they belong to, so one left waiting by a
// failed test never acts in the next.
int currentTest = 0;
int pendingActions = 0;
constexpr int kPollMilliseconds = 10, kPolls = 500;

void pollForModal(const std::type_info& window, std::function<void(QWidget&)> act, int test, int pollsLeft) {
  const std::type_info* expected = &window;
  QTimer::singleShot(pollsLeft == kPolls ? 0 : kPollMilliseconds, [=, act = std::move(act)]() mutable {
    if (test != currentTest) return;
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || typeid(*modal) != *expected) {
      if (pollsLeft > 0) return pollForModal(*expected, std::move(act), test, pollsLeft - 1);
      --pendingActions;
      ADD_FAILURE() << "no " << expected->name() << " opened; the modal window is "
                    << (modal != nullptr ? modal->metaObject()->className() : "none");
      return;
    }
    --pendingActions;
    act(*modal);
    if (auto* dialog = qobject_cast<QDialog*>(modal); dialog != nullptr && dialog->isVisible()) dialog->reject();
  });
}

QPoint rowCentre(const QTableWidget* list, int row) { return list->visualRect(list->model()->index(row, 0)).center(); }

}  // namespace

void whenModalOpens(const std::type_info& window, std::function<void(QWidget&)> act) {
  ++pendingActions;
  pollForModal(window, std::move(act), currentTest, kPolls);
}

void UiTest::SetUp() {
  ++currentTest;
  pendingActions = 0;
  setRutaMensajes(ORVANE_TEST_DATA "/messages.txt");
}

void UiTest::TearDown() {
  for (int i = 0; i < kPolls && pendingActions > 0; ++i) QTest::qWait(kPollMilliseconds);
  EXPECT_EQ(pendingActions, 0) << "a dialog the test waited for never opened";
  ++currentTest;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible()) window->close();
  liberaMensajes();
}

void click(const QWidget& window, const char* buttonName) {
  if (auto* button = child<QAbstractButton>(window, buttonName)) QTest::mouseClick(button, Qt::LeftButton);
}

void clickRow(QTableWidget* list, int row, Qt::KeyboardModifiers modifiers) {
  QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers, rowCentre(list, row));
}

// QTest's double click is the second press alone; a person's is press, release, press, release.
void doubleClickAt(QWidget* widget, QPoint position, Qt::MouseButton button) {
  QTest::mousePress(widget, button, Qt::NoModifier, position);
  QTest::mouseRelease(widget, button, Qt::NoModifier, position);
  QTest::mouseDClick(widget, button, Qt::NoModifier, position);
  QTest::mouseRelease(widget, button, Qt::NoModifier, position);
}

void doubleClickRow(QTableWidget* list, int row, Qt::MouseButton button) {
  doubleClickAt(list->viewport(), rowCentre(list, row), button);
}

void choose(const QWidget& window, const char* comboName, int index) {
  if (auto* combo = child<QComboBox>(window, comboName)) {
    combo->setCurrentIndex(index);
    emit combo->activated(index);
  }
}

void settle() {
  for (int round = 0; round < 5; ++round) QCoreApplication::processEvents();
}

std::string look(const QWidget& window, const QString& names) {
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

QStringList entries(const QComboBox* combo) {
  QStringList texts;
  for (int i = 0; i < combo->count(); ++i) texts.append(combo->itemText(i));
  return texts;
}

}  // namespace orvane::test
