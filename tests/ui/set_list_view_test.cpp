// The set list on screen: captions, rows and column widths, clicks, multiple selection for
// "Guardar como...", deletion with its question, nested set editors, the CSV import, quantity mode.
#include <QHeaderView>
#include <QLineEdit>

#include "editors/editor_fixture.h"
#include "support/temp_dir.h"
#include "ui/list_enums_view.h"
#include "ui/list_values_view.h"
#include "ui/value_enum_view.h"
#include "ui/properties_of_set_view.h"
#include "ui/properties_set_view.h"
#include "ui/quantities_of_set_view.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

class SetListView : public UiTest {
 protected:
  CPropertiesSetDlg logic{services, {makeSet("Losas"), makeSet("Muros"), makeSet("Ventanas")}, {}};
  PropertiesSetView view{logic};
  ReportList* sets() { return child<ReportList>(view, "sets"); }
};

TEST_F(SetListView, OpensWithTheHostsCaptionsAndOneRowPerSet) {
  setText(logic.propertySets[1].description, "x");
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), "Conjunto de Propiedades");
  EXPECT_EQ(child<QPushButton>(view, "saveAsButton")->text(), "&Guardar como...");  // a mnemonic added
  EXPECT_EQ(child<QPushButton>(view, "importButton")->text(), "I&mportar...");      // "&Insertar..." has I
  EXPECT_EQ(columnTitles(sets()), (QStringList{"Nombre", QString::fromUtf8("Descripción")}));
  ASSERT_EQ(sets()->rowCount(), 3);
  EXPECT_EQ(rowTexts(sets(), 1), (QStringList{"Muros", "x"}));
  EXPECT_TRUE(sets()->showGrid());
  EXPECT_EQ(sets()->selectionBehavior(), QAbstractItemView::SelectRows);
  EXPECT_EQ(sets()->selectionMode(), QAbstractItemView::ExtendedSelection);
}

// The template's texts are replaced even by the empty texts of a message file that is missing.
TEST_F(SetListView, WithoutAMessageFileTheCaptionsAreEmpty) {
  setRutaMensajes("/nonexistent/messages.txt");
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), "");
  EXPECT_EQ(child<QPushButton>(view, "insertButton")->text(), "");
  EXPECT_EQ(columnTitles(sets()), (QStringList{"", ""}));
}

TEST_F(SetListView, ColumnsTakeTheWiderOfTheirContentsAndTheirTitle) {
  const char* longText = "Propiedades comunes de los muros de carga y de cerramiento";
  setText(logic.propertySets[0].description, longText);
  open(view, logic);
  const QFontMetrics text(sets()->font());
  const QFontMetrics title(sets()->horizontalHeader()->font());
  EXPECT_GE(sets()->columnWidth(0), title.horizontalAdvance("Nombre"));
  EXPECT_GE(sets()->columnWidth(0), text.horizontalAdvance("Ventanas"));
  EXPECT_LT(sets()->columnWidth(0), sets()->viewport()->width() / 2);  // fitted, not half the list
  EXPECT_GE(sets()->columnWidth(1), text.horizontalAdvance(longText));
}

TEST_F(SetListView, ARowClickMakesItCurrentAndAClickOffTheRowsClearsIt) {
  open(view, logic);
  clickRow(sets(), 1);
  EXPECT_EQ(logic.currentRow, 1);
  clickBelowRows(sets());
  EXPECT_EQ(logic.currentRow, -1);
}

TEST_F(SetListView, SaveAsRecordsEveryRowSelectedAndEndsWithItsOwnResult) {
  open(view, logic);
  clickRow(sets(), 0);
  clickRow(sets(), 2, Qt::ControlModifier);
  click(view, "saveAsButton");
  EXPECT_FALSE(view.isVisible());
  EXPECT_EQ(view.result(), kDialogSaveAs);
  EXPECT_EQ(logic.result(), kDialogSaveAs);
  ASSERT_EQ(logic.selection.count, 2);
  EXPECT_EQ(logic.selection.rows[0], 0);
  EXPECT_EQ(logic.selection.rows[1], 2);
}

TEST_F(SetListView, SaveAsWithNoRowSelectedShowsTheHostsMessageAndStays) {
  open(view, logic);
  click(view, "saveAsButton");
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u("No hay ningún conjunto seleccionado")});
  EXPECT_TRUE(view.isVisible());
  EXPECT_FALSE(logic.ended());
}

TEST_F(SetListView, DeleteAsksFirstThenRemovesTheRowAndSelectsTheSameIndex) {
  services.answers = {false, true};
  open(view, logic);
  clickRow(sets(), 1);
  click(view, "removeButton");
  EXPECT_EQ(services.questions, std::vector<std::u16string>{kConfirmDelete});
  EXPECT_EQ(sets()->rowCount(), 3);
  click(view, "removeButton");
  ASSERT_EQ(sets()->rowCount(), 2);
  EXPECT_EQ(rowTexts(sets(), 1).front(), "Ventanas");
  EXPECT_EQ(sets()->selectedRows(), std::vector<int>{1});
}

TEST_F(SetListView, ADoubleClickOpensTheSetAndItsChangesComeBack) {
  open(view, logic);
  QString shownName;
  whenDialogOpens<PropertiesOfSetView>([&](PropertiesOfSetView& set) {
    shownName = child<QLineEdit>(set, "nameEdit")->text();
    typeInto(set, "descriptionEdit", QString::fromUtf8("Cerramientos y tabiques"));
    click(set, "okButton");
  });
  clickRow(sets(), 1);
  doubleClickRow(sets(), 1);
  EXPECT_EQ(shownName, "Muros");
  EXPECT_EQ(rowTexts(sets(), 1), (QStringList{"Muros", "Cerramientos y tabiques"}));
}

TEST_F(SetListView, InsertAddsTheNewSetInNameOrder) {
  open(view, logic);
  whenDialogOpens<PropertiesOfSetView>([](PropertiesOfSetView& set) {
    typeInto(set, "nameEdit", "Cubiertas");
    click(set, "okButton");
  });
  click(view, "insertButton");
  ASSERT_EQ(sets()->rowCount(), 4);
  EXPECT_EQ(rowTexts(sets(), 0).front(), "Cubiertas");
}

TEST_F(SetListView, ImportReadsTheCsvFileThePickerChose) {
  TempDir dir;
  const std::string path = dir.file("importar.csv");
  writeBytes(path, "Muros;Altura;Altura libre;Real;2.75\nPuertas;Ancho;Ancho de paso;Real;0.9\n");
  services.pickedFiles = {QString::fromStdString(path).toStdU16String()};
  open(view, logic);
  click(view, "importButton");
  ASSERT_EQ(services.pickers.size(), 1u);
  EXPECT_EQ(services.pickers[0].filters[0].description, u"CSV Files (*.csv)");
  ASSERT_EQ(sets()->rowCount(), 4);
  EXPECT_EQ(rowTexts(sets(), 3).front(), "Puertas");  // at the end, unsorted until the next edit
  EXPECT_EQ(logic.propertySets[1].properties.size(), 1u);
}

TEST_F(UiTest, TheQuantityListShowsThreeColumnsAndOpensTheQuantitySetEditor) {
  CIfcQuantitySet axes = makeQuantitySet("Ejes");
  setText(axes.typeZep, "Eje");
  CPropertiesSetDlg logic(services, std::vector<CIfcQuantitySet>{axes}, {}, {});
  PropertiesSetView view(logic);
  open(view, logic);
  auto* sets = child<ReportList>(view, "sets");
  EXPECT_EQ(columnTitles(sets), (QStringList{"Nombre", QString::fromUtf8("Descripción"), "Tipo"}));
  EXPECT_EQ(rowTexts(sets, 0), (QStringList{"Ejes", "", "Eje"}));
  whenDialogOpens<QuantitiesOfSetView>([](QuantitiesOfSetView& set) { click(set, "cancelButton"); });
  click(view, "insertButton");
}

// The keys of a list, on the last row reached with End: Enter and F2 edit it, Insert inserts, Delete
// asks first; none of them ends the dialog, and Tab leaves the list.
struct ListKey {
  Qt::Key key;
  const char* opened;  // the name the set editor opened with; null when none opened
  bool asked;
};

// Named by its key: gtest would otherwise print the struct's bytes, padding included.
void PrintTo(const ListKey& c, std::ostream* out) { *out << "key 0x" << std::hex << c.key; }

class SetListKeys : public SetListView, public ::testing::WithParamInterface<ListKey> {};

TEST_P(SetListKeys, ActOnTheRowReachedAndLeaveTheDialogOpen) {
  const ListKey& c = GetParam();
  services.answers = {false};
  open(view, logic);
  QApplication::setActiveWindow(&view);
  sets()->setFocus();
  QTest::keyClick(sets(), Qt::Key_End);
  EXPECT_EQ(logic.currentRow, 2);
  QString opened;
  if (c.opened != nullptr)
    whenDialogOpens<PropertiesOfSetView>([&](PropertiesOfSetView& set) {
      opened = child<QLineEdit>(set, "nameEdit")->text();
      click(set, "cancelButton");
    });
  QTest::keyClick(sets(), c.key);
  if (c.opened != nullptr) {
    EXPECT_EQ(opened, c.opened);
  }
  EXPECT_EQ(services.questions.size(), c.asked ? 1u : 0u);
  EXPECT_FALSE(logic.ended());
  EXPECT_EQ(sets()->rowCount(), 3);
  QTest::keyClick(sets(), Qt::Key_Tab);
  EXPECT_NE(QApplication::focusWidget(), sets());
}

INSTANTIATE_TEST_SUITE_P(Keys, SetListKeys,
                         ::testing::Values(ListKey{Qt::Key_Return, "Ventanas", false},
                                           ListKey{Qt::Key_F2, "Ventanas", false},
                                           ListKey{Qt::Key_Insert, "", false},
                                           ListKey{Qt::Key_Delete, nullptr, true}));

// After "Insertar..." the value list has no current row, and shows none selected.
TEST_F(UiTest, AfterAnInsertNoValueIsShownSelected) {
  CListValuesDlg logic(services, makeEnum("Acabados", {{1, "Liso"}}), true);
  ListValuesView view(logic);
  open(view, logic);
  auto* values = child<ReportList>(view, "values");
  clickRow(values, 0);
  whenDialogOpens<ValueEnumView>([](ValueEnumView& value) { click(value, "cancelButton"); });
  click(view, "insertButton");
  EXPECT_EQ(logic.currentRow, -1);
  EXPECT_TRUE(values->selectedRows().empty());
}

}  // namespace
