#include "ui_fixture.h"

#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QTimer>
#include <memory>

namespace orvane::test {
namespace {

// The offscreen platform notes each size hint, raise and keyboard grab it cannot honour; nothing to see.
QtMessageHandler otherNotes = nullptr;

void quietOffscreenNotes(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(QStringLiteral("This plugin does not support"))) return;
  otherNotes(type, context, message);
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

constexpr int kPollMilliseconds = 10;
constexpr int kPolls = 500;

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

QPoint rowCentre(const QTableWidget* list, int row) {
  return list->visualRect(list->model()->index(row, 0)).center();
}

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

void clickBelowRows(QTableWidget* list) {
  const QRect area = list->viewport()->rect();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(area.width() / 2, area.bottom() - 2));
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

// Key by key with the typed text, which also carries letters (ú, ²) that have no key code.
void typeInto(const QWidget& window, const char* editName, const QString& text) {
  auto* edit = child<QLineEdit>(window, editName);
  if (edit == nullptr) return;
  edit->clear();
  for (const QChar character : text)
    QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, QString(character), Qt::NoModifier);
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

QStringList rowTexts(const QTableWidget* list, int row) {
  QStringList texts;
  for (int column = 0; column < list->columnCount(); ++column) {
    const QTableWidgetItem* item = list->item(row, column);
    texts.append(item != nullptr ? item->text() : QString());
  }
  return texts;
}

QStringList columnTitles(const QTableWidget* list) {
  QStringList titles;
  for (int column = 0; column < list->columnCount(); ++column)
    titles.append(list->model()->headerData(column, Qt::Horizontal).toString());
  return titles;
}

QString q(const std::u16string& text) { return QString::fromStdU16String(text); }

std::u16string u(const char* utf8) { return QString::fromUtf8(utf8).toStdU16String(); }

}  // namespace orvane::test
