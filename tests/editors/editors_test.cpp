// The editor dialogs behind scripted services, then the entry points on real files. First a table
// over the lists' insert, edit and delete through their nested editors with each editor's name
// rules; then what each dialog adds: value lists, one property's data, the chooser of a host
// variable, a set's rows, the CSV import, the quantity-set editors and the two assignment editors.
#include <filesystem>
#include <numeric>
#include <sys/stat.h>
#include <unistd.h>

#include "editor_fixture.h"
#include "editors/assign/property_assign_dlg.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/common/text_codec.h"
#include "editors/entry_points.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/psets/value_enum_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"
#include "editors/qsets/quantity_data_dlg.h"
#include "support/documents.h"
#include "support/outline.h"

using namespace orvane;
using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

// What a new item needs besides a name to be accepted.
void ready(Dialog&) {}
void ready(CListValuesDlg& d) { d.type.elements.resize(1); }
void ready(CPropertyDataDlg& d) { d.defaultValueText = u"1"; }  // a new property is an Integer

struct ListRules {
  int nameColumn;
  bool sorted, asks, insertClears;  // kept sorted by name; Delete asks first; Insert leaves no row current
  bool editorKnowsSiblings;         // the item editor refuses a sibling's name itself, for new items too
  const char16_t *empty, *clash;    // the refusals of no name and of a sibling's name in other case
};

// On rows "B", "D", "F": Delete without a current row does nothing. Insert refuses no name (and a
// sibling's name where the item editor knows them), then adds "e". Edit opens the current row,
// refuses "d", keeps the row's own name in other case, and renames it "G". Delete asks where the
// list does.
template <class Nested, class D>
void listOperations(ScriptedServices& s, D dlg, ListViewState D::*list, std::u16string Nested::*name, ListRules rules) {
  SCOPED_TRACE(typeid(D).name());
  s.messages.clear();
  s.questions.clear();
  const auto names = [&] { return column(dlg.*list, rules.nameColumn); };
  dlg.start();
  dlg.remove();
  dlg.selectRow(0);
  s.expectDialog<Nested>([&](Nested& n) {
    for (const char16_t* text : {u"", rules.editorKnowsSiblings ? u"d" : u"e", u"e"}) {
      if (n.ended()) break;
      n.*name = text;
      ready(n);
      n.ok();
    }
  });
  dlg.insert();
  Texts refusals{rules.empty};
  if (rules.editorKnowsSiblings) refusals.push_back(rules.clash);
  EXPECT_EQ(s.messages, refusals);
  EXPECT_EQ(names(), rules.sorted ? (Texts{u"B", u"D", u"e", u"F"}) : (Texts{u"B", u"D", u"F", u"e"}));
  const int current = rules.insertClears ? -1 : 0;
  EXPECT_EQ(std::pair(dlg.currentRow, (dlg.*list).revealRow), std::pair(current, current));
  dlg.selectRow(0);
  if (rules.clash != nullptr) {
    s.expectDialog<Nested>([name](Nested& n) { n.*name = u"d"; n.ok(); });
    dlg.edit();
    refusals.push_back(rules.clash);
  }
  s.expectDialog<Nested>([name](Nested& n) { EXPECT_EQ(n.*name, u"B"); n.*name = u"b"; n.ok(); });
  s.expectDialog<Nested>([name](Nested& n) { EXPECT_EQ(n.*name, u"b"); n.*name = u"G"; n.ok(); });
  dlg.edit();
  dlg.edit();
  EXPECT_EQ(s.messages, refusals);
  const Texts edited = names();
  EXPECT_EQ(edited, rules.sorted ? (Texts{u"D", u"e", u"F", u"G"}) : (Texts{u"G", u"D", u"F", u"e"}));
  // The current row keeps its number after a sort; a cancelled editor changes nothing.
  s.expectDialog<Nested>([&](Nested& n) { EXPECT_EQ(n.*name, edited[0]); n.*name = u"X"; n.cancel(); });
  dlg.edit();
  if (rules.asks) s.answers = {false, true};
  dlg.selectRow(1);
  dlg.remove();
  if (rules.asks) dlg.remove();
  dlg.selectRow(3);
  dlg.remove();  // past the end: nothing
  EXPECT_EQ(names(), (Texts{edited[0], edited[2], edited[3]}));
  EXPECT_EQ(s.questions, Texts(rules.asks ? 2 : 0, kConfirmDelete));
}

TEST_F(EditorTest, ListsInsertEditAndDeleteThroughTheirNestedEditorsAndValueListsNeedAValue) {
  const char16_t* invalid = u"Debe de introducir un nombre válido";
  const auto properties = makeSet("S", {makeProperty("B"), makeProperty("D"), makeProperty("F")});
  const auto quantities = makeSet("S", {makeQuantity("B"), makeQuantity("D"), makeQuantity("F")});
  const auto qsets = namedRecords<CIfcQuantitySet>({"B", "D", "F"});
  listOperations(services, CPropertiesSetDlg(services, {makeSet("B"), makeSet("D"), makeSet("F")}, {}),
                 &CPropertiesSetDlg::sets, &CPropertiesOfSetDlg::nameText,
                 {0, true, true, false, true, u"Debe dar un nombre al conjunto",
                  u"Ya existe un conjunto con ese nombre"});
  listOperations(services, CPropertiesSetDlg(services, qsets, {}, {}), &CPropertiesSetDlg::sets,
                 &CQuantitiesOfSetDlg::nameText,
                 {0, true, true, false, true, invalid, u"Conjunto de Propiedades existe en la lista"});
  listOperations(services, CListEnumsDlg(services, {makeEnum("B", {{1, "x"}}), makeEnum("D", {}), makeEnum("F", {})}),
                 &CListEnumsDlg::types, &CListValuesDlg::nameText, {0, true, true, true, false, invalid, nullptr});
  listOperations(services, CListValuesDlg(services, makeEnum("T", {{1, "B"}, {2, "D"}, {3, "F"}}), true),
                 &CListValuesDlg::values, &CValueEnumDlg::valueText,
                 {1, false, true, true, false, u"La descripción no puede estar vacía", u"Elemento repetido"});
  listOperations(services, CPropertiesOfSetDlg(services, kEditItem, properties, {}, nullptr, nullptr),
                 &CPropertiesOfSetDlg::properties, &CPropertyDataDlg::nameText,
                 {0, false, false, false, true, u"Debe dar un nombre a la propiedad",
                  u"Ya existe una propiedad con ese nombre"});
  listOperations(services, CQuantitiesOfSetDlg(services, kEditItem, quantities, nullptr, {}, {}),
                 &CQuantitiesOfSetDlg::quantities, &CQuantityDataDlg::nameText,
                 {0, false, false, false, true, invalid, u"Propiedad existente en la lista"});
  // A value list needs a value and, when a value is being picked, a row that holds one; a new value
  // may not take another's code; a value's text is kept as UTF-8.
  services.messages.clear();
  auto picker = started(CListValuesDlg(services, makeEnum("Colores", {}), false));
  picker.ok();
  picker.type.elements.resize(1);
  services.expectDialog<CValueEnumDlg>([](CValueEnumDlg& d) { d.valueText = u"Azul"; d.ok(); });
  picker.insert();  // a new value's code, 0, is the other value's
  picker.selectRow(1);  // past the end: none chosen
  picker.ok();
  EXPECT_FALSE(picker.ended());
  EXPECT_EQ(services.messages, (Texts{u"Debe de existir al menos un elemento", u"Elemento repetido",
                                      u"Debe seleccionar un elemento"}));
  auto value = started(CValueEnumDlg(services, CIfcNodoEnum()));
  value.valueText = u"Año";
  value.ok();
  EXPECT_STREQ(value.value.text, "A\xC3\xB1o");
}

// A default value is needed by the types that have one, unless the property is optional; what is
// stored follows the type. A value list cancelled or out of range changes nothing; one edited
// changes the document's types.
TEST_F(EditorTest, PropertyDataStoresTheDefaultByTypeAndEditsValueListsInTheirOwnEditor) {
  const char16_t* missing = u"Falta el valor por defecto";
  for (auto [type, value, refusal, optional, text, number] : {std::tuple{PropertyInteger, u"", missing, false, "", 0},
        {PropertyInteger, u"12abc", nullptr, false, "12abc", 12}, {PropertyReal, u"", nullptr, true, "", 0},
        {PropertyString, u"", nullptr, false, "", 0}, {PropertyBoolean, u"", nullptr, false, "", 1}}) {  // ticked
    SCOPED_TRACE(type);
    services.messages.clear();
    auto dlg = started(CPropertyDataDlg(services, kNewItem, makeProperty("Nueva"), {}, nullptr, nullptr));
    dlg.changeType(type);
    dlg.defaultValueText = value;
    dlg.optionalChecked = optional;
    dlg.booleanChecked = true;
    dlg.ok();
    EXPECT_EQ(services.messages, refusal ? Texts{refusal} : Texts{});
    if (refusal != nullptr) continue;
    const CIfcPropertyName& p = dlg.property;
    EXPECT_EQ(std::tuple(p.valueType, std::string(p.textValue), p.intValue, p.realValue),
              std::tuple(type, std::string(text), number, 0.0));
  }
  CIfcPropertyName p = makeProperty("Color", PropertyEnumerated, "Rojo", "Otra");
  p.unit = 4;
  auto dlg = started(CPropertyDataDlg(services, kEditItem, p, {makeEnum("Colores", {{1, "Rojo"}})}, nullptr, nullptr));
  EXPECT_EQ(dlg.units.entries.at(dlg.units.selected), u"ºC");  // the unit table is ANSI text
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) { d.cancel(); });
  dlg.chooseValueList(0);
  dlg.chooseValueList(5);  // outside the list: no editor
  EXPECT_EQ(std::tuple(std::string(dlg.property.enumName), dlg.valueLists.selected), std::tuple("Otra", -1));
  setText(dlg.property.enumName, "COLORES");  // found in any case
  services.expectDialog<CListValuesDlg>([](CListValuesDlg& d) {
    EXPECT_TRUE(d.selectionNotRequired);
    d.descriptionText = u"D";
    d.ok();
  });
  dlg.editValueList();
  EXPECT_STREQ(dlg.enums[0].description, "D");
}

// A reference opens on its names (unknown ones on the first; the view test opens one on known names),
// a literal naming a group on that group; a pair too long for a reference, or no catalogue at all,
// leaves only the literal to accept.
TEST_F(EditorTest, TheValueChooserOpensOnAReferencesNamesAndMakesOnlyReferencesThatFit) {
  CConjuntoVariableZep catalogue;
  catalogue.groups = namedRecords<CZepGrupo>({"Eje", std::string(300, 'g').c_str()});
  catalogue.groups[0].variables = namedRecords<CZepVariable>({"PK", "Cota"});
  catalogue.groups[1].variables = namedRecords<CZepVariable>({std::string(300, 'v').c_str()});
  for (auto [value, mode, group, variable] : {std::tuple{"Muro.Alto$", kHostVariable, 0, 0},  // unknown: the first ones
                                              {"Eje.PK", kLiteralText, 0, 0}, {"", kLiteralText, -1, -1}}) {
    SCOPED_TRACE(value);
    auto dlg = started(CPropiedadesObjetosValorIFCDlg(services, value, catalogue));
    const bool namesEnabled = dlg.groups.enabled && dlg.variables.enabled && !dlg.valueTextEnabled;
    EXPECT_EQ(std::tuple(dlg.mode, dlg.valueText, dlg.groups.selected, dlg.variables.selected, namesEnabled),
              std::tuple(mode, fromUtf8(value), group, variable, mode == kHostVariable));
  }
  for (const CConjuntoVariableZep& source : {catalogue, CConjuntoVariableZep()}) {
    auto dlg = started(CPropiedadesObjetosValorIFCDlg(services, "Eje.PK$", source));
    dlg.chooseVariable(-1);
    dlg.ok();  // no variable
    dlg.chooseGroup(1);
    EXPECT_EQ(dlg.variables.selected, source.groups.empty() ? -1 : 0);  // a group chosen selects its first variable
    dlg.ok();
    EXPECT_FALSE(dlg.ended());
    dlg.chooseSource(kLiteralText);
    dlg.valueText += u"²";  // the literal is kept as typed, in UTF-8
    dlg.ok();
    EXPECT_EQ(std::tuple(dlg.result(), std::string(dlg.value)), std::tuple(kDialogOk, "Eje.PK$\xC2\xB2"));
  }
}

// A set's rows show every column of its properties. A value list made in the set's editor, and a
// value added to it while picking a property's default from it, reach the set list with the new set.
TEST_F(EditorTest, ASetsRowsShowItsPropertiesAndValueListsChangedBelowComeBackUp) {
  CIfcPropertyName ref = makeProperty("Alto", PropertyInteger, "$ALTO");
  ref.optional = true;
  ref.unit = 4;
  const CIfcPropertySet muros = makeSet("Muros", {makeProperty("Portante", PropertyBoolean, "", "", 2), ref,
                                                  makeProperty("Color", PropertyEnumerated, "Rojo", "Colores")});
  auto rows = started(CPropertiesOfSetDlg(services, kEditItem, muros, {}, nullptr, nullptr));
  EXPECT_EQ(rows.properties.rows, (std::vector<Texts>{{u"Portante", u"", u"Booleano", u"", u"false", u"No", u""},
                                                      {u"Alto", u"", u"Entero", u"", u"$ALTO", u"Sí", u"ºC"},
                                                      {u"Color", u"", u"Enumerado", u"Colores", u"Rojo", u"No", u""}}));
  auto dlg = started(CPropertiesSetDlg(services, {makeSet("Muros")}, {makeEnum("Colores", {{1, "Rojo"}})}));
  services.expectDialog<CPropertiesOfSetDlg>([this](CPropertiesOfSetDlg& set) {
    set.nameText = u"Carpintería";
    services.expectDialog<CListEnumsDlg>([](auto& d) { d.enums.push_back(makeEnum("Acabados", {{1, "L"}})); d.ok(); });
    set.editEnums();
    EXPECT_STREQ(set.set.name, "Carpinter\xC3\xAD" "a");  // taken before the nested editor opened
    services.expectDialog<CPropertyDataDlg>([this](CPropertyDataDlg& p) {
      p.nameText = u"Acabado";
      p.changeType(PropertyEnumerated);
      services.expectDialog<CListValuesDlg>([](CListValuesDlg& pick) {
        EXPECT_FALSE(pick.selectionNotRequired);
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
  const CIfcPropertyName& finish = dlg.propertySets[0].properties.at(0);
  EXPECT_EQ(std::tuple(dlg.enums.size(), dlg.enums.at(1).elements.size(), std::string(finish.enumName),
                       std::string(finish.textValue)), std::tuple(2u, 2u, "Acabados", "Barniz"));
}

// Each line "set;property;description;type[;value]" adds the property to the set of that name, made
// at the end when there is none, unless the set has it already; the line end stays in the last field.
// Long lines are read in pieces of 255 characters: "S;" and 253 p make two fields (skipped), then the
// other 147 p, "d", "Real" and "1" make a set. What is not a regular file is not read: a FIFO would
// block the open and /dev/zero never ends, so the alarm ends a run that hangs. A save-as records at
// most a hundred rows, the rest of its record filled with -1.
TEST_F(EditorTest, CsvLinesBecomeSetsOfRealOrTextPropertiesAndSaveAsRecordsAHundredRows) {
  TempDir dir;
  CPropertiesSetDlg dlg(services, {makeSet("Muros")}, {});
  dlg.documentFolder = u"/proyecto";
  dlg.start();
  ASSERT_EQ(::mkfifo(dir.file("pipe.csv").c_str(), 0600), 0);
  services.pickedFiles = {std::nullopt, u"/no/such/file.csv", fromUtf8(dir.file("pipe.csv")), u"/dev/zero",
                          fromUtf8(dir.write("sets.csv",
                                             "Muros;Altura;Altura libre;Real;2.75\r\n"
                                             "Muros;;Grosor;Texto\r\n"          // three fields: skipped
                                             "Muros;Acabado;Tipo;Texto;Liso\r\n"
                                             "muros;ALTURA;Repetida;Real;9\r\n"  // already in the set
                                             "Forjados;Canto;Canto total;real\n"  // "real" and a line end: text
                                             "S;" + std::string(400, 'p') + ";d;Real;1\n"
                                             "Zocalo;Alto;Alto;Real;0.1"))};    // no line end: left out
  ::alarm(20);
  for (int i = 0; i < 5; ++i) dlg.importCsv();
  ::alarm(0);
  std::vector<std::string> imported;  // "set: property (description) type text real"
  for (const CIfcPropertySet& set : dlg.propertySets)
    for (const CIfcPropertyName& p : set.properties)
      imported.push_back(std::string(set.name) + ": " + p.name + " (" + p.description + ") " +
                         std::to_string(p.valueType) + " " + p.textValue + " " + std::to_string(p.realValue));
  EXPECT_EQ(imported, (std::vector<std::string>{"Muros: Altura (Altura libre) 1  2.750000",
                                                "Muros: Acabado (Tipo) 2 Liso\n 0.000000",
                                                "Forjados: Canto (Canto total) 2  0.000000",
                                                std::string(147, 'p') + ": d (Real) 2  0.000000"}));
  EXPECT_EQ(column(dlg.sets, 0), (Texts{u"Muros", u"Forjados", std::u16string(147, u'p')}));
  const FilePickerOptions& picker = services.pickers.at(0);
  EXPECT_EQ(std::tie(picker.defaultExtension, picker.startFolder, picker.filters.at(1).pattern),
            std::tuple(u"csv", u"/proyecto", u"*.*"));
  std::vector<int> many(150);
  std::iota(many.begin(), many.end(), 0);
  dlg.saveAs(many);
  EXPECT_EQ(std::tuple(dlg.selection.count, dlg.selection.rows[99]), std::tuple(100, 99));
  dlg.saveAs({3, 5});
  EXPECT_EQ(std::vector<int>(dlg.selection.rows.begin(), dlg.selection.rows.begin() + 3), (std::vector<int>{3, 5, -1}));
}

// The list passes the document's kinds and host elements down; a set is linked to the element
// chosen, and unlinked when there are none; a kind outside the list is shown as none and kept.
// Assigned to axes and surfaces, sets take the host's values for their first exported quantities, in
// order; sets with nothing exported, or already assigned, are refused.
TEST_F(EditorTest, QuantitySetsKeepTheirKindsAndAssignedQuantitiesTakeTheHostsValuesOnAxesAndSurfaces) {
  const auto kinds = namedRecords<CIfcType>({"IfcLengthMeasure", "IfcAreaMeasure"});
  auto dlg = started(CPropertiesSetDlg(services, namedRecords<CIfcQuantitySet>({"Muros"}), kinds,
                                       namedRecords<CIfcObject>({"Eje", "Superficie"})));
  services.expectDialog<CQuantitiesOfSetDlg>([this](CQuantitiesOfSetDlg& set) {
    set.nameText = u"Ejes";
    set.linkedElement.selected = 0;
    services.expectDialog<CQuantityDataDlg>([](CQuantityDataDlg& q) { q.nameText = u"L"; q.changeKind(1); q.ok(); });
    set.insert();
    set.ok();
  });
  dlg.insert();
  EXPECT_EQ(dlg.sets.rows.at(0), (Texts{u"Ejes", u"", u"Eje"}));
  EXPECT_EQ(dlg.quantitySets[0].quantities.at(0).measureType, AreaMeasure);
  CIfcQuantitySet linked = makeSet("S", {makeQuantity("Rara", 3, 0, false)});
  setText(linked.typeZep, "Viejo");
  auto set = started(CQuantitiesOfSetDlg(services, kEditItem, linked, nullptr, kinds, {}));
  EXPECT_EQ(set.quantities.rows[0], (Texts{u"Rara", u"", u"", u"No"}));
  set.ok();
  EXPECT_STREQ(set.set.typeZep, "");
  auto outside = started(CQuantityDataDlg(services, kEditItem, makeQuantity("Q", 7), nullptr, kinds));
  outside.ok();
  EXPECT_EQ(std::pair(outside.kinds.selected, outside.quantity.measureType), std::pair(-1, 7));
  outside.nameText.clear();
  outside.changeKind(0);  // without a name the kind is refused at once
  EXPECT_EQ(services.messages, Texts{u"Debe de introducir un nombre válido"});
  const std::vector definitions{
      makeSet("Losas", {makeQuantity("Oculta", LengthMeasure, 1, false)}),
      makeSet("Muros", {makeQuantity("A", AreaMeasure, 1), makeQuantity("B", AreaMeasure, 2, false),
                                makeQuantity("C", LengthMeasure, 3), makeQuantity("D", VolumeMeasure, 4.25)})};
  const double values[] = {10, 20, 30, 40};
  for (auto [kind, count, expected] : {std::tuple{"superficie", 2, Texts{u"Valor", u"10.000", u"20.000", u"4.250"}},
                                       {"Eje", 1, Texts{u"Valor", u"10.000", u"3.000", u"4.250"}},
                                       {"Otro", 4, Texts{u"Valor", u"1.000", u"3.000", u"4.250"}}}) {
    SCOPED_TRACE(kind);
    auto assign = started(CCuantificadoresObjetosIFCDlg(services, definitions, {}, kind, values, count,
                                                        namedRecords<CIfcType>({"T"}),
                                                        namedRecords<CIfcObject>({"O"})));
    for (int row : {0, 1, 1}) {
      services.expectDialog<CPropertiesSetDlg>([row](CPropertiesSetDlg& list) {
        EXPECT_EQ(list.types.size() + list.objects.size(), 2u);
        list.selectRow(row);
        list.ok();
      });
      assign.insert();
    }
    ASSERT_EQ(assign.assignments.size(), 1u);
    assign.chooseSet(0);
    EXPECT_EQ(column(assign.grid, 3), expected);
    for (int r = 0; r < assign.grid.rowCount(); ++r)  // the host measures them: nothing here is edited
      for (int c = 0; c < 4; ++c) EXPECT_TRUE(assign.grid.cell(r, c).readOnly) << r << "," << c;
  }
}

// The grid names the types without a value of their own "Lista"; a drop-down offers the values of
// the last type of its name, or none. Only the value column is edited, as its type reads the text;
// Boolean and date values are not, and a number edit leaves a text the property holds showing.
// A double click on a value opens the chooser on the value shown and the catalogue; the header
// row and the first column do nothing. The set chosen from the list is assigned once, even when the
// list is cancelled; what else was done in a cancelled list is not kept.
TEST_F(EditorTest, PropertyAssignmentGridShowsEditsAndChoosesEachTypeAndInsertsAChosenSetOnce) {
  const std::vector definitions{makeSet("Losas"), makeSet("Muros", {makeProperty("Altura")})};
  const std::vector enums{makeEnum("Acabados", {{1, "Viejo"}}), makeEnum("ACABADOS", {{1, "Liso"}, {2, "Rugoso"}})};
  auto dlg = started(CPropiedadesObjetosIFCDlg(services, definitions, enums, {wallValues()}));
  dlg.chooseSet(0);
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
            (Texts{u"Valor", u"12", u"2.500", u"Rugoso", u"Lista", u"Lista", u"Eje.PK$\n", u"Rojo", u"Eje.Cota$"}));
  const std::vector<CIfcPropertyName>& p = dlg.assignedSets[0].properties;
  EXPECT_EQ(std::tuple(std::string(p[4].textValue), p[7].intValue, std::string(p[0].description)),
            std::tuple("2026", 5, ""));
  dlg.catalogue.groups = namedRecords<CZepGrupo>({"Eje"});
  services.expectDialog<CPropiedadesObjetosValorIFCDlg>([](auto& d) {
    EXPECT_EQ(std::tuple(d.valueText, d.groups.entries.size()), std::tuple(u"2.500", 1u));
    d.ok();
  });
  for (auto [row, col] : {std::pair{2, 3}, {0, 3}, {3, 0}}) dlg.doubleClick(row, col);
  EXPECT_STREQ(p[1].textValue, "2.500");
  auto list = started(CPropiedadesObjetosIFCDlg(services, definitions, enums, {makeSet("losas")}));
  list.chooseSet(0);
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& sets) { sets.selectRow(0); sets.ok(); });
  list.insert();
  services.expectDialog<CPropertiesSetDlg>([this](CPropertiesSetDlg& sets) {
    services.expectDialog<CPropertiesOfSetDlg>([](CPropertiesOfSetDlg& set) { set.nameText = u"Aceras"; set.ok(); });
    sets.insert();
    sets.selectRow(2);  // Muros, after the sort
    sets.ok();
  });
  list.insert();
  services.expectDialog<CPropertiesSetDlg>([](auto& sets) { sets.selectRow(0); sets.propertySets.pop_back(); });
  list.insert();
  EXPECT_EQ(list.setDefinitions.size(), 3u);
  ASSERT_EQ(column(list.sets, 0), (Texts{u"losas", u"Muros", u"Aceras"}));
  EXPECT_EQ(list.assignedSets[1].properties.size(), 1u);
  list.remove();
  EXPECT_EQ(list.grid.rowCount(), 1);
  list.remove();  // no set chosen
  EXPECT_EQ(column(list.sets, 0), (Texts{u"Muros", u"Aceras"}));
}

const char* const kMessages = ORVANE_TEST_DATA "/messages.txt";

// The outline of the document of type `Doc` at `path`, or "unreadable".
template <class Doc>
Outline outlineOf(const std::string& path) {
  Doc doc;
  return doc.lee(path.c_str()) == 1 ? outline(doc) : Outline{"unreadable"};
}

class EntryPoints : public EditorTest {
 protected:
  // Runs `entry` on fresh definitions with its editor `D` ending in Cancel, then in OK. OK rewrites
  // the definitions, keeping the old file as a backup, and writes the object's file where there is
  // one; Cancel writes nothing, except in the editor of enumerated types.
  template <class D, class Entry>
  void okAndCancel(bool quantities, bool writesOnCancel, bool writesObject, Entry entry) {
    for (bool ok : {false, true}) {
      SCOPED_TRACE(std::string(typeid(D).name()) + (ok ? " OK" : " Cancel"));
      for (const std::string& stale : {object, dir.file("defs.xml.bak")}) fs::remove(stale);
      const std::string defs = quantities ? qsets() : psets(), before = readBytes(defs);
      services.expectDialog<D>([ok](D& d) { ok ? d.ok() : d.cancel(); });
      entry(defs.c_str());
      const bool written = ok || writesOnCancel;
      // The message table is released on the way out.
      EXPECT_EQ(std::tuple(fs::exists(defs + ".bak"), readBytes(written ? defs + ".bak" : defs), fs::exists(object),
                           MessageTable == nullptr),
                std::tuple(written, before, ok && writesObject, true));
    }
  }
  std::string psets() {
    std::string sets;
    for (const char* name : {"A", "B", "C"}) sets += propertySet(name, property("Alto", "Real", "2"));
    return dir.write("defs.xml", psetFile("<TypeEnum Name=\"Colores\" Description=\"\"><Elements><Element Value=\"1\">"
                                          "Rojo</Element></Elements></TypeEnum>",
                                          sets, "<RelationIfcElementWithPSet PSet=\"A\" Object=\"IfcWall\"/>"));
  }
  std::string qsets() {
    const std::string quantities = quantity("Area", "IfcAreaMeasure", "1") + quantity("Alto", "IfcAreaMeasure", "1");
    return dir.write("defs.xml", qsetFile("<TypeQuorsel>IfcLengthMeasure</TypeQuorsel>",
                                          "<ObjectQuorsel>Superficie</ObjectQuorsel>", quantitySet("M", quantities)));
  }
  std::string catalog() { return dir.write("variables.txt", "Eje;PK,Cota\r\nSuperficie;Area\r\n"); }
  TempDir dir;
  const std::string object = dir.file("obj.xml");
};

// Unreadable definitions show nothing (a dialog opened without a script fails); a missing document starts
// empty (a quantity file as a list of property sets) and leaves no backup of nothing.
// "Guardar como..." writes the first sets of the list (as many as rows were selected) with the
// types and relations to a picked file, then shows the list again; without a row it only says so.
// Assigning writes the sets chosen with their values; both property documents get the editor's
// enumerated types, and the relations stay as read.
TEST_F(EntryPoints, OkWritesTheDocumentsCancelNothingMissingOnesStartEmptyAndSaveAsWritesTheFirstSets) {
  const double values[] = {12.5, 3.0};
  const char* obj = object.c_str();
  EXPECT_FALSE(assignPropertySets(services, dir.file("none.xml").c_str(), obj, kMessages, nullptr));
  EXPECT_FALSE(assignQuantitySets(services, dir.file("none.xml").c_str(), obj, "Eje", nullptr, 0));
  okAndCancel<CPropertiesSetDlg>(false, false, false, [&](const char* d) {
    editPropertySets(services, d, kMessages, nullptr);
  });
  okAndCancel<CListEnumsDlg>(false, true, false, [&](const char* d) { editEnumeratedTypes(services, d, kMessages); });
  okAndCancel<CPropiedadesObjetosIFCDlg>(false, false, true, [&](const char* d) {
    EXPECT_TRUE(assignPropertySets(services, d, obj, kMessages, nullptr));
  });
  okAndCancel<CCuantificadoresObjetosIFCDlg>(true, false, true, [&](const char* d) {
    EXPECT_TRUE(assignQuantitySets(services, d, obj, "Eje", values, 1));
  });
  okAndCancel<CPropertiesSetDlg>(true, false, false, [&](const char* d) { editQuantitySets(services, d); });
  EXPECT_EQ(outlineOf<CIfcProyectQSet>(dir.file("defs.xml")),  // OK writes the list's kinds, elements and sets
            (Outline{"type IfcLengthMeasure", "object Superficie", "set M: Area, Alto,"}));
  services.expectDialog<CPropertiesSetDlg>([](auto& list) { EXPECT_FALSE(list.quantityMode()); list.ok(); });
  editQuantitySets(services, dir.file("q.xml").c_str());
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) {
    EXPECT_EQ(std::tuple(list.propertySets.size(), list.catalogue.groups.size()), std::tuple(0u, 2u));
    list.ok();
  });
  editPropertySets(services, dir.file("p.xml").c_str(), kMessages, catalog().c_str());

  const std::string path = psets(), copy = dir.file("copia.xml");
  services.pickedFiles = {fromUtf8(copy), std::nullopt};
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({2}); });
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({0}); });  // picker cancelled
  services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.saveAs({}); list.ok(); });
  editPropertySets(services, path.c_str(), kMessages, nullptr);
  EXPECT_EQ(services.messages, (Texts{u"Copia guardada", u"Copia guardada", u"No hay ningún conjunto seleccionado"}));
  const FilePickerOptions& picker = services.pickers.at(0);  // none for no rows: an unexpected picker fails
  EXPECT_EQ(std::tie(picker.defaultExtension, picker.startFolder, picker.filters[0].description),
            std::tuple(u"txt", fromUtf8(dir.path().string()), u"Text Files (*.xml)"));
  EXPECT_EQ(outlineOf<CIfcProyectPSet>(copy), (Outline{"type Colores: 1 Rojo,", "set A: Alto,", "relation A IfcWall"}));
  EXPECT_EQ(outlineOf<CIfcProyectPSet>(path),  // OK after a save-as writes the whole list
            (Outline{"type Colores: 1 Rojo,", "set A: Alto,", "set B: Alto,", "set C: Alto,", "relation A IfcWall"}));
  EXPECT_EQ(dir.names(),
            (std::set<std::string>{"copia.xml", "defs.xml", "defs.xml.bak", "p.xml", "q.xml", "variables.txt"}));

  services.expectDialog<CPropiedadesObjetosIFCDlg>([this](CPropiedadesObjetosIFCDlg& editor) {
    services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.selectRow(1); list.ok(); });
    editor.insert();
    editor.enumerations.push_back(makeEnum("Nuevo", {{1, "x"}}));
    EXPECT_EQ(editor.catalogue.groups.size(), 2u);
    editor.ok();
  });
  assignPropertySets(services, psets().c_str(), object.c_str(), kMessages, catalog().c_str());
  EXPECT_EQ(outlineOf<CIfcProyectPSet>(path), (Outline{"type Colores: 1 Rojo,", "type Nuevo: 1 x,", "set A: Alto,",
                                                       "set B: Alto,", "set C: Alto,", "relation A IfcWall"}));
  EXPECT_EQ(outlineOf<CIfcProyectPSet>(object), (Outline{"type Colores: 1 Rojo,", "type Nuevo: 1 x,", "set B: Alto,"}));
  services.expectDialog<CCuantificadoresObjetosIFCDlg>([this](CCuantificadoresObjetosIFCDlg& editor) {
    EXPECT_STREQ(editor.objectKind, "Superficie");
    services.expectDialog<CPropertiesSetDlg>([](CPropertiesSetDlg& list) { list.selectRow(0); list.ok(); });
    editor.insert();
    editor.ok();
  });
  assignQuantitySets(services, qsets().c_str(), dir.file("objq.xml").c_str(), "Superficie", values, 2);
  CIfcProyectQSet quantities;
  ASSERT_EQ(quantities.lee(dir.file("objq.xml").c_str()), 1);
  EXPECT_DOUBLE_EQ(quantities.quantitySets.at(0).quantities.at(1).value, 3.0);  // the second host value
}

}  // namespace
