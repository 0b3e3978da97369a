// The editor entry points as a host calls them, through liborvane.so on a copy of the sample
// project: the real dialogs open on Qt's offscreen platform and are driven by their object names.
#include <filesystem>

#include "offscreen.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/orvane.h"
#include "support/temp_dir.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

using EntryPointEndToEnd = OffscreenTest;

// A set added through the dialogs is saved, with a backup. The test entries open the user's own copy
// of the installed samples, made on first use and kept afterwards. The quantity editors take no
// message file: they show the one the host gave first.
TEST_F(EntryPointEndToEnd, ASetAddedIsSavedWithABackupAndTheTestEntriesWorkOnTheUsersCopyOfTheSamples) {
  TempDir dir;
  for (const char* name :
       {"proyecto-psets.xml", "proyecto-qsets.xml", "mensajes.txt", "variables.txt", "objeto-psets.xml"})
    fs::copy_file(fs::path(ORVANE_SAMPLES_DIR) / name, dir.path() / name);
  const std::string document = dir.file("proyecto-psets.xml"), original = readBytes(document);
  whenModalOpens("orvane::PropertiesSetView", [](QWidget& list) {
    EXPECT_EQ(list.windowTitle(), QStringLiteral("Conjunto de Propiedades"));  // from mensajes.txt
    whenModalOpens("orvane::PropertiesOfSetView", [](QWidget& set) {
      typeInto(set, "nameEdit", QStringLiteral("Pset_Carpinter\u00eda"));
      click(set, "okButton");
    });
    click(list, "insertButton");
    click(list, "okButton");
  });
  PropertiesSet(document.c_str(), dir.file("mensajes.txt").c_str(), dir.file("variables.txt").c_str());
  EXPECT_EQ(readBytes(document + ".bak"), original);
  CIfcProyectPSet saved;
  ASSERT_EQ(saved.lee(document.c_str()), 1);
  EXPECT_EQ(std::tuple(saved.propertySets.size(), std::string(saved.propertySets.at(0).name)),
            std::tuple(4u, "Pset_Carpinter\xC3\xAD" "a"));  // UTF-8, sorted first
  // The assignment editor opens on the document it read; cancelled, it writes nothing.
  const std::string object = dir.file("objeto-psets.xml"), objectBytes = readBytes(object);
  whenModalOpens("orvane::PropertyAssignView", [](QWidget&) {});
  EXPECT_TRUE(asignarPropiedades(document.c_str(), object.c_str(), dir.file("mensajes.txt").c_str(), nullptr));
  EXPECT_EQ(std::tuple(readBytes(object), fs::exists(object + ".bak")), std::tuple(objectBytes, false));

  const fs::path copy = dir.path() / "home" / "orvane" / "samples";
  qputenv("ORVANE_SAMPLES", dir.path().string().c_str());  // the test's copies are the installed samples
  qputenv("XDG_DATA_HOME", (dir.path() / "home").string().c_str());
  whenModalOpens("orvane::PropertiesSetView", [](QWidget& list) { click(list, "cancelButton"); });
  prueba();
  for (const char* name : {"proyecto-psets.xml", "proyecto-qsets.xml", "mensajes.txt"})
    EXPECT_EQ(readBytes((copy / name).string()), readBytes(dir.file(name))) << name;
  fs::resize_file(copy / "mensajes.txt", 0);  // the user's own change, which the next entry keeps
  fijaRutaMensajes(dir.file("mensajes.txt").c_str());
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

}  // namespace
