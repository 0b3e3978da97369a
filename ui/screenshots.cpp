// Takes a picture of every editor dialog opened on the sample project, on Qt's offscreen platform:
//   orvane_screenshots SAMPLES_FOLDER OUTPUT_FOLDER
// `make screenshots` keeps them in docs/screenshots for the README.
#include <QApplication>
#include <QDir>
#include <QTest>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "editors/assign/property_assign_dlg.h"
#include "editors/assign/property_value_dlg.h"
#include "editors/common/messages.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/list_values_dlg.h"
#include "editors/psets/properties_of_set_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/psets/property_data_dlg.h"
#include "editors/psets/value_enum_dlg.h"
#include "editors/qsets/quantities_of_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"
#include "editors/qsets/quantity_data_dlg.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "ui/grid/grid_control.h"
#include "ui/grid/grid_table_model.h"
#include "ui/qt_services.h"
#include "ui/view_registry.h"

namespace {

using namespace orvane;

// Starts `dialog`, lets `prepare` act on it as a user would, shows its view, lets `onScreen` act on
// the window (keys typed into it) and saves a picture.
template <class D>
bool picture(D& dialog, const QString& file, const std::function<void(D&)>& prepare = {},
             const std::function<void(QWidget&)>& onScreen = {}) {
  std::unique_ptr<DialogView> view = createView(dialog, nullptr);
  if (!view) return false;
  dialog.start();
  if (prepare) prepare(dialog);
  view->showState();
  view->show();
  if (!QTest::qWaitForWindowExposed(view.get())) return false;
  QApplication::setActiveWindow(view.get());
  if (onScreen) onScreen(*view);
  QTest::qWait(50);
  return view->grab().save(file);
}

// Opens the first drop-down value cell with F2 and moves to its next choice, leaving the edit open.
void editTheGrid(QWidget& window) {
  auto* grid = window.findChild<GridControl*>(QStringLiteral("grid"));
  if (grid == nullptr) return;
  for (int row = 0; row < grid->model()->rowCount(); ++row) {
    const QModelIndex value = grid->model()->index(row, 3);
    if (!(value.flags() & Qt::ItemIsEditable) || !value.data(GridTableModel::DropDownRole).toBool()) continue;
    grid->setFocus();
    grid->setCurrentIndex(value);
    QTest::keyClick(grid, Qt::Key_F2);
    if (QWidget* editor = QApplication::focusWidget(); editor != nullptr && editor != grid)
      QTest::keyClick(editor, Qt::Key_Down);
    return;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s SAMPLES_FOLDER OUTPUT_FOLDER\n", argv[0]);
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const std::string samples = argv[1];
  const QDir out(QString::fromLocal8Bit(argv[2]));
  QDir().mkpath(out.path());
  const auto file = [&](const char* name) { return out.filePath(QString::fromLatin1(name) + ".png"); };

  setRutaMensajes((samples + "/mensajes.txt").c_str());
  CIfcProyectPSet sets;
  sets.lee((samples + "/proyecto-psets.xml").c_str());
  CIfcProyectPSet assigned;
  assigned.lee((samples + "/objeto-psets.xml").c_str());
  CIfcProyectQSet quantities;
  quantities.lee((samples + "/proyecto-qsets.xml").c_str());
  QtDialogServices services;
  bool ok = true;

  CPropertiesSetDlg list(services, sets.propertySets, sets.enums);
  ok &= picture<CPropertiesSetDlg>(list, file("set-list"), [](CPropertiesSetDlg& d) { d.selectRow(1); });
  const CIfcPropertySet& walls = sets.propertySets.back();
  CPropertiesOfSetDlg set(services, kEditItem, walls, sets.enums, &sets.propertySets, nullptr);
  ok &= picture(set, file("set"));
  CPropertyDataDlg property(services, kEditItem, walls.properties.at(2), sets.enums, &walls, nullptr);
  ok &= picture(property, file("property"));
  CListEnumsDlg types(services, sets.enums);
  ok &= picture(types, file("enumerated-types"));
  CListValuesDlg values(services, sets.enums.at(0), true);
  ok &= picture(values, file("values"));
  CValueEnumDlg value(services, sets.enums.at(0).elements.at(1));
  ok &= picture(value, file("value"));
  CConjuntoVariableZep catalogue;
  if (std::FILE* stream = std::fopen((samples + "/variables.txt").c_str(), "r")) {
    catalogue.leeFichero(stream);
    std::fclose(stream);
  }
  CPropiedadesObjetosValorIFCDlg chooser(services, "Muro.Altura$", catalogue);
  ok &= picture(chooser, file("value-chooser"));
  CPropiedadesObjetosIFCDlg assignment(services, sets.propertySets, sets.enums, assigned.propertySets);
  ok &= picture<CPropiedadesObjetosIFCDlg>(assignment, file("assignment"),
                                           [](CPropiedadesObjetosIFCDlg& d) { d.chooseSet(0); });
  CPropiedadesObjetosIFCDlg editing(services, sets.propertySets, sets.enums, assigned.propertySets);
  ok &= picture<CPropiedadesObjetosIFCDlg>(
      editing, file("assignment-editing"), [](CPropiedadesObjetosIFCDlg& d) { d.chooseSet(0); }, editTheGrid);
  CPropertiesSetDlg quantityList(services, quantities.quantitySets, quantities.types, quantities.objects);
  ok &= picture(quantityList, file("quantity-set-list"));
  CQuantitiesOfSetDlg quantitySet(services, kEditItem, quantities.quantitySets.back(), &quantities.quantitySets,
                                  quantities.types, quantities.objects);
  ok &= picture(quantitySet, file("quantity-set"));
  CQuantityDataDlg quantity(services, kEditItem, quantities.quantitySets.back().quantities.at(0),
                            &quantities.quantitySets.back(), quantities.types);
  ok &= picture(quantity, file("quantity"));
  const double measured[] = {125.5, 3.2};
  std::vector<CIfcQuantitySet> axis{quantities.quantitySets.at(0)};
  axis[0].quantities[0].value = measured[0];
  axis[0].quantities[1].value = measured[1];
  CCuantificadoresObjetosIFCDlg quantityAssignment(services, quantities.quantitySets, axis, "Eje", measured, 2);
  ok &= picture<CCuantificadoresObjetosIFCDlg>(quantityAssignment, file("quantity-assignment"),
                                               [](CCuantificadoresObjetosIFCDlg& d) { d.chooseSet(0); });
  liberaMensajes();
  if (!ok) std::fprintf(stderr, "orvane_screenshots: some pictures could not be taken\n");
  return ok ? 0 : 1;
}
