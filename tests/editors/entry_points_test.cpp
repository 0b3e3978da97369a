// The editor entry points' flows on real files: what is written, when, and what is shown.
#include <filesystem>

#include "editors/assign/property_assign_dlg.h"
#include "editors/common/text_codec.h"
#include "editors/entry_points.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"
#include "editor_fixture.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane;
using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

const char* const kMessages = ORVANE_TEST_DATA "/messages.txt";

class EntryPoints : public EditorTest {
 protected:
  std::string writeSets(const std::string& name, const std::string& sets, const std::string& relations = "") {
    const std::string path = dir.file(name);
    writeBytes(path, psetFile("<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">Rojo</Element>"
                              "</Elements></TypeEnum>",
                              sets, relations));
    return path;
  }
  std::string fiveSets() {
    std::string sets;
    for (const char* name : {"A", "B", "C", "D", "E"}) sets += propertySet(name);
    return writeSets("doc.xml", sets, "<RelationIfcElementWithPSet PSet=\"A\" Object=\"IfcWall\"/>");
  }
  TempDir dir;
};

TEST_F(EntryPoints, OkOnAMissingFileWritesANewDocument) {
  const std::string path = dir.file("nuevo.xml");
  services.expectDialog<CPropertiesSetDlg>([this](CPropertiesSetDlg& list) {
    EXPECT_TRUE(list.propertySets.empty());
    services.expectDialog<CPropertiesOfSetDlg>([](CPropertiesOfSetDlg& set) { set.nameText = u"Muros"; set.ok(); });
    list.insert();
    list.ok();
  });
  editPropertySets(services, path.c_str(), kMessages, nullptr);
  CIfcProyectPSet written;
  ASSERT_EQ(written.lee(path.c_str()), 1);
  ASSERT_EQ(written.propertySets.size(), 1u);
  EXPECT_STREQ(written.propertySets[0].name, "Muros");
  EXPECT_FALSE(fs::exists(path + ".bak"));
  EXPECT_EQ(MessageTable, nullptr);  // the table is released on the way out
}

TEST_F(EntryPoints, CancelWritesNothing) {
  const std::string path = fiveSets();
  const std::string before = readBytes(path);
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    list.selectRow(0);
    list.cancel();
  });
  editPropertySets(services, path.c_str(), kMessages, nullptr);
  EXPECT_EQ(readBytes(path), before);
  EXPECT_FALSE(fs::exists(path + ".bak"));
}

TEST_F(EntryPoints, SaveAsWithoutSelectionWritesNothing) {
  const std::string path = fiveSets();
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    list.saveAs({});
    EXPECT_FALSE(list.ended());
    list.cancel();
  });
  editPropertySets(services, path.c_str(), kMessages, nullptr);
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"No hay ningún conjunto seleccionado"});
  EXPECT_TRUE(services.pickers.empty());
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}

TEST_F(EntryPoints, SaveAsWritesTheFirstSetsThenTheEditorShowsAgain) {
  const std::string path = fiveSets();
  const std::string before = readBytes(path);
  const std::string copy = dir.file("copia.xml");
  services.pickedFiles.push_back(std::u16string(copy.begin(), copy.end()));
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({3, 5}); });
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_EQ(list.propertySets.size(), 5u);  // shown again with all its lists
    list.cancel();
  });
  editPropertySets(services, path.c_str(), kMessages, nullptr);

  ASSERT_EQ(services.pickers.size(), 1u);
  EXPECT_EQ(services.pickers[0].defaultExtension, u"txt");
  EXPECT_EQ(services.pickers[0].startFolder, fromUtf8(dir.path().string()));  // the document's folder
  EXPECT_EQ(services.pickers[0].filters[0].description, u"Text Files (*.xml)");
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"Copia guardada"});
  CIfcProyectPSet saved;
  ASSERT_EQ(saved.lee(copy.c_str()), 1);
  ASSERT_EQ(saved.propertySets.size(), 2u);  // the first two of the list, not rows 3 and 5
  EXPECT_STREQ(saved.propertySets[0].name, "A");
  EXPECT_STREQ(saved.propertySets[1].name, "B");
  EXPECT_EQ(saved.enums.size(), 1u);
  EXPECT_EQ(saved.relations.size(), 1u);
  EXPECT_EQ(readBytes(path), before);  // Cancel after the save-as leaves the document alone
}

TEST_F(EntryPoints, OkAfterASaveAsWritesTheWholeList) {
  const std::string path = fiveSets();
  services.pickedFiles.push_back(std::nullopt);  // the picker is cancelled: nothing is written
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({0}); });
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.ok(); });
  editPropertySets(services, path.c_str(), kMessages, nullptr);
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"Copia guardada"});
  CIfcProyectPSet saved;
  ASSERT_EQ(saved.lee(path.c_str()), 1);
  EXPECT_EQ(saved.propertySets.size(), 5u);
  EXPECT_EQ(saved.relations.size(), 1u);
  EXPECT_TRUE(fs::exists(path + ".bak"));
}

TEST_F(EntryPoints, TheCatalogueReachesTheEditors) {
  const std::string catalog = dir.file("variables.txt");
  writeBytes(catalog, "Eje;PK,Cota\r\nSuperficie;Area\r\n");
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    ASSERT_EQ(list.catalogue.groups.size(), 2u);
    EXPECT_STREQ(list.catalogue.groups[1].variables.at(0).name, "Area\n");
  });
  editPropertySets(services, dir.file("doc.xml").c_str(), kMessages, catalog.c_str());
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { EXPECT_TRUE(list.catalogue.groups.empty()); });
  editPropertySets(services, dir.file("doc.xml").c_str(), kMessages, dir.file("none.txt").c_str());
}

TEST_F(EntryPoints, AssigningNeedsReadableDefinitions) {
  EXPECT_FALSE(assignPropertySets(services, dir.file("none.xml").c_str(), dir.file("obj.xml").c_str(), kMessages,
                                  nullptr));
  EXPECT_TRUE(services.dialogsRun.empty());

  const std::string definitions = writeSets("defs.xml", propertySet("Muros", property("Alto", "Real", "2")));
  services.expectDialog<CPropiedadesObjetosIFCDlg>([](CPropiedadesObjetosIFCDlg& editor) {
    EXPECT_TRUE(editor.assignedSets.empty());  // the object has no file yet
    editor.cancel();
  });
  EXPECT_TRUE(assignPropertySets(services, definitions.c_str(), dir.file("obj.xml").c_str(), kMessages, nullptr));
  EXPECT_FALSE(fs::exists(dir.file("obj.xml")));
}

TEST_F(EntryPoints, OkWritesBothDocumentsWithTheSameTypes) {
  const std::string definitions = writeSets("defs.xml", propertySet("Muros", property("Alto", "Real", "2")),
                                            "<RelationIfcElementWithPSet PSet=\"Muros\" Object=\"IfcWall\"/>");
  const std::string object = dir.file("obj.xml");
  services.expectDialog<CPropiedadesObjetosIFCDlg>([this](CPropiedadesObjetosIFCDlg& editor) {
    services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
      list.selectRow(0);
      list.ok();
    });
    editor.insert();
    editor.enumerations.push_back(makeEnum("Nuevo", {{1, "x"}}));
    editor.chooseSet(0);
    editor.endEdit(1, 3, u"3.5");
    editor.ok();
  });
  EXPECT_TRUE(assignPropertySets(services, definitions.c_str(), object.c_str(), kMessages, nullptr));
  CIfcProyectPSet defs, assigned;
  ASSERT_EQ(defs.lee(definitions.c_str()), 1);
  ASSERT_EQ(assigned.lee(object.c_str()), 1);
  EXPECT_EQ(defs.enums.size(), 2u);
  EXPECT_EQ(assigned.enums.size(), 2u);
  EXPECT_EQ(defs.relations.size(), 1u);
  ASSERT_EQ(assigned.propertySets.size(), 1u);
  EXPECT_DOUBLE_EQ(assigned.propertySets[0].properties.at(0).realValue, 3.5);
}

TEST_F(EntryPoints, EnumeratedTypesAreRewrittenEvenOnCancel) {
  const std::string path = fiveSets();
  services.expectDialog<CListEnumsDlg>([](CListEnumsDlg& editor) { editor.cancel(); });
  editEnumeratedTypes(services, path.c_str(), kMessages);
  EXPECT_TRUE(fs::exists(path + ".bak"));
  CIfcProyectPSet after;
  ASSERT_EQ(after.lee(path.c_str()), 1);
  EXPECT_EQ(after.enums.size(), 1u);
}

class QuantityEntryPoints : public EntryPoints {
 protected:
  std::string quantityFile(const std::string& name, const std::string& sets) {
    const std::string path = dir.file(name);
    writeBytes(path, qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel><TypeQuorsel>IfcAreaMeasure</TypeQuorsel>",
                              "<ObjectQuorsel>Superficie</ObjectQuorsel>", sets));
    return path;
  }
  static std::string quantitySet(const std::string& name, const std::string& quantities) {
    return "<QuantitySet Name=\"" + name + "\" Description=\"\" typeZep=\"\">" + quantities + "</QuantitySet>";
  }
  static std::string quantity(const std::string& name, const std::string& value) {
    return "<QuantityName Name=\"" + name + "\" TypeQuorsel=\"IfcAreaMeasure\" Export=\"Yes\"><Description/><Value>" +
           value + "</Value></QuantityName>";
  }
};

TEST_F(QuantityEntryPoints, OkAfterNoChangeRewritesTheFileSorted) {
  const std::string path = quantityFile("q.xml", quantitySet("b", "") + quantitySet("A", ""));
  const std::string before = readBytes(path);
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_TRUE(list.quantityMode());
    EXPECT_EQ(list.types.size(), 2u);
    list.ok();
  });
  editQuantitySets(services, path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), before);
  const std::string after = readBytes(path);
  EXPECT_LT(after.find("Name=\"A\""), after.find("Name=\"b\""));
  EXPECT_NE(after.find("<ObjectQuorsel>Superficie</ObjectQuorsel>"), std::string::npos);
}

TEST_F(QuantityEntryPoints, AMissingFileOpensInPropertyModeAndWritesOnlyOnOk) {
  const std::string path = dir.file("q.xml");
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_FALSE(list.quantityMode());
    list.cancel();
  });
  editQuantitySets(services, path.c_str());
  EXPECT_FALSE(fs::exists(path));
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.ok(); });
  editQuantitySets(services, path.c_str());
  CIfcProyectQSet written;
  ASSERT_EQ(written.lee(path.c_str()), 1);
  EXPECT_TRUE(written.quantitySets.empty());
}

TEST_F(QuantityEntryPoints, AssigningWithHostValuesCreatesTheObjectFile) {
  const std::string path = quantityFile("defs.xml", quantitySet("Muros", quantity("Area", "1") + quantity("Alto", "2")));
  const std::string object = dir.file("objeto.xml");
  const double values[] = {12.5, 3.0};
  services.expectDialog<CCuantificadoresObjetosIFCDlg>([this](CCuantificadoresObjetosIFCDlg& editor) {
    EXPECT_STREQ(editor.objectKind, "Superficie");
    services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
      list.selectRow(0);
      list.ok();
    });
    editor.insert();
    editor.ok();
  });
  EXPECT_TRUE(assignQuantitySets(services, path.c_str(), object.c_str(), "Superficie", values, 2));
  CIfcProyectQSet assigned;
  ASSERT_EQ(assigned.lee(object.c_str()), 1);
  ASSERT_EQ(assigned.quantitySets.size(), 1u);
  EXPECT_DOUBLE_EQ(assigned.quantitySets[0].quantities.at(0).value, 12.5);
  EXPECT_DOUBLE_EQ(assigned.quantitySets[0].quantities.at(1).value, 3.0);
  EXPECT_TRUE(fs::exists(path + ".bak"));  // the definitions are saved too
}

TEST_F(QuantityEntryPoints, CancelWritesNeitherFileAndUnreadableDefinitionsShowNothing) {
  const std::string path = quantityFile("defs.xml", quantitySet("Muros", quantity("Area", "1")));
  const std::string before = readBytes(path);
  services.expectDialog<CCuantificadoresObjetosIFCDlg>([](CCuantificadoresObjetosIFCDlg& editor) { editor.cancel(); });
  EXPECT_TRUE(assignQuantitySets(services, path.c_str(), dir.file("obj.xml").c_str(), "Eje", nullptr, 0));
  EXPECT_EQ(readBytes(path), before);
  EXPECT_FALSE(fs::exists(dir.file("obj.xml")));
  EXPECT_FALSE(assignQuantitySets(services, dir.file("none.xml").c_str(), dir.file("obj.xml").c_str(), "Eje", nullptr, 0));
  EXPECT_EQ(services.dialogsRun.size(), 1u);
}

}  // namespace
