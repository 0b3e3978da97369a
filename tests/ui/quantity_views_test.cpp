// The quantity editors on screen: a quantity set with its linked element and quantities, one
// quantity and its kind, and the quantity assignment with the host's values in a read-only grid.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "editors/common/edit_mode.h"
#include "editors/editor_fixture.h"
#include "ui/grid/grid_control.h"
#include "ui/properties_set_view.h"
#include "ui/quantities_of_set_view.h"
#include "ui/quantity_assign_view.h"
#include "ui/quantity_data_view.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

template <class Record>
std::vector<Record> named(std::initializer_list<const char*> names) {
  std::vector<Record> records;
  for (const char* name : names) {
    Record record;
    setText(record.name, name);
    records.push_back(record);
  }
  return records;
}

const std::vector<CIfcType> kKinds = named<CIfcType>({"IfcLengthMeasure", "IfcAreaMeasure", "IfcVolumeMeasure"});
const std::vector<CIfcObject> kElements = named<CIfcObject>({"Eje", "Superficie"});

class QuantitiesOfSetViewTest : public UiTest {
 protected:
  static CIfcQuantitySet areas() {
    CIfcQuantitySet set = makeQuantitySet("Areas", {makeQuantity("Area", AreaMeasure), makeQuantity("Largo", LengthMeasure)});
    setText(set.typeZep, "superficie");
    return set;
  }
  const std::vector<CIfcQuantitySet> all{makeQuantitySet("Ejes"), areas()};
  CQuantitiesOfSetDlg logic{services, kEditItem, areas(), &all, kKinds, kElements};
  QuantitiesOfSetView view{logic};
};

TEST_F(QuantitiesOfSetViewTest, OpensOnTheSetItsLinkedElementAndItsQuantities) {
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), "Conjunto de Propiedades");
  EXPECT_EQ(child<QLineEdit>(view, "nameEdit")->text(), "Areas");
  EXPECT_EQ(child<QComboBox>(view, "linkedElementCombo")->currentText(), "Superficie");
  auto* quantities = child<ReportList>(view, "quantities");
  EXPECT_EQ(columnTitles(quantities), (QStringList{"Nombre", QString::fromUtf8("Descripción"), "Tipo", "Exportar"}));
  EXPECT_EQ(rowTexts(quantities, 1), (QStringList{"Largo", "", "IfcLengthMeasure", "Si"}));
}

TEST_F(QuantitiesOfSetViewTest, NamesAreCheckedOnOk) {
  open(view, logic);
  typeInto(view, "nameEdit", "");
  click(view, "okButton");
  typeInto(view, "nameEdit", "EJES");
  click(view, "okButton");
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u("Debe de introducir un nombre válido"),
                                                            u"Conjunto de Propiedades existe en la lista"}));
  typeInto(view, "nameEdit", "Superficies");
  choose(view, "linkedElementCombo", 0);
  click(view, "okButton");
  ASSERT_EQ(logic.result(), kDialogOk);
  EXPECT_STREQ(logic.set.typeZep, "Eje");
}

TEST_F(QuantitiesOfSetViewTest, ADoubleClickOpensTheQuantityWithTheDocumentsKinds) {
  open(view, logic);
  QStringList kinds;
  QString setName;
  whenDialogOpens<QuantityDataView>([&](QuantityDataView& data) {
    setName = child<QLabel>(data, "setNameDisplay")->text();
    auto* kind = child<QComboBox>(data, "kindCombo");
    for (int i = 0; i < kind->count(); ++i) kinds.append(kind->itemText(i));
    EXPECT_EQ(kind->currentIndex(), AreaMeasure);
    typeInto(data, "nameEdit", "largo");
    click(data, "okButton");
    EXPECT_EQ(data.isVisible(), true);  // the set holds a "Largo" already
    typeInto(data, "nameEdit", "Superficie");
    choose(data, "kindCombo", VolumeMeasure);
    child<QCheckBox>(data, "exportCheck")->click();
    click(data, "okButton");
  });
  doubleClickRow(child<ReportList>(view, "quantities"), 0, Qt::RightButton);
  EXPECT_EQ(setName, "Areas");
  EXPECT_EQ(kinds, (QStringList{"IfcLengthMeasure", "IfcAreaMeasure", "IfcVolumeMeasure"}));
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"Propiedad existente en la lista"});
  EXPECT_EQ(rowTexts(child<ReportList>(view, "quantities"), 0), (QStringList{"Superficie", "", "IfcVolumeMeasure", "No"}));
}

class QuantityAssignViewTest : public UiTest {
 protected:
  const double hostValues[2] = {10, 20};
  CIfcQuantitySet surface = makeQuantitySet("Superficies", {makeQuantity("A", AreaMeasure, 1), makeQuantity("B", AreaMeasure, 2, false),
                                                            makeQuantity("C", LengthMeasure, 3), makeQuantity("D", VolumeMeasure, 4)});
  CCuantificadoresObjetosIFCDlg logic{services, {surface}, {}, "superficie", hostValues, 2, kKinds, kElements};
  QuantityAssignView view{logic};
  GridControl* grid() { return child<GridControl>(view, "grid"); }
};

TEST_F(QuantityAssignViewTest, AnAssignedSetTakesTheHostsValuesAndShowsThemReadOnly) {
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), QString::fromUtf8("Asignación de Cuantificadores a Objetos IFC"));
  auto* excel = child<QPushButton>(view, "excelButton");
  EXPECT_FALSE(excel->isHidden());
  EXPECT_FALSE(excel->isEnabled());
  whenDialogOpens<PropertiesSetView>([](PropertiesSetView& list) {
    clickRow(child<ReportList>(list, "sets"), 0);
    click(list, "okButton");
  });
  click(view, "insertButton");
  clickRow(child<ReportList>(view, "sets"), 0);
  ASSERT_EQ(grid()->model()->rowCount(), 3);
  QStringList values;
  for (int row = 1; row <= 3; ++row) values.append(grid()->cellIndex(row, 3).data().toString());
  EXPECT_EQ(values, (QStringList{"10.000", "20.000", "4.000"}));
  EXPECT_EQ(grid()->cellIndex(2, 2).data().toString(), "IfcLengthMeasure");
  for (int row = 1; row <= 3; ++row)
    for (int column = 0; column < 4; ++column)
      EXPECT_FALSE(grid()->cellIndex(row, column).flags() & Qt::ItemIsEditable) << row << "," << column;
}

TEST_F(QuantityAssignViewTest, DeleteLeavesTheGridItsHeaderOnly) {
  logic.assignments.push_back(surface);
  open(view, logic);
  clickRow(child<ReportList>(view, "sets"), 0);
  EXPECT_EQ(grid()->model()->rowCount(), 4);
  click(view, "removeButton");
  EXPECT_EQ(grid()->model()->rowCount(), 0);
  EXPECT_EQ(grid()->model()->headerData(3, Qt::Horizontal).toString(), "Valor");
}

}  // namespace
