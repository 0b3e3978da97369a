// Property sets from a CSV file, as the set list's "Importar..." reads them.
//
// One property per line, fields separated by ";": set name; property name; description; type word;
// optional default value. Runs of ";" count as one separator and leading ones are skipped, so there
// are no empty fields, and a line with fewer than four is skipped. Lines are read as a Windows
// text-mode stream gives them, at most 255 characters (a longer one is read in pieces), and the
// line end is no separator: it stays in the last field, so in a line of exactly four fields the
// type word carries it. A last line without its line end is left out. There is no header line.
#ifndef ORVANE_EDITORS_PSETS_CSV_IMPORT_H
#define ORVANE_EDITORS_PSETS_CSV_IMPORT_H

#include <cstdio>
#include <vector>

#include "orvane/ifc_property_set.h"

namespace orvane {

// Reads every line of `file` into `sets`. A property whose type word equals `realTypeWord`
// (ignoring ASCII case; none when null) is Real with the default read as a number, any other is a
// String holding the default as text. It goes into the first set of its name (ignoring case) that
// lacks a property of its name; when every such set has one, the line changes nothing; when there
// is no set of that name, a new set holding only this property is appended. Nothing is sorted.
// A read error ends the import as the end of the file does.
void importPropertySetsCsv(std::FILE* file, std::vector<CIfcPropertySet>& sets, const char* realTypeWord);

}  // namespace orvane

#endif
