// Between the documents' entries and the host's flat records, as the exchange functions convert
// them (the value table of the flat property exchange, the quantity fields). Each writes only the
// fields it names, so the host's own bytes elsewhere in a record stay.
#ifndef ORVANE_API_RECORD_CONVERSION_H
#define ORVANE_API_RECORD_CONVERSION_H

#include <string_view>

#include "orvane/ifc_property_set.h"
#include "orvane/ifc_quantity_set.h"
#include "orvane/orvane.h"

namespace orvane::api {

void fillRecord(FlatPropertyRecord& record, std::string_view setName, const CIfcPropertyName& property);
void fillRecord(FlatQuantityRecord& record, std::string_view setName, const CIfcQuantityName& quantity);

// Fills an entry, at its defaults, with what a record describes.
void propertyFrom(const FlatPropertyRecord& record, CIfcPropertyName& property);
void quantityFrom(const FlatQuantityRecord& record, CIfcQuantityName& quantity);

// A record that names a property its set already has replaces its value, type, unit and (empty)
// description; the property keeps its name, rule, optional flag and enumerated type.
void update(CIfcPropertyName& existing, const FlatPropertyRecord& record);

}  // namespace orvane::api

#endif
