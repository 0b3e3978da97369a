// Common ground for the editor tests (and the view tests): the host's message file loaded, scripted
// services, and small builders of records.
#ifndef ORVANE_TESTS_EDITOR_FIXTURE_H
#define ORVANE_TESTS_EDITOR_FIXTURE_H

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>

#include "editors/common/grid_model.h"
#include "editors/common/messages.h"
#include "orvane/ifc_property_set.h"
#include "orvane/ifc_quantity_set.h"
#include "support/scripted_services.h"

namespace orvane::test {

using Texts = std::vector<std::u16string>;

class EditorTest : public ::testing::Test {
 protected:
  void SetUp() override { setRutaMensajes(ORVANE_TEST_DATA "/messages.txt"); }
  void TearDown() override {
    liberaMensajes();
    EXPECT_TRUE(services.allScriptsPlayed()) << "a scripted dialog never opened";
  }
  ScriptedServices services;
};

// `dialog` set up as the services set a dialog up before showing it.
template <class D>
D started(D dialog) {
  dialog.start();
  return dialog;
}

template <std::size_t N>
void setText(char (&field)[N], const char* text) {
  std::strncpy(field, text, N - 1);
  field[N - 1] = '\0';
}

// Column `c` of a list's rows or of a grid's cells.
inline Texts column(const ListViewState& list, int c) {
  Texts out;
  for (const auto& row : list.rows) out.push_back(row.at(c));
  return out;
}
inline Texts column(const GridModel& grid, int c) {
  Texts out;
  for (int r = 0; r < grid.rowCount(); ++r) out.push_back(grid.cell(r, c).text);
  return out;
}

// `number` is the value of a Real property, else its integer value (a Boolean's tick).
inline CIfcPropertyName makeProperty(const char* name, int32_t type = PropertyString, const char* text = "",
                                     const char* enumName = "", double number = 0) {
  CIfcPropertyName p;
  setText(p.name, name);
  p.valueType = type;
  setText(p.textValue, text);
  setText(p.enumName, enumName);
  if (type == PropertyReal) p.realValue = number;
  else p.intValue = static_cast<int32_t>(number);
  return p;
}

// A set of the properties, or of the quantities, given (of properties when there are none).
template <class Item = CIfcPropertyName>
auto makeSet(const char* name, std::initializer_list<Item> items = {}) {
  constexpr bool quantities = std::is_same_v<Item, CIfcQuantityName>;
  std::conditional_t<quantities, CIfcQuantitySet, CIfcPropertySet> set;
  setText(set.name, name);
  if constexpr (quantities) set.quantities = items;
  else set.properties = items;
  return set;
}

// A wall's values of every type for the assignment grids: its value list named in other case, one
// naming no type, a reference with a line feed, an Integer whose text is a reference.
inline CIfcPropertySet wallValues() {
  return makeSet("Muros", {makeProperty("Huecos", PropertyInteger, "", "", 7),
                           makeProperty("Altura", PropertyReal, "", "", 1),
                           makeProperty("Acabado", PropertyEnumerated, "Liso", "acabados"),
                           makeProperty("Portante", PropertyBoolean), makeProperty("Fecha", PropertyDateTime, "2026"),
                           makeProperty("Eje", PropertyString, "Eje.PK$\n"),
                           makeProperty("Color", PropertyEnumerated, "Rojo", "SinTipo"),
                           makeProperty("Alto", PropertyInteger, "Eje.Cota$")});
}

inline CIfcEnum makeEnum(const char* name, std::vector<std::pair<int, const char*>> values) {
  CIfcEnum type;
  setText(type.name, name);
  for (auto [code, text] : values) {
    CIfcNodoEnum& value = type.elements.emplace_back();
    value.value = code;
    setText(value.text, text);
  }
  return type;
}

inline CIfcQuantityName makeQuantity(const char* name, int32_t kind = AreaMeasure, double value = 0.0,
                                     bool exported = true) {
  CIfcQuantityName q;
  setText(q.name, name);
  q.measureType = kind;
  q.value = value;
  q.exported = exported;
  return q;
}

// Records of any kind that have just a name: quantity kinds, host elements.
template <class Record>
std::vector<Record> namedRecords(std::initializer_list<const char*> names) {
  std::vector<Record> out(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) setText(out[i].name, names.begin()[i]);
  return out;
}

}  // namespace orvane::test

#endif
