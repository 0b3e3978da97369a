// The list of sets: nested creation, sorting, deletion, save-as, CSV import, and quantity mode with
// the quantity-set editors.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/psets/property_data_dlg.h"
#include "editors/psets/value_enum_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "editors/qsets/quantity_data_dlg.h"
#include "editor_fixture.h"
#include "support/temp_dir.h"

using namespace orvane;
using namespace orvane::test;

namespace {

std::vector<std::string> names(const std::vector<CIfcPropertySet>& sets) {
  std::vector<std::string> out;
  for (const CIfcPropertySet& set : sets) out.emplace_back(set.name);
  return out;
}

class SetList : public EditorTest {
 protected:
  CPropertiesSetDlg open(std::vector<CIfcPropertySet> sets) {
    CPropertiesSetDlg dlg(services, sets, {});
    dlg.start();
    return dlg;
  }
};

TEST_F(SetList, StartShowsTheSetsWithTheHostTexts) {
  CPropertiesSetDlg dlg = open({makeSet("Muros"), makeSet("Losas")});
  EXPECT_FALSE(dlg.quantityMode());
  EXPECT_EQ(dlg.caption, u"Conjunto de Propiedades");
  EXPECT_EQ(dlg.saveAsLabel, u"Guardar como...");
  EXPECT_EQ(dlg.importLabel, u"Importar...");
  ASSERT_EQ(dlg.sets.columns.size(), 2u);
  EXPECT_EQ(dlg.sets.columns[0].title, u"Nombre");
  EXPECT_EQ(dlg.sets.rows.size(), 2u);
  EXPECT_TRUE(dlg.sets.fitColumnsToContents);
}

// A set with an enumerated property whose value list is created on the way.
TEST_F(SetList, CreatingASetWithAnEnumeratedPropertyEndToEnd) {
  CPropertiesSetDlg dlg = open({makeSet("Muros")});
  services.expectDialog<CPropertiesOfSetDlg>([this](CPropertiesOfSetDlg& set) {
    set.nameText = u"Carpintería";
    services.expectDialog<CListEnumsDlg>([this](CListEnumsDlg& types) {
      services.expectDialog<CListValuesDlg>([this](CListValuesDlg& type) {
        type.nameText = u"Acabados";
        services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& v) { v.codeText = u"1"; v.valueText = u"Lacado"; v.ok(); });
        services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& v) { v.codeText = u"2"; v.valueText = u"Barniz"; v.ok(); });
        type.insert();
        type.insert();
        type.ok();
      });
      types.insert();
      types.ok();
    });
    set.editEnums();
    services.expectDialog<CPropertyDataDlg>([this](CPropertyDataDlg& p) {
      p.nameText = u"Acabado";
      p.changeType(PropertyEnumerated);
      services.expectDialog<CListValuesDlg>([](CListValuesDlg& pick) { pick.selectRow(1); pick.ok(); });
      p.chooseValueList(0);
      p.ok();
    });
    set.insert();
    set.ok();
  });
  dlg.insert();

  EXPECT_EQ(names(dlg.propertySets), (std::vector<std::string>{"Carpinter\xC3\xAD" "a", "Muros"}));
  ASSERT_EQ(dlg.enums.size(), 1u);
  EXPECT_STREQ(dlg.enums[0].name, "Acabados");
  const CIfcPropertyName& made = dlg.propertySets[0].properties.at(0);
  EXPECT_EQ(made.valueType, PropertyEnumerated);
  EXPECT_STREQ(made.enumName, "Acabados");
  EXPECT_STREQ(made.textValue, "Barniz");
  EXPECT_EQ(dlg.sets.rows[0][0], u"Carpintería");
}

TEST_F(SetList, RenamingASetToAnotherInOtherCaseIsRefused) {
  CPropertiesSetDlg dlg = open({makeSet("Losas"), makeSet("Muros")});
  dlg.selectRow(1);
  services.expectDialog<CPropertiesOfSetDlg>([this](CPropertiesOfSetDlg& set) {
    set.nameText = u"LOSAS";
    set.ok();
    EXPECT_FALSE(set.ended());
    EXPECT_EQ(services.messages, std::vector<std::u16string>{u"Ya existe un conjunto con ese nombre"});
  });
  dlg.edit();
  EXPECT_EQ(names(dlg.propertySets), (std::vector<std::string>{"Losas", "Muros"}));
}

TEST_F(SetList, AnEditResortsAndTheCurrentRowKeepsItsNumber) {
  CPropertiesSetDlg dlg = open({makeSet("Alfa"), makeSet("Beta"), makeSet("Gamma")});
  dlg.selectRow(0);
  services.expectDialog<CPropertiesOfSetDlg>([](CPropertiesOfSetDlg& set) { set.nameText = u"Zeta"; set.ok(); });
  dlg.edit();
  EXPECT_EQ(names(dlg.propertySets), (std::vector<std::string>{"Beta", "Gamma", "Zeta"}));
  EXPECT_EQ(dlg.currentRow, 0);  // now pointing at Beta
  services.expectDialog<CPropertiesOfSetDlg>([](CPropertiesOfSetDlg& set) {
    EXPECT_EQ(set.nameText, u"Beta");
    set.cancel();
  });
  dlg.edit();
}

TEST_F(SetList, RemovingAsksAndKeepsTheIndex) {
  CPropertiesSetDlg dlg = open({makeSet("A"), makeSet("B")});
  dlg.remove();  // no row
  EXPECT_TRUE(services.questions.empty());
  dlg.selectRow(1);
  services.answers = {false, true};
  dlg.remove();
  EXPECT_EQ(dlg.propertySets.size(), 2u);
  dlg.remove();
  EXPECT_EQ(names(dlg.propertySets), std::vector<std::string>{"A"});
  EXPECT_EQ(dlg.sets.revealRow, 1);
  dlg.remove();  // the index now points past the end
  EXPECT_EQ(dlg.propertySets.size(), 1u);
  EXPECT_EQ(services.questions.size(), 2u);
}

TEST_F(SetList, SaveAsNeedsASelectedRowAndKeepsAtMostAHundred) {
  CPropertiesSetDlg dlg = open({makeSet("A"), makeSet("B")});
  dlg.saveAs({});
  EXPECT_FALSE(dlg.ended());
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"No hay ningún conjunto seleccionado"});
  EXPECT_EQ(dlg.selection.rows[0], -1);

  dlg.saveAs({3, 5});
  EXPECT_EQ(dlg.result(), kDialogSaveAs);
  EXPECT_EQ(dlg.selection.count, 2);
  EXPECT_EQ(dlg.selection.rows[1], 5);
  EXPECT_EQ(dlg.selection.rows[2], -1);

  std::vector<int> many(150);
  for (int i = 0; i < 150; ++i) many[i] = i;
  dlg.saveAs(many);
  EXPECT_EQ(dlg.selection.count, 100);
  EXPECT_EQ(dlg.selection.rows[99], 99);
}

class CsvImport : public SetList {
 protected:
  void import(CPropertiesSetDlg& dlg, const std::string& contents) {
    const std::string path = dir.file("sets.csv");
    writeBytes(path, contents);
    services.pickedFiles.push_back(fromUtf8(path));
    dlg.importCsv();
  }
  static std::u16string fromUtf8(const std::string& s) { return std::u16string(s.begin(), s.end()); }
  TempDir dir;
};

TEST_F(CsvImport, PickerOffersCsvFiles) {
  CPropertiesSetDlg dlg = open({});
  services.pickedFiles.push_back(std::nullopt);
  dlg.importCsv();
  ASSERT_EQ(services.pickers.size(), 1u);
  EXPECT_EQ(services.pickers[0].defaultExtension, u"csv");
  ASSERT_EQ(services.pickers[0].filters.size(), 2u);
  EXPECT_EQ(services.pickers[0].filters[0].description, u"CSV Files (*.csv)");
  EXPECT_EQ(services.pickers[0].filters[1].pattern, u"*.*");
  EXPECT_TRUE(dlg.propertySets.empty());
}

TEST_F(CsvImport, LinesBecomeSetsAndTypedProperties) {
  for (const char* end : {"\n", "\r\n"}) {
    CPropertiesSetDlg dlg = open({makeSet("Muros")});
    std::string csv = std::string("Muros;Altura;Altura libre;Real;2.75") + end +
                      "Muros;;Grosor;Texto" + end +                   // three fields: skipped
                      "Muros;Acabado;Tipo de acabado;Texto;Liso" + end +
                      "muros;ALTURA;Repetida;Real;9" + end +           // already there
                      "Forjados;Canto;Canto total;real" + end +        // four fields: a String
                      "Zocalo;Alto;Alto;Real;0.1";                     // no line end: left out
    import(dlg, csv);
    ASSERT_EQ(names(dlg.propertySets), (std::vector<std::string>{"Muros", "Forjados"})) << "ends " << end;
    const auto& walls = dlg.propertySets[0].properties;
    ASSERT_EQ(walls.size(), 2u);
    EXPECT_EQ(walls[0].valueType, PropertyReal);
    EXPECT_DOUBLE_EQ(walls[0].realValue, 2.75);
    EXPECT_STREQ(walls[0].description, "Altura libre");
    EXPECT_EQ(walls[1].valueType, PropertyString);
    EXPECT_STREQ(walls[1].textValue, "Liso\n");  // the line end stays in the last field
    const CIfcPropertyName& depth = dlg.propertySets[1].properties.at(0);
    EXPECT_EQ(depth.valueType, PropertyString);  // "real" carries the line end
    EXPECT_STREQ(depth.description, "Canto total");
    EXPECT_EQ(dlg.sets.rows.size(), 2u);
  }
}

TEST_F(CsvImport, AnyOtherTypeWordGivesAStringWithTheLineEnd) {
  CPropertiesSetDlg dlg = open({});
  import(dlg, "Muros;Altura;Altura libre;Decimal;2.75\r\n");
  const CIfcPropertyName& p = dlg.propertySets.at(0).properties.at(0);
  EXPECT_EQ(p.valueType, PropertyString);
  EXPECT_STREQ(p.textValue, "2.75\n");
}

TEST_F(CsvImport, NewSetsStayAtTheEndUntilTheNextInsert) {
  CPropertiesSetDlg dlg = open({makeSet("Muros")});
  import(dlg, "Nombre;Propiedad;Descripcion;Tipo\nAlfa;P;D;Real;1\n");  // a header is just a line
  EXPECT_EQ(names(dlg.propertySets), (std::vector<std::string>{"Muros", "Nombre", "Alfa"}));
  services.expectDialog<CPropertiesOfSetDlg>([](CPropertiesOfSetDlg& set) { set.nameText = u"Beta"; set.ok(); });
  dlg.insert();
  EXPECT_EQ(names(dlg.propertySets), (std::vector<std::string>{"Alfa", "Beta", "Muros", "Nombre"}));
}

TEST_F(CsvImport, AMissingFileAFifoADeviceAndLongLinesDoNoHarm) {
  CPropertiesSetDlg dlg = open({});
  const std::string fifo = dir.file("pipe.csv");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  ::alarm(20);  // a FIFO would block the open, /dev/zero never ends: a hang ends the run
  for (const std::string& path : {std::string("/no/such/file.csv"), fifo, std::string("/dev/zero")}) {
    services.pickedFiles.push_back(fromUtf8(path));
    dlg.importCsv();
    EXPECT_TRUE(dlg.propertySets.empty()) << path;
  }
  ::alarm(0);
  import(dlg, "S;" + std::string(400, 'p') + ";d;Real;1\n");
  // Read in pieces of 255 characters, each a line of its own: "S;" and 253 p (two fields, skipped),
  // then the other 147 p, "d", "Real" and "1\n": four fields, so a set named by the 147 p.
  ASSERT_EQ(dlg.propertySets.size(), 1u);
  EXPECT_EQ(std::string(dlg.propertySets[0].name), std::string(147, 'p'));
  const CIfcPropertyName& p = dlg.propertySets[0].properties.at(0);
  EXPECT_STREQ(p.name, "d");
  EXPECT_STREQ(p.description, "Real");
  EXPECT_EQ(p.valueType, PropertyString);
}

class QuantityMode : public EditorTest {
 protected:
  std::vector<CIfcType> types() {
    std::vector<CIfcType> out(3);
    for (int i = 0; i < 3; ++i) setText(out[i].name, QuantityMeasureNames[i]);
    return out;
  }
  std::vector<CIfcObject> objects() {
    std::vector<CIfcObject> out(2);
    setText(out[0].name, "Eje");
    setText(out[1].name, "Superficie");
    return out;
  }
};

TEST_F(QuantityMode, AListOfQuantitySetsOnlyShowsThem) {
  CPropertiesSetDlg dlg(services, {makeQuantitySet("Muros")}, types(), objects());
  dlg.start();
  EXPECT_TRUE(dlg.quantityMode());
  ASSERT_EQ(dlg.sets.columns.size(), 3u);
  EXPECT_EQ(dlg.sets.columns[2].title, u"Tipo");

  CPropertiesSetDlg empty(services, std::vector<CIfcQuantitySet>{}, types(), objects());
  empty.start();
  EXPECT_FALSE(empty.quantityMode());  // nothing to show: property mode
}

TEST_F(QuantityMode, CreatingAQuantitySetWithAQuantity) {
  CPropertiesSetDlg dlg(services, {makeQuantitySet("Muros")}, types(), objects());
  dlg.start();
  services.expectDialog<CQuantitiesOfSetDlg>([this](CQuantitiesOfSetDlg& set) {
    EXPECT_EQ(set.linkedElement.entries, (std::vector<std::u16string>{u"Eje", u"Superficie"}));
    set.nameText = u"Ejes";
    set.linkedElement.selected = 0;
    services.expectDialog<CQuantityDataDlg>([](CQuantityDataDlg& q) {
      EXPECT_EQ(q.setName, u"Ejes");
      q.nameText = u"Longitud";
      q.changeKind(0);
      q.exportChecked = false;
      q.ok();
    });
    set.insert();
    set.ok();
  });
  dlg.insert();
  ASSERT_EQ(dlg.quantitySets.size(), 2u);
  const CIfcQuantitySet& made = dlg.quantitySets[0];
  EXPECT_STREQ(made.name, "Ejes");
  EXPECT_STREQ(made.typeZep, "Eje");
  ASSERT_EQ(made.quantities.size(), 1u);
  EXPECT_EQ(made.quantities[0].measureType, LengthMeasure);
  EXPECT_FALSE(made.quantities[0].exported);
  EXPECT_EQ(dlg.sets.rows[0], (std::vector<std::u16string>{u"Ejes", u"", u"Eje"}));
}

TEST_F(QuantityMode, SetNamesAreCheckedLikePropertySets) {
  const std::vector<CIfcQuantitySet> all{makeQuantitySet("Losas"), makeQuantitySet("Muros")};
  CQuantitiesOfSetDlg keep(services, kEditItem, all[1], &all, types(), objects());
  keep.start();
  keep.nameText = u"MUROS";
  keep.ok();
  EXPECT_EQ(keep.result(), kDialogOk);

  CQuantitiesOfSetDlg rename(services, kEditItem, all[1], &all, types(), objects());
  rename.start();
  rename.nameText = u"losas";
  rename.ok();
  CQuantitiesOfSetDlg empty(services, kNewItem, CIfcQuantitySet(), &all, types(), objects());
  empty.start();
  empty.ok();
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u"Conjunto de Propiedades existe en la lista",
                                                            u"Debe de introducir un nombre válido"}));
}

TEST_F(QuantityMode, QuantityNamesAreUniqueInTheirSet) {
  const CIfcQuantitySet set = makeQuantitySet("Muros", {makeQuantity("Area")});
  CQuantityDataDlg dlg(services, kNewItem, CIfcQuantityName(), &set, types());
  dlg.start();
  dlg.changeKind(1);  // empty name: the message already here
  dlg.nameText = u"area";
  dlg.ok();
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u"Debe de introducir un nombre válido",
                                                            u"Propiedad existente en la lista"}));
  EXPECT_FALSE(dlg.ended());
}

TEST_F(QuantityMode, RowsShowKindsAndExportAndRemovingNeedsARow) {
  CIfcQuantityName odd = makeQuantity("Rara", 3, 0.0, false);
  CQuantitiesOfSetDlg dlg(services, kEditItem, makeQuantitySet("S", {makeQuantity("Area"), odd}), nullptr,
                          types(), objects());
  dlg.start();
  EXPECT_EQ(dlg.quantities.rows[0], (std::vector<std::u16string>{u"Area", u"", u"IfcAreaMeasure", u"Si"}));
  EXPECT_EQ(dlg.quantities.rows[1], (std::vector<std::u16string>{u"Rara", u"", u"", u"No"}));
  dlg.remove();
  EXPECT_EQ(dlg.set.quantities.size(), 2u);
  dlg.selectRow(0);
  dlg.remove();
  ASSERT_EQ(dlg.set.quantities.size(), 1u);
  EXPECT_EQ(dlg.quantities.revealRow, 0);
}

TEST_F(QuantityMode, WithoutObjectsTheSetStaysUnlinked) {
  CIfcQuantitySet linked = makeQuantitySet("S");
  setText(linked.typeZep, "Viejo");
  CQuantitiesOfSetDlg dlg(services, kEditItem, linked, nullptr, {}, {});
  dlg.start();
  EXPECT_EQ(dlg.linkedElement.selected, -1);
  dlg.ok();
  EXPECT_STREQ(dlg.set.typeZep, "");
}

TEST_F(QuantityMode, AKindOutsideTheTypeListSelectsNothingAndIsKept) {
  CQuantityDataDlg dlg(services, kEditItem, makeQuantity("Q", 7), nullptr, types());
  dlg.start();
  EXPECT_EQ(dlg.kinds.selected, -1);
  dlg.ok();
  EXPECT_EQ(dlg.quantity.measureType, 7);
}

}  // namespace
