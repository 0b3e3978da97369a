// The CSV files of records that the merge commands read, and the rows the list commands print.
//
// Properties: set,property,type,value,unit,enum   (set, property and type required)
// Quantities: set,quantity,kind,value             (all four required)
// A first line whose first field is the first column's name, in any letter case, is a header: it
// must then name the columns in this order. Every other line is a record.
#ifndef ORVANE_TOOLS_RECORD_CSV_H
#define ORVANE_TOOLS_RECORD_CSV_H

#include <string>
#include <vector>

#include "listing.h"
#include "orvane/orvane.h"

namespace orvane::cli {

// The records of the CSV file at `path`. Throws a ToolError naming the file and line of the
// first bad field: a wrong number of fields, an unknown type, unit or kind, a number that does
// not read, a name or value over 255 bytes, an empty set or property name.
std::vector<FlatPropertyRecord> readPropertyCsv(const std::string& path);
std::vector<FlatQuantityRecord> readQuantityCsv(const std::string& path);

Listing propertyListing(const std::vector<FlatPropertyRecord>& records);
Listing quantityListing(const std::vector<FlatQuantityRecord>& records);

// The help text that documents both formats.
std::string propertyCsvHelp();
std::string quantityCsvHelp();

}  // namespace orvane::cli

#endif
