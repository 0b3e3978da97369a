// The definitions as an IDS 1.0 file (buildingSMART's Information Delivery Specification).
//
// One specification for each set and each IFC element type it applies to: applicable to that
// entity (upper case, as IDS names entities), requiring one property facet per member with the
// set's name, the member's name and its IFC data type. A required property must be there; an
// optional one, and a quantity the host does not export, is checked only when present. An
// enumerated property's value is restricted to its type's values.
//
// A set without element types gets one specification applicable to every element that carries the
// set (any property of it): the document says what the set holds but not where it goes, so the
// file requires it nowhere and checks it wherever a model uses it. An IDS entity facet matches one
// IFC class exactly (no subtypes), so no entity could stand for "every element" instead.
//
// Every specification is optional in the model (minOccurs 0): a model without walls meets a
// requirement on walls. The notes of the definitions go in as XML comments.
#ifndef ORVANE_EXPORTS_IDS_EXPORT_H
#define ORVANE_EXPORTS_IDS_EXPORT_H

#include <string>

#include "exports/definitions.h"

namespace orvane::exports {

// The IDS file's text. Empty when the definitions hold no set: IDS requires one specification at
// least.
std::string idsDocument(const Definitions& definitions, const std::string& title);

}  // namespace orvane::exports

#endif
