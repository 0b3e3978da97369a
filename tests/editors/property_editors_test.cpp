// One property's data, one set's rows, the chooser of a host variable or literal, and value lists
// changed in nested editors coming back up to the set list.
#include "editor_fixture.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/common/text_codec.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/psets/property_data_dlg.h"

using namespace orvane;
using namespace orvane::test;

namespace {

class PropertyData : public EditorTest {
 protected:
  CPropertyDataDlg open(int mode, const CIfcPropertyName& p) {
    CPropertyDataDlg dlg(services, mode, p, enums, &owner, nullptr);
    dlg.start();
    return dlg;
  }
  std::vector<CIfcEnum> enums{makeEnum("Colores", {{1, "Rojo"}, {2, "Azul"}})};
  CIfcPropertySet owner = makeSet("Muros", {makeProperty("Altura")});
};

// A default value is needed by the types that have one, unless the property is optional; what is
// stored follows the type.
TEST_F(PropertyData, OkStoresTheDefaultByTypeOrAsksForOne) {
  struct Row {
    int type;
    const char16_t *value, *refusal;
    bool optional;
    const char* storedText;
    int32_t storedInt;
  } rows[] = {{PropertyInteger, u"", u"Falta el valor por defecto", false, "", 0},
              {PropertyInteger, u"12abc", nullptr, false, "12abc", 12},
              {PropertyInteger, u"$ANCHO", nullptr, false, "$ANCHO", 0},  // a host variable keeps its text
              {PropertyReal, u"", nullptr, true, "", 0},
              {PropertyDateTime, u"", u"Falta el valor por defecto", false, "", 0},
              {PropertyString, u"", nullptr, false, "", 0},
              {PropertyBoolean, u"", nullptr, false, "", 1}};  // the check box, ticked
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

TEST_F(PropertyData, ValueListsArePickedOrEditedInTheirOwnEditor) {
  CIfcPropertyName p = makeProperty("Color", PropertyEnumerated, "Rojo");
  setText(p.enumName, "Otra");
  p.unit = 4;
  CPropertyDataDlg dlg = open(kEditItem, p);
  EXPECT_EQ(dlg.units.entries.at(dlg.units.selected), u"ºC");  // the unit table is ANSI text
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) { d.cancel(); });
  dlg.chooseValueList(0);
  dlg.chooseValueList(5);  // outside the list: no editor
  EXPECT_STREQ(dlg.property.enumName, "Otra");
  EXPECT_EQ(dlg.valueLists.selected, -1);
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) { EXPECT_FALSE(d.selectionNotRequired); d.selectRow(1); d.ok(); });
  dlg.chooseValueList(0);
  EXPECT_STREQ(dlg.property.enumName, "Colores");
  EXPECT_STREQ(dlg.property.textValue, "Azul");
  EXPECT_EQ(dlg.defaultValueText, u"Azul");
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) { EXPECT_TRUE(d.selectionNotRequired); d.descriptionText = u"D"; d.ok(); });
  dlg.editValueList();
  EXPECT_STREQ(dlg.enums[0].description, "D");
}

// A reference opens on its names (unknown ones on the first), a literal naming a group on that group;
// a pair too long for a reference, or no catalogue at all, leaves only the literal to accept.
TEST_F(EditorTest, TheValueChooserOpensOnAReferencesNamesAndMakesOnlyReferencesThatFit) {
  CConjuntoVariableZep catalogue;
  setText(catalogue.groups.emplace_back().name, "Eje");
  for (const char* name : {"PK", "Cota"}) setText(catalogue.groups[0].variables.emplace_back().name, name);
  setText(catalogue.groups.emplace_back().name, std::string(300, 'g').c_str());
  setText(catalogue.groups[1].variables.emplace_back().name, std::string(300, 'v').c_str());
  for (auto [value, mode, group, variable] : {std::tuple{"Eje.Cota$", kHostVariable, 0, 1}, {"Muro.Alto$", kHostVariable, 0, 0},
                                              {"Eje.PK", kLiteralText, 0, 0}, {"", kLiteralText, -1, -1}}) {
    SCOPED_TRACE(value);
    CPropiedadesObjetosValorIFCDlg dlg(services, value, catalogue);
    dlg.start();
    EXPECT_EQ(dlg.mode, mode);
    EXPECT_EQ(dlg.valueText, fromUtf8(value));
    EXPECT_EQ(dlg.groups.selected, group);
    EXPECT_EQ(dlg.variables.selected, variable);
    EXPECT_EQ(dlg.groups.enabled && dlg.variables.enabled && !dlg.valueTextEnabled, mode == kHostVariable);
  }
  for (const CConjuntoVariableZep& source : {catalogue, CConjuntoVariableZep()}) {
    CPropiedadesObjetosValorIFCDlg dlg(services, "Eje.PK$", source);
    dlg.start();
    dlg.chooseGroup(1);
    EXPECT_EQ(dlg.variables.selected, source.groups.empty() ? -1 : 0);  // a group chosen selects its first variable
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
  EXPECT_EQ(dlg.caption, u"Conjunto de Propiedades");
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
    services.expectDialog<CListEnumsDlg>([](CListEnumsDlg& d) { d.enums.push_back(makeEnum("Acabados", {{1, "L"}})); d.ok(); });
    set.editEnums();
    EXPECT_STREQ(set.set.name, "Carpinter\xC3\xAD" "a");  // taken before the nested editor opened
    services.expectDialog<CPropertyDataDlg>([this](CPropertyDataDlg& p) {
      p.nameText = u"Acabado";
      p.changeType(PropertyEnumerated);
      services.expectDialog<CListValuesDlg>([](CListValuesDlg& pick) { pick.type.elements.resize(2); pick.selectRow(0); pick.ok(); });
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
  EXPECT_STREQ(dlg.propertySets[0].properties.at(0).enumName, "Acabados");
}

}  // namespace
