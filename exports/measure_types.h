// Which IFC data type states a property's or a quantity's value: the type of the property and, for
// Real ones, its unit. Both exports use this one table.
#ifndef ORVANE_EXPORTS_MEASURE_TYPES_H
#define ORVANE_EXPORTS_MEASURE_TYPES_H

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane::exports {

// The IFC defined type ("IfcLengthMeasure", "IfcLabel", ...) of a property of `valueType`
// (PropertyValueType) and `unit` (index into UnitTable). An Enumerated property is a label
// restricted to its type's values. A type or unit outside the tables is read as a label or as no
// unit, the readings the documents' own reader falls back to.
std::string_view propertyMeasure(int32_t valueType, int32_t unit);

// The IFC measure of a quantity kind (QuantityMeasureType); a kind outside 0..2 is a length, as
// the reader takes it.
std::string_view quantityMeasure(int32_t measureType);

// The template type of a quantity kind: "Q_LENGTH", "Q_AREA" or "Q_VOLUME".
std::string_view quantityTemplateType(int32_t measureType);

// An IFC name as IDS writes it: "IfcLengthMeasure" becomes "IFCLENGTHMEASURE".
std::string upperAscii(std::string_view name);

// Whether `name` can name an IFC entity: "Ifc" in any letter case followed by ASCII letters and
// digits ("IfcWall", "IFCSLAB"). Host element types such as "Muro" cannot.
bool isIfcEntityName(std::string_view name);

}  // namespace orvane::exports

#endif
