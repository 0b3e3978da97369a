#include "editors/psets/property_texts.h"

#include <cstring>

#include "model/numbers.h"

namespace orvane {

std::string defaultValueShown(const CIfcPropertyName& property) {
  const bool reference = std::strchr(property.textValue, '$') != nullptr;
  switch (property.valueType) {
    case PropertyInteger: return reference ? property.textValue : formatInt(property.intValue).c_str();
    case PropertyReal: return reference ? property.textValue : formatReal3(property.realValue).c_str();
    default: return property.textValue;
  }
}

std::string valueColumnText(const CIfcPropertyName& property) {
  if (property.valueType == PropertyBoolean) return property.intValue == 1 ? "true" : "false";
  return defaultValueShown(property);
}

}  // namespace orvane
