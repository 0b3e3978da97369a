// The assignment editors: property values in the grid, and quantity sets with the host's values.
#include "editors/assign/property_assign_dlg.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"
#include "editor_fixture.h"

using namespace orvane;
using namespace orvane::test;

namespace {

std::vector<std::u16string> column(const GridModel& grid, int c) {
  std::vector<std::u16string> out;
  for (int r = 0; r < grid.rowCount(); ++r) out.push_back(grid.cell(r, c).text);
  return out;
}

class PropertyAssignment : public EditorTest {
 protected:
  CPropiedadesObjetosIFCDlg open(std::vector<CIfcPropertySet> assigned) {
    CPropiedadesObjetosIFCDlg dlg(services, definitions, enums, assigned);
    dlg.start();
    return dlg;
  }
  static CIfcPropertySet wallValues() {
    CIfcPropertyName count = makeProperty("Huecos", PropertyInteger);
    count.intValue = 7;
    CIfcPropertyName height = makeProperty("Altura", PropertyReal);
    height.realValue = 1;
    CIfcPropertyName finish = makeProperty("Acabado", PropertyEnumerated, "Liso");
    setText(finish.enumName, "acabados");
    CIfcPropertyName bearing = makeProperty("Portante", PropertyBoolean);
    CIfcPropertyName built = makeProperty("Fecha", PropertyDateTime, "2026");
    CIfcPropertyName axis = makeProperty("Eje", PropertyString, "Eje.PK$");
    CIfcPropertyName lost = makeProperty("Color", PropertyEnumerated, "Rojo");
    setText(lost.enumName, "SinTipo");
    return makeSet("Muros", {count, height, finish, bearing, built, axis, lost});
  }

  std::vector<CIfcPropertySet> definitions{makeSet("Losas"), makeSet("Muros", {makeProperty("Altura")})};
  std::vector<CIfcEnum> enums{makeEnum("Acabados", {{1, "Viejo"}}), makeEnum("ACABADOS", {{1, "Liso"}, {2, "Rugoso"}})};
};

TEST_F(PropertyAssignment, WithoutAssignedSetsOnlyTheHeaderShows) {
  CPropiedadesObjetosIFCDlg dlg = open({});
  EXPECT_EQ(dlg.caption, u"Asignación de Propiedades a Objetos IFC");
  EXPECT_EQ(dlg.valuesFrame, u"Asignación de Propiedades - Valores");
  EXPECT_FALSE(dlg.excelVisible);
  EXPECT_TRUE(dlg.sets.rows.empty());
  EXPECT_FALSE(dlg.sets.fitColumnsToContents);  // the columns keep half the width each
  ASSERT_EQ(dlg.grid.rowCount(), 1);
  EXPECT_EQ(dlg.grid.columnCount(), 4);
  EXPECT_EQ(dlg.grid.fixedRowCount(), 1);
  EXPECT_EQ(dlg.grid.cell(0, 3).text, u"Valor");
  EXPECT_EQ(dlg.grid.cell(0, 0).background, kHeaderGrey);
  EXPECT_EQ(dlg.grid.defaultBackground, kLightYellow);
}

TEST_F(PropertyAssignment, TheGridShowsEachTypeAsTheHostExpects) {
  CPropiedadesObjetosIFCDlg dlg = open({makeSet("Vacio"), wallValues()});
  dlg.chooseSet(0);
  EXPECT_EQ(dlg.grid.rowCount(), 1);  // a set without properties
  dlg.chooseSet(1);
  ASSERT_EQ(dlg.grid.rowCount(), 8);
  EXPECT_EQ(column(dlg.grid, 2), (std::vector<std::u16string>{u"Tipo", u"Entero", u"Real", u"Lista", u"Lista",
                                                               u"Lista", u"String", u"Lista"}));
  EXPECT_EQ(column(dlg.grid, 3), (std::vector<std::u16string>{u"Valor", u"7", u"1.000", u"Liso", u"Lista", u"Lista",
                                                               u"Eje.PK$", u"Rojo"}));
  EXPECT_TRUE(dlg.grid.cell(1, 0).readOnly);
  EXPECT_FALSE(dlg.grid.cell(1, 3).readOnly);
  EXPECT_TRUE(dlg.grid.cell(6, 3).readOnly);  // a reference
  EXPECT_EQ(dlg.grid.cell(1, 3).background, kWhite);
  // The drop-down takes the last type of that name; a missing type gives no choices.
  EXPECT_TRUE(dlg.grid.cell(3, 3).dropDown);
  EXPECT_EQ(dlg.grid.cell(3, 3).choices, (std::vector<std::u16string>{u"Liso", u"Rugoso"}));
  EXPECT_TRUE(dlg.grid.cell(7, 3).dropDown);
  EXPECT_TRUE(dlg.grid.cell(7, 3).choices.empty());
}

TEST_F(PropertyAssignment, InPlaceEditsStoreByType) {
  CPropiedadesObjetosIFCDlg dlg = open({wallValues()});
  dlg.chooseSet(0);
  dlg.endEdit(1, 3, u"12abc");
  EXPECT_EQ(dlg.assignedSets[0].properties[0].intValue, 12);
  EXPECT_EQ(dlg.grid.cell(1, 3).text, u"12");
  dlg.endEdit(2, 3, u"2.5");
  EXPECT_DOUBLE_EQ(dlg.assignedSets[0].properties[1].realValue, 2.5);
  EXPECT_EQ(dlg.grid.cell(2, 3).text, u"2.500");
  dlg.endEdit(3, 3, u"Rugoso");
  EXPECT_STREQ(dlg.assignedSets[0].properties[2].textValue, "Rugoso");
  dlg.endEdit(4, 3, u"Sí");
  dlg.endEdit(5, 3, u"2030");
  EXPECT_EQ(dlg.assignedSets[0].properties[3].intValue, 0);
  EXPECT_STREQ(dlg.assignedSets[0].properties[4].textValue, "2026");
  dlg.endEdit(1, 1, u"otra");  // only the value column counts
  EXPECT_STREQ(dlg.assignedSets[0].properties[0].description, "");
}

TEST_F(PropertyAssignment, ANumberEditLeavesAnExistingTextShowing) {
  CIfcPropertyName ref = makeProperty("Alto", PropertyInteger, "Eje.Cota$");
  CPropiedadesObjetosIFCDlg dlg = open({makeSet("S", {ref})});
  dlg.chooseSet(0);
  dlg.endEdit(1, 3, u"5");
  EXPECT_EQ(dlg.assignedSets[0].properties[0].intValue, 5);
  EXPECT_EQ(dlg.grid.cell(1, 3).text, u"Eje.Cota$");
}

TEST_F(PropertyAssignment, ADoubleClickConfirmingALiteralStoresItsText) {
  CPropiedadesObjetosIFCDlg dlg = open({wallValues()});
  dlg.chooseSet(0);
  services.expectDialog<CPropiedadesObjetosValorIFCDlg>([](CPropiedadesObjetosValorIFCDlg& d) {
    EXPECT_EQ(d.valueText, u"1.000");
    EXPECT_EQ(d.mode, kLiteralText);
    d.ok();
  });
  dlg.doubleClick(2, 3);
  EXPECT_STREQ(dlg.assignedSets[0].properties[1].textValue, "1.000");
  dlg.endEdit(2, 3, u"9");  // from now on the text shows instead of the number
  EXPECT_EQ(dlg.grid.cell(2, 3).text, u"1.000");
}

TEST_F(PropertyAssignment, AReferenceChangesOnlyThroughTheValueEditor) {
  CPropiedadesObjetosIFCDlg dlg = open({wallValues()});
  dlg.catalogue.groups.resize(1);
  setText(dlg.catalogue.groups[0].name, "Eje");
  dlg.catalogue.groups[0].variables.resize(2);
  setText(dlg.catalogue.groups[0].variables[0].name, "PK");
  setText(dlg.catalogue.groups[0].variables[1].name, "Cota");
  dlg.chooseSet(0);
  services.expectDialog<CPropiedadesObjetosValorIFCDlg>([](CPropiedadesObjetosValorIFCDlg& d) {
    EXPECT_EQ(d.mode, kHostVariable);
    EXPECT_EQ(d.variables.selected, 0);
    d.chooseVariable(1);
    d.ok();
  });
  dlg.doubleClick(6, 3);
  EXPECT_STREQ(dlg.assignedSets[0].properties[5].textValue, "Eje.Cota$");
  EXPECT_EQ(dlg.grid.cell(6, 3).text, u"Eje.Cota$");
  dlg.doubleClick(0, 3);  // the header row does not count
  dlg.doubleClick(3, 0);  // nor the first column
}

TEST_F(PropertyAssignment, InsertingTakesTheChosenDefinitionOnce) {
  CPropiedadesObjetosIFCDlg dlg = open({makeSet("losas")});
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    list.selectRow(0);  // Losas: already assigned as "losas"
    list.ok();
  });
  dlg.insert();
  EXPECT_EQ(dlg.assignedSets.size(), 1u);
  services.expectDialog<CPropertiesSetDlg>([this](CPropertiesSetDlg& list) {
    services.expectDialog<CPropertiesOfSetDlg>([](CPropertiesOfSetDlg& set) { set.nameText = u"Aceras"; set.ok(); });
    list.insert();
    list.selectRow(2);  // Muros, after the sort
    list.ok();
  });
  dlg.insert();
  ASSERT_EQ(dlg.setDefinitions.size(), 3u);
  EXPECT_STREQ(dlg.setDefinitions[0].name, "Aceras");
  ASSERT_EQ(dlg.assignedSets.size(), 2u);
  EXPECT_STREQ(dlg.assignedSets[1].name, "Muros");
  EXPECT_EQ(dlg.assignedSets[1].properties.size(), 1u);
  EXPECT_EQ(dlg.sets.rows.size(), 2u);
  EXPECT_EQ(dlg.selectedSet, -1);
  // The set chosen is assigned even when the list is cancelled; what else was done there is not kept.
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    list.selectRow(0);  // Aceras
    list.propertySets.pop_back();
    list.cancel();
  });
  dlg.insert();
  EXPECT_EQ(dlg.setDefinitions.size(), 3u);
  ASSERT_EQ(dlg.assignedSets.size(), 3u);
  EXPECT_STREQ(dlg.assignedSets[2].name, "Aceras");
}

TEST_F(PropertyAssignment, DeletingNeedsAChosenSetAndLeavesTheHeader) {
  CPropiedadesObjetosIFCDlg dlg = open({wallValues()});
  dlg.remove();
  EXPECT_EQ(dlg.assignedSets.size(), 1u);
  dlg.chooseSet(0);
  dlg.remove();
  EXPECT_TRUE(dlg.assignedSets.empty());
  EXPECT_EQ(dlg.selectedSet, -1);
  EXPECT_EQ(dlg.grid.rowCount(), 1);
  EXPECT_TRUE(services.questions.empty());
}

class QuantityAssignment : public EditorTest {
 protected:
  CCuantificadoresObjetosIFCDlg open(const char* kind, std::vector<double> values) {
    hostValues = std::move(values);
    CCuantificadoresObjetosIFCDlg dlg(services, definitions, {}, kind, hostValues.data(),
                                      static_cast<int32_t>(hostValues.size()));
    dlg.start();
    return dlg;
  }
  void pick(int row) {
    services.expectDialog<CPropertiesSetDlg>([row](CPropertiesSetDlg& list) {
      EXPECT_TRUE(list.quantityMode());
      list.selectRow(row);
      list.ok();
    });
  }
  std::vector<CIfcQuantitySet> definitions{
      makeQuantitySet("Losas", {makeQuantity("Oculta", LengthMeasure, 1, false)}),
      makeQuantitySet("Muros", {makeQuantity("A", AreaMeasure, 1), makeQuantity("B", AreaMeasure, 2, false),
                                makeQuantity("C", LengthMeasure, 3), makeQuantity("D", VolumeMeasure, 4.25)})};
  std::vector<double> hostValues;
};

TEST_F(QuantityAssignment, AxesAndSurfacesTakeTheHostValuesInOrder) {
  CCuantificadoresObjetosIFCDlg dlg = open("superficie", {10, 20});
  pick(1);
  dlg.insert();
  ASSERT_EQ(dlg.assignments.size(), 1u);
  const auto& q = dlg.assignments[0].quantities;
  ASSERT_EQ(q.size(), 3u);  // B is not exported
  EXPECT_DOUBLE_EQ(q[0].value, 10);
  EXPECT_DOUBLE_EQ(q[1].value, 20);
  EXPECT_DOUBLE_EQ(q[2].value, 4.25);
  dlg.chooseSet(0);
  EXPECT_EQ(column(dlg.grid, 3), (std::vector<std::u16string>{u"Valor", u"10.000", u"20.000", u"4.250"}));
  EXPECT_EQ(column(dlg.grid, 2), (std::vector<std::u16string>{u"Tipo", u"IfcAreaMeasure", u"IfcLengthMeasure",
                                                               u"IfcVolumeMeasure"}));
  EXPECT_TRUE(dlg.grid.cell(1, 3).readOnly);
}

TEST_F(QuantityAssignment, OtherKindsKeepTheDefinedValues) {
  CCuantificadoresObjetosIFCDlg dlg = open("Otro", {10, 20, 30, 40});
  pick(1);
  dlg.insert();
  ASSERT_EQ(dlg.assignments.size(), 1u);
  EXPECT_DOUBLE_EQ(dlg.assignments[0].quantities[0].value, 1);
  EXPECT_DOUBLE_EQ(dlg.assignments[0].quantities[1].value, 3);
}

TEST_F(QuantityAssignment, SetsWithoutExportedQuantitiesOrAlreadyAssignedAreRefused) {
  CCuantificadoresObjetosIFCDlg dlg = open("Eje", {5});
  pick(0);
  dlg.insert();
  EXPECT_TRUE(dlg.assignments.empty());
  pick(1);
  dlg.insert();
  pick(1);
  dlg.insert();
  EXPECT_EQ(dlg.assignments.size(), 1u);
  EXPECT_DOUBLE_EQ(dlg.assignments[0].quantities[0].value, 5);
  EXPECT_DOUBLE_EQ(dlg.assignments[0].quantities[1].value, 3);  // one host value only
  EXPECT_TRUE(services.messages.empty());
}

TEST_F(QuantityAssignment, TheListEditorGetsTheFileTypesAndObjects) {
  std::vector<CIfcType> types(3);
  for (int i = 0; i < 3; ++i) setText(types[i].name, QuantityMeasureNames[i]);
  std::vector<CIfcObject> objects(1);
  setText(objects[0].name, "Eje");
  CCuantificadoresObjetosIFCDlg dlg(services, definitions, {}, "Eje", nullptr, 0, types, objects);
  dlg.start();
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_EQ(list.types.size(), 3u);
    EXPECT_EQ(list.objects.size(), 1u);
    list.cancel();
  });
  dlg.insert();
}

TEST_F(QuantityAssignment, DeletingLeavesOnlyTheHeader) {
  CCuantificadoresObjetosIFCDlg dlg = open("Eje", {});
  pick(1);
  dlg.insert();
  dlg.chooseSet(0);
  EXPECT_EQ(dlg.grid.rowCount(), 4);
  dlg.remove();
  EXPECT_TRUE(dlg.assignments.empty());
  EXPECT_EQ(dlg.grid.rowCount(), 1);
  EXPECT_TRUE(dlg.sets.rows.empty());
}

}  // namespace
