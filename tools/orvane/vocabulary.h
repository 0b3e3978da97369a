// The words the tool prints and reads for property types, units and quantity kinds.
#ifndef ORVANE_TOOLS_VOCABULARY_H
#define ORVANE_TOOLS_VOCABULARY_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane::cli {

// "Integer", "Real", "String", "Enumerated", "Boolean", "DateTime"; the number for another code.
std::string typeWord(int32_t valueType);
// Those words in any letter case.
std::optional<int32_t> typeFromWord(std::string_view word);
// "Integer, Real, String, Enumerated, Boolean or DateTime", for messages.
std::string typeWordList();

// The unit's name in UTF-8 ("" for none, "m", ..., "ºC"); the number for an index off the table.
std::string unitName(int32_t unit);
// A unit name in any letter case; "ºC" also as the documents' own Windows-1252 byte. "" is 0.
std::optional<int32_t> unitFromName(std::string_view name);
std::string unitNameList();

// "length", "area", "volume"; the number for another code.
std::string kindWord(int32_t measureType);
// Those words or "IfcLengthMeasure", "IfcAreaMeasure", "IfcVolumeMeasure", in any letter case.
std::optional<int32_t> kindFromWord(std::string_view word);

}  // namespace orvane::cli

#endif
