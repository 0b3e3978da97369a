#include "document_json.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "model/text_codec.h"
#include "text.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

constexpr const char* kCodePageKey = "windows-1252";

// The host's single-byte text as UTF-8, converted as the library converts it for the editors.
std::string windows1252ToUtf8(const std::string& bytes) { return orvane::toUtf8(orvane::fromAnsi(bytes)); }

// The same bytes back from their UTF-8 form; a character the code page lacks is refused rather than
// turned into the "?" a host would see.
std::string utf8ToWindows1252(const std::string& text, const std::string& where) {
  std::string bytes = orvane::toAnsi(orvane::fromUtf8(text));
  if (windows1252ToUtf8(bytes) != text) throw ToolError(where + ": a character that Windows-1252 does not have");
  return bytes;
}

// ---- reading JSON values, each failure naming its place ----

const Json& member(const Json& object, const char* key, const std::string& where) {
  if (!object.is_object()) throw ToolError(where + ": an object is expected");
  const auto found = object.find(key);
  if (found == object.end()) throw ToolError(where + ": \"" + key + "\" is missing");
  return *found;
}

const Json& arrayMember(const Json& object, const char* key, const std::string& where) {
  const Json& value = member(object, key, where);
  if (!value.is_array()) throw ToolError(where + "." + key + ": an array is expected");
  return value;
}

bool boolMember(const Json& object, const char* key, const std::string& where) {
  const Json& value = member(object, key, where);
  if (!value.is_boolean()) throw ToolError(where + "." + key + ": true or false is expected");
  return value.get<bool>();
}

int32_t int32Of(const Json& value, const std::string& where) {
  if (!value.is_number_integer() || value.get<std::int64_t>() < std::numeric_limits<int32_t>::min() ||
      value.get<std::int64_t>() > std::numeric_limits<int32_t>::max())
    throw ToolError(where + ": a 32-bit integer is expected");
  return static_cast<int32_t>(value.get<std::int64_t>());
}

template <std::size_t N>
void setField(char (&field)[N], const Json& value, const std::string& where) {
  const std::string bytes = textFromJson(value, where);
  if (bytes.size() >= N) throw ToolError(where + ": longer than the " + std::to_string(N - 1) + " bytes a field holds");
  if (bytes.find('\0') != std::string::npos) throw ToolError(where + ": a text cannot hold a NUL character");
  std::memcpy(field, bytes.c_str(), bytes.size() + 1);
}

template <std::size_t N>
void setField(char (&field)[N], const Json& object, const char* key, const std::string& where) {
  setField(field, member(object, key, where), where + "." + key);
}

std::string at(const std::string& where, std::size_t index) { return where + "[" + std::to_string(index) + "]"; }

// ---- numbers a JSON number cannot hold ----

Json realToJson(double value) {
  if (std::isfinite(value)) return value;
  if (std::isnan(value)) return std::signbit(value) ? "-NaN" : "NaN";
  return value > 0 ? "Infinity" : "-Infinity";
}

double realFromJson(const Json& value, const std::string& where) {
  if (value.is_number()) return value.get<double>();
  if (value == "NaN") return std::numeric_limits<double>::quiet_NaN();
  if (value == "-NaN") return -std::numeric_limits<double>::quiet_NaN();
  if (value == "Infinity") return std::numeric_limits<double>::infinity();
  if (value == "-Infinity") return -std::numeric_limits<double>::infinity();
  throw ToolError(where + ": a number (or \"NaN\", \"Infinity\", \"-Infinity\") is expected");
}

// ---- property sets ----

constexpr std::array<const char*, 6> kValueTypeNames{"Integer", "Real", "String", "Enumerated", "Boolean", "DateTime"};

Json unitToJson(int32_t unit) {
  if (unit < 0 || unit >= kUnitCount) throw ToolError("unit index " + std::to_string(unit) + " is not in the unit table");
  return windows1252ToUtf8(UnitTable[unit]);
}

int32_t unitFromJson(const Json& value, const std::string& where) {
  for (int32_t unit = 0; unit < kUnitCount; ++unit)
    if (value.is_string() && value.get<std::string>() == windows1252ToUtf8(UnitTable[unit])) return unit;
  throw ToolError(where + ": not one of the units \"\", m, m2, m3, ºC, gr, J, rad, seg, w");
}

Json propertyValueToJson(const CIfcPropertyName& property) {
  const std::string text = fieldString(property.textValue);
  switch (property.valueType) {
    case PropertyInteger:
      return text.empty() ? Json(property.intValue) : Json{{"reference", textToJson(text)}};
    case PropertyReal:
      return text.empty() ? realToJson(property.realValue) : Json{{"reference", textToJson(text)}};
    case PropertyBoolean:
      return property.intValue == 1;
    default:
      return textToJson(text);
  }
}

void propertyValueFromJson(const Json& value, CIfcPropertyName& property, const std::string& where) {
  const bool numeric = property.valueType == PropertyInteger || property.valueType == PropertyReal;
  if (numeric && value.is_object()) {
    // The library prints an Integer or Real value text as a printf format ("%%" gives "%"), and
    // the JSON holds the text as the file shows it: each "%" doubled here is written as one.
    std::string text = textFromJson(member(value, "reference", where), where + ".reference");
    for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 2)) text.insert(at, 1, '%');
    Json doubled = text;
    setField(property.textValue, doubled, where + ".reference");
  } else if (property.valueType == PropertyInteger) {
    property.intValue = int32Of(value, where);
  } else if (property.valueType == PropertyReal) {
    property.realValue = realFromJson(value, where);
  } else if (property.valueType == PropertyBoolean) {
    if (!value.is_boolean()) throw ToolError(where + ": true or false is expected");
    property.intValue = value.get<bool>() ? 1 : 0;
  } else {
    setField(property.textValue, value, where);
  }
}

Json propertyToJson(const CIfcPropertyName& property) {
  if (property.valueType < 0 || property.valueType >= static_cast<int32_t>(kValueTypeNames.size()))
    throw ToolError("property " + fieldString(property.name) + ": value type " + std::to_string(property.valueType) +
                    " is unknown");
  Json json{{"name", textToJson(fieldString(property.name))},
            {"description", textToJson(fieldString(property.description))},
            {"type", kValueTypeNames[static_cast<std::size_t>(property.valueType)]}};
  if (property.valueType == PropertyEnumerated) json["enumeratedType"] = textToJson(fieldString(property.enumName));
  json["unit"] = unitToJson(property.unit);
  json["rule"] = textToJson(fieldString(property.rule));
  json["optional"] = property.optional;
  json["value"] = propertyValueToJson(property);
  return json;
}

CIfcPropertyName propertyFromJson(const Json& json, const std::string& where) {
  CIfcPropertyName property;
  setField(property.name, json, "name", where);
  setField(property.description, json, "description", where);
  const Json& type = member(json, "type", where);
  int32_t code = -1;
  for (std::size_t i = 0; i < kValueTypeNames.size(); ++i)
    if (type == kValueTypeNames[i]) code = static_cast<int32_t>(i);
  if (code < 0) throw ToolError(where + ".type: one of Integer, Real, String, Enumerated, Boolean, DateTime is expected");
  property.valueType = code;
  if (code == PropertyEnumerated) setField(property.enumName, json, "enumeratedType", where);
  property.unit = unitFromJson(member(json, "unit", where), where + ".unit");
  setField(property.rule, json, "rule", where);
  property.optional = boolMember(json, "optional", where);
  propertyValueFromJson(member(json, "value", where), property, where + ".value");
  return property;
}

Json enumToJson(const CIfcEnum& type) {
  Json values = Json::array();
  for (const CIfcNodoEnum& value : type.elements)
    values.push_back({{"code", value.value}, {"text", textToJson(fieldString(value.text))}});
  return {{"name", textToJson(fieldString(type.name))},
          {"description", textToJson(fieldString(type.description))},
          {"values", values}};
}

CIfcEnum enumFromJson(const Json& json, const std::string& where) {
  CIfcEnum type;
  setField(type.name, json, "name", where);
  setField(type.description, json, "description", where);
  const Json& values = arrayMember(json, "values", where);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string place = at(where + ".values", i);
    CIfcNodoEnum value;
    value.value = int32Of(member(values[i], "code", place), place + ".code");
    setField(value.text, values[i], "text", place);
    type.elements.push_back(value);
  }
  return type;
}

Json propertySetToJson(const CIfcPropertySet& set) {
  Json properties = Json::array();
  for (const CIfcPropertyName& property : set.properties) properties.push_back(propertyToJson(property));
  return {{"name", textToJson(fieldString(set.name))},
          {"description", textToJson(fieldString(set.description))},
          {"properties", properties}};
}

CIfcPropertySet propertySetFromJson(const Json& json, const std::string& where) {
  CIfcPropertySet set;
  setField(set.name, json, "name", where);
  setField(set.description, json, "description", where);
  const Json& properties = arrayMember(json, "properties", where);
  for (std::size_t i = 0; i < properties.size(); ++i)
    set.properties.push_back(propertyFromJson(properties[i], at(where + ".properties", i)));
  return set;
}

// ---- quantity sets ----

Json quantityToJson(const CIfcQuantityName& quantity) {
  const bool known = quantity.measureType >= 0 && quantity.measureType < kQuantityMeasureCount;
  return {{"name", textToJson(fieldString(quantity.name))},
          {"description", textToJson(fieldString(quantity.description))},
          {"kind", known ? Json(QuantityMeasureNames[quantity.measureType]) : Json(quantity.measureType)},
          {"export", quantity.exported},
          {"value", realToJson(quantity.value)}};
}

CIfcQuantityName quantityFromJson(const Json& json, const std::string& where) {
  CIfcQuantityName quantity;
  setField(quantity.name, json, "name", where);
  setField(quantity.description, json, "description", where);
  const Json& kind = member(json, "kind", where);
  quantity.measureType = -1;
  for (int32_t i = 0; i < kQuantityMeasureCount; ++i)
    if (kind == QuantityMeasureNames[i]) quantity.measureType = i;
  // A code of the library's own outside the three kinds (written without a kind attribute).
  if (quantity.measureType < 0) {
    if (!kind.is_number_integer())
      throw ToolError(where + ".kind: IfcLengthMeasure, IfcAreaMeasure or IfcVolumeMeasure is expected");
    quantity.measureType = int32Of(kind, where + ".kind");
  }
  quantity.exported = boolMember(json, "export", where);
  quantity.value = realFromJson(member(json, "value", where), where + ".value");
  return quantity;
}

Json quantitySetToJson(const CIfcQuantitySet& set) {
  Json quantities = Json::array();
  for (const CIfcQuantityName& quantity : set.quantities) quantities.push_back(quantityToJson(quantity));
  return {{"name", textToJson(fieldString(set.name))},
          {"description", textToJson(fieldString(set.description))},
          {"element", textToJson(fieldString(set.typeZep))},
          {"quantities", quantities}};
}

CIfcQuantitySet quantitySetFromJson(const Json& json, const std::string& where) {
  CIfcQuantitySet set;
  setField(set.name, json, "name", where);
  setField(set.description, json, "description", where);
  setField(set.typeZep, json, "element", where);
  const Json& quantities = arrayMember(json, "quantities", where);
  for (std::size_t i = 0; i < quantities.size(); ++i)
    set.quantities.push_back(quantityFromJson(quantities[i], at(where + ".quantities", i)));
  return set;
}

template <class Entry, class List>
Json namesToJson(const List& entries) {
  Json names = Json::array();
  for (const Entry& entry : entries) names.push_back(textToJson(fieldString(entry.name)));
  return names;
}

template <class Entry, class List>
void namesFromJson(const Json& json, const char* key, List& entries) {
  const Json& names = arrayMember(json, key, "document");
  for (std::size_t i = 0; i < names.size(); ++i) {
    Entry entry;
    setField(entry.name, names[i], at(std::string("document.") + key, i));
    entries.push_back(entry);
  }
}

void requireFormat(const Json& json, const char* format) {
  if (!json.is_object() || json.value("format", Json()) != format)
    throw ToolError(std::string("not an ") + format + " document: \"format\" must be \"" + format + "\"");
  if (json.value("version", Json()) != kJsonFormatVersion)
    throw ToolError("\"version\" " + json.value("version", Json()).dump() + " is not known; this tool reads version " +
                    std::to_string(kJsonFormatVersion));
}

}  // namespace

Json textToJson(const std::string& bytes) {
  if (orvane::isValidUtf8(bytes)) return bytes;
  return {{kCodePageKey, windows1252ToUtf8(bytes)}};
}

std::string textFromJson(const Json& value, const std::string& where) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_object() && value.size() == 1 && value.contains(kCodePageKey) && value[kCodePageKey].is_string())
    return utf8ToWindows1252(value[kCodePageKey].get<std::string>(), where);
  throw ToolError(where + ": a text (a string, or {\"windows-1252\": string}) is expected");
}

Json propertyDocumentToJson(const CIfcProyectPSet& document) {
  Json enums = Json::array(), sets = Json::array(), relations = Json::array();
  for (const CIfcEnum& type : document.enums) enums.push_back(enumToJson(type));
  for (const CIfcPropertySet& set : document.propertySets) sets.push_back(propertySetToJson(set));
  for (const CIfcRelationProyectPSet_IfcObject& relation : document.relations)
    relations.push_back({{"set", textToJson(fieldString(relation.pset))},
                         {"object", textToJson(fieldString(relation.object))}});
  return {{"format", kPropertyFormat}, {"version", kJsonFormatVersion}, {"enumeratedTypes", enums},
          {"propertySets", sets},      {"relations", relations}};
}

void propertyDocumentFromJson(const Json& json, CIfcProyectPSet& document) {
  requireFormat(json, kPropertyFormat);
  const Json& enums = arrayMember(json, "enumeratedTypes", "document");
  for (std::size_t i = 0; i < enums.size(); ++i)
    document.enums.push_back(enumFromJson(enums[i], at("enumeratedTypes", i)));
  const Json& sets = arrayMember(json, "propertySets", "document");
  for (std::size_t i = 0; i < sets.size(); ++i)
    document.propertySets.push_back(propertySetFromJson(sets[i], at("propertySets", i)));
  const Json& relations = arrayMember(json, "relations", "document");
  for (std::size_t i = 0; i < relations.size(); ++i) {
    const std::string where = at("relations", i);
    CIfcRelationProyectPSet_IfcObject relation;
    setField(relation.pset, relations[i], "set", where);
    setField(relation.object, relations[i], "object", where);
    document.relations.push_back(relation);
  }
}

Json quantityDocumentToJson(const CIfcProyectQSet& document) {
  Json sets = Json::array();
  for (const CIfcQuantitySet& set : document.quantitySets) sets.push_back(quantitySetToJson(set));
  return {{"format", kQuantityFormat},
          {"version", kJsonFormatVersion},
          {"types", namesToJson<CIfcType>(document.types)},
          {"objects", namesToJson<CIfcObject>(document.objects)},
          {"quantitySets", sets}};
}

void quantityDocumentFromJson(const Json& json, CIfcProyectQSet& document) {
  requireFormat(json, kQuantityFormat);
  namesFromJson<CIfcType>(json, "types", document.types);
  namesFromJson<CIfcObject>(json, "objects", document.objects);
  const Json& sets = arrayMember(json, "quantitySets", "document");
  for (std::size_t i = 0; i < sets.size(); ++i)
    document.quantitySets.push_back(quantitySetFromJson(sets[i], at("quantitySets", i)));
}

}  // namespace orvane::cli
