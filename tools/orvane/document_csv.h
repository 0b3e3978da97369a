// Whole documents as CSV, one line per record, for export and import: the same content as the
// JSON form (document_json.h), in rows a spreadsheet opens. docs/file-formats.md describes it.
// Texts are the document's own bytes, unconverted, so a text in the host's code page stays in it.
#ifndef ORVANE_TOOLS_DOCUMENT_CSV_H
#define ORVANE_TOOLS_DOCUMENT_CSV_H

#include <ostream>
#include <string>
#include <vector>

#include "csv.h"
#include "document_json.h"

namespace orvane::cli {

// `json` is what propertyDocumentToJson / quantityDocumentToJson give.
void writePropertyCsv(std::ostream& out, const Json& json);
void writeQuantityCsv(std::ostream& out, const Json& json);

// The JSON form of the document the rows describe, for propertyDocumentFromJson /
// quantityDocumentFromJson. A ToolError names the line of a row that is not right.
Json propertyJsonFromCsv(const std::vector<CsvRecord>& rows, const std::string& source);
Json quantityJsonFromCsv(const std::vector<CsvRecord>& rows, const std::string& source);

}  // namespace orvane::cli

#endif
