// The definitions as an IFC4 project library (ISO 10303-21 file): an IfcProject declaring one
// IfcProjectLibrary, which declares one IfcPropertySetTemplate per set.
//
// A property set is PSET_OCCURRENCEDRIVEN (the host gives the values to its objects), a quantity
// set QTO_OCCURRENCEDRIVEN; ApplicableEntity lists its IFC element types separated by commas, or
// is left unset for a set without them. Each property is an IfcSimplePropertyTemplate,
// P_SINGLEVALUE with its IFC data type, or P_ENUMERATEDVALUE with the IfcPropertyEnumeration of
// its type (one per type, shared); each quantity is Q_LENGTH, Q_AREA or Q_VOLUME.
//
// The same definitions always give the same bytes: every GlobalId is derived from the names (the
// library's title, the set's kind and name, the member's name), and the header's time stamp is
// fixed, since definitions carry no date of their own. The notes of the definitions go in as
// comments.
#ifndef ORVANE_EXPORTS_IFC_EXPORT_H
#define ORVANE_EXPORTS_IFC_EXPORT_H

#include <string>

#include "exports/definitions.h"

namespace orvane::exports {

// The IFC file's text; `title` names the project and its library.
std::string ifcLibraryDocument(const Definitions& definitions, const std::string& title);

}  // namespace orvane::exports

#endif
