// The editor entry points on real files: which files OK and Cancel write, what the editors start
// with, and the save-as of the set list.
#include <filesystem>
#include <functional>

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
  template <class D>
  void answer(bool ok) {
    services.expectDialog<D>([ok](D& d) { ok ? d.ok() : d.cancel(); });
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

// OK rewrites the definitions, keeping the old file as a backup, and writes the object's file;
// Cancel writes nothing, except in the editor of enumerated types.
TEST_F(EntryPoints, OkWritesTheDocumentsAndCancelNothing) {
  const double values[] = {1.0};
  const char* obj = object.c_str();
  struct Row {
    const char* entry;
    bool quantities, writesOnCancel, writesObject;
    std::function<void(bool ok, const char* defs)> run;
  } rows[] = {
      {"properties", false, false, false, [&](bool ok, const char* defs) {
         answer<CPropertiesSetDlg>(ok);
         editPropertySets(services, defs, kMessages, nullptr);
       }},
      {"enumerations", false, true, false,
       [&](bool ok, const char* defs) { answer<CListEnumsDlg>(ok); editEnumeratedTypes(services, defs, kMessages); }},
      {"assignment", false, false, true, [&](bool ok, const char* defs) {
         answer<CPropiedadesObjetosIFCDlg>(ok);
         EXPECT_TRUE(assignPropertySets(services, defs, obj, kMessages, nullptr));
       }},
      {"quantities", true, false, false,
       [&](bool ok, const char* defs) { answer<CPropertiesSetDlg>(ok); editQuantitySets(services, defs); }},
      {"quantity assignment", true, false, true, [&](bool ok, const char* defs) {
         answer<CCuantificadoresObjetosIFCDlg>(ok);
         EXPECT_TRUE(assignQuantitySets(services, defs, obj, "Eje", values, 1));
       }},
  };
  for (const Row& row : rows) {
    for (bool ok : {true, false}) {
      SCOPED_TRACE(std::string(row.entry) + (ok ? " OK" : " Cancel"));
      fs::remove(object);
      fs::remove(dir.file("defs.xml.bak"));
      const std::string defs = row.quantities ? qsets() : psets(), before = readBytes(defs);
      row.run(ok, defs.c_str());
      const bool written = ok || row.writesOnCancel;
      EXPECT_EQ(fs::exists(defs + ".bak"), written);
      if (written) EXPECT_EQ(readBytes(defs + ".bak"), before);
      else EXPECT_EQ(readBytes(defs), before);
      EXPECT_EQ(fs::exists(object), ok && row.writesObject);
      EXPECT_EQ(MessageTable, nullptr);  // released on the way out
    }
  }
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
    list.propertySets = {makeSet("Muros")};
    list.ok();
  });
  editPropertySets(services, dir.file("p.xml").c_str(), kMessages, catalog().c_str());
  CIfcProyectPSet written;
  ASSERT_EQ(written.lee(dir.file("p.xml").c_str()), 1);
  EXPECT_EQ(outline(written), Outline{"set Muros:"});
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
