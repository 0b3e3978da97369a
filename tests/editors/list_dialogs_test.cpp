// What the dialogs share, as tables over the dialogs: the name rules of the item editors, and insert,
// edit and delete in the lists through their nested editors; and the value lists' own rules.
#include <numeric>

#include "editor_fixture.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/psets/property_data_dlg.h"
#include "editors/psets/value_enum_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "editors/qsets/quantity_data_dlg.h"

using namespace orvane;
using namespace orvane::test;

namespace {

class Editors : public EditorTest {};

// The name box of each item editor, and what a new item needs besides a name to be accepted.
std::u16string& nameOf(CPropertiesOfSetDlg& d) { return d.nameText; }
std::u16string& nameOf(CQuantitiesOfSetDlg& d) { return d.nameText; }
std::u16string& nameOf(CListValuesDlg& d) { return d.nameText; }
std::u16string& nameOf(CValueEnumDlg& d) { return d.valueText; }
std::u16string& nameOf(CPropertyDataDlg& d) { return d.nameText; }
std::u16string& nameOf(CQuantityDataDlg& d) { return d.nameText; }
void ready(Dialog&) {}
void ready(CListValuesDlg& d) { d.type.elements.resize(1); }
void ready(CPropertyDataDlg& d) { d.defaultValueText = u"1"; }  // a new property is an Integer

// Editing siblings "Losas" and "Muros": no name, or another's in any case, is refused; an item keeps its own.
template <class D, class Open>
void nameRules(ScriptedServices& s, Open open, const char16_t* empty, const char16_t* clash) {
  SCOPED_TRACE(typeid(D).name());
  s.messages.clear();
  for (auto [mode, name, accepted] : {std::tuple{kNewItem, u"", false}, {kNewItem, u"MUROS", false},
                                      {kEditItem, u"muros", true}, {kEditItem, u"LOSAS", false}}) {
    D dlg = open(mode);
    dlg.start();
    nameOf(dlg) = name;
    dlg.ok();
    EXPECT_EQ(dlg.ended(), accepted) << "mode " << mode << ", name of " << std::char_traits<char16_t>::length(name);
  }
  EXPECT_EQ(s.messages, (Texts{empty, clash, clash}));
}

TEST_F(Editors, ItemNamesAreGivenAndDifferFromTheirSiblingsInAnyCase) {
  const std::vector sets{makeSet("Losas"), makeSet("Muros")};
  const std::vector qsets{makeQuantitySet("Losas"), makeQuantitySet("Muros")};
  const CIfcPropertySet owner = makeSet("S", {makeProperty("Losas"), makeProperty("Muros")});
  const CIfcQuantitySet qowner = makeQuantitySet("S", {makeQuantity("Losas"), makeQuantity("Muros")});
  nameRules<CPropertiesOfSetDlg>(services, [&](int m) { return CPropertiesOfSetDlg(services, m, sets[m], {}, &sets, nullptr); },
                                 u"Debe dar un nombre al conjunto", u"Ya existe un conjunto con ese nombre");
  nameRules<CQuantitiesOfSetDlg>(services, [&](int m) { return CQuantitiesOfSetDlg(services, m, qsets[m], &qsets, {}, {}); },
                                 u"Debe de introducir un nombre válido", u"Conjunto de Propiedades existe en la lista");
  nameRules<CPropertyDataDlg>(services, [&](int m) { return CPropertyDataDlg(services, m, owner.properties[m], {}, &owner, nullptr); },
                              u"Debe dar un nombre a la propiedad", u"Ya existe una propiedad con ese nombre");
  nameRules<CQuantityDataDlg>(services, [&](int m) { return CQuantityDataDlg(services, m, qowner.quantities[m], &qowner, {}); },
                              u"Debe de introducir un nombre válido", u"Propiedad existente en la lista");
}

struct ListRules {
  int nameColumn;
  bool sorted, asks, insertClears;  // kept sorted by name; Delete asks first; Insert leaves no row current
  const char16_t* clash;            // the refusal of a sibling's name in other case; null when none
};

// On rows "B", "D", "F": Delete without a current row does nothing; Insert adds "e"; Edit opens the
// current row, refuses "d" and renames the row "G"; Delete asks where the list does.
template <class Nested, class D>
void listOperations(ScriptedServices& s, D dlg, ListViewState D::*list, ListRules rules) {
  SCOPED_TRACE(typeid(D).name());
  s.messages.clear();
  s.questions.clear();
  const auto names = [&] { return column(dlg.*list, rules.nameColumn); };
  dlg.start();
  dlg.remove();
  dlg.selectRow(0);
  s.expectDialog<Nested>([](Nested& n) { nameOf(n) = u"e"; ready(n); n.ok(); });
  dlg.insert();
  EXPECT_EQ(names(), rules.sorted ? (Texts{u"B", u"D", u"e", u"F"}) : (Texts{u"B", u"D", u"F", u"e"}));
  EXPECT_EQ(dlg.currentRow, rules.insertClears ? -1 : 0);
  EXPECT_EQ((dlg.*list).revealRow, rules.insertClears ? -1 : 0);
  dlg.selectRow(0);
  if (rules.clash != nullptr) {
    s.expectDialog<Nested>([](Nested& n) { nameOf(n) = u"d"; n.ok(); });
    dlg.edit();
    EXPECT_EQ(s.messages, Texts{rules.clash});
  }
  s.expectDialog<Nested>([](Nested& n) { EXPECT_EQ(nameOf(n), u"B"); nameOf(n) = u"G"; n.ok(); });
  dlg.edit();
  const Texts edited = names();
  EXPECT_EQ(edited, rules.sorted ? (Texts{u"D", u"e", u"F", u"G"}) : (Texts{u"G", u"D", u"F", u"e"}));
  // The current row keeps its number after a sort; a cancelled editor changes nothing.
  s.expectDialog<Nested>([&](Nested& n) { EXPECT_EQ(nameOf(n), edited[0]); nameOf(n) = u"X"; n.cancel(); });
  dlg.edit();
  if (rules.asks) s.answers = {false, true};
  dlg.selectRow(1);
  dlg.remove();
  if (rules.asks) dlg.remove();
  EXPECT_EQ(names(), (Texts{edited[0], edited[2], edited[3]}));
  EXPECT_EQ(s.questions, Texts(rules.asks ? 2 : 0, kConfirmDelete));
  EXPECT_EQ((dlg.*list).revealRow, 1);
}

TEST_F(Editors, ListsInsertEditAndDeleteThroughTheirNestedEditors) {
  listOperations<CPropertiesOfSetDlg>(services, CPropertiesSetDlg(services, {makeSet("B"), makeSet("D"), makeSet("F")}, {}),
                                      &CPropertiesSetDlg::sets, {0, true, true, false, u"Ya existe un conjunto con ese nombre"});
  listOperations<CQuantitiesOfSetDlg>(
      services, CPropertiesSetDlg(services, std::vector{makeQuantitySet("B"), makeQuantitySet("D"), makeQuantitySet("F")}, {}, {}),
      &CPropertiesSetDlg::sets, {0, true, true, false, u"Conjunto de Propiedades existe en la lista"});
  listOperations<CListValuesDlg>(services, CListEnumsDlg(services, {makeEnum("B", {{1, "x"}}), makeEnum("D", {}), makeEnum("F", {})}),
                                 &CListEnumsDlg::types, {0, true, true, true, nullptr});
  listOperations<CValueEnumDlg>(services, CListValuesDlg(services, makeEnum("T", {{1, "B"}, {2, "D"}, {3, "F"}}), true),
                                &CListValuesDlg::values, {1, false, true, true, u"Elemento repetido"});
  listOperations<CPropertyDataDlg>(
      services, CPropertiesOfSetDlg(services, kEditItem, makeSet("S", {makeProperty("B"), makeProperty("D"), makeProperty("F")}), {}, nullptr, nullptr),
      &CPropertiesOfSetDlg::properties, {0, false, false, false, u"Ya existe una propiedad con ese nombre"});
  listOperations<CQuantityDataDlg>(
      services, CQuantitiesOfSetDlg(services, kEditItem, makeQuantitySet("S", {makeQuantity("B"), makeQuantity("D"), makeQuantity("F")}), nullptr, {}, {}),
      &CQuantitiesOfSetDlg::quantities, {0, false, false, false, u"Propiedad existente en la lista"});
}

TEST_F(Editors, AValueListNeedsANameAValueAndWhenPickingAChosenOne) {
  CListValuesDlg picker(services, CIfcEnum(), false);
  picker.start();
  picker.ok();
  picker.nameText = u"Colores";
  picker.ok();
  picker.type.elements = makeEnum("", {{1, "Rojo"}}).elements;
  picker.ok();
  picker.selectRow(1);  // past the end: none chosen
  picker.ok();
  EXPECT_EQ(services.messages, (Texts{u"Debe de introducir un nombre válido", u"Debe de existir al menos un elemento",
                                      u"Debe seleccionar un elemento", u"Debe seleccionar un elemento"}));
  picker.selectRow(0);
  picker.ok();
  EXPECT_EQ(picker.result(), kDialogOk);
  EXPECT_STREQ(picker.type.name, "Colores");
  CListValuesDlg editor(services, makeEnum("Colores", {{1, "Rojo"}}), true);
  editor.start();
  editor.ok();
  EXPECT_EQ(editor.result(), kDialogOk);
  CValueEnumDlg value(services, CIfcNodoEnum());
  value.start();
  EXPECT_EQ(value.caption, u"Valor de la lista");
  value.codeText = u"abc";  // read like atoi
  value.valueText = u"Año";
  value.ok();
  EXPECT_EQ(value.value.value, 0);
  EXPECT_STREQ(value.value.text, "A\xC3\xB1o");
}

TEST_F(Editors, SaveAsRecordsAtMostAHundredRows) {
  CPropertiesSetDlg dlg(services, {makeSet("A")}, {});
  std::vector<int> many(150);
  std::iota(many.begin(), many.end(), 0);
  dlg.saveAs(many);
  EXPECT_EQ(dlg.selection.count, 100);
  EXPECT_EQ(dlg.selection.rows[99], 99);
  dlg.saveAs({3, 5});
  EXPECT_EQ(std::vector<int>(dlg.selection.rows.begin(), dlg.selection.rows.begin() + 3), (std::vector<int>{3, 5, -1}));
}

}  // namespace
