// The list and form views. The dialogs' rules are the editors' own; a view adds the wiring of its
// lists, buttons, edits and drop-downs to the dialog, and the keys of its lists.
#include <QCheckBox>
#include <QHeaderView>
#include <QRadioButton>
#include <cstdio>
#include <cstring>

#include "support/temp_dir.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

class SetListView : public UiTest {
 protected:
  CPropertiesSetDlg logic{
      services, {makeSet("Losas"), makeSet("Muros", {makeProperty("Alto")}), makeSet("Ventanas")}, {}};
  PropertiesSetView view{logic};
  ReportList* sets() { return child<ReportList>(view, "sets"); }
};

// The host's captions, one row per set, in columns as wide as their texts and titles.
TEST_F(SetListView, ShowsTheHostsCaptionsAndOneRowPerSetInColumnsFittedToThem) {
  const char* longText = "Propiedades comunes de los muros de carga y de cerramiento";
  setText(logic.propertySets[1].description, longText);
  open(view, logic);
  EXPECT_EQ(look(view, "sets"), std::string("Nombre,Descripción: Losas,; Muros,") + longText + "; Ventanas,");
  const QFontMetrics text(sets()->font());
  EXPECT_GE(sets()->columnWidth(0), QFontMetrics(sets()->horizontalHeader()->font()).horizontalAdvance("Nombre"));
  EXPECT_GE(sets()->columnWidth(0), text.horizontalAdvance("Ventanas"));
  EXPECT_LT(sets()->columnWidth(0), sets()->viewport()->width() / 2);  // fitted, not half the list
  EXPECT_GE(sets()->columnWidth(1), text.horizontalAdvance(longText));
  liberaMensajes();  // a missing message file: its captions, empty ones, replace the template's all the same
  setRutaMensajes("/nonexistent/messages.txt");
  logic.start();
  view.showState();
  EXPECT_EQ((view.windowTitle() + child<QPushButton>(view, "insertButton")->text()).toStdString(), "");
  EXPECT_EQ(look(view, "sets"), std::string(",: Losas,; Muros,") + longText + "; Ventanas,");
}

// A double click edits the set, where either button's double click opens a property and its button
// the value lists, and what was typed comes back to the list; Importar... reads the file picked. A
// click off the rows chooses none; Ctrl+click adds rows to what "Guardar como..." records.
TEST_F(SetListView, TheMouseEditsImportsAndChoosesTheRowsToSave) {
  TempDir dir;
  writeBytes(dir.file("importar.csv"), "Puertas;Ancho;Ancho de paso;Real;0.9\n");
  services.pickedFiles = {u(dir.file("importar.csv").c_str())};
  open(view, logic);
  whenDialogOpens<PropertiesOfSetView>([](PropertiesOfSetView& set) {
    whenDialogOpens<PropertyDataView>([](PropertyDataView& data) { EXPECT_EQ(look(data, "nameEdit"), "Alto"); });
    doubleClickRow(child<ReportList>(set, "properties"), 0, Qt::RightButton);
    whenDialogOpens<ListEnumsView>([](ListEnumsView&) {});
    click(set, "valueListsButton");
    typeInto(set, "nameEdit", "Muros de carga");
    typeInto(set, "descriptionEdit", "Cerramientos");
    click(set, "okButton");
  });
  clickRow(sets(), 1);
  doubleClickRow(sets(), 1);
  click(view, "importButton");
  EXPECT_EQ(look(view, "sets"), "Nombre,Descripción: Losas,; Muros de carga,Cerramientos; Ventanas,; Puertas,");
  QTest::mouseClick(sets()->viewport(), Qt::LeftButton, {}, QPoint(5, sets()->viewport()->height() - 2));
  EXPECT_EQ(logic.currentRow, -1);
  clickRow(sets(), 0);
  clickRow(sets(), 2, Qt::ControlModifier);
  click(view, "saveAsButton");
  EXPECT_EQ(view.result(), kDialogSaveAs);
  EXPECT_EQ(std::vector<int>(logic.selection.rows.begin(), logic.selection.rows.begin() + logic.selection.count),
            (std::vector<int>{0, 2}));
}

// The keys of a list, on the first row reached with End then Home: Enter and F2 edit it, Insert
// inserts, Delete asks first and leaves the same row selected; none ends the dialog, Tab leaves.
struct ListKey {
  Qt::Key key;
  const char* opened;  // the name the set editor opened with; null for Delete
};
void PrintTo(const ListKey& c, std::ostream* out) { *out << "key 0x" << std::hex << c.key; }

class SetListKeys : public SetListView, public ::testing::WithParamInterface<ListKey> {};

TEST_P(SetListKeys, ActOnTheRowReachedAndLeaveTheDialogOpen) {
  const ListKey& c = GetParam();
  services.answers = {true};
  open(view, logic);
  QApplication::setActiveWindow(&view);
  sets()->setFocus();
  QTest::keyClick(sets(), Qt::Key_End);
  EXPECT_EQ(logic.currentRow, 2);
  QTest::keyClick(sets(), Qt::Key_Home);
  QString opened;
  if (c.opened != nullptr)
    whenDialogOpens<PropertiesOfSetView>(
        [&](PropertiesOfSetView& set) { opened = child<QLineEdit>(set, "nameEdit")->text(); });
  QTest::keyClick(sets(), c.key);
  EXPECT_EQ(opened, c.opened != nullptr ? c.opened : "");
  EXPECT_EQ(services.questions.size(), c.opened == nullptr ? 1u : 0u);
  EXPECT_EQ(sets()->rowCount(), c.opened == nullptr ? 2 : 3);
  EXPECT_EQ(sets()->selectedRows(), std::vector<int>{0});
  EXPECT_FALSE(logic.ended());
  QTest::keyClick(sets(), Qt::Key_Tab);
  EXPECT_NE(QApplication::focusWidget(), sets());
}

INSTANTIATE_TEST_SUITE_P(Keys, SetListKeys,
                         ::testing::Values(ListKey{Qt::Key_Return, "Losas"}, ListKey{Qt::Key_F2, "Losas"},
                                           ListKey{Qt::Key_Insert, ""}, ListKey{Qt::Key_Delete, nullptr}));

// The last variable of each line keeps its line feed, so the lines end with a spare one.
CConjuntoVariableZep catalogue(const char* text) {
  CConjuntoVariableZep variables;
  std::FILE* file = fmemopen(const_cast<char*>(text), std::strlen(text), "r");
  variables.leeFichero(file);
  std::fclose(file);
  return variables;
}

class PropertyDataViewTest : public UiTest {
 protected:
  CIfcPropertySet owner = makeSet("Muros", {makeProperty("Altura", PropertyReal)});
  std::vector<CIfcEnum> enums{makeEnum("Acabados", {{1, "Liso"}}), makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}})};
  const CConjuntoVariableZep variables = catalogue("Eje;PK,Cota,Pendiente\n");
  CPropertyDataDlg logic{services, kNewItem, makeProperty(""), enums, &owner, &variables};
  PropertyDataView view{logic};
};

TEST_F(PropertyDataViewTest, TheControlsFollowTheTypeAndWhatWasTypedReachesTheRecord) {
  open(view, logic);
  EXPECT_EQ(look(view, "setNameDisplay typeCombo unitCombo"), "Muros | Texto | ");
  EXPECT_EQ(child<QComboBox>(view, "unitCombo")->count(), kUnitCount);
  EXPECT_EQ(entries(child<QComboBox>(view, "valueListCombo")), (QStringList{"Acabados", "Colores"}));
  const QString controls = "defaultValueEdit booleanCheck valueListCombo editValueListButton";
  choose(view, "typeCombo", PropertyBoolean);
  EXPECT_EQ(look(view, controls), "- | off | ! | &Editar...");
  choose(view, "typeCombo", PropertyEnumerated);
  EXPECT_EQ(look(view, controls), "! | - |  | &Editar...");
  choose(view, "typeCombo", PropertyReal);
  EXPECT_EQ(look(view, controls), " | - | ! | !&Editar...");
  typeInto(view, "nameEdit", QString::fromUtf8("Espesor térmico"));
  typeInto(view, "descriptionEdit", "Aislante");
  typeInto(view, "defaultValueEdit", "0.25");
  choose(view, "unitCombo", 1);
  child<QCheckBox>(view, "optionalCheck")->click();
  click(view, "okButton");
  ASSERT_EQ(logic.result(), kDialogOk);
  EXPECT_STREQ(logic.property.name, "Espesor t\xC3\xA9rmico");
  EXPECT_STREQ(logic.property.description, "Aislante");
  EXPECT_DOUBLE_EQ(logic.property.realValue, 0.25);
  EXPECT_EQ(logic.property.unit, 1);
  EXPECT_TRUE(logic.property.optional);
}

// "..." opens the value chooser, whose result fills the default; a value list chosen opens it, and
// cancelling it leaves none chosen, as before.
TEST_F(PropertyDataViewTest, TheValueChooserAndTheValueListsOpenFromTheirControls) {
  open(view, logic);
  typeInto(view, "nameEdit", "Color");
  whenDialogOpens<PropertyValueView>([](PropertyValueView& chooser) {
    QTest::mouseClick(child<QRadioButton>(chooser, "hostVariableRadio"), Qt::LeftButton);
    choose(chooser, "groupCombo", 0);
    choose(chooser, "variableCombo", 1);
    click(chooser, "okButton");
  });
  click(view, "chooseValueButton");
  EXPECT_EQ(look(view, "defaultValueEdit"), "Eje.Cota$");
  choose(view, "typeCombo", PropertyEnumerated);
  whenDialogOpens<ListValuesView>([&](ListValuesView& values) { EXPECT_EQ(look(values, "nameEdit"), "Colores"); });
  choose(view, "valueListCombo", 1);
  EXPECT_EQ(look(view, "valueListCombo"), "");
}

TEST_F(UiTest, TheValueChooserOpensOnAReferenceAndOkTakesATypedLiteral) {
  const CConjuntoVariableZep variables = catalogue("Muro;Altura,Espesor\nEje;PK,Cota,Pendiente\n");
  CPropiedadesObjetosValorIFCDlg logic(services, "Eje.Cota$", variables);
  PropertyValueView view(logic);
  open(view, logic);
  const QString controls = "hostVariableRadio groupCombo variableCombo valueEdit";
  EXPECT_EQ(look(view, controls), "on | Eje | Cota | !Eje.Cota$");
  QTest::mouseClick(child<QRadioButton>(view, "literalRadio"), Qt::LeftButton);
  EXPECT_EQ(look(view, controls), "off | !Eje | !Cota | Eje.Cota$");
  typeInto(view, "valueEdit", QString::fromUtf8("2,5 m²"));
  click(view, "okButton");
  EXPECT_STREQ(logic.value, "2,5 m\xC2\xB2");
}

// A type made through three windows; a list whose dialog has no current row (after an insert) shows
// none selected.
TEST_F(UiTest, ATypeMadeThroughThreeWindowsLandsInTheList) {
  CListEnumsDlg logic(services, {makeEnum("Colores", {{1, "Rojo"}})});
  ListEnumsView view(logic);
  open(view, logic);
  whenDialogOpens<ListValuesView>([](ListValuesView& values) {
    typeInto(values, "nameEdit", "Acabados");
    whenDialogOpens<ValueEnumView>([](ValueEnumView& value) {
      typeInto(value, "codeEdit", "2");
      typeInto(value, "textEdit", "Barniz");
      click(value, "okButton");
    });
    click(values, "insertButton");
    clickRow(child<ReportList>(values, "values"), 0);
    whenDialogOpens<ValueEnumView>([](ValueEnumView&) {});  // left open, so cancelled
    click(values, "insertButton");
    EXPECT_TRUE(child<ReportList>(values, "values")->selectedRows().empty());
    click(values, "okButton");
  });
  click(view, "insertButton");
  EXPECT_EQ(look(view, "types"), "Nombre,Descripción: Acabados,; Colores,");
  ASSERT_EQ(logic.enums[0].elements.size(), 1u);
  EXPECT_EQ(logic.enums[0].elements[0].value, 2);
  EXPECT_STREQ(logic.enums[0].elements[0].text, "Barniz");
}

TEST_F(UiTest, AValueClickedIsTheOneTheValueListGivesBack) {
  CListValuesDlg logic(services, makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}}), false);
  ListValuesView view(logic);
  open(view, logic);
  clickRow(child<ReportList>(view, "values"), 1);
  click(view, "okButton");
  EXPECT_EQ(logic.currentRow, 1);
}

template <class Record>
std::vector<Record> named(std::initializer_list<const char*> names) {
  std::vector<Record> records(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) setText(records[i].name, names.begin()[i]);
  return records;
}

// The set's linked element, and a quantity opened by a double click with its kind and export mark.
TEST_F(UiTest, TheQuantityEditorsPassTheLinkedElementTheKindAndTheExportMark) {
  CIfcQuantitySet areas =
      makeQuantitySet("Areas", {makeQuantity("Area", AreaMeasure), makeQuantity("Largo", LengthMeasure)});
  setText(areas.typeZep, "superficie");
  CQuantitiesOfSetDlg logic(services, kEditItem, areas, nullptr,
                            named<CIfcType>({"IfcLengthMeasure", "IfcAreaMeasure", "IfcVolumeMeasure"}),
                            named<CIfcObject>({"Eje", "Superficie"}));
  QuantitiesOfSetView view(logic);
  open(view, logic);
  EXPECT_EQ(look(view, "linkedElementCombo"), "Superficie");
  whenDialogOpens<QuantityDataView>([&](QuantityDataView& data) {
    EXPECT_EQ(look(data, "setNameDisplay kindCombo exportCheck"), "Areas | IfcAreaMeasure | on");
    typeInto(data, "nameEdit", "Superficie");
    choose(data, "kindCombo", VolumeMeasure);
    child<QCheckBox>(data, "exportCheck")->click();
    click(data, "okButton");
  });
  doubleClickRow(child<ReportList>(view, "quantities"), 0, Qt::RightButton);
  EXPECT_EQ(look(view, "quantities"),
            "Nombre,Descripción,Tipo,Exportar: Superficie,,IfcVolumeMeasure,No; Largo,,IfcLengthMeasure,Si");
  typeInto(view, "nameEdit", "Superficies");
  choose(view, "linkedElementCombo", 0);
  click(view, "okButton");
  EXPECT_STREQ(logic.set.name, "Superficies");
  EXPECT_STREQ(logic.set.typeZep, "Eje");
}

}  // namespace
