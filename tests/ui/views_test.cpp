// The Qt layer. The dialogs' rules are the editors' own; a view adds the wiring of its lists,
// buttons, edits and drop-downs to the dialog, and the keys of its lists. The assignment editors'
// value grid adds in-place edits, drop-down cells limited to their choices, read-only cells, the
// header drawn grey, columns that fill the width, and the current cell kept across the rebuild each
// edit causes. Then the services on Qt: the view runModal opens for each dialog class, named
// controls and mnemonics in every view, how a dialog ends, the real message boxes and file picker,
// and where the model's messages go.
#include <QAccessible>
#include <QCheckBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QImage>
#include <QMessageBox>
#include <QRadioButton>
#include <QRegularExpression>

#include "support/message_recorder.h"
#include "support/temp_dir.h"
#include "ui/editor_session.h"
#include "ui/message_box_sink.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

// The host's captions, one row per set, in columns as wide as their texts and titles. A double click
// edits the set, where either button's double click opens a property and its button the value lists,
// and what was typed comes back to the list; Importar... reads the file picked. A click off the rows
// chooses none; Ctrl+click adds rows to what "Guardar como..." records. The keys act on the first
// row, reached with End then Home: Enter and F2 edit it, Insert inserts, Delete (answered yes) leaves
// the same row selected; none ends the dialog, Tab leaves.
TEST_F(UiTest, SetListShowsTheSetsAndTheMouseAndKeysEditImportAndChooseTheRowsToSave) {
  CPropertiesSetDlg logic(services, {makeSet("Losas"), makeSet("Muros", {makeProperty("Alto")}), makeSet("Ventanas")},
                          {});
  PropertiesSetView view(logic);
  const auto sets = [&view] { return child<ReportList>(view, "sets"); };
  // Wider than the list, so that the last column must keep what its contents need.
  const char* longText = "Propiedades comunes de los muros de carga y de cerramiento de la fachada ventilada norte";
  setText(logic.propertySets[1].description, longText);
  TempDir dir;
  const std::string csv = dir.write("importar.csv", "Puertas;Ancho;Ancho de paso;Real;0.9\n");
  services.pickedFiles = {QString::fromStdString(csv).toStdU16String()};
  open(view, logic);
  const QFontMetrics text(sets()->font());
  EXPECT_GE(sets()->columnWidth(0), text.horizontalAdvance("Ventanas"));
  EXPECT_LT(sets()->columnWidth(0), sets()->viewport()->width() / 2);  // fitted, not half the list
  EXPECT_GE(sets()->columnWidth(1), text.horizontalAdvance(longText));
  QAccessible::queryAccessibleInterface(sets())->tableInterface()->selectRow(2);  // as an assistive technology does
  EXPECT_EQ(logic.currentRow, 2);
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
  services.answers = {true};
  QApplication::setActiveWindow(&view);
  // The key, the name the set editor opens with ("-" for none), the rows left.
  for (auto [key, opened, rows] : {std::tuple{Qt::Key_Return, "Losas", 4}, {Qt::Key_F2, "Losas", 4},
                                   {Qt::Key_Insert, "", 4}, {Qt::Key_Delete, "-", 3}}) {
    SCOPED_TRACE(key);
    sets()->setFocus();
    QTest::keyClick(sets(), Qt::Key_End);
    EXPECT_EQ(logic.currentRow, 3);
    QTest::keyClick(sets(), Qt::Key_Home);
    std::string name = "-";
    if (key != Qt::Key_Delete)
      whenDialogOpens<PropertiesOfSetView>([&](PropertiesOfSetView& set) { name = look(set, "nameEdit"); });
    QTest::keyClick(sets(), key);
    EXPECT_EQ(std::tuple(name, sets()->rowCount(), sets()->selectedRows(), logic.ended()),
              std::tuple(opened, rows, std::vector<int>{0}, false));
    QTest::keyClick(sets(), Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), sets());
  }
  QTest::mouseClick(sets()->viewport(), Qt::LeftButton, {}, QPoint(5, sets()->viewport()->height() - 2));
  EXPECT_EQ(logic.currentRow, -1);
  clickRow(sets(), 0);
  clickRow(sets(), 2, Qt::ControlModifier);
  click(view, "saveAsButton");
  EXPECT_EQ(view.result(), kDialogSaveAs);
  EXPECT_EQ(std::vector<int>(logic.selection.rows.begin(), logic.selection.rows.begin() + logic.selection.count),
            (std::vector<int>{0, 2}));
  whenDialogOpens<PropertiesSetView>([](PropertiesSetView& again) {  // shown again, it must not end at the first click
    whenDialogOpens<PropertiesOfSetView>([](PropertiesOfSetView&) {});
    click(again, "insertButton");
    EXPECT_TRUE(again.isVisible());
    click(again, "okButton");
  });
  EXPECT_EQ(logic.run(), kDialogOk);
  liberaMensajes();  // a missing message file: its captions, empty ones, replace the template's all the same
  setRutaMensajes("/nonexistent/messages.txt");
  open(view, logic);
  EXPECT_EQ(view.windowTitle().toStdString() + look(view, "insertButton sets"),
            " | ,: Muros de carga,Cerramientos; Ventanas,; Puertas,");
}

// The controls follow the type. A value list chosen opens it, on the value clicked; "..." opens the
// value chooser on the reference typed, where an assistive technology's toggle leaves only the literal
// and the mouse brings the names back; what is typed and chosen reaches the record.
TEST_F(UiTest, PropertyEditorControlsFollowTheTypeTheChoosersOpenAndWhatWasTypedReachesTheRecord) {
  const CIfcPropertySet owner = makeSet("Muros", {makeProperty("Altura", PropertyReal)});
  CConjuntoVariableZep variables;
  variables.groups = namedRecords<CZepGrupo>({"Eje"});
  variables.groups[0].variables = namedRecords<CZepVariable>({"PK", "Cota"});
  CPropertyDataDlg logic(services, kNewItem, makeProperty(""),
                         {makeEnum("Acabados", {{1, "Liso"}}), makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}})}, &owner,
                         &variables);
  PropertyDataView view(logic);
  open(view, logic);
  EXPECT_EQ(look(view, "setNameDisplay typeCombo unitCombo"), "Muros | Texto | ");
  EXPECT_EQ(child<QComboBox>(view, "unitCombo")->count(), kUnitCount);
  EXPECT_EQ(entries(child<QComboBox>(view, "valueListCombo")), (QStringList{"Acabados", "Colores"}));
  typeInto(view, "nameEdit", QString::fromUtf8("Espesor térmico"));
  const QString controls = "defaultValueEdit booleanCheck valueListCombo editValueListButton";
  choose(view, "typeCombo", PropertyBoolean);
  EXPECT_EQ(look(view, controls), "- | off | ! | &Editar...");
  choose(view, "typeCombo", PropertyEnumerated);
  EXPECT_EQ(look(view, controls), "! | - |  | &Editar...");
  whenDialogOpens<ListValuesView>([](ListValuesView& values) {
    EXPECT_EQ(look(values, "nameEdit"), "Colores");
    clickRow(child<ReportList>(values, "values"), 1);
    click(values, "okButton");
  });
  choose(view, "valueListCombo", 1);
  EXPECT_EQ(look(view, "defaultValueEdit valueListCombo"), "!Azul | Colores");
  choose(view, "typeCombo", PropertyReal);
  EXPECT_EQ(look(view, controls), "Azul | - | !Colores | !&Editar...");
  typeInto(view, "defaultValueEdit", "Eje.Cota$");
  whenDialogOpens<PropertyValueView>([](PropertyValueView& chooser) {
    const QString names = "hostVariableRadio groupCombo variableCombo valueEdit";
    EXPECT_EQ(look(chooser, names), "on | Eje | Cota | !Eje.Cota$");
    QAccessibleActionInterface* literal =
        QAccessible::queryAccessibleInterface(child<QRadioButton>(chooser, "literalRadio"))->actionInterface();
    ASSERT_TRUE(literal->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    literal->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(look(chooser, names), "off | !Eje | !Cota | Eje.Cota$");
    QTest::mouseClick(child<QRadioButton>(chooser, "hostVariableRadio"), Qt::LeftButton);
    choose(chooser, "groupCombo", 0);
    choose(chooser, "variableCombo", 0);
    click(chooser, "okButton");
  });
  click(view, "chooseValueButton");
  EXPECT_EQ(look(view, "defaultValueEdit"), "Eje.PK$");
  typeInto(view, "descriptionEdit", "Aislante");
  typeInto(view, "defaultValueEdit", "0.25");
  choose(view, "unitCombo", 1);
  child<QCheckBox>(view, "optionalCheck")->click();
  click(view, "okButton");
  const CIfcPropertyName& p = logic.property;
  EXPECT_EQ(std::tuple(logic.result(), std::string(p.name) + "|" + p.description, p.realValue, p.unit, p.optional),
            std::tuple(kDialogOk, "Espesor t\xC3\xA9rmico|Aislante", 0.25, 1, true));
}

// A type made through three windows, the last filled by the keyboard alone (typing, Tab to the next
// edit, Enter for the default button); a list whose dialog has no current row (after an insert) shows
// none selected.
TEST_F(UiTest, ATypeMadeThroughThreeWindowsLandsInTheList) {
  CListEnumsDlg logic(services, {makeEnum("Colores", {{1, "Rojo"}})});
  ListEnumsView view(logic);
  open(view, logic);
  whenDialogOpens<ListValuesView>([](ListValuesView& values) {
    typeInto(values, "nameEdit", "Acabados");
    whenDialogOpens<ValueEnumView>([](ValueEnumView& value) {
      QApplication::setActiveWindow(&value);
      child<QLineEdit>(value, "codeEdit")->setFocus();
      QTest::keyClicks(QApplication::focusWidget(), "2");
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      ASSERT_EQ(QApplication::focusWidget(), child<QLineEdit>(value, "textEdit"));
      QTest::keyClicks(QApplication::focusWidget(), "Barniz");
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
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
  const std::vector<CIfcNodoEnum>& made = logic.enums[0].elements;
  EXPECT_EQ(std::tuple(made.size(), made.at(0).value, std::string(made.at(0).text)), std::tuple(1u, 2, "Barniz"));
}

// The set's linked element, and a quantity opened by a double click with its kind and export mark.
TEST_F(UiTest, TheQuantityEditorsPassTheLinkedElementTheKindAndTheExportMark) {
  CIfcQuantitySet areas = makeSet("Areas", {makeQuantity("Area", AreaMeasure), makeQuantity("Largo", LengthMeasure)});
  setText(areas.typeZep, "superficie");
  CQuantitiesOfSetDlg logic(services, kEditItem, areas, nullptr,
                            namedRecords<CIfcType>({"IfcLengthMeasure", "IfcAreaMeasure", "IfcVolumeMeasure"}),
                            namedRecords<CIfcObject>({"Eje", "Superficie"}));
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
  EXPECT_EQ(std::string(logic.set.name) + " " + logic.set.typeZep, "Superficies Eje");
}

// Both assignment editors: Insertar... takes the set chosen in the set list, a click on it fills the
// grid, Borrar leaves the grid its header only.
TEST_F(UiTest, AssignmentEditorsInsertChooseAndRemoveSets) {
  const double hostValues[] = {10};
  CPropiedadesObjetosIFCDlg properties(services, {makeSet("Losas", {makeProperty("Canto")})}, {}, {});
  CCuantificadoresObjetosIFCDlg quantities(services, {makeSet("Ejes", {makeQuantity("L", LengthMeasure)})}, {},
                                           "Eje", hostValues, 1);
  PropertyAssignView propertyView(properties);
  QuantityAssignView quantityView(quantities);
  open(propertyView, properties);
  open(quantityView, quantities);
  for (auto [view, row] : {std::pair<QWidget*, const char*>{&propertyView, "Canto,,String, | -"},
                           {&quantityView, "L,,IfcLengthMeasure,10.000 | !&Excel..."}}) {
    whenDialogOpens<PropertiesSetView>([](PropertiesSetView& list) {
      clickRow(child<ReportList>(list, "sets"), 0);
      click(list, "okButton");
    });
    click(*view, "insertButton");
    clickRow(child<ReportList>(*view, "sets"), 0);
    EXPECT_EQ(look(*view, "grid excelButton"), std::string("Nombre,Descripción,Tipo,Valor: ") + row);
    click(*view, "removeButton");
    EXPECT_EQ(look(*view, "sets grid"), "Nombre,Descripción: | Nombre,Descripción,Tipo,Valor:");
    EXPECT_FALSE(child<GridControl>(*view, "grid")->horizontalHeader()->isHidden());
  }
}

class GridTest : public UiTest {
 protected:
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

  CPropiedadesObjetosIFCDlg logic{services, {wallValues()}, {makeEnum("Acabados", {{1, "Liso"}, {2, "Rugoso"}})},
                                  {wallValues()}};
  PropertyAssignView view{logic};
};

// The keys of an in-place edit, started with F2 (the text selected) or by typing: Enter commits and
// moves down, Esc drops the edit, Tab commits and leaves the grid, whose current cell stays. Outside
// an edit Enter moves down too; none of them reaches the dialog's default button.
// The header is drawn in the grey the grid gives it; columns fit their texts and the last fills the
// rest. Names, types and host variable references are not edited in place, and show in italics. The
// arrows move through a drop-down's choices without committing; Enter commits; Alt+Down opens the
// list, and a choice picked from it commits at once. Nothing else gets in.
TEST_F(GridTest, KeysEndAnInPlaceEditTheHeaderIsGreyAndADropDownTakesOnlyItsChoices) {
  open(view, logic);
  clickRow(child<ReportList>(view, "sets"), 0);
  QApplication::setActiveWindow(&view);
  // Started by typing, the text typed, the key that ends the edit, the value shown, the current row after.
  for (auto [typing, typed, key, shown, rowAfter] :
       {std::tuple{false, "9", Qt::Key_Escape, "1.000", 2}, {false, "2.5", Qt::Key_Return, "2.500", 3},
        {true, "3.5", Qt::Key_Enter, "3.500", 3}, {false, "4", Qt::Key_Tab, "4.000", 2}}) {
    SCOPED_TRACE(typed);
    grid()->setFocus();
    grid()->setCurrentIndex(grid()->cellIndex(2, 3));
    QTest::keyClick(grid(), typing ? Qt::Key(typed[0]) : Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(openEditor());
    ASSERT_NE(editor, nullptr);
    if (!typing) editor->selectAll();
    QTest::keyClicks(editor, typed + (typing ? 1 : 0));
    QTest::keyClick(editor, key);
    settle();  // the grid is shown again once the editor has closed
    EXPECT_EQ(grid()->cellIndex(2, 3).data().toString(), shown);
    EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(rowAfter, 3));
    EXPECT_EQ(grid()->isAncestorOf(QApplication::focusWidget()) || QApplication::focusWidget() == grid(),
              key != Qt::Key_Tab);
    QTest::keyClick(grid(), Qt::Key_Return);
    EXPECT_EQ(grid()->currentIndex(), grid()->cellIndex(rowAfter + 1, 3));
    QTest::keyClick(grid(), Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), grid());
  }
  QHeaderView* header = grid()->horizontalHeader();
  const QImage shot = header->grab().toImage();
  const QPoint pastTheTitle(header->sectionViewportPosition(3) + header->sectionSize(3) * 3 / 4, header->height() / 2);
  const QColor drawn = shot.pixelColor(pastTheTitle * shot.devicePixelRatio());
  for (int channel : {drawn.red(), drawn.green(), drawn.blue()}) EXPECT_NEAR(channel, 160, 12);
  for (int extra : {0, 200}) {
    view.resize(view.width() + extra, view.height());
    settle();
    EXPECT_NEAR(header->length(), grid()->viewport()->width(), header->count());
  }
  for (auto [row, column] : {std::pair{1, 0}, {1, 2}, {6, 3}}) {
    EXPECT_EQ(startEdit(row, column), nullptr) << row << "," << column;
    EXPECT_TRUE(grid()->cellIndex(row, column).data(Qt::FontRole).value<QFont>().italic());
  }
  EXPECT_TRUE(grid()->cellIndex(1, 3).data(Qt::FontRole).isNull());
  EXPECT_FALSE(grid()->model()->setData(grid()->cellIndex(1, 0), "Otro", Qt::EditRole));
  EXPECT_EQ(grid()->cellIndex(6, 3).data().toString(), "Eje.PK$ ");  // a line feed kept in a value shows on one line
  whenDialogOpens<PropertyValueView>([&](PropertyValueView& chooser) {  // a reference changes only through it
    EXPECT_EQ(child<QLineEdit>(chooser, "valueEdit")->text(), "Eje.PK$\n");
    QTest::mouseClick(child<QRadioButton>(chooser, "literalRadio"), Qt::LeftButton);
    typeInto(chooser, "valueEdit", "Fijo");
    click(chooser, "okButton");
  });
  doubleClickAt(grid()->viewport(), grid()->cellRect(6, 3).center());
  EXPECT_STREQ(value(6), "Fijo");
  auto* choices = qobject_cast<QComboBox*>(startEdit(3, 3));
  ASSERT_NE(choices, nullptr);
  EXPECT_EQ(std::tuple(choices->isEditable(), entries(choices), choices->currentText()),
            std::tuple(false, QStringList{"Liso", "Rugoso"}, QString("Liso")));
  QTest::keyClick(choices, Qt::Key_Down);
  settle();
  EXPECT_EQ(choices->currentText() + " " + value(3), "Rugoso Liso");  // shown, not yet stored
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
  EXPECT_NE(startEdit(6, 3), nullptr);  // no longer a reference
  EXPECT_FALSE(logic.ended());
}

// What a screen reader or a keyboard user would miss in `window`: each visible control that takes
// focus without an accessible name, each visible button with a letter but no mnemonic of its own.
std::string unnamedControls(QWidget& window) {
  QStringList missing, mnemonics;
  const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* node) {
    const auto* widget = qobject_cast<QWidget*>(node->object());
    if (widget != nullptr && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus &&
        node->text(QAccessible::Name).trimmed().isEmpty())
      missing.append(widget->objectName());
    for (int i = 0; i < node->childCount(); ++i) walk(node->child(i));
  };
  walk(QAccessible::queryAccessibleInterface(&window));
  for (const QLabel* label : window.findChildren<QLabel*>())
    mnemonics.append(QKeySequence::mnemonic(label->text()).toString());
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
    const QString key = QKeySequence::mnemonic(button->text()).toString();
    if (!button->isVisible() || !button->text().contains(QRegularExpression("\\w"))) continue;
    if (key.isEmpty() || mnemonics.contains(key)) missing.append(button->text());
    mnemonics.append(key);
  }
  return missing.join(", ").toStdString();
}

class RunModal : public UiTest {
 protected:
  // Runs `logic` through the services: the view must be a `View` titled `title`, with every control
  // named and every button a mnemonic; Esc, the close button and Cancel (in turn) end it with Cancel.
  template <class View>
  void expectView(Dialog&& logic, const char* title) {
    SCOPED_TRACE(title);
    std::string seen;
    whenDialogOpens<View>([&](View& view) {
      seen = view.windowTitle().toStdString() + " | unnamed: " + unnamedControls(view);
      if (++shown % 3 == 0) QTest::keyClick(&view, Qt::Key_Escape);
      else if (shown % 3 == 1) view.close();
      else click(view, "cancelButton");
    });
    EXPECT_EQ(services.runModal(logic), kDialogCancel);
    EXPECT_EQ(seen, std::string(title) + " | unnamed: ");
  }
  int shown = 0;
  const std::vector<CIfcPropertySet> sets{makeSet("Muros", {makeProperty("Alto")})};
  const std::vector<CIfcEnum> enums{makeEnum("Colores", {{1, "Rojo"}})};
  const CConjuntoVariableZep none;
};

// Titles from the host's message file where the dialog takes them from there, else the template's.
TEST_F(RunModal, OpensTheViewOfEachDialogClassWithEveryControlNamedAndEndsItWithCancel) {
  const char *set = "Conjunto de Propiedades", *data = "Datos de la Propiedad";
  const char* assign = "Asignación de Propiedades a Objetos IFC";
  expectView<PropertiesSetView>(CPropertiesSetDlg(services, sets, enums), set);
  expectView<PropertiesOfSetView>(CPropertiesOfSetDlg(services, kEditItem, sets[0], enums, &sets, &none), set);
  expectView<PropertyDataView>(CPropertyDataDlg(services, kNewItem, {}, enums, &sets[0], &none), data);
  expectView<ListEnumsView>(CListEnumsDlg(services, enums), "Listas de Valores");
  expectView<ListValuesView>(CListValuesDlg(services, enums[0], true), "Definición de Lista de Valores");
  expectView<ValueEnumView>(CValueEnumDlg(services, {}), "Valor de la lista");
  expectView<PropertyValueView>(CPropiedadesObjetosValorIFCDlg(services, "", none), assign);
  expectView<PropertyAssignView>(CPropiedadesObjetosIFCDlg(services, sets, enums, sets), assign);
  expectView<QuantitiesOfSetView>(CQuantitiesOfSetDlg(services, kNewItem, {}, nullptr, {}, {}), set);
  expectView<QuantityDataView>(CQuantityDataDlg(services, kNewItem, {}, nullptr, {}), data);
  expectView<QuantityAssignView>(CCuantificadoresObjetosIFCDlg(services, {}, {}, "Eje", nullptr, 0),
                                 "Asignación de Cuantificadores a Objetos IFC");
  struct Unknown : Dialog {
    using Dialog::Dialog;
    void start() override { ADD_FAILURE() << "a dialog without a view was started"; }
  } unknown(services);
  EXPECT_EQ(services.runModal(unknown), kDialogCancel);
}

// A refusal comes with a warning, a report of work done with the information icon, and a question
// with No as the default so that Enter alone deletes nothing; inside an editor session Qt's own
// buttons speak Spanish, and outside it they no longer do. The file pickers show the filters and give
// the file chosen, or none.
TEST_F(UiTest, MessageBoxesAndFilePickersShowWhatTheyAreGivenAndGiveTheChoice) {
  QtDialogServices screen;  // the real boxes, not the recording ones
  std::vector<std::string> shown;
  // Answers the box `show` opens by pressing `press` (Enter for none), recording what it showed.
  const auto record = [&](QMessageBox::StandardButton press, const std::function<void()>& show) {
    whenDialogOpens<QMessageBox>([&, press](QMessageBox& box) {
      QStringList texts{box.text(), QString::number(box.icon())};
      for (QAbstractButton* button : box.buttons()) texts.append(button->text().remove('&'));
      if (box.defaultButton() != nullptr) texts.append("default " + box.defaultButton()->text().remove('&'));
      shown.push_back(texts.join(" | ").toStdString());
      if (press != QMessageBox::NoButton) box.button(press)->click();
      else QTest::keyClick(&box, Qt::Key_Return);
    });
    show();
  };
  record(QMessageBox::Ok, [&] { screen.showMessage(u"Falta el valor"); });
  record(QMessageBox::Ok, [&] { screen.showInformation(u"Copia guardada"); });
  record(QMessageBox::Yes, [] {
    EXPECT_TRUE(runEditorSession([](DialogServices& editors) { EXPECT_TRUE(editors.askYesNo(u"¿Borrar?")); }));
  });
  record(QMessageBox::NoButton, [&] { EXPECT_FALSE(screen.askYesNo(u"¿Borrar?")); });
  EXPECT_EQ(shown, (std::vector<std::string>{"Falta el valor | 2 | OK", "Copia guardada | 1 | OK",
                                             "¿Borrar? | 4 | Sí | No | default No",
                                             "¿Borrar? | 4 | Yes | No | default No"}));
  TempDir dir;
  const QString folder = QString::fromStdString(dir.path().string()), path = folder + "/sets.csv";
  writeBytes(path.toStdString(), "Muros;Altura;Altura libre;Real;2.75\n");
  const FilePickerOptions csv{
      {{u"CSV Files (*.csv)", u"*.csv"}, {u"All Files (*.*)", u"*.*"}}, u"csv", true, folder.toStdU16String()};
  whenDialogOpens<QFileDialog>([&](QFileDialog& picker) {
    // "*.*" means every file, as it does on Windows, names without a dot included.
    const QStringList offers{entries(picker.findChild<QComboBox*>("fileTypeCombo")).join(", "),
                             picker.nameFilters().join(", "), picker.directory().absolutePath(),
                             picker.defaultSuffix()};
    EXPECT_EQ(offers, (QStringList{"CSV Files (*.csv), All Files (*.*)",
                                   "CSV Files (*.csv) (*.csv), All Files (*.*) (*)", folder, "csv"}));
    EXPECT_EQ(std::pair(picker.fileMode(), picker.acceptMode()),
              std::pair(QFileDialog::ExistingFile, QFileDialog::AcceptOpen));
    picker.selectFile(path);
    static_cast<QDialog&>(picker).accept();  // QFileDialog's own accept is protected
  });
  EXPECT_EQ(screen.pickFileToOpen(csv), path.toStdU16String());
  whenDialogOpens<QFileDialog>([](QFileDialog& picker) { EXPECT_EQ(picker.acceptMode(), QFileDialog::AcceptSave); });
  EXPECT_FALSE(screen.pickFileToSave(csv).has_value());
}

// Offscreen no box may open (it would wait for ever): the message goes on to the sink that was
// there before, and that sink comes back when the editors put it back.
TEST_F(UiTest, OffscreenTheModelsMessagesGoWhereTheyWentBefore) {
  for (auto [platform, shows] : {std::pair{"xcb", true}, {"offscreen", false}, {"minimalegl", false}, {"", false}})
    EXPECT_EQ(platformShowsWindows(platform), shows) << platform;
  ASSERT_FALSE(canShowMessageBoxes());  // else the box below would wait for ever
  MessageRecorder recorder;
  const MessageSink previous = useMessageBoxes();
  showMessage("Error lectura XML. CIfcPropertySet");
  EXPECT_EQ(recorder.messages(), std::vector<std::string>{"Error lectura XML. CIfcPropertySet"});
  setMessageSink(previous);
  showMessage("Error lectura XML. CIfcEnum");
  EXPECT_EQ(recorder.messages().size(), 2u);
}

}  // namespace
