#include "psd_types.h"

#include <map>

#include "orvane/ifc_property_set.h"
#include "orvane/ifc_quantity_set.h"

namespace orvane::cli {

namespace {

// Unit indices of UnitTable.
enum Unit : int32_t { kNoUnit = 0, kMetre = 1, kSquareMetre = 2, kCubicMetre = 3, kCelsius = 4, kGram = 5,
                      kJoule = 6, kRadian = 7, kSecond = 8, kWatt = 9 };

struct Exact {
  int32_t valueType;
  int32_t unit;
};

const std::map<std::string_view, Exact>& exactTypes() {
  static const std::map<std::string_view, Exact> types{
      {"IfcLengthMeasure", {PropertyReal, kMetre}},
      {"IfcPositiveLengthMeasure", {PropertyReal, kMetre}},
      {"IfcNonNegativeLengthMeasure", {PropertyReal, kMetre}},
      {"IfcAreaMeasure", {PropertyReal, kSquareMetre}},
      {"IfcVolumeMeasure", {PropertyReal, kCubicMetre}},
      {"IfcThermodynamicTemperatureMeasure", {PropertyReal, kCelsius}},
      {"IfcMassMeasure", {PropertyReal, kGram}},
      {"IfcEnergyMeasure", {PropertyReal, kJoule}},
      {"IfcPlaneAngleMeasure", {PropertyReal, kRadian}},
      {"IfcPositivePlaneAngleMeasure", {PropertyReal, kRadian}},
      {"IfcTimeMeasure", {PropertyReal, kSecond}},
      {"IfcPowerMeasure", {PropertyReal, kWatt}},
      // Dimensionless numbers lose nothing without a unit.
      {"IfcReal", {PropertyReal, kNoUnit}},
      {"IfcNumericMeasure", {PropertyReal, kNoUnit}},
      {"IfcRatioMeasure", {PropertyReal, kNoUnit}},
      {"IfcPositiveRatioMeasure", {PropertyReal, kNoUnit}},
      {"IfcNormalisedRatioMeasure", {PropertyReal, kNoUnit}},
      {"IfcParameterValue", {PropertyReal, kNoUnit}},
      {"IfcInteger", {PropertyInteger, kNoUnit}},
      {"IfcPositiveInteger", {PropertyInteger, kNoUnit}},
      {"IfcCountMeasure", {PropertyInteger, kNoUnit}},
      {"IfcTimeStamp", {PropertyInteger, kNoUnit}},
      {"IfcBoolean", {PropertyBoolean, kNoUnit}},
      {"IfcLabel", {PropertyString, kNoUnit}},
      {"IfcIdentifier", {PropertyString, kNoUnit}},
      {"IfcText", {PropertyString, kNoUnit}},
      {"IfcDescriptiveMeasure", {PropertyString, kNoUnit}},
      {"IfcURIReference", {PropertyString, kNoUnit}},
      {"IfcDuration", {PropertyString, kNoUnit}},  // an ISO 8601 duration such as P2D
      {"IfcDate", {PropertyDateTime, kNoUnit}},
      {"IfcDateTime", {PropertyDateTime, kNoUnit}},
      {"IfcTime", {PropertyDateTime, kNoUnit}},
  };
  return types;
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

}  // namespace

std::optional<ValueMapping> mapDataType(std::string_view ifcType) {
  if (ifcType.empty()) return ValueMapping{PropertyString, kNoUnit, "no data type given, kept as String"};
  if (const auto exact = exactTypes().find(ifcType); exact != exactTypes().end())
    return ValueMapping{exact->second.valueType, exact->second.unit, ""};
  if (ifcType == "IfcLogical")
    return ValueMapping{PropertyBoolean, kNoUnit, "IfcLogical kept as Boolean (its UNKNOWN state is lost)"};
  // Pressure, current, flow and the other physical measures are numbers whose unit the ten units
  // of a document cannot name.
  if (endsWith(ifcType, "Measure"))
    return ValueMapping{PropertyReal, kNoUnit, "unit not representable, kept as Real without unit"};
  return std::nullopt;
}

std::optional<int32_t> mapQuantityKind(std::string_view qtoType) {
  if (qtoType == "Q_LENGTH") return LengthMeasure;
  if (qtoType == "Q_AREA") return AreaMeasure;
  if (qtoType == "Q_VOLUME") return VolumeMeasure;
  return std::nullopt;
}

}  // namespace orvane::cli
