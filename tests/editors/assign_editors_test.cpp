// The assignment editors: property values in the grid, and quantity sets with the host's values.
#include "editor_fixture.h"
#include "editors/assign/property_assign_dlg.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"

using namespace orvane;
using namespace orvane::test;

namespace {

using orvane::test::column;
Texts column(const GridModel& grid, int c) {
  Texts out;
  for (int r = 0; r < grid.rowCount(); ++r) out.push_back(grid.cell(r, c).text);
  return out;
}

class PropertyAssignment : public EditorTest {
 protected:
  CPropiedadesObjetosIFCDlg open(std::vector<CIfcPropertySet> assigned) {
    CPropiedadesObjetosIFCDlg dlg(services, definitions, enums, assigned);
    dlg.start();
    dlg.chooseSet(0);
    return dlg;
  }
  static CIfcPropertySet wallValues() {
    CIfcPropertyName count = makeProperty("Huecos", PropertyInteger), height = makeProperty("Altura", PropertyReal);
    count.intValue = 7;
    height.realValue = 1;
    CIfcPropertyName finish = makeProperty("Acabado", PropertyEnumerated, "Liso");
    setText(finish.enumName, "acabados");
    CIfcPropertyName lost = makeProperty("Color", PropertyEnumerated, "Rojo");
    setText(lost.enumName, "SinTipo");
    return makeSet("Muros", {count, height, finish, makeProperty("Portante", PropertyBoolean),
                             makeProperty("Fecha", PropertyDateTime, "2026"),
                             makeProperty("Eje", PropertyString, "Eje.PK$"), lost,
                             makeProperty("Alto", PropertyInteger, "Eje.Cota$")});
  }
  std::vector<CIfcPropertySet> definitions{makeSet("Losas"), makeSet("Muros", {makeProperty("Altura")})};
  std::vector<CIfcEnum> enums{makeEnum("Acabados", {{1, "Viejo"}}), makeEnum("ACABADOS", {{1, "Liso"}, {2, "Rugoso"}})};
};

// The grid names the types without a value of their own "Lista"; a drop-down offers the values of
// the last type of its name, or none. Only the value column is edited, as its type reads the text;
// Boolean and date values are not, and a number edit leaves a text the property holds showing.
TEST_F(PropertyAssignment, TheGridShowsAndEditsEachTypeAsTheHostExpects) {
  CPropiedadesObjetosIFCDlg dlg = open({wallValues()});
  EXPECT_EQ(dlg.grid.defaultBackground, kLightYellow);
  EXPECT_EQ(column(dlg.grid, 2),
            (Texts{u"Tipo", u"Entero", u"Real", u"Lista", u"Lista", u"Lista", u"String", u"Lista", u"Entero"}));
  EXPECT_EQ(dlg.grid.cell(3, 3).choices, (Texts{u"Liso", u"Rugoso"}));
  EXPECT_TRUE(dlg.grid.cell(7, 3).dropDown && dlg.grid.cell(7, 3).choices.empty());
  for (auto [row, text] :
       {std::pair{1, u"12abc"}, {2, u"2.5"}, {3, u"Rugoso"}, {4, u"Sí"}, {5, u"2030"}, {8, u"5"}, {0, u"x"}})
    dlg.endEdit(row, 3, text);
  dlg.endEdit(1, 1, u"otra");
  EXPECT_EQ(column(dlg.grid, 3),
            (Texts{u"Valor", u"12", u"2.500", u"Rugoso", u"Lista", u"Lista", u"Eje.PK$", u"Rojo", u"Eje.Cota$"}));
  const std::vector<CIfcPropertyName>& p = dlg.assignedSets[0].properties;
  EXPECT_STREQ(p[4].textValue, "2026");
  EXPECT_EQ(p[7].intValue, 5);
  EXPECT_STREQ(p[0].description, "");
}

// A double click on a value opens the chooser on the value shown and the catalogue; the header row
// and the first column do nothing.
TEST_F(PropertyAssignment, ADoubleClickOnAValueOpensTheChooserOnIt) {
  CPropiedadesObjetosIFCDlg dlg = open({wallValues()});
  setText(dlg.catalogue.groups.emplace_back().name, "Eje");
  for (const char* name : {"PK", "Cota"}) setText(dlg.catalogue.groups[0].variables.emplace_back().name, name);
  services.expectDialog<CPropiedadesObjetosValorIFCDlg>([](CPropiedadesObjetosValorIFCDlg& d) {
    EXPECT_EQ(d.valueText, u"1.000");
    EXPECT_EQ(d.groups.entries.size(), 1u);
    d.ok();
  });
  for (auto [row, column] : {std::pair{2, 3}, {0, 3}, {3, 0}}) dlg.doubleClick(row, column);
  EXPECT_STREQ(dlg.assignedSets[0].properties[1].textValue, "1.000");
}

// The set chosen is assigned once, even when the list is cancelled; what else was done in a
// cancelled list is not kept.
TEST_F(PropertyAssignment, InsertingAssignsTheChosenDefinitionOnce) {
  CPropiedadesObjetosIFCDlg dlg = open({makeSet("losas")});
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.selectRow(0); list.ok(); });
  dlg.insert();
  services.expectDialog<CPropertiesSetDlg>([this](CPropertiesSetDlg& list) {
    services.expectDialog<CPropertiesOfSetDlg>([](CPropertiesOfSetDlg& set) { set.nameText = u"Aceras"; set.ok(); });
    list.insert();
    list.selectRow(2);  // Muros, after the sort
    list.ok();
  });
  dlg.insert();
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    list.selectRow(0);
    list.propertySets.pop_back();
  });
  dlg.insert();
  EXPECT_EQ(dlg.setDefinitions.size(), 3u);
  ASSERT_EQ(column(dlg.sets, 0), (Texts{u"losas", u"Muros", u"Aceras"}));
  EXPECT_EQ(dlg.assignedSets[1].properties.size(), 1u);
  dlg.remove();
  EXPECT_EQ(column(dlg.sets, 0), (Texts{u"Muros", u"Aceras"}));
  EXPECT_EQ(dlg.grid.rowCount(), 1);
  dlg.remove();  // no set chosen
  EXPECT_EQ(dlg.assignedSets.size(), 2u);
}

// Axes and surfaces take the host's values for the first exported quantities, in order; sets with
// nothing exported, or already assigned, are refused. The list gets the document's kinds and elements.
TEST_F(EditorTest, AssignedQuantitiesTakeTheHostsValuesOnAxesAndSurfaces) {
  const std::vector definitions{
      makeQuantitySet("Losas", {makeQuantity("Oculta", LengthMeasure, 1, false)}),
      makeQuantitySet("Muros", {makeQuantity("A", AreaMeasure, 1), makeQuantity("B", AreaMeasure, 2, false),
                                makeQuantity("C", LengthMeasure, 3), makeQuantity("D", VolumeMeasure, 4.25)})};
  const double values[] = {10, 20, 30, 40};
  for (auto [kind, count, expected] : {std::tuple{"superficie", 2, Texts{u"Valor", u"10.000", u"20.000", u"4.250"}},
                                       {"Eje", 1, Texts{u"Valor", u"10.000", u"3.000", u"4.250"}},
                                       {"Otro", 4, Texts{u"Valor", u"1.000", u"3.000", u"4.250"}}}) {
    SCOPED_TRACE(kind);
    CCuantificadoresObjetosIFCDlg dlg(services, definitions, {}, kind, values, count, namedRecords<CIfcType>({"T"}),
                                      namedRecords<CIfcObject>({"O"}));
    dlg.start();
    for (int row : {0, 1, 1}) {
      services.expectDialog<CPropertiesSetDlg>([row](CPropertiesSetDlg& list) {
        EXPECT_EQ(list.types.size() + list.objects.size(), 2u);
        list.selectRow(row);
        list.ok();
      });
      dlg.insert();
    }
    ASSERT_EQ(dlg.assignments.size(), 1u);
    dlg.chooseSet(0);
    EXPECT_EQ(column(dlg.grid, 3), expected);
  }
}

}  // namespace
