// The assignment editors and their value grid: the keyboard in and out of in-place edits, drop-down
// cells limited to their choices, read-only cells, the header drawn grey, columns that fill the
// width, and the current cell kept across the rebuild each edit causes.
#include <QHeaderView>
#include <QImage>
#include <QRadioButton>

#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

// Both assignment editors: Insertar... takes the set chosen in the set list, a click on it fills the
// grid, Borrar leaves the grid its header only.
TEST_F(UiTest, AssignmentEditorsInsertChooseAndRemoveSets) {
  const double hostValues[] = {10};
  CPropiedadesObjetosIFCDlg properties(services, {makeSet("Losas", {makeProperty("Canto")})}, {}, {});
  CCuantificadoresObjetosIFCDlg quantities(services, {makeQuantitySet("Ejes", {makeQuantity("L", LengthMeasure)})}, {},
                                           "Eje", hostValues, 1);
  PropertyAssignView propertyView(properties);
  QuantityAssignView quantityView(quantities);
  open(propertyView, properties);
  open(quantityView, quantities);
  for (auto [view, row] : {std::pair<QWidget*, const char*>{&propertyView, "Canto,,String,"},
                           {&quantityView, "L,,IfcLengthMeasure,10.000"}}) {
    whenDialogOpens<PropertiesSetView>([](PropertiesSetView& list) {
      clickRow(child<ReportList>(list, "sets"), 0);
      click(list, "okButton");
    });
    click(*view, "insertButton");
    clickRow(child<ReportList>(*view, "sets"), 0);
    EXPECT_EQ(look(*view, "grid"), std::string("Nombre,Descripción,Tipo,Valor: ") + row);
    EXPECT_EQ(child<QPushButton>(*view, "excelButton")->isHidden(), view == &propertyView);
    click(*view, "removeButton");
    EXPECT_EQ(look(*view, "sets grid"), "Nombre,Descripción: | Nombre,Descripción,Tipo,Valor:");
    EXPECT_FALSE(child<GridControl>(*view, "grid")->horizontalHeader()->isHidden());
  }
}

class GridTest : public UiTest {
 protected:
  static CIfcPropertySet wallValues() {
    CIfcPropertyName holes = makeProperty("Huecos", PropertyInteger), height = makeProperty("Altura", PropertyReal);
    holes.intValue = 7;
    height.realValue = 1;
    CIfcPropertyName finish = makeProperty("Acabado", PropertyEnumerated, "Liso");
    setText(finish.enumName, "acabados");
    return makeSet("Muros", {holes, height, finish, makeProperty("Eje", PropertyString, "Eje.PK$\n")});
  }
  void SetUp() override {
    UiTest::SetUp();
    open(view, logic);
    clickRow(child<ReportList>(view, "sets"), 0);
    QApplication::setActiveWindow(&view);
  }
  QString cellText(int row, int column) { return grid()->cellIndex(row, column).data().toString(); }
  GridControl* grid() { return child<GridControl>(view, "grid"); }
  const char* value(int row) { return logic.assignedSets[0].properties[static_cast<std::size_t>(row - 1)].textValue; }
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

  const std::vector<CIfcPropertySet> definitions{wallValues()};
  const std::vector<CIfcEnum> enums{makeEnum("Acabados", {{1, "Liso"}, {2, "Rugoso"}})};
  CPropiedadesObjetosIFCDlg logic{services, definitions, enums, {wallValues()}};
  PropertyAssignView view{logic};
};

// Names, types and host variable references are not edited in place, and show in italics.
TEST_F(GridTest, ReadOnlyCellsOpenNoEditorAndTakeNoValue) {
  for (auto [row, column] : {std::pair{1, 0}, {1, 2}, {4, 3}}) {
    EXPECT_EQ(startEdit(row, column), nullptr) << row << "," << column;
    EXPECT_TRUE(grid()->cellIndex(row, column).data(Qt::FontRole).value<QFont>().italic());
  }
  EXPECT_TRUE(grid()->cellIndex(1, 3).data(Qt::FontRole).isNull());
  EXPECT_FALSE(grid()->model()->setData(grid()->cellIndex(1, 0), "Otro", Qt::EditRole));
  EXPECT_EQ(cellText(4, 3), "Eje.PK$ ");  // a line feed kept in a value shows on one line
}

// The keys of an in-place edit, started with F2 or by typing: Enter commits and moves down, Esc
// drops the edit, Tab commits and leaves the grid, whose current cell stays. Outside an edit Enter
// moves down too; none of them reaches the dialog's default button.
struct CellKeys {
  bool typingStarts;
  const char* typed;
  Qt::Key key;
  const char* shown;
  int rowAfter;
};
void PrintTo(const CellKeys& c, std::ostream* out) { *out << c.typed << " key 0x" << std::hex << c.key; }

class GridKeys : public GridTest, public ::testing::WithParamInterface<CellKeys> {};

TEST_P(GridKeys, EndTheEditAsTheKeySays) {
  const CellKeys& c = GetParam();
  grid()->setCurrentIndex(grid()->cellIndex(2, 3));
  if (c.typingStarts) QTest::keyClick(grid(), c.typed[0]);
  else QTest::keyClick(grid(), Qt::Key_F2);
  auto* editor = qobject_cast<QLineEdit*>(openEditor());
  ASSERT_NE(editor, nullptr);
  if (!c.typingStarts) editor->selectAll();
  QTest::keyClicks(editor, c.typed + (c.typingStarts ? 1 : 0));
  QTest::keyClick(editor, c.key);
  settle();  // the grid is shown again once the editor has closed
  EXPECT_EQ(cellText(2, 3), c.shown);
  EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(c.rowAfter, 3));
  EXPECT_EQ(grid()->isAncestorOf(QApplication::focusWidget()) || QApplication::focusWidget() == grid(),
            c.key != Qt::Key_Tab);
  QTest::keyClick(grid(), Qt::Key_Return);
  EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(c.rowAfter + 1, 3));
  QTest::keyClick(grid(), Qt::Key_Tab);
  EXPECT_NE(QApplication::focusWidget(), grid());
  EXPECT_FALSE(logic.ended());
}

INSTANTIATE_TEST_SUITE_P(Keys, GridKeys,
                         ::testing::Values(CellKeys{false, "2.5", Qt::Key_Return, "2.500", 3},
                                           CellKeys{true, "2.5", Qt::Key_Enter, "2.500", 3},
                                           CellKeys{false, "9", Qt::Key_Escape, "1.000", 2},
                                           CellKeys{false, "4", Qt::Key_Tab, "4.000", 2}));

// The arrows move through a drop-down's choices without committing; Enter commits; Alt+Down opens
// the list, and a choice picked from it commits at once. Nothing else gets in.
TEST_F(GridTest, ADropDownCellTakesOnlyItsChoices) {
  auto* choices = qobject_cast<QComboBox*>(startEdit(3, 3));
  ASSERT_NE(choices, nullptr);
  EXPECT_FALSE(choices->isEditable());
  EXPECT_EQ(entries(choices), (QStringList{"Liso", "Rugoso"}));
  EXPECT_EQ(choices->currentText(), "Liso");
  QTest::keyClick(choices, Qt::Key_Down);
  settle();
  EXPECT_EQ(choices->currentText(), "Rugoso");
  EXPECT_STREQ(value(3), "Liso");
  QTest::keyClick(choices, Qt::Key_Return);
  settle();
  EXPECT_STREQ(value(3), "Rugoso");
  EXPECT_EQ(openEditor(), nullptr);
  grid()->setCurrentIndex(grid()->cellIndex(3, 3));
  QTest::keyClick(grid(), Qt::Key_Down, Qt::AltModifier);
  choices = qobject_cast<QComboBox*>(openEditor());
  ASSERT_NE(choices, nullptr);
  EXPECT_TRUE(choices->view()->isVisible());
  choices->setCurrentIndex(0);
  emit choices->activated(0);
  settle();
  EXPECT_STREQ(value(3), "Liso");
  EXPECT_FALSE(grid()->model()->setData(grid()->cellIndex(3, 3), "Pulido", Qt::EditRole));
  EXPECT_FALSE(logic.ended());
}

// A reference changes only through the value chooser a double click opens.
TEST_F(GridTest, ADoubleClickOnAValueOpensTheChooserAndItsResultIsStored) {
  whenDialogOpens<PropertyValueView>([&](PropertyValueView& chooser) {
    EXPECT_EQ(child<QLineEdit>(chooser, "valueEdit")->text(), "Eje.PK$\n");
    QTest::mouseClick(child<QRadioButton>(chooser, "literalRadio"), Qt::LeftButton);
    typeInto(chooser, "valueEdit", "Fijo");
    click(chooser, "okButton");
  });
  doubleClickAt(grid()->viewport(), grid()->cellRect(4, 3).center());
  EXPECT_STREQ(value(4), "Fijo");
  EXPECT_NE(startEdit(4, 3), nullptr);  // no longer a reference
}

// The header is drawn in the grey the grid gives it; columns fit their texts and the last fills the rest.
TEST_F(GridTest, TheHeaderIsGreyAndTheColumnsFillTheWidth) {
  QHeaderView* header = grid()->horizontalHeader();
  const QImage shot = header->grab().toImage();
  const QPoint pastTheTitle(header->sectionViewportPosition(3) + header->sectionSize(3) * 3 / 4, header->height() / 2);
  const QColor drawn = shot.pixelColor(pastTheTitle * shot.devicePixelRatio());
  for (int channel : {drawn.red(), drawn.green(), drawn.blue()}) EXPECT_NEAR(channel, 160, 12);
  for (int extra : {0, 200}) {
    view.resize(view.width() + extra, view.height());
    settle();
    int total = 0;
    for (int column = 0; column < header->count(); ++column) total += header->sectionSize(column);
    EXPECT_NEAR(total, grid()->viewport()->width(), header->count());
  }
}

}  // namespace
