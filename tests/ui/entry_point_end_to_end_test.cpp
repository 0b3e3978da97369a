// PropertiesSet as a host calls it, through liborvane.so, on a copy of the sample project: the real
// dialogs open on Qt's offscreen platform, a set is added through them, and OK writes the document
// and its backup. The test drives the windows by their object names, as a person would by sight.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <functional>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/orvane.h"
#include "support/temp_dir.h"

using orvane::test::readBytes;
using orvane::test::TempDir;
namespace fs = std::filesystem;

namespace {

// Runs `act` on the modal window named `name` once it is the active one, from inside its own event
// loop (the call that opened it blocks until it closes). Fails the test if it never opens.
void whenModalOpens(const char* name, std::function<void(QWidget&)> act, int triesLeft = 250) {
  QTimer::singleShot(20, [=] {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal != nullptr && modal->objectName() == QLatin1String(name)) return act(*modal);
    if (triesLeft > 0) return whenModalOpens(name, act, triesLeft - 1);
    ADD_FAILURE() << "the window " << name << " never opened";
    if (modal != nullptr) modal->close();
  });
}

void press(QWidget& window, const char* button) {
  QPushButton* found = window.findChild<QPushButton*>(QLatin1String(button));
  ASSERT_NE(found, nullptr) << button;
  QTest::mouseClick(found, Qt::LeftButton);
}

void type(QWidget& window, const char* edit, const QString& text) {
  QLineEdit* found = window.findChild<QLineEdit*>(QLatin1String(edit));
  ASSERT_NE(found, nullptr) << edit;
  found->setFocus();
  found->setText(text);  // QTest types only ASCII keys; the view reads the edit's text all the same
}

class EntryPointEndToEnd : public ::testing::Test {
 protected:
  // The host's application, which the library uses. It is destroyed when the suite ends, while
  // main still runs: among the static objects at exit it would outlive Qt's own, and never
  // destroyed it would leave Qt's font cache unreleased.
  static void SetUpTestSuite() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "entry_point_end_to_end_test";
    static char* argv[] = {name, nullptr};
    application = new QApplication(argc, argv);
  }
  static void TearDownTestSuite() {
    delete application;
    application = nullptr;
  }
  static inline QApplication* application = nullptr;

  void SetUp() override {
    for (const char* file : {"proyecto-psets.xml", "objeto-psets.xml", "proyecto-qsets.xml", "mensajes.txt", "variables.txt"})
      fs::copy_file(fs::path(ORVANE_SAMPLES_DIR) / file, dir.path() / file);
  }
  std::string file(const char* name) const { return dir.file(name); }
  TempDir dir;
};

TEST_F(EntryPointEndToEnd, ASetAddedThroughTheDialogsIsSavedWithABackup) {
  const std::string document = file("proyecto-psets.xml");
  const std::string original = readBytes(document);
  whenModalOpens("PropertiesSetView", [](QWidget& list) {
    EXPECT_EQ(list.windowTitle(), QStringLiteral("Conjunto de Propiedades"));  // from mensajes.txt
    whenModalOpens("PropertiesOfSetView", [](QWidget& set) {
      type(set, "nameEdit", QStringLiteral("Pset_Carpinter\u00eda"));
      type(set, "descriptionEdit", QStringLiteral("Puertas y ventanas"));
      press(set, "okButton");
    });
    press(list, "insertButton");
    press(list, "okButton");
  });
  PropertiesSet(document.c_str(), file("mensajes.txt").c_str(), file("variables.txt").c_str());

  EXPECT_EQ(readBytes(document + ".bak"), original);
  CIfcProyectPSet saved;
  ASSERT_EQ(saved.lee(document.c_str()), 1);
  ASSERT_EQ(saved.propertySets.size(), 4u);
  EXPECT_STREQ(saved.propertySets[0].name, "Pset_Carpinter\xC3\xAD" "a");  // UTF-8, sorted first
  EXPECT_STREQ(saved.propertySets[0].description, "Puertas y ventanas");
  EXPECT_EQ(saved.enums.size(), 2u);
  EXPECT_EQ(saved.relations.size(), 2u);
}

TEST_F(EntryPointEndToEnd, CancelLeavesTheProjectAsItWas) {
  const std::string document = file("proyecto-psets.xml");
  const std::string original = readBytes(document);
  whenModalOpens("PropertiesSetView", [](QWidget& list) { press(list, "cancelButton"); });
  PropertiesSet(document.c_str(), file("mensajes.txt").c_str(), nullptr);
  EXPECT_EQ(readBytes(document), original);
  EXPECT_FALSE(fs::exists(document + ".bak"));
}

// The quantity editors take no message file: the host gives it first, and their windows show its
// captions instead of empty ones.
TEST_F(EntryPointEndToEnd, TheQuantityEditorsShowTheCaptionsOfTheMessageFileTheHostGave) {
  fijaRutaMensajes(file("mensajes.txt").c_str());
  QString title, insert;
  whenModalOpens("PropertiesSetView", [&](QWidget& list) {
    title = list.windowTitle();
    insert = list.findChild<QPushButton*>(QStringLiteral("insertButton"))->text();
    press(list, "cancelButton");
  });
  QuantitiesSet(file("proyecto-qsets.xml").c_str());
  EXPECT_EQ(title, QStringLiteral("Conjunto de Propiedades"));
  EXPECT_EQ(insert.remove(QLatin1Char('&')), QStringLiteral("Insertar..."));
  fijaRutaMensajes(nullptr);
}

// The test entries open the user's own copy of the installed samples, made on first use and kept
// afterwards, and never the installed files.
TEST_F(EntryPointEndToEnd, TheTestEntriesWorkOnTheUsersCopyOfTheSamples) {
  const fs::path installed = dir.path() / "installed", home = dir.path() / "home";
  fs::create_directories(installed);
  for (const char* name : {"proyecto-psets.xml", "proyecto-qsets.xml", "mensajes.txt"})
    fs::copy_file(file(name), installed / name);
  qputenv("ORVANE_SAMPLES", installed.string().c_str());
  qputenv("XDG_DATA_HOME", home.string().c_str());
  const fs::path copy = home / "orvane" / "samples";
  whenModalOpens("PropertiesSetView", [](QWidget& list) { press(list, "cancelButton"); });
  prueba();
  for (const char* name : {"proyecto-psets.xml", "proyecto-qsets.xml", "mensajes.txt"})
    EXPECT_EQ(readBytes((copy / name).string()), readBytes((installed / name).string())) << name;
  fs::resize_file(copy / "mensajes.txt", 0);  // the user's own change, which the next entry keeps
  whenModalOpens("PropertiesSetView", [](QWidget& list) { press(list, "cancelButton"); });
  pruebaQSet();
  EXPECT_EQ(fs::file_size(copy / "mensajes.txt"), 0u);
  qunsetenv("ORVANE_SAMPLES");
  qunsetenv("XDG_DATA_HOME");
}

// Enter in the value grid moves down a row; it never presses OK, so no document is written.
TEST_F(EntryPointEndToEnd, EnterInTheValueGridWritesNoFile) {
  const std::string definitions = file("proyecto-psets.xml"), object = file("objeto-psets.xml");
  const std::string before = readBytes(object);
  bool stillOpen = false;
  whenModalOpens("PropertyAssignView", [&](QWidget& editor) {
    QApplication::setActiveWindow(&editor);
    auto* sets = editor.findChild<QTableWidget*>(QStringLiteral("sets"));
    sets->setFocus();
    QTest::keyClick(sets, Qt::Key_End);  // the object's last set fills the grid
    auto* grid = editor.findChild<QTableView*>(QStringLiteral("grid"));
    grid->setFocus();
    for (int i = 0; i < 3; ++i) QTest::keyClick(grid, Qt::Key_Return);
    stillOpen = QApplication::activeModalWidget() == &editor;
    press(editor, "cancelButton");
  });
  ASSERT_TRUE(asignarPropiedades(definitions.c_str(), object.c_str(), file("mensajes.txt").c_str(), nullptr));
  EXPECT_TRUE(stillOpen);
  EXPECT_EQ(readBytes(object), before);
  EXPECT_FALSE(fs::exists(object + ".bak"));
  EXPECT_FALSE(fs::exists(definitions + ".bak"));
}

}  // namespace
