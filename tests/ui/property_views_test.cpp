// One set's properties, one property's data and the value chooser on screen: labels from the host's
// message file, columns and rows, refusals with the host's texts, the controls that follow the type,
// and the nested editors each button opens.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <cstdio>
#include <cstring>
#include <memory>

#include "editors/editor_fixture.h"
#include "ui/list_enums_view.h"
#include "ui/list_values_view.h"
#include "ui/properties_of_set_view.h"
#include "ui/property_data_view.h"
#include "ui/property_value_view.h"
#include "ui_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

QStringList entries(const QComboBox* combo) {
  QStringList texts;
  for (int i = 0; i < combo->count(); ++i) texts.append(combo->itemText(i));
  return texts;
}

// The last variable of each line keeps its line feed, so the lines end with a spare one.
CConjuntoVariableZep catalogue(const char* text) {
  CConjuntoVariableZep variables;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(fmemopen(const_cast<char*>(text), std::strlen(text), "r"),
                                                       std::fclose);
  variables.leeFichero(file.get());
  return variables;
}

class PropertiesOfSetViewTest : public UiTest {
 protected:
  static CIfcPropertySet walls() {
    CIfcPropertyName holes = makeProperty("Huecos", PropertyInteger);
    holes.intValue = 7;
    holes.optional = true;
    CIfcPropertyName height = makeProperty("Altura", PropertyReal);
    height.realValue = 2.5;
    height.unit = 1;
    return makeSet("Muros", {holes, height});
  }
  const std::vector<CIfcPropertySet> others{makeSet("Losas"), makeSet("Muros")};
  const CConjuntoVariableZep noVariables;
  CPropertiesOfSetDlg logic{services, kEditItem, walls(), {}, &others, &noVariables};
  PropertiesOfSetView view{logic};
  ReportList* properties() { return child<ReportList>(view, "properties"); }
};

TEST_F(PropertiesOfSetViewTest, OpensWithTheHostsLabelsAndOneRowPerProperty) {
  open(view, logic);
  EXPECT_EQ(child<QLabel>(view, "nameLabel")->text(), "Conjunto de Propiedades");
  EXPECT_EQ(child<QPushButton>(view, "valueListsButton")->text(), "&Listas de Valores");  // a mnemonic added
  EXPECT_EQ(child<QLineEdit>(view, "nameEdit")->text(), "Muros");
  EXPECT_EQ(columnTitles(properties()),
            (QStringList{"Nombre", QString::fromUtf8("Descripción"), "Tipo", "Lista de Valores", "Valor por defecto",
                         "Opcional", "Unidad"}));
  ASSERT_EQ(properties()->rowCount(), 2);
  EXPECT_EQ(rowTexts(properties(), 0), (QStringList{"Huecos", "", "Entero", "", "7", QString::fromUtf8("Sí"), ""}));
  EXPECT_EQ(rowTexts(properties(), 1).mid(2, 3), (QStringList{"Real", "", "2.500"}));
}

TEST_F(PropertiesOfSetViewTest, RenamingToAnotherSetsNameIsRefusedWithTheHostsMessage) {
  open(view, logic);
  typeInto(view, "nameEdit", "LOSAS");
  click(view, "okButton");
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"Ya existe un conjunto con ese nombre"});
  EXPECT_TRUE(view.isVisible());
  typeInto(view, "nameEdit", "");
  click(view, "okButton");
  EXPECT_EQ(services.messages.back(), u"Debe dar un nombre al conjunto");
  typeInto(view, "nameEdit", "Muros de carga");
  click(view, "okButton");
  EXPECT_EQ(logic.result(), kDialogOk);
  EXPECT_STREQ(logic.set.name, "Muros de carga");
}

TEST_F(PropertiesOfSetViewTest, DeleteAsksNothingAndSelectsTheRowAtTheSameIndex) {
  CIfcPropertySet three = walls();
  three.properties.push_back(makeProperty("Acabado"));
  logic.set = three;
  open(view, logic);
  clickRow(properties(), 1);
  click(view, "removeButton");
  EXPECT_TRUE(services.questions.empty());
  ASSERT_EQ(properties()->rowCount(), 2);
  EXPECT_EQ(rowTexts(properties(), 1).front(), "Acabado");
  EXPECT_EQ(properties()->selectedRows(), std::vector<int>{1});
}

TEST_F(PropertiesOfSetViewTest, EitherButtonsDoubleClickOpensThePropertyOnItsRow) {
  open(view, logic);
  QString shown;
  whenDialogOpens<PropertyDataView>([&](PropertyDataView& data) { shown = child<QLineEdit>(data, "nameEdit")->text(); });
  doubleClickRow(properties(), 1, Qt::RightButton);
  EXPECT_EQ(shown, "Altura");
  EXPECT_EQ(logic.currentRow, 1);
}

TEST_F(PropertiesOfSetViewTest, TheValueListsButtonOpensTheTypesEditor) {
  open(view, logic);
  whenDialogOpens<ListEnumsView>([](ListEnumsView& types) { EXPECT_EQ(types.windowTitle(), "Listas de Valores"); });
  click(view, "valueListsButton");
}

class PropertyDataViewTest : public UiTest {
 protected:
  void SetUp() override {
    UiTest::SetUp();
    owner.properties.push_back(makeProperty("Altura", PropertyReal));
  }
  CIfcPropertySet owner = makeSet("Muros");
  std::vector<CIfcEnum> enums{makeEnum("Acabados", {{1, "Liso"}}), makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}})};
  const CConjuntoVariableZep variables = catalogue("Eje;PK,Cota,Pendiente\n");
  CPropertyDataDlg logic{services, kNewItem, makeProperty(""), enums, &owner, &variables};
  PropertyDataView view{logic};
};

TEST_F(PropertyDataViewTest, OpensWithTheHostsTextsTypesUnitsAndValueLists) {
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), "Datos de la Propiedad");
  EXPECT_EQ(child<QLabel>(view, "nameLabel")->text(), "Nombre");
  EXPECT_EQ(child<QLabel>(view, "setNameDisplay")->text(), "Muros");
  EXPECT_EQ(child<QCheckBox>(view, "optionalCheck")->text().remove('&'), "Opcional");
  auto* types = child<QComboBox>(view, "typeCombo");
  EXPECT_EQ(entries(types), (QStringList{"Entero", "Real", "Texto", "Lista de Valores", "Booleano", "Fecha y hora"}));
  EXPECT_EQ(types->currentIndex(), PropertyString);
  EXPECT_EQ(child<QComboBox>(view, "unitCombo")->count(), kUnitCount);
  EXPECT_EQ(entries(child<QComboBox>(view, "valueListCombo")), (QStringList{"Acabados", "Colores"}));
}

TEST_F(PropertyDataViewTest, TheControlsFollowTheChosenType) {
  open(view, logic);
  choose(view, "typeCombo", PropertyBoolean);
  EXPECT_TRUE(child<QLineEdit>(view, "defaultValueEdit")->isHidden());
  EXPECT_FALSE(child<QCheckBox>(view, "booleanCheck")->isHidden());
  EXPECT_FALSE(child<QComboBox>(view, "valueListCombo")->isEnabled());
  choose(view, "typeCombo", PropertyReal);
  EXPECT_FALSE(child<QLineEdit>(view, "defaultValueEdit")->isHidden());
  EXPECT_TRUE(child<QCheckBox>(view, "booleanCheck")->isHidden());
  EXPECT_FALSE(child<QComboBox>(view, "valueListCombo")->isEnabled());
  EXPECT_FALSE(child<QPushButton>(view, "editValueListButton")->isEnabled());
  choose(view, "typeCombo", PropertyEnumerated);
  EXPECT_FALSE(child<QLineEdit>(view, "defaultValueEdit")->isEnabled());
  EXPECT_TRUE(child<QComboBox>(view, "valueListCombo")->isEnabled());
}

TEST_F(PropertyDataViewTest, RefusalsShowTheHostsTextsAndKeepTheDialogOpen) {
  open(view, logic);
  click(view, "okButton");
  typeInto(view, "nameEdit", "Huecos");
  choose(view, "typeCombo", PropertyInteger);
  click(view, "okButton");
  typeInto(view, "nameEdit", "altura");
  typeInto(view, "defaultValueEdit", "3");
  click(view, "okButton");
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u"Debe dar un nombre a la propiedad",
                                                            u"Falta el valor por defecto",
                                                            u"Ya existe una propiedad con ese nombre"}));
  EXPECT_TRUE(view.isVisible());
}

TEST_F(PropertyDataViewTest, WhatWasTypedReachesTheRecordOnOk) {
  open(view, logic);
  typeInto(view, "nameEdit", QString::fromUtf8("Espesor térmico"));
  choose(view, "typeCombo", PropertyReal);
  typeInto(view, "defaultValueEdit", "0.25");
  choose(view, "unitCombo", 1);
  child<QCheckBox>(view, "optionalCheck")->click();
  click(view, "okButton");
  ASSERT_EQ(logic.result(), kDialogOk);
  EXPECT_STREQ(logic.property.name, "Espesor t\xC3\xA9rmico");
  EXPECT_DOUBLE_EQ(logic.property.realValue, 0.25);
  EXPECT_EQ(logic.property.unit, 1);
  EXPECT_TRUE(logic.property.optional);
}

TEST_F(PropertyDataViewTest, TheValueChooserPutsItsResultInTheDefaultValueBox) {
  open(view, logic);
  typeInto(view, "nameEdit", "Estacion");
  whenDialogOpens<PropertyValueView>([](PropertyValueView& chooser) {
    QTest::mouseClick(child<QRadioButton>(chooser, "hostVariableRadio"), Qt::LeftButton);
    choose(chooser, "groupCombo", 0);
    choose(chooser, "variableCombo", 1);
    click(chooser, "okButton");
  });
  click(view, "chooseValueButton");
  EXPECT_EQ(child<QLineEdit>(view, "defaultValueEdit")->text(), "Eje.Cota$");
}

TEST_F(PropertyDataViewTest, ChoosingAValueListOpensItAndCancellingPutsTheOldOneBack) {
  setText(logic.property.enumName, "Acabados");
  logic.property.valueType = PropertyEnumerated;
  open(view, logic);
  typeInto(view, "nameEdit", "Color");
  QString opened;
  whenDialogOpens<ListValuesView>([&](ListValuesView& values) {
    opened = child<QLineEdit>(values, "nameEdit")->text();
    click(values, "cancelButton");
  });
  choose(view, "valueListCombo", 1);
  EXPECT_EQ(opened, "Colores");
  EXPECT_EQ(child<QComboBox>(view, "valueListCombo")->currentText(), "Acabados");
  EXPECT_STREQ(logic.property.enumName, "Acabados");
}

class PropertyValueViewTest : public UiTest {
 protected:
  const CConjuntoVariableZep variables = catalogue("Muro;Altura,Espesor,Tipo\nEje;PK,Cota,Pendiente\n");
};

TEST_F(PropertyValueViewTest, AReferenceOpensOnItsGroupAndVariable) {
  CPropiedadesObjetosValorIFCDlg logic(services, "Eje.Cota$", variables);
  PropertyValueView view(logic);
  open(view, logic);
  EXPECT_EQ(view.windowTitle(), QString::fromUtf8("Asignación de Propiedades a Objetos IFC"));
  EXPECT_TRUE(child<QRadioButton>(view, "hostVariableRadio")->isChecked());
  EXPECT_EQ(child<QComboBox>(view, "groupCombo")->currentText(), "Eje");
  EXPECT_EQ(child<QComboBox>(view, "variableCombo")->currentText(), "Cota");
  EXPECT_EQ(child<QLineEdit>(view, "valueEdit")->text(), "Eje.Cota$");
  EXPECT_FALSE(child<QLineEdit>(view, "valueEdit")->isEnabled());
}

TEST_F(PropertyValueViewTest, TheLiteralButtonSwapsTheEnabledControlsAndOkTakesTheText) {
  CPropiedadesObjetosValorIFCDlg logic(services, "Eje.Cota$", variables);
  PropertyValueView view(logic);
  open(view, logic);
  QTest::mouseClick(child<QRadioButton>(view, "literalRadio"), Qt::LeftButton);
  EXPECT_TRUE(child<QLineEdit>(view, "valueEdit")->isEnabled());
  EXPECT_FALSE(child<QComboBox>(view, "groupCombo")->isEnabled());
  EXPECT_FALSE(child<QComboBox>(view, "variableCombo")->isEnabled());
  typeInto(view, "valueEdit", QString::fromUtf8("2,5 m²"));
  click(view, "okButton");
  ASSERT_EQ(logic.result(), kDialogOk);
  EXPECT_STREQ(logic.value, "2,5 m\xC2\xB2");
}

TEST_F(PropertyValueViewTest, HostVariableModeNeedsAGroupAndAVariable) {
  CPropiedadesObjetosValorIFCDlg logic(services, "", variables);
  PropertyValueView view(logic);
  open(view, logic);
  EXPECT_TRUE(child<QRadioButton>(view, "literalRadio")->isChecked());
  QTest::mouseClick(child<QRadioButton>(view, "hostVariableRadio"), Qt::LeftButton);
  EXPECT_EQ(child<QComboBox>(view, "groupCombo")->currentIndex(), -1);
  click(view, "okButton");
  EXPECT_TRUE(view.isVisible());  // refused without a message
  EXPECT_TRUE(services.messages.empty());
  choose(view, "groupCombo", 1);
  EXPECT_EQ(entries(child<QComboBox>(view, "variableCombo")), (QStringList{"PK", "Cota", "Pendiente\n"}));
  choose(view, "variableCombo", 1);
  click(view, "okButton");
  EXPECT_EQ(logic.result(), kDialogOk);
  EXPECT_STREQ(logic.value, "Eje.Cota$");
}

}  // namespace
