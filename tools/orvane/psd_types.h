// How the data types of buildingSMART property definitions map to the six value types and ten
// units of a property-set document.
#ifndef ORVANE_TOOLS_PSD_TYPES_H
#define ORVANE_TOOLS_PSD_TYPES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane::cli {

struct ValueMapping {
  int32_t valueType = 0;  // PropertyValueType
  int32_t unit = 0;       // index into UnitTable
  std::string loss;       // what the mapping cannot keep; empty when it keeps everything
};

// The mapping of an IFC data type ("IfcLengthMeasure", ...); "" (no type given) maps to String.
// nullopt for a type no value type can hold (IfcComplexNumber, IfcBinary, ...).
std::optional<ValueMapping> mapDataType(std::string_view ifcType);

// The quantity kind of a QtoType ("Q_LENGTH" 0, "Q_AREA" 1, "Q_VOLUME" 2); nullopt for the others.
std::optional<int32_t> mapQuantityKind(std::string_view qtoType);

}  // namespace orvane::cli

#endif
