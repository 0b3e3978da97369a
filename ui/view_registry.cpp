#include "ui/view_registry.h"

#include <array>
#include <typeindex>

#include "ui/list_enums_view.h"
#include "ui/list_values_view.h"
#include "ui/properties_of_set_view.h"
#include "ui/properties_set_view.h"
#include "ui/property_assign_view.h"
#include "ui/property_data_view.h"
#include "ui/property_value_view.h"
#include "ui/quantities_of_set_view.h"
#include "ui/quantity_assign_view.h"
#include "ui/quantity_data_view.h"
#include "ui/value_enum_view.h"

namespace orvane {
namespace {

struct ViewEntry {
  std::type_index dialogClass;
  std::unique_ptr<DialogView> (*create)(Dialog&, QWidget*);
};

template <class Logic, class View>
ViewEntry entry() {
  return {typeid(Logic), [](Dialog& dialog, QWidget* parent) -> std::unique_ptr<DialogView> {
            return std::make_unique<View>(static_cast<Logic&>(dialog), parent);
          }};
}

const std::array<ViewEntry, 11>& views() {
  static const std::array<ViewEntry, 11> table = {
      entry<CPropertiesSetDlg, PropertiesSetView>(),
      entry<CPropertiesOfSetDlg, PropertiesOfSetView>(),
      entry<CPropertyDataDlg, PropertyDataView>(),
      entry<CListEnumsDlg, ListEnumsView>(),
      entry<CListValuesDlg, ListValuesView>(),
      entry<CValueEnumDlg, ValueEnumView>(),
      entry<CPropiedadesObjetosValorIFCDlg, PropertyValueView>(),
      entry<CPropiedadesObjetosIFCDlg, PropertyAssignView>(),
      entry<CQuantitiesOfSetDlg, QuantitiesOfSetView>(),
      entry<CQuantityDataDlg, QuantityDataView>(),
      entry<CCuantificadoresObjetosIFCDlg, QuantityAssignView>(),
  };
  return table;
}

}  // namespace

std::unique_ptr<DialogView> createView(Dialog& dialog, QWidget* parent) {
  const std::type_index dialogClass(typeid(dialog));
  for (const ViewEntry& view : views())
    if (view.dialogClass == dialogClass) return view.create(dialog, parent);
  return nullptr;
}

}  // namespace orvane
