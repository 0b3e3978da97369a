// The set list's CSV import, and the quantity-set editors under the list in quantity mode.
#include <sys/stat.h>
#include <unistd.h>

#include "editor_fixture.h"
#include "editors/common/edit_mode.h"
#include "editors/common/text_codec.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "editors/qsets/quantity_data_dlg.h"
#include "support/temp_dir.h"

using namespace orvane;
using namespace orvane::test;

namespace {

// "set: property (description) type text real" for every imported property.
std::vector<std::string> imported(const std::vector<CIfcPropertySet>& sets) {
  std::vector<std::string> out;
  for (const CIfcPropertySet& set : sets)
    for (const CIfcPropertyName& p : set.properties)
      out.push_back(std::string(set.name) + ": " + p.name + " (" + p.description + ") " + std::to_string(p.valueType) +
                    " " + p.textValue + " " + std::to_string(p.realValue));
  return out;
}

// Each line "set;property;description;type[;value]" adds the property to the set of that name, made
// at the end when there is none, unless the set has it already; the line end stays in the last field.
TEST_F(EditorTest, CsvLinesBecomeSetsOfRealOrTextProperties) {
  TempDir dir;
  CPropertiesSetDlg dlg(services, {makeSet("Muros")}, {});
  dlg.documentFolder = u"/proyecto";
  dlg.start();
  services.pickedFiles = {fromUtf8(dir.write("sets.csv",
                                             "Muros;Altura;Altura libre;Real;2.75\r\n"
                                             "Muros;;Grosor;Texto\r\n"          // three fields: skipped
                                             "Muros;Acabado;Tipo;Texto;Liso\r\n"
                                             "muros;ALTURA;Repetida;Real;9\r\n"  // already in the set
                                             "Forjados;Canto;Canto total;real\n"  // "real" and a line end: text
                                             "Forjados;Ancho;A;Decimal;2.75\n"
                                             "Zocalo;Alto;Alto;Real;0.1"))};    // no line end: left out
  dlg.importCsv();
  EXPECT_EQ(imported(dlg.propertySets), (std::vector<std::string>{
                                            "Muros: Altura (Altura libre) 1  2.750000",
                                            "Muros: Acabado (Tipo) 2 Liso\n 0.000000",
                                            "Forjados: Canto (Canto total) 2  0.000000",
                                            "Forjados: Ancho (A) 2 2.75\n 0.000000",
                                        }));
  EXPECT_EQ(column(dlg.sets, 0), (Texts{u"Muros", u"Forjados"}));
  ASSERT_EQ(services.pickers.size(), 1u);
  EXPECT_EQ(services.pickers[0].defaultExtension, u"csv");
  EXPECT_EQ(services.pickers[0].startFolder, u"/proyecto");
  EXPECT_EQ(services.pickers[0].filters.at(1).pattern, u"*.*");
}

// A FIFO would block the open and /dev/zero never ends: the alarm ends a run that hangs. Long lines
// are read in pieces of 255 characters: "S;" and 253 p make two fields (skipped), then the other 147
// p, "d", "Real" and "1" make a set named by the 147 p.
TEST_F(EditorTest, CsvImportSkipsWhatIsNotARegularFileAndCutsLongLines) {
  TempDir dir;
  CPropertiesSetDlg dlg(services, std::vector<CIfcPropertySet>{}, {});
  dlg.start();
  ASSERT_EQ(::mkfifo(dir.file("pipe.csv").c_str(), 0600), 0);
  services.pickedFiles = {std::nullopt, u"/no/such/file.csv", fromUtf8(dir.file("pipe.csv")), u"/dev/zero",
                          fromUtf8(dir.write("long.csv", "S;" + std::string(400, 'p') + ";d;Real;1\n"))};
  ::alarm(20);
  for (int i = 0; i < 4; ++i) dlg.importCsv();
  ::alarm(0);
  EXPECT_TRUE(dlg.propertySets.empty());
  dlg.importCsv();
  EXPECT_EQ(imported(dlg.propertySets), std::vector<std::string>{std::string(147, 'p') + ": d (Real) 2  0.000000"});
}

// The list passes the document's kinds and host elements down; a set is linked to the element
// chosen, and unlinked when there are none; a kind outside the list is shown as none and kept.
TEST_F(EditorTest, QuantitySetsLinkAnElementAndKeepTheirKinds) {
  const auto kinds = namedRecords<CIfcType>({"IfcLengthMeasure", "IfcAreaMeasure"});
  CPropertiesSetDlg dlg(services, {makeQuantitySet("Muros")}, kinds, namedRecords<CIfcObject>({"Eje", "Superficie"}));
  dlg.start();
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
  CIfcQuantitySet linked = makeQuantitySet("S", {makeQuantity("Rara", 3, 0, false)});
  setText(linked.typeZep, "Viejo");
  CQuantitiesOfSetDlg set(services, kEditItem, linked, nullptr, kinds, {});
  set.start();
  EXPECT_EQ(set.quantities.rows[0], (Texts{u"Rara", u"", u"", u"No"}));
  set.ok();
  EXPECT_STREQ(set.set.typeZep, "");
  CQuantityDataDlg outside(services, kEditItem, makeQuantity("Q", 7), nullptr, kinds);
  outside.start();
  EXPECT_EQ(outside.kinds.selected, -1);
  outside.ok();
  EXPECT_EQ(outside.quantity.measureType, 7);
}

}  // namespace
