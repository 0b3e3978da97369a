// One property's data, one set's properties, and the chooser of a host variable or literal.
#include "editors/assign/property_value_dlg.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/property_data_dlg.h"
#include "editor_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

CConjuntoVariableZep sampleCatalogue() {
  CConjuntoVariableZep catalogue;
  for (auto [group, variables] : {std::pair<const char*, std::vector<const char*>>{"Eje", {"PK", "Cota"}},
                                  {"Superficie", {"Area", "Perimetro"}}}) {
    CZepGrupo g;
    setText(g.name, group);
    for (const char* name : variables) {
      CZepVariable v;
      setText(v.name, name);
      g.variables.push_back(v);
    }
    catalogue.groups.push_back(g);
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
  CIfcPropertySet owner = makeSet("Muros", {makeProperty("Altura"), makeProperty("Acabado")});
  CConjuntoVariableZep catalogue = sampleCatalogue();
};

TEST_F(PropertyData, StartShowsTheHostTextsAndTheProperty) {
  CIfcPropertyName p = makeProperty("Temp", PropertyReal);
  p.realValue = 21.5;
  p.unit = 4;
  CPropertyDataDlg dlg = open(kEditItem, p);
  EXPECT_EQ(dlg.caption, u"Datos de la Propiedad");
  EXPECT_EQ(dlg.nameLabel, u"Nombre");
  EXPECT_EQ(dlg.setName, u"Muros");
  EXPECT_EQ(dlg.defaultValueText, u"21.500");
  EXPECT_EQ(dlg.types.entries,
            (std::vector<std::u16string>{u"Entero", u"Real", u"Texto", u"Lista de Valores", u"Booleano", u"Fecha y hora"}));
  EXPECT_EQ(dlg.types.selected, PropertyReal);
  EXPECT_EQ(dlg.units.entries.at(4), u"ºC");
  EXPECT_EQ(dlg.units.selected, 4);
  EXPECT_EQ(dlg.valueLists.entries, std::vector<std::u16string>{u"Colores"});
  EXPECT_EQ(dlg.valueLists.selected, -1);
}

TEST_F(PropertyData, RequiredNumbersNeedADefaultButStringsDoNot) {
  CPropertyDataDlg integer = open(kNewItem, makeProperty("Nueva", PropertyInteger));
  integer.defaultValueText.clear();
  integer.ok();
  EXPECT_EQ(services.messages, std::vector<std::u16string>{u"Falta el valor por defecto"});
  EXPECT_FALSE(integer.ended());

  CPropertyDataDlg text = open(kNewItem, makeProperty("Nueva", PropertyString));
  text.ok();
  EXPECT_EQ(text.result(), kDialogOk);

  CPropertyDataDlg optionalReal = open(kNewItem, makeProperty("Opcional", PropertyReal));
  optionalReal.defaultValueText.clear();
  optionalReal.optionalChecked = true;
  optionalReal.ok();
  ASSERT_EQ(optionalReal.result(), kDialogOk);
  EXPECT_EQ(optionalReal.property.realValue, 0.0);
  EXPECT_STREQ(optionalReal.property.textValue, "");
}

TEST_F(PropertyData, AHostVariableReferenceTypedAsIntegerKeepsItsText) {
  CPropertyDataDlg dlg = open(kNewItem, makeProperty("Ancho", PropertyInteger));
  dlg.defaultValueText = u"$ANCHO";
  dlg.ok();
  ASSERT_EQ(dlg.result(), kDialogOk);
  EXPECT_STREQ(dlg.property.textValue, "$ANCHO");
  EXPECT_EQ(dlg.property.intValue, 0);
}

TEST_F(PropertyData, NamesAreCheckedForEmptinessAndDuplicates) {
  CPropertyDataDlg empty = open(kNewItem, makeProperty(""));
  empty.ok();
  CPropertyDataDlg duplicate = open(kNewItem, makeProperty(""));
  duplicate.nameText = u"ALTURA";
  duplicate.ok();
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u"Debe dar un nombre a la propiedad",
                                                            u"Ya existe una propiedad con ese nombre"}));
  CPropertyDataDlg caseOnly = open(kEditItem, owner.properties[0]);
  caseOnly.nameText = u"ALTURA";
  caseOnly.ok();
  EXPECT_EQ(caseOnly.result(), kDialogOk);
  EXPECT_STREQ(caseOnly.property.name, "ALTURA");

  CPropertyDataDlg renamed = open(kEditItem, owner.properties[0]);
  renamed.nameText = u"acabado";
  renamed.ok();
  EXPECT_FALSE(renamed.ended());
  EXPECT_EQ(services.messages.back(), u"Ya existe una propiedad con ese nombre");
}

TEST_F(PropertyData, TheTypeDecidesWhichControlsAreUsable) {
  CPropertyDataDlg dlg = open(kNewItem, makeProperty("P"));
  dlg.changeType(PropertyBoolean);
  EXPECT_FALSE(dlg.defaultValueVisible);
  EXPECT_TRUE(dlg.booleanCheckVisible);
  EXPECT_FALSE(dlg.valueLists.enabled);
  dlg.changeType(PropertyReal);
  EXPECT_TRUE(dlg.defaultValueVisible);
  EXPECT_FALSE(dlg.booleanCheckVisible);
  EXPECT_FALSE(dlg.valueLists.enabled);
  EXPECT_FALSE(dlg.editValueListEnabled);
  dlg.changeType(PropertyEnumerated);
  EXPECT_FALSE(dlg.defaultValueEnabled);
  EXPECT_TRUE(dlg.valueLists.enabled);
  EXPECT_TRUE(dlg.editValueListEnabled);

  dlg.changeType(PropertyBoolean);
  dlg.booleanChecked = true;
  dlg.ok();
  EXPECT_EQ(dlg.property.valueType, PropertyBoolean);
  EXPECT_EQ(dlg.property.intValue, 1);
}

TEST_F(PropertyData, PickingAValueListSetsTheTypeAndTheDefault) {
  CPropertyDataDlg dlg = open(kNewItem, makeProperty("Color"));
  dlg.changeType(PropertyEnumerated);
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) {
    EXPECT_FALSE(d.selectionNotRequired);
    d.selectRow(1);
    d.ok();
  });
  dlg.chooseValueList(0);
  EXPECT_STREQ(dlg.property.enumName, "Colores");
  EXPECT_STREQ(dlg.property.textValue, "Azul");
  EXPECT_EQ(dlg.defaultValueText, u"Azul");
  dlg.ok();
  EXPECT_EQ(dlg.result(), kDialogOk);
}

TEST_F(PropertyData, CancellingTheValueListKeepsTheTypeName) {
  CIfcPropertyName p = makeProperty("Color", PropertyEnumerated, "Rojo");
  setText(p.enumName, "Otra");
  CPropertyDataDlg dlg = open(kEditItem, p);
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) { d.cancel(); });
  dlg.chooseValueList(0);
  EXPECT_STREQ(dlg.property.enumName, "Otra");
  EXPECT_EQ(dlg.valueLists.selected, -1);
  dlg.chooseValueList(5);  // outside the list: ignored, no dialog
  EXPECT_STREQ(dlg.property.enumName, "Otra");
}

TEST_F(PropertyData, EditingTheValueListChangesTheDocumentTypes) {
  CIfcPropertyName p = makeProperty("Color", PropertyEnumerated, "Rojo");
  setText(p.enumName, "COLORES");
  CPropertyDataDlg dlg = open(kEditItem, p);
  EXPECT_EQ(dlg.valueLists.selected, 0);
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) {
    EXPECT_TRUE(d.selectionNotRequired);
    d.descriptionText = u"Colores de acabado";
    d.ok();
  });
  dlg.editValueList();
  EXPECT_STREQ(dlg.enums[0].description, "Colores de acabado");
}

TEST_F(PropertyData, TheChooserPutsAHostVariableInTheDefaultBox) {
  CPropertyDataDlg dlg = open(kNewItem, makeProperty("Cota", PropertyReal));
  dlg.defaultValueText = u"";
  services.expectDialog<CPropiedadesObjetosValorIFCDlg>([](CPropiedadesObjetosValorIFCDlg& d) {
    EXPECT_EQ(d.mode, kLiteralText);
    d.chooseSource(kHostVariable);
    d.chooseGroup(0);
    d.chooseVariable(1);
    d.ok();
  });
  dlg.chooseValue();
  EXPECT_EQ(dlg.defaultValueText, u"Eje.Cota$");
  EXPECT_STREQ(dlg.property.textValue, "");  // stored only by this dialog's OK
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

TEST_F(ValueChooser, AReferenceOpensInHostVariableModeWithItsNamesSelected) {
  CPropiedadesObjetosValorIFCDlg dlg = open("Eje.Cota$");
  EXPECT_EQ(dlg.caption, u"Asignación de Propiedades a Objetos IFC");
  EXPECT_EQ(dlg.mode, kHostVariable);
  EXPECT_EQ(dlg.valueText, u"Eje.Cota$");
  EXPECT_EQ(dlg.groups.entries, (std::vector<std::u16string>{u"Eje", u"Superficie"}));
  EXPECT_EQ(dlg.groups.selected, 0);
  EXPECT_EQ(dlg.variables.selected, 1);
  EXPECT_TRUE(dlg.groups.enabled);
  EXPECT_FALSE(dlg.valueTextEnabled);
}

TEST_F(ValueChooser, AnUnknownGroupSelectsTheFirstGroupAndVariable) {
  CPropiedadesObjetosValorIFCDlg dlg = open("Muro.Alto$");
  EXPECT_EQ(dlg.groups.selected, 0);
  EXPECT_EQ(dlg.variables.selected, 0);
}

TEST_F(ValueChooser, LiteralsAndEmptyValuesOpenInLiteralMode) {
  CPropiedadesObjetosValorIFCDlg literal = open("12.5");
  EXPECT_EQ(literal.mode, kLiteralText);
  EXPECT_EQ(literal.valueText, u"12.5");
  EXPECT_TRUE(literal.valueTextEnabled);
  EXPECT_FALSE(literal.groups.enabled);
  EXPECT_FALSE(literal.variables.enabled);

  CPropiedadesObjetosValorIFCDlg empty = open("");
  EXPECT_EQ(empty.mode, kLiteralText);
  EXPECT_EQ(empty.valueText, u"");
  EXPECT_EQ(empty.groups.selected, -1);
  EXPECT_EQ(empty.variables.entries, (std::vector<std::u16string>{u"PK", u"Cota"}));
  EXPECT_EQ(empty.variables.selected, -1);
}

TEST_F(ValueChooser, AnIncompleteChoiceKeepsTheDialogOpenSilently) {
  CPropiedadesObjetosValorIFCDlg dlg = open("");
  dlg.chooseSource(kHostVariable);
  dlg.ok();  // no group
  dlg.chooseGroup(1);
  EXPECT_EQ(dlg.variables.entries, (std::vector<std::u16string>{u"Area", u"Perimetro"}));
  EXPECT_EQ(dlg.variables.selected, 0);  // a new group selects its first variable
  dlg.chooseVariable(-1);
  dlg.ok();
  EXPECT_FALSE(dlg.ended());
  EXPECT_TRUE(services.messages.empty());
  dlg.chooseVariable(1);
  dlg.ok();
  ASSERT_EQ(dlg.result(), kDialogOk);
  EXPECT_STREQ(dlg.value, "Superficie.Perimetro$");
}

TEST_F(ValueChooser, ALiteralIsReturnedExactlyAsTypedInUtf8) {
  CPropiedadesObjetosValorIFCDlg dlg = open("Eje.PK$");
  dlg.chooseSource(kLiteralText);
  dlg.valueText = u"Año 2026 $";
  dlg.ok();
  ASSERT_EQ(dlg.result(), kDialogOk);
  EXPECT_STREQ(dlg.value, "A\xC3\xB1o 2026 $");
}

TEST_F(ValueChooser, APairTooLongForAReferenceIsRefused) {
  CConjuntoVariableZep longNames;
  longNames.groups.resize(1);
  setText(longNames.groups[0].name, std::string(300, 'g').c_str());
  longNames.groups[0].variables.resize(1);
  setText(longNames.groups[0].variables[0].name, std::string(300, 'v').c_str());
  CPropiedadesObjetosValorIFCDlg dlg(services, "", longNames);
  dlg.start();
  dlg.chooseSource(kHostVariable);
  dlg.chooseGroup(0);
  dlg.ok();
  EXPECT_FALSE(dlg.ended());
}

TEST_F(ValueChooser, AnEmptyCatalogueLeavesOnlyTheLiteral) {
  const CConjuntoVariableZep none;
  CPropiedadesObjetosValorIFCDlg dlg(services, "Eje.PK$", none);
  dlg.start();
  EXPECT_TRUE(dlg.groups.entries.empty());
  dlg.ok();
  EXPECT_FALSE(dlg.ended());
  dlg.chooseSource(kLiteralText);
  dlg.ok();
  EXPECT_EQ(dlg.result(), kDialogOk);
  EXPECT_STREQ(dlg.value, "Eje.PK$");
}

class PropertiesOfSet : public EditorTest {
 protected:
  CPropertiesOfSetDlg open(int mode, const CIfcPropertySet& set) {
    CPropertiesOfSetDlg dlg(services, mode, set, {}, &allSets, nullptr);
    dlg.start();
    return dlg;
  }
  std::vector<CIfcPropertySet> allSets{makeSet("Losas"), makeSet("Muros")};
};

TEST_F(PropertiesOfSet, RowsShowEveryColumnWithItsEncoding) {
  CIfcPropertyName flag = makeProperty("Portante", PropertyBoolean);
  flag.intValue = 2;
  CIfcPropertyName ref = makeProperty("Alto", PropertyInteger, "$ALTO");
  ref.optional = true;
  ref.unit = 4;
  CIfcPropertyName colour = makeProperty("Color", PropertyEnumerated, "Rojo");
  setText(colour.enumName, "Colores");
  CPropertiesOfSetDlg dlg = open(kEditItem, makeSet("Muros", {flag, ref, colour}));
  EXPECT_EQ(dlg.properties.columns.size(), 7u);
  EXPECT_EQ(dlg.properties.columns[6].title, u"Unidad");
  EXPECT_EQ(dlg.properties.rows[0], (std::vector<std::u16string>{u"Portante", u"", u"Booleano", u"", u"false", u"No", u""}));
  EXPECT_EQ(dlg.properties.rows[1], (std::vector<std::u16string>{u"Alto", u"", u"Entero", u"", u"$ALTO", u"Sí", u"ºC"}));
  EXPECT_EQ(dlg.properties.rows[2][2], u"Enumerado");
  EXPECT_EQ(dlg.properties.rows[2][3], u"Colores");
}

TEST_F(PropertiesOfSet, SetNamesAreCheckedAgainstTheWholeList) {
  CPropertiesOfSetDlg empty = open(kNewItem, makeSet(""));
  empty.ok();
  CPropertiesOfSetDlg clash = open(kNewItem, makeSet(""));
  clash.nameText = u"MUROS";
  clash.ok();
  EXPECT_EQ(services.messages, (std::vector<std::u16string>{u"Debe dar un nombre al conjunto",
                                                            u"Ya existe un conjunto con ese nombre"}));
  CPropertiesOfSetDlg keep = open(kEditItem, allSets[1]);
  keep.nameText = u"muros";
  keep.ok();
  EXPECT_EQ(keep.result(), kDialogOk);
  CPropertiesOfSetDlg rename = open(kEditItem, allSets[1]);
  rename.nameText = u"losas";
  rename.ok();
  EXPECT_FALSE(rename.ended());
}

TEST_F(PropertiesOfSet, RemovingAPropertyAsksNothingAndRevealsTheSameRow) {
  CPropertiesOfSetDlg dlg = open(kEditItem, makeSet("S", {makeProperty("A"), makeProperty("B"), makeProperty("C")}));
  dlg.selectRow(1);
  dlg.remove();
  ASSERT_EQ(dlg.set.properties.size(), 2u);
  EXPECT_STREQ(dlg.set.properties[1].name, "C");
  EXPECT_EQ(dlg.properties.revealRow, 1);
  EXPECT_TRUE(services.questions.empty());
}

TEST_F(PropertiesOfSet, ADoubleClickEditsThatRow) {
  CPropertiesOfSetDlg dlg = open(kEditItem, makeSet("S", {makeProperty("A"), makeProperty("B")}));
  services.expectDialog<CPropertyDataDlg>([](CPropertyDataDlg& d) {
    EXPECT_EQ(d.nameText, u"B");
    d.descriptionText = u"Segunda";
    d.ok();
  });
  dlg.doubleClick(1);
  EXPECT_STREQ(dlg.set.properties[1].description, "Segunda");
  EXPECT_EQ(dlg.properties.rows[1][1], u"Segunda");
}

TEST_F(PropertiesOfSet, TypesEditedFromTheSetComeBackWithIt) {
  CPropertiesOfSetDlg dlg = open(kNewItem, makeSet(""));
  dlg.nameText = u"Nuevo";
  services.expectDialog<CListEnumsDlg>([](CListEnumsDlg& d) {
    d.enums.push_back(makeEnum("Colores", {{1, "Rojo"}}));
    d.ok();
  });
  dlg.editEnums();
  ASSERT_EQ(dlg.enums.size(), 1u);
  EXPECT_STREQ(dlg.set.name, "Nuevo");  // the edits were taken before the nested dialog
}

}  // namespace
