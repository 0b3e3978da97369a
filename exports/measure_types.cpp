#include "exports/measure_types.h"

#include "orvane/ifc_property_set.h"
#include "orvane/ifc_quantity_set.h"

namespace orvane::exports {

namespace {

// By UnitTable index: none, m, m2, m3, ºC, gr, J, rad, seg, w.
constexpr std::string_view kRealMeasures[kUnitCount] = {
    "IfcReal",          "IfcLengthMeasure", "IfcAreaMeasure",       "IfcVolumeMeasure",
    "IfcThermodynamicTemperatureMeasure",   "IfcMassMeasure",       "IfcEnergyMeasure",
    "IfcPlaneAngleMeasure",                 "IfcTimeMeasure",       "IfcPowerMeasure"};

constexpr bool isAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
constexpr bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string_view propertyMeasure(int32_t valueType, int32_t unit) {
  switch (valueType) {
    case PropertyInteger: return "IfcInteger";
    case PropertyReal: return kRealMeasures[unit >= 0 && unit < kUnitCount ? unit : 0];
    case PropertyBoolean: return "IfcBoolean";
    case PropertyDateTime: return "IfcDateTime";
    default: return "IfcLabel";  // String, Enumerated
  }
}

std::string_view quantityMeasure(int32_t measureType) {
  switch (measureType) {
    case AreaMeasure: return "IfcAreaMeasure";
    case VolumeMeasure: return "IfcVolumeMeasure";
    default: return "IfcLengthMeasure";
  }
}

std::string_view quantityTemplateType(int32_t measureType) {
  switch (measureType) {
    case AreaMeasure: return "Q_AREA";
    case VolumeMeasure: return "Q_VOLUME";
    default: return "Q_LENGTH";
  }
}

std::string upperAscii(std::string_view name) {
  std::string upper(name);
  for (char& c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - ('a' - 'A'));
  return upper;
}

bool isIfcEntityName(std::string_view name) {
  if (name.size() <= 3 || upperAscii(name.substr(0, 3)) != "IFC") return false;
  for (const char c : name)
    if (!isAsciiLetter(c) && !isAsciiDigit(c)) return false;
  return isAsciiLetter(name[3]);
}

}  // namespace orvane::exports
