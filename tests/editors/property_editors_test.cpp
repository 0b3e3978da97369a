// One property's data, one set's rows, the chooser of a host variable or literal, and value lists
// changed in nested editors coming back up to the set list.
#include "editor_fixture.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/psets/property_data_dlg.h"

using namespace orvane;
using namespace orvane::test;

namespace {

CConjuntoVariableZep sampleCatalogue() {
  CConjuntoVariableZep catalogue;
  for (auto [group, variables] : {std::pair<const char*, std::vector<const char*>>{"Eje", {"PK", "Cota"}},
                                  {"Superficie", {"Area", "Perimetro"}}}) {
    catalogue.groups.emplace_back();
    setText(catalogue.groups.back().name, group);
    for (const char* name : variables) setText(catalogue.groups.back().variables.emplace_back().name, name);
  }
  return catalogue;
}

class PropertyData : public EditorTest {
 protected:
  CPropertyDataDlg open(int mode, const CIfcPropertyName& p) {
    CPropertyDataDlg dlg(services, mode, p, enums, &owner, &catalogue);
    dlg.start();
    return dlg;
  }
  std::vector<CIfcEnum> enums{makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}})};
  CIfcPropertySet owner = makeSet("Muros", {makeProperty("Altura")});
  CConjuntoVariableZep catalogue = sampleCatalogue();
};

TEST_F(PropertyData, StartShowsTheProperty) {
  CIfcPropertyName p = makeProperty("Temp", PropertyReal);
  p.realValue = 21.5;
  p.unit = 4;
  CPropertyDataDlg dlg = open(kEditItem, p);
  EXPECT_EQ(dlg.setName, u"Muros");
  EXPECT_EQ(dlg.defaultValueText, u"21.500");
  EXPECT_EQ(dlg.types.entries, (Texts{u"Entero", u"Real", u"Texto", u"Lista de Valores", u"Booleano", u"Fecha y hora"}));
  EXPECT_EQ(dlg.types.selected, PropertyReal);
  EXPECT_EQ(dlg.units.entries.at(4), u"ºC");  // the unit table is ANSI text
  EXPECT_EQ(dlg.units.selected, 4);
  EXPECT_EQ(dlg.valueLists.entries, Texts{u"Colores"});
  EXPECT_EQ(dlg.valueLists.selected, -1);
}

// A default value is needed by the types that have one, unless the property is optional; what is
// stored follows the type.
TEST_F(PropertyData, OkStoresTheDefaultByTypeOrAsksForOne) {
  struct Row {
    int type;
    const char16_t* value;
    bool optional;
    const char16_t* refusal;
    const char* storedText;
    int32_t storedInt;
  } rows[] = {
      {PropertyInteger, u"", false, u"Falta el valor por defecto", "", 0},
      {PropertyInteger, u"12abc", false, nullptr, "12abc", 12},
      {PropertyInteger, u"$ANCHO", false, nullptr, "$ANCHO", 0},  // a host variable keeps its text
      {PropertyReal, u"", true, nullptr, "", 0},
      {PropertyDateTime, u"", false, u"Falta el valor por defecto", "", 0},
      {PropertyString, u"", false, nullptr, "", 0},
      {PropertyBoolean, u"", false, nullptr, "", 1},  // the check box, ticked
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.type);
    services.messages.clear();
    CPropertyDataDlg dlg = open(kNewItem, makeProperty("Nueva"));
    dlg.changeType(row.type);
    dlg.defaultValueText = row.value;
    dlg.optionalChecked = row.optional;
    dlg.booleanChecked = true;
    dlg.ok();
    EXPECT_EQ(services.messages, row.refusal ? Texts{row.refusal} : Texts{});
    if (row.refusal != nullptr) continue;
    EXPECT_EQ(dlg.property.valueType, row.type);
    EXPECT_STREQ(dlg.property.textValue, row.storedText);
    EXPECT_EQ(dlg.property.intValue, row.storedInt);
    EXPECT_EQ(dlg.property.realValue, 0.0);
  }
}

TEST_F(PropertyData, TheTypeDecidesWhichControlsAreUsable) {
  struct Row {
    int type;
    bool defaultVisible, defaultEnabled, checkVisible, listsEnabled, editListEnabled;
  } rows[] = {{PropertyBoolean, false, true, true, false, true},
              {PropertyReal, true, true, false, false, false},
              {PropertyEnumerated, true, false, false, true, true}};
  CPropertyDataDlg dlg = open(kNewItem, makeProperty("P"));
  for (const Row& row : rows) {
    SCOPED_TRACE(row.type);
    dlg.changeType(row.type);
    EXPECT_EQ(dlg.defaultValueVisible, row.defaultVisible);
    EXPECT_EQ(dlg.defaultValueEnabled, row.defaultEnabled);
    EXPECT_EQ(dlg.booleanCheckVisible, row.checkVisible);
    EXPECT_EQ(dlg.valueLists.enabled, row.listsEnabled);
    EXPECT_EQ(dlg.editValueListEnabled, row.editListEnabled);
  }
}

TEST_F(PropertyData, ValueListsArePickedOrEditedInTheirOwnEditor) {
  CIfcPropertyName p = makeProperty("Color", PropertyEnumerated, "Rojo");
  setText(p.enumName, "Otra");
  CPropertyDataDlg dlg = open(kEditItem, p);
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) { d.cancel(); });
  dlg.chooseValueList(0);
  dlg.chooseValueList(5);  // outside the list: no editor
  EXPECT_STREQ(dlg.property.enumName, "Otra");
  EXPECT_EQ(dlg.valueLists.selected, -1);
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) {
    EXPECT_FALSE(d.selectionNotRequired);
    d.selectRow(1);
    d.ok();
  });
  dlg.chooseValueList(0);
  EXPECT_STREQ(dlg.property.enumName, "Colores");
  EXPECT_STREQ(dlg.property.textValue, "Azul");
  EXPECT_EQ(dlg.defaultValueText, u"Azul");
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) {
    EXPECT_TRUE(d.selectionNotRequired);
    d.descriptionText = u"Colores de acabado";
    d.ok();
  });
  dlg.editValueList();
  EXPECT_STREQ(dlg.enums[0].description, "Colores de acabado");
}

TEST_F(PropertyData, TheChooserPutsAHostVariableInTheDefaultBoxForOkToStore) {
  CPropertyDataDlg dlg = open(kNewItem, makeProperty("Cota", PropertyReal));
  dlg.defaultValueText.clear();
  services.expectDialog<CPropiedadesObjetosValorIFCDlg>([](CPropiedadesObjetosValorIFCDlg& d) {
    EXPECT_EQ(d.mode, kLiteralText);
    d.chooseSource(kHostVariable);
    d.chooseGroup(0);
    d.chooseVariable(1);
    d.ok();
  });
  dlg.chooseValue();
  EXPECT_EQ(dlg.defaultValueText, u"Eje.Cota$");
  EXPECT_STREQ(dlg.property.textValue, "");
  dlg.ok();
  EXPECT_STREQ(dlg.property.textValue, "Eje.Cota$");
}

class ValueChooser : public EditorTest {
 protected:
  CPropiedadesObjetosValorIFCDlg open(const char* value) {
    CPropiedadesObjetosValorIFCDlg dlg(services, value, catalogue);
    dlg.start();
    return dlg;
  }
  CConjuntoVariableZep catalogue = sampleCatalogue();
};

TEST_F(ValueChooser, AReferenceOpensOnItsNamesAndALiteralAsTyped) {
  struct Row {
    const char* value;
    int mode, group, variable;
  } rows[] = {{"Eje.Cota$", kHostVariable, 0, 1}, {"Superficie.Area$", kHostVariable, 1, 0},
              {"Muro.Alto$", kHostVariable, 0, 0},  // unknown names: the first group and variable
              {"12.5", kLiteralText, 0, 0}, {"", kLiteralText, -1, -1}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.value);
    CPropiedadesObjetosValorIFCDlg dlg = open(row.value);
    EXPECT_EQ(dlg.mode, row.mode);
    EXPECT_EQ(dlg.valueText, std::u16string(row.value, row.value + std::strlen(row.value)));
    EXPECT_EQ(dlg.groups.entries, (Texts{u"Eje", u"Superficie"}));
    EXPECT_EQ(dlg.groups.selected, row.group);
    EXPECT_EQ(dlg.variables.entries.size(), 2u);
    EXPECT_EQ(dlg.variables.selected, row.variable);
    EXPECT_EQ(dlg.groups.enabled && dlg.variables.enabled && !dlg.valueTextEnabled, row.mode == kHostVariable);
  }
}

TEST_F(ValueChooser, AnIncompleteChoiceKeepsItOpenSilentlyAndALiteralIsTakenAsTyped) {
  CPropiedadesObjetosValorIFCDlg dlg = open("");
  dlg.chooseSource(kHostVariable);
  dlg.ok();  // no group
  dlg.chooseGroup(1);
  EXPECT_EQ(dlg.variables.entries, (Texts{u"Area", u"Perimetro"}));
  EXPECT_EQ(dlg.variables.selected, 0);  // a new group selects its first variable
  dlg.chooseVariable(-1);
  dlg.ok();
  EXPECT_FALSE(dlg.ended());
  EXPECT_TRUE(services.messages.empty());
  dlg.chooseVariable(1);
  dlg.ok();
  ASSERT_EQ(dlg.result(), kDialogOk);
  EXPECT_STREQ(dlg.value, "Superficie.Perimetro$");
  CPropiedadesObjetosValorIFCDlg literal = open("Eje.PK$");
  literal.chooseSource(kLiteralText);
  literal.valueText = u"Año 2026 $";
  literal.ok();
  ASSERT_EQ(literal.result(), kDialogOk);
  EXPECT_STREQ(literal.value, "A\xC3\xB1o 2026 $");
}

// Names too long for a reference, or no catalogue at all: only a literal can be accepted.
TEST_F(ValueChooser, WithoutAReferenceToMakeOnlyTheLiteralIsAccepted) {
  CConjuntoVariableZep longNames;
  setText(longNames.groups.emplace_back().name, std::string(300, 'g').c_str());
  setText(longNames.groups[0].variables.emplace_back().name, std::string(300, 'v').c_str());
  for (const CConjuntoVariableZep& source : {longNames, CConjuntoVariableZep()}) {
    CPropiedadesObjetosValorIFCDlg dlg(services, "Eje.PK$", source);
    dlg.start();
    dlg.chooseGroup(0);
    dlg.ok();
    EXPECT_FALSE(dlg.ended());
    dlg.chooseSource(kLiteralText);
    dlg.ok();
    EXPECT_EQ(dlg.result(), kDialogOk);
    EXPECT_STREQ(dlg.value, "Eje.PK$");
  }
}

TEST_F(EditorTest, ASetsRowsShowEveryColumnOfItsProperties) {
  CIfcPropertyName flag = makeProperty("Portante", PropertyBoolean);
  flag.intValue = 2;
  CIfcPropertyName ref = makeProperty("Alto", PropertyInteger, "$ALTO");
  ref.optional = true;
  ref.unit = 4;
  CIfcPropertyName colour = makeProperty("Color", PropertyEnumerated, "Rojo");
  setText(colour.enumName, "Colores");
  CPropertiesOfSetDlg dlg(services, kEditItem, makeSet("Muros", {flag, ref, colour}), {}, nullptr, nullptr);
  dlg.start();
  EXPECT_EQ(dlg.properties.columns.at(6).title, u"Unidad");
  EXPECT_EQ(dlg.properties.rows[0], (Texts{u"Portante", u"", u"Booleano", u"", u"false", u"No", u""}));
  EXPECT_EQ(dlg.properties.rows[1], (Texts{u"Alto", u"", u"Entero", u"", u"$ALTO", u"Sí", u"ºC"}));
  EXPECT_EQ(dlg.properties.rows[2], (Texts{u"Color", u"", u"Enumerado", u"Colores", u"Rojo", u"No", u""}));
}

// A value list made in the set's editor, and a value added to it while picking a property's default,
// reach the set list with the new set.
TEST_F(EditorTest, ValueListsChangedInNestedEditorsComeBackUp) {
  CPropertiesSetDlg dlg(services, {makeSet("Muros")}, {makeEnum("Colores", {{1, "Rojo"}})});
  dlg.start();
  services.expectDialog<CPropertiesOfSetDlg>([this](CPropertiesOfSetDlg& set) {
    set.nameText = u"Carpintería";
    services.expectDialog<CListEnumsDlg>([](CListEnumsDlg& d) { d.enums.push_back(makeEnum("Acabados", {{1, "Lacado"}})); d.ok(); });
    set.editEnums();
    EXPECT_STREQ(set.set.name, "Carpinter\xC3\xAD" "a");  // taken before the nested editor opened
    services.expectDialog<CPropertyDataDlg>([this](CPropertyDataDlg& p) {
      p.nameText = u"Acabado";
      p.changeType(PropertyEnumerated);
      services.expectDialog<CListValuesDlg>([](CListValuesDlg& pick) {
        pick.type.elements.push_back(makeEnum("", {{2, "Barniz"}}).elements[0]);
        pick.selectRow(1);
        pick.ok();
      });
      p.chooseValueList(1);
      p.ok();
    });
    set.insert();
    set.ok();
  });
  dlg.insert();
  EXPECT_EQ(column(dlg.sets, 0), (Texts{u"Carpintería", u"Muros"}));
  ASSERT_EQ(dlg.enums.size(), 2u);
  EXPECT_EQ(dlg.enums[1].elements.size(), 2u);
  const CIfcPropertyName& made = dlg.propertySets[0].properties.at(0);
  EXPECT_EQ(made.valueType, PropertyEnumerated);
  EXPECT_STREQ(made.enumName, "Acabados");
  EXPECT_STREQ(made.textValue, "Barniz");
}

}  // namespace
