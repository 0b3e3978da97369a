// The editor entry points as a host calls them, through liborvane.so on a copy of the sample
// project: the real dialogs open on Qt's offscreen platform and are driven by their object names.
#include <QTableView>
#include <filesystem>

#include "offscreen.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/orvane.h"
#include "support/temp_dir.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

class EntryPointEndToEnd : public OffscreenTest {
 protected:
  void SetUp() override {
    OffscreenTest::SetUp();
    for (const char* name :
         {"proyecto-psets.xml", "objeto-psets.xml", "proyecto-qsets.xml", "mensajes.txt", "variables.txt"})
      fs::copy_file(fs::path(ORVANE_SAMPLES_DIR) / name, dir.path() / name);
  }
  std::string file(const char* name) const { return dir.file(name); }
  TempDir dir;
};

TEST_F(EntryPointEndToEnd, ASetAddedThroughTheDialogsIsSavedWithABackup) {
  const std::string document = file("proyecto-psets.xml"), original = readBytes(document);
  whenModalOpens("orvane::PropertiesSetView", [](QWidget& list) {
    EXPECT_EQ(list.windowTitle(), QStringLiteral("Conjunto de Propiedades"));  // from mensajes.txt
    whenModalOpens("orvane::PropertiesOfSetView", [](QWidget& set) {
      typeInto(set, "nameEdit", QStringLiteral("Pset_Carpinter\u00eda"));
      click(set, "okButton");
    });
    click(list, "insertButton");
    click(list, "okButton");
  });
  PropertiesSet(document.c_str(), file("mensajes.txt").c_str(), file("variables.txt").c_str());
  EXPECT_EQ(readBytes(document + ".bak"), original);
  CIfcProyectPSet saved;
  ASSERT_EQ(saved.lee(document.c_str()), 1);
  EXPECT_EQ(std::tuple(saved.propertySets.size(), std::string(saved.propertySets.at(0).name)),
            std::tuple(4u, "Pset_Carpinter\xC3\xAD" "a"));  // UTF-8, sorted first
}

// The test entries open the user's own copy of the installed samples, made on first use and kept
// afterwards. The quantity editors take no message file: they show the one the host gave first.
TEST_F(EntryPointEndToEnd, TheTestEntriesWorkOnTheUsersCopyOfTheSamples) {
  const fs::path installed = dir.path() / "installed", copy = dir.path() / "home" / "orvane" / "samples";
  fs::create_directories(installed);
  for (const char* name : {"proyecto-psets.xml", "proyecto-qsets.xml", "mensajes.txt"})
    fs::copy_file(file(name), installed / name);
  qputenv("ORVANE_SAMPLES", installed.string().c_str());
  qputenv("XDG_DATA_HOME", (dir.path() / "home").string().c_str());
  whenModalOpens("orvane::PropertiesSetView", [](QWidget& list) { click(list, "cancelButton"); });
  prueba();
  for (const char* name : {"proyecto-psets.xml", "proyecto-qsets.xml", "mensajes.txt"})
    EXPECT_EQ(readBytes((copy / name).string()), readBytes((installed / name).string())) << name;
  fs::resize_file(copy / "mensajes.txt", 0);  // the user's own change, which the next entry keeps
  fijaRutaMensajes(file("mensajes.txt").c_str());
  QString insert;
  whenModalOpens("orvane::PropertiesSetView",  // left open, so cancelled
                 [&](QWidget& list) { insert = child<QAbstractButton>(list, "insertButton")->text().remove('&'); });
  pruebaQSet();
  EXPECT_EQ(insert, QStringLiteral("Insertar..."));
  EXPECT_EQ(fs::file_size(copy / "mensajes.txt"), 0u);
  fijaRutaMensajes(nullptr);
  qunsetenv("ORVANE_SAMPLES");
  qunsetenv("XDG_DATA_HOME");
}

// Enter in the value grid moves down a row; it never presses OK, so no document is written.
TEST_F(EntryPointEndToEnd, EnterInTheValueGridWritesNoFile) {
  const std::string object = file("objeto-psets.xml"), before = readBytes(object);
  whenModalOpens("orvane::PropertyAssignView", [](QWidget& editor) {
    QApplication::setActiveWindow(&editor);
    child<QWidget>(editor, "sets")->setFocus();
    QTest::keyClick(child<QWidget>(editor, "sets"), Qt::Key_End);  // the object's last set fills the grid
    for (int i = 0; i < 3; ++i) QTest::keyClick(child<QTableView>(editor, "grid"), Qt::Key_Return);
    EXPECT_EQ(QApplication::activeModalWidget(), &editor);  // left open, so cancelled
  });
  ASSERT_TRUE(
      asignarPropiedades(file("proyecto-psets.xml").c_str(), object.c_str(), file("mensajes.txt").c_str(), nullptr));
  EXPECT_EQ(std::tuple(readBytes(object), fs::exists(object + ".bak"), fs::exists(file("proyecto-psets.xml") + ".bak")),
            std::tuple(before, false, false));
}

}  // namespace
