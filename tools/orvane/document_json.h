// Whole documents as JSON: every field a document file carries, so that a document turned into
// JSON and back is written to the very same bytes. docs/file-formats.md describes the format.
//
// Texts are byte strings in the records. A text that is valid UTF-8 becomes a JSON string as it
// is; any other text (the host's single-byte code page, such as the 0xBA of "ºC") becomes
// {"windows-1252": "..."}: its bytes read as Windows-1252, the five bytes that code page leaves
// undefined taken as the C1 controls U+0081, U+008D, U+008F, U+0090 and U+009D. Every byte thus
// has one character, and reading the object back gives the same bytes.
#ifndef ORVANE_TOOLS_DOCUMENT_JSON_H
#define ORVANE_TOOLS_DOCUMENT_JSON_H

#include <nlohmann/json.hpp>
#include <string>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"

namespace orvane::cli {

using Json = nlohmann::ordered_json;

inline constexpr const char* kPropertyFormat = "orvane-psets";
inline constexpr const char* kQuantityFormat = "orvane-qsets";
inline constexpr int kJsonFormatVersion = 1;

// The JSON value of a record text and back; textFromJson throws a ToolError naming `where` for a
// value that is neither form, or a Windows-1252 text with a character that code page lacks.
Json textToJson(const std::string& bytes);
std::string textFromJson(const Json& value, const std::string& where);

Json propertyDocumentToJson(const CIfcProyectPSet& document);
Json quantityDocumentToJson(const CIfcProyectQSet& document);

// Fill an empty document from JSON. Throw a ToolError naming the place of the first value that is
// missing, of the wrong kind, or a text longer than a record field holds (511 bytes): nothing is
// cut, since a cut text would not give back the file it came from.
void propertyDocumentFromJson(const Json& json, CIfcProyectPSet& document);
void quantityDocumentFromJson(const Json& json, CIfcProyectQSet& document);

}  // namespace orvane::cli

#endif
