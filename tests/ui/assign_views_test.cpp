// The property assignment editor on screen, and the grid under it: the header row and its grey,
// rows of the chosen set, read-only cells, in-place text edits, drop-down cells limited to their
// choices, double clicks that open the value chooser, and columns that fill the width.
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QRadioButton>

#include "editors/editor_fixture.h"
#include "ui/grid/grid_control.h"
#include "ui/properties_set_view.h"
#include "ui/property_assign_view.h"
#include "ui/property_value_view.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

class PropertyAssignViewTest : public UiTest {
 protected:
  static CIfcPropertySet wallValues() {
    CIfcPropertyName holes = makeProperty("Huecos", PropertyInteger);
    holes.intValue = 7;
    CIfcPropertyName height = makeProperty("Altura", PropertyReal);
    height.realValue = 1;
    CIfcPropertyName finish = makeProperty("Acabado", PropertyEnumerated, "Liso");
    setText(finish.enumName, "acabados");
    CIfcPropertyName axis = makeProperty("Eje", PropertyString, "Eje.PK$");
    CIfcPropertyName lost = makeProperty("Color", PropertyEnumerated, "Rojo");
    setText(lost.enumName, "SinTipo");
    return makeSet("Muros", {holes, height, finish, axis, lost});
  }

  void openOnWalls() {
    open(view, logic);
    clickRow(child<ReportList>(view, "sets"), 0);
  }
  QString cellText(int row, int column) { return grid()->cellIndex(row, column).data().toString(); }
  GridControl* grid() { return child<GridControl>(view, "grid"); }
  // Starts the in-place edit of a cell as the F2 key does; the editor, or null when none opened.
  QWidget* startEdit(int row, int column) {
    grid()->setCurrentIndex(grid()->cellIndex(row, column));
    QTest::keyClick(grid(), Qt::Key_F2);
    return openEditor();
  }
  // The in-place editor on screen, if any: closed ones are hidden until they are deleted.
  QWidget* openEditor() {
    for (QWidget* editor : grid()->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
      if (editor->isVisible()) return editor;
    return nullptr;
  }

  const std::vector<CIfcPropertySet> definitions{makeSet("Losas"), wallValues()};
  const std::vector<CIfcEnum> enums{makeEnum("Acabados", {{1, "Liso"}, {2, "Rugoso"}})};
  CPropiedadesObjetosIFCDlg logic{services, definitions, enums, {wallValues()}};
  PropertyAssignView view{logic};
};

TEST_F(PropertyAssignViewTest, OpensWithTheHostsCaptionsAndAGridOfOnlyItsHeader) {
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), QString::fromUtf8("Asignación de Propiedades a Objetos IFC"));
  EXPECT_EQ(child<QGroupBox>(view, "setsFrame")->title(), "Conjunto de Propiedades");
  EXPECT_EQ(child<QGroupBox>(view, "valuesFrame")->title(), QString::fromUtf8("Asignación de Propiedades - Valores"));
  EXPECT_TRUE(child<QPushButton>(view, "excelButton")->isHidden());
  EXPECT_EQ(rowTexts(child<ReportList>(view, "sets"), 0).front(), "Muros");
  EXPECT_EQ(grid()->model()->rowCount(), 0);
  EXPECT_FALSE(grid()->horizontalHeader()->isHidden());
}

TEST_F(PropertyAssignViewTest, TheHeaderRowShowsItsTitlesOnGrey) {
  openOnWalls();
  QStringList titles;
  for (int column = 0; column < 4; ++column) titles.append(grid()->model()->headerData(column, Qt::Horizontal).toString());
  EXPECT_EQ(titles, (QStringList{"Nombre", QString::fromUtf8("Descripción"), "Tipo", "Valor"}));
  const QVariant background = grid()->model()->headerData(0, Qt::Horizontal, Qt::BackgroundRole);
  EXPECT_EQ(background.value<QBrush>().color(), QColor(160, 160, 160));
  // And on screen: a point of the header away from its text is drawn in (nearly) that grey.
  QHeaderView* header = grid()->horizontalHeader();
  const QImage shot = header->grab().toImage();
  const QPoint pastTheTitle(header->sectionViewportPosition(3) + header->sectionSize(3) * 3 / 4, header->height() / 2);
  const QColor drawn = shot.pixelColor(pastTheTitle * shot.devicePixelRatio());
  EXPECT_NEAR(drawn.red(), 160, 12);
  EXPECT_NEAR(drawn.green(), 160, 12);
  EXPECT_NEAR(drawn.blue(), 160, 12);
}

TEST_F(PropertyAssignViewTest, ChoosingASetShowsItsPropertiesOnWhite) {
  openOnWalls();
  ASSERT_EQ(grid()->model()->rowCount(), 5);
  EXPECT_EQ(cellText(1, 0), "Huecos");
  EXPECT_EQ(cellText(1, 2), "Entero");
  EXPECT_EQ(cellText(1, 3), "7");
  EXPECT_EQ(cellText(2, 3), "1.000");
  EXPECT_EQ(cellText(3, 2), "Lista");
  EXPECT_EQ(grid()->cellIndex(1, 0).data(Qt::BackgroundRole).value<QBrush>().color(), QColor(Qt::white));
}

TEST_F(PropertyAssignViewTest, NamesTypesAndReferencesCannotBeEditedInPlace) {
  openOnWalls();
  EXPECT_EQ(startEdit(1, 0), nullptr);
  EXPECT_EQ(startEdit(1, 2), nullptr);
  EXPECT_EQ(startEdit(4, 3), nullptr);  // "Eje.PK$", a host variable reference
  EXPECT_FALSE(grid()->model()->setData(grid()->cellIndex(1, 0), "Otro", Qt::EditRole));
  EXPECT_STREQ(logic.assignedSets[0].properties[0].name, "Huecos");
}

// Typing values down a column: Enter commits a cell and goes to the one below, the dialog stays.
TEST_F(PropertyAssignViewTest, EnterCommitsTheCellAndMovesDownWithoutEndingTheDialog) {
  openOnWalls();
  auto* editor = qobject_cast<QLineEdit*>(startEdit(1, 3));
  ASSERT_NE(editor, nullptr);
  editor->selectAll();
  QTest::keyClicks(editor, "12abc");
  QTest::keyClick(editor, Qt::Key_Return);
  settle();  // the grid is shown again once the editor has closed
  EXPECT_EQ(logic.assignedSets[0].properties[0].intValue, 12);
  EXPECT_EQ(cellText(1, 3), "12");
  EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(2, 3));
  QTest::keyClicks(grid(), "2");  // typing starts the next edit
  QWidget* next = openEditor();
  ASSERT_NE(next, nullptr);
  QTest::keyClicks(next, ".5");
  QTest::keyClick(next, Qt::Key_Enter);
  settle();
  EXPECT_EQ(cellText(2, 3), "2.500");
  EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(3, 3));
  QTest::keyClick(grid(), Qt::Key_Return);  // outside an edit: down again, not the default button
  EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(4, 3));
  EXPECT_FALSE(logic.ended());
  EXPECT_TRUE(view.isVisible());
}

// A rebuild that keeps the grid's shape keeps the current cell; Esc drops an edit; Tab leaves.
TEST_F(PropertyAssignViewTest, TheCurrentCellSurvivesACommitAndTabLeavesTheGrid) {
  openOnWalls();
  QApplication::setActiveWindow(&view);
  auto* editor = qobject_cast<QLineEdit*>(startEdit(2, 3));
  ASSERT_NE(editor, nullptr);
  editor->setText("9");
  QTest::keyClick(editor, Qt::Key_Escape);
  settle();
  EXPECT_EQ(cellText(2, 3), "1.000");
  EXPECT_FALSE(logic.ended());
  editor = qobject_cast<QLineEdit*>(startEdit(2, 3));
  ASSERT_NE(editor, nullptr);
  editor->setText("4");
  QTest::keyClick(editor, Qt::Key_Tab);  // commits, and goes on to the next control
  settle();
  EXPECT_EQ(cellText(2, 3), "4.000");
  EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(2, 3));
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  EXPECT_FALSE(grid()->isAncestorOf(QApplication::focusWidget()));
  grid()->setFocus();
  QTest::keyClick(grid(), Qt::Key_Tab);
  EXPECT_NE(QApplication::focusWidget(), grid());
}

TEST_F(PropertyAssignViewTest, ALineFeedInAValueIsShownOnOneLine) {
  char* axis = logic.assignedSets[0].properties[3].textValue;  // "Eje.PK$" and a line feed, as the
  axis[7] = '\n';                                             // catalogue keeps a line's last variable
  axis[8] = '\0';
  openOnWalls();
  EXPECT_EQ(cellText(4, 3), "Eje.PK$ ");
  EXPECT_EQ(grid()->cellIndex(4, 3).data(Qt::EditRole).toString(), "Eje.PK$\n");
}

TEST_F(PropertyAssignViewTest, ADropDownCellOffersExactlyItsChoicesAndNoTyping) {
  openOnWalls();
  auto* choices = qobject_cast<QComboBox*>(startEdit(3, 3));
  ASSERT_NE(choices, nullptr);
  EXPECT_FALSE(choices->isEditable());
  QStringList offered;
  for (int i = 0; i < choices->count(); ++i) offered.append(choices->itemText(i));
  EXPECT_EQ(offered, (QStringList{"Liso", "Rugoso"}));
  EXPECT_EQ(choices->currentText(), "Liso");
  EXPECT_TRUE(grid()->cellIndex(3, 3).data(Qt::FontRole).isNull());  // editable: upright
  EXPECT_TRUE(grid()->cellIndex(3, 0).data(Qt::FontRole).value<QFont>().italic());  // read-only
  QTest::keyClick(choices, Qt::Key_Down);  // moves through the choices, commits nothing
  settle();
  EXPECT_EQ(choices->currentText(), "Rugoso");
  EXPECT_STREQ(logic.assignedSets[0].properties[2].textValue, "Liso");
  EXPECT_EQ(openEditor(), choices);
  QTest::keyClick(choices, Qt::Key_Return);
  settle();
  EXPECT_STREQ(logic.assignedSets[0].properties[2].textValue, "Rugoso");
  EXPECT_EQ(cellText(3, 3), "Rugoso");
  EXPECT_EQ(openEditor(), nullptr);
  EXPECT_FALSE(logic.ended());
  // Alt+Down opens the list, and a choice picked from it commits at once.
  grid()->setCurrentIndex(grid()->cellIndex(3, 3));
  QTest::keyClick(grid(), Qt::Key_Down, Qt::AltModifier);
  choices = qobject_cast<QComboBox*>(openEditor());
  ASSERT_NE(choices, nullptr);
  EXPECT_TRUE(choices->view()->isVisible());
  choices->setCurrentIndex(0);
  emit choices->activated(0);
  settle();
  EXPECT_STREQ(logic.assignedSets[0].properties[2].textValue, "Liso");
  // Nothing else gets in, whoever edits the cell.
  EXPECT_FALSE(grid()->model()->setData(grid()->cellIndex(3, 3), "Pulido", Qt::EditRole));
}

TEST_F(PropertyAssignViewTest, ADropDownWithoutItsEnumerationHasNoChoices) {
  openOnWalls();
  auto* choices = qobject_cast<QComboBox*>(startEdit(5, 3));
  ASSERT_NE(choices, nullptr);
  EXPECT_EQ(choices->count(), 0);
}

// A reference can only be changed through the value chooser a double click opens.
TEST_F(PropertyAssignViewTest, ADoubleClickOnAValueOpensTheChooserAndItsResultIsStored) {
  openOnWalls();
  QString opened;
  whenDialogOpens<PropertyValueView>([&](PropertyValueView& chooser) {
    opened = child<QLineEdit>(chooser, "valueEdit")->text();
    QTest::mouseClick(child<QRadioButton>(chooser, "literalRadio"), Qt::LeftButton);
    typeInto(chooser, "valueEdit", "Fijo");
    click(chooser, "okButton");
  });
  doubleClickAt(grid()->viewport(), grid()->cellRect(4, 3).center());
  EXPECT_EQ(opened, "Eje.PK$");
  EXPECT_STREQ(logic.assignedSets[0].properties[3].textValue, "Fijo");
  EXPECT_EQ(cellText(4, 3), "Fijo");
  EXPECT_NE(startEdit(4, 3), nullptr);  // no longer a reference
}

TEST_F(PropertyAssignViewTest, DeleteRemovesTheChosenSetAndEmptiesTheGrid) {
  openOnWalls();
  click(view, "removeButton");
  EXPECT_EQ(child<ReportList>(view, "sets")->rowCount(), 0);
  EXPECT_EQ(grid()->model()->rowCount(), 0);
  EXPECT_TRUE(logic.assignedSets.empty());
}

TEST_F(PropertyAssignViewTest, InsertAssignsTheSetChosenInTheSetList) {
  open(view, logic);
  whenDialogOpens<PropertiesSetView>([](PropertiesSetView& list) {
    clickRow(child<ReportList>(list, "sets"), 0);
    click(list, "okButton");
  });
  click(view, "insertButton");
  auto* sets = child<ReportList>(view, "sets");
  ASSERT_EQ(sets->rowCount(), 2);
  EXPECT_EQ(rowTexts(sets, 1).front(), "Losas");
}

// Columns start fitted to their titles and contents, and the last one fills the rest.
TEST_F(PropertyAssignViewTest, TheColumnsFillTheGridsWidth) {
  openOnWalls();
  const QHeaderView* header = grid()->horizontalHeader();
  int total = 0;
  for (int column = 0; column < header->count(); ++column) total += header->sectionSize(column);
  EXPECT_NEAR(total, grid()->viewport()->width(), header->count());
  view.resize(view.width() + 200, view.height());
  settle();
  total = 0;
  for (int column = 0; column < header->count(); ++column) total += header->sectionSize(column);
  EXPECT_NEAR(total, grid()->viewport()->width(), header->count());
}

}  // namespace
