// How a property's value reads in the definition editors.
#ifndef ORVANE_EDITORS_PSETS_PROPERTY_TEXTS_H
#define ORVANE_EDITORS_PSETS_PROPERTY_TEXTS_H

#include <string>

#include "orvane/ifc_property_set.h"

namespace orvane {

// The default value as its edit box shows it: an Integer or Real holding a host variable
// reference shows the reference, otherwise its number ("%d", "%0.3lf"); other types their text.
std::string defaultValueShown(const CIfcPropertyName& property);

// The value column of a set's property list: as above, but a Boolean reads "true" or "false".
std::string valueColumnText(const CIfcPropertyName& property);

}  // namespace orvane

#endif
