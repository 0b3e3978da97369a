// The editor entry points on real files: which files OK and Cancel write, what the editors start
// with, and the save-as of the set list.
#include <filesystem>

#include "editor_fixture.h"
#include "editors/assign/property_assign_dlg.h"
#include "editors/common/text_codec.h"
#include "editors/entry_points.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"
#include "support/documents.h"
#include "support/outline.h"
#include "support/temp_dir.h"

using namespace orvane;
using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

const char* const kMessages = ORVANE_TEST_DATA "/messages.txt";

class EntryPoints : public EditorTest {
 protected:
  // Runs `entry` on fresh definitions with its editor `D` ending in OK, then in Cancel. OK rewrites
  // the definitions, keeping the old file as a backup, and writes the object's file where there is
  // one; Cancel writes nothing, except in the editor of enumerated types.
  template <class D, class Entry>
  void okAndCancel(bool quantities, bool writesOnCancel, bool writesObject, Entry entry) {
    for (bool ok : {true, false}) {
      SCOPED_TRACE(std::string(typeid(D).name()) + (ok ? " OK" : " Cancel"));
      fs::remove(object);
      fs::remove(dir.file("defs.xml.bak"));
      const std::string defs = quantities ? qsets() : psets(), before = readBytes(defs);
      services.expectDialog<D>([ok](D& d) { ok ? d.ok() : d.cancel(); });
      entry(defs.c_str());
      const bool written = ok || writesOnCancel;
      EXPECT_EQ(fs::exists(defs + ".bak"), written);
      EXPECT_EQ(readBytes(written ? defs + ".bak" : defs), before);
      EXPECT_EQ(fs::exists(object), ok && writesObject);
      EXPECT_EQ(MessageTable, nullptr);  // released on the way out
    }
  }
  std::string psets() {
    std::string sets;
    for (const char* name : {"A", "B", "C"}) sets += propertySet(name, property("Alto", "Real", "2"));
    return dir.write("defs.xml", psetFile("<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">"
                                          "Rojo</Element></Elements></TypeEnum>",
                                          sets, "<RelationIfcElementWithPSet PSet=\"A\" Object=\"IfcWall\"/>"));
  }
  std::string qsets() {
    std::string set = "<QuantitySet Name=\"M\" Description=\"\" typeZep=\"\">";
    for (const char* name : {"Area", "Alto"})
      set += std::string("<QuantityName Name=\"") + name + "\" TypeQuorsel=\"IfcAreaMeasure\" Export=\"Yes\">"
             "<Description/><Value>1</Value></QuantityName>";
    return dir.write("defs.xml", qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel>",
                                          "<ObjectQuorsel>Superficie</ObjectQuorsel>", set + "</QuantitySet>"));
  }
  std::string catalog() { return dir.write("variables.txt", "Eje;PK,Cota\r\nSuperficie;Area\r\n"); }
  TempDir dir;
  const std::string object = dir.file("obj.xml");
};

TEST_F(EntryPoints, OkWritesTheDocumentsAndCancelNothing) {
  const double values[] = {1.0};
  const char* obj = object.c_str();
  okAndCancel<CPropertiesSetDlg>(false, false, false, [&](const char* d) {
    editPropertySets(services, d, kMessages, nullptr);
  });
  okAndCancel<CListEnumsDlg>(false, true, false, [&](const char* d) { editEnumeratedTypes(services, d, kMessages); });
  okAndCancel<CPropiedadesObjetosIFCDlg>(false, false, true, [&](const char* d) {
    EXPECT_TRUE(assignPropertySets(services, d, obj, kMessages, nullptr));
  });
  okAndCancel<CPropertiesSetDlg>(true, false, false, [&](const char* d) { editQuantitySets(services, d); });
  okAndCancel<CCuantificadoresObjetosIFCDlg>(true, false, true, [&](const char* d) {
    EXPECT_TRUE(assignQuantitySets(services, d, obj, "Eje", values, 1));
  });
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_TRUE(list.quantityMode());
    list.ok();
  });
  editQuantitySets(services, qsets().c_str());  // OK writes the list's kinds, elements and sets
  CIfcProyectQSet written;
  ASSERT_EQ(written.lee(dir.file("defs.xml").c_str()), 1);
  EXPECT_EQ(outline(written), (Outline{"type IfcLengthMeasure", "object Superficie", "set M: Area, Alto,"}));
}

TEST_F(EntryPoints, UnreadableDefinitionsShowNothingAndMissingDocumentsStartEmpty) {
  EXPECT_FALSE(assignPropertySets(services, dir.file("none.xml").c_str(), object.c_str(), kMessages, nullptr));
  EXPECT_FALSE(assignQuantitySets(services, dir.file("none.xml").c_str(), object.c_str(), "Eje", nullptr, 0));
  EXPECT_TRUE(services.dialogsRun.empty());
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_FALSE(list.quantityMode());  // a missing quantity file opens as an empty list of property sets
    list.ok();
  });
  editQuantitySets(services, dir.file("q.xml").c_str());
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_TRUE(list.propertySets.empty());
    EXPECT_EQ(list.catalogue.groups.size(), 2u);
    list.ok();
  });
  editPropertySets(services, dir.file("p.xml").c_str(), kMessages, catalog().c_str());
  EXPECT_EQ(dir.names(), (std::set<std::string>{"p.xml", "q.xml", "variables.txt"}));  // no backups of nothing
}

// Both property documents get the editor's enumerated types; the relations stay as read.
TEST_F(EntryPoints, AssigningWritesTheSetsChosenWithTheirValues) {
  const std::string definitions = psets();
  services.expectDialog<CPropiedadesObjetosIFCDlg>([this](CPropiedadesObjetosIFCDlg& editor) {
    services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.selectRow(1); list.ok(); });
    editor.insert();
    editor.enumerations.push_back(makeEnum("Nuevo", {{1, "x"}}));
    EXPECT_EQ(editor.catalogue.groups.size(), 2u);
    editor.ok();
  });
  assignPropertySets(services, definitions.c_str(), object.c_str(), kMessages, catalog().c_str());
  CIfcProyectPSet defs, assigned;
  ASSERT_EQ(defs.lee(definitions.c_str()), 1);
  ASSERT_EQ(assigned.lee(object.c_str()), 1);
  EXPECT_EQ(outline(defs), (Outline{"type Colores: 1 Rojo,", "type Nuevo: 1 x,", "set A: Alto,", "set B: Alto,",
                                    "set C: Alto,", "relation A IfcWall"}));
  EXPECT_EQ(outline(assigned), (Outline{"type Colores: 1 Rojo,", "type Nuevo: 1 x,", "set B: Alto,"}));

  const double values[] = {12.5, 3.0};
  services.expectDialog<CCuantificadoresObjetosIFCDlg>([this](CCuantificadoresObjetosIFCDlg& editor) {
    EXPECT_STREQ(editor.objectKind, "Superficie");
    services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.selectRow(0); list.ok(); });
    editor.insert();
    editor.ok();
  });
  assignQuantitySets(services, qsets().c_str(), dir.file("q.xml").c_str(), "Superficie", values, 2);
  CIfcProyectQSet quantities;
  ASSERT_EQ(quantities.lee(dir.file("q.xml").c_str()), 1);
  EXPECT_EQ(outline(quantities), Outline{"set M: Area, Alto,"});
  EXPECT_DOUBLE_EQ(quantities.quantitySets[0].quantities.at(1).value, 3.0);
}

// "Guardar como..." writes the first sets of the list (as many as rows were selected) with the
// types and relations to a picked file, then shows the list again; without a row it only says so.
TEST_F(EntryPoints, SaveAsWritesTheFirstSetsThenTheListShowsAgain) {
  const std::string path = psets(), copy = dir.file("copia.xml");
  services.pickedFiles = {fromUtf8(copy), std::nullopt};
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({2}); });
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({0}); });  // picker cancelled
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({}); list.ok(); });
  editPropertySets(services, path.c_str(), kMessages, nullptr);
  EXPECT_EQ(services.messages, (Texts{u"Copia guardada", u"Copia guardada", u"No hay ningún conjunto seleccionado"}));
  ASSERT_EQ(services.pickers.size(), 2u);
  EXPECT_EQ(services.pickers[0].defaultExtension, u"txt");
  EXPECT_EQ(services.pickers[0].startFolder, fromUtf8(dir.path().string()));
  EXPECT_EQ(services.pickers[0].filters[0].description, u"Text Files (*.xml)");
  CIfcProyectPSet saved, whole;
  ASSERT_EQ(saved.lee(copy.c_str()), 1);
  EXPECT_EQ(outline(saved), (Outline{"type Colores: 1 Rojo,", "set A: Alto,", "relation A IfcWall"}));
  ASSERT_EQ(whole.lee(path.c_str()), 1);
  EXPECT_EQ(whole.propertySets.size(), 3u);  // OK after a save-as writes the whole list
  EXPECT_EQ(dir.names(), (std::set<std::string>{"copia.xml", "defs.xml", "defs.xml.bak"}));
}

}  // namespace
