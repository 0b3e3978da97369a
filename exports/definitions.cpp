#include "exports/definitions.h"

#include <string_view>

#include "exports/measure_types.h"
#include "model/names.h"
#include "model/text.h"
#include "model/text_codec.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"

namespace orvane::exports {

namespace {

// XML 1.0 has no place for the C0 controls but tab, line feed and carriage return: each becomes
// U+FFFD, in both exports alike.
std::string withoutControls(std::string text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c < 0x20 && c != '\t' && c != '\n' && c != '\r') text.replace(i, 1, "\xEF\xBF\xBD");
  }
  return text;
}

template <std::size_t N>
std::string utf8(const char (&field)[N]) {
  return withoutControls(hostTextToUtf8(fieldText(field)));
}

bool containsNoCase(const std::vector<std::string>& names, std::string_view name) {
  for (const std::string& known : names)
    if (equalsNoCase(known, name)) return true;
  return false;
}

// Adds `entity` to the set's element types unless it is there already or names no IFC entity.
void addEntity(DefinitionSet& set, std::string entity, Definitions& out) {
  if (!isIfcEntityName(entity)) {
    out.notes.push_back(set.name + ": \"" + entity + "\" is no IFC entity name, not used as its element type");
    return;
  }
  if (!containsNoCase(set.entities, entity)) set.entities.push_back(std::move(entity));
}

// The index of the enumeration for type `name`, added on first use; -1 when the document lacks the
// type or the type has no values (a label then states the property without restriction).
int enumerationFor(const CIfcProyectPSet& document, std::string_view name, const std::string& where,
                   Definitions& out) {
  const std::string wanted = withoutControls(hostTextToUtf8(name));
  for (std::size_t i = 0; i < out.enumerations.size(); ++i)
    if (equalsNoCase(out.enumerations[i].name, wanted)) return static_cast<int>(i);
  for (const CIfcEnum& type : document.enums) {
    if (!equalsNoCase(fieldText(type.name), name)) continue;
    Enumeration enumeration{utf8(type.name), {}};
    for (const CIfcNodoEnum& value : type.elements) {
      std::string text = utf8(value.text);
      bool seen = false;
      for (const std::string& known : enumeration.values) seen = seen || known == text;
      if (!seen) enumeration.values.push_back(std::move(text));
    }
    if (enumeration.values.empty()) {
      out.notes.push_back(where + ": enumerated type \"" + enumeration.name + "\" has no values, stated as a plain label");
      return -1;
    }
    out.enumerations.push_back(std::move(enumeration));
    return static_cast<int>(out.enumerations.size() - 1);
  }
  out.notes.push_back(where + ": enumerated type \"" + wanted + "\" is not in the document, stated as a plain label");
  return -1;
}

// Appends `member` unless its set has one of that name already.
void addMember(DefinitionSet& set, Member member, Definitions& out) {
  for (const Member& known : set.members) {
    if (equalsNoCase(known.name, member.name)) {
      out.notes.push_back(set.name + "." + member.name + ": a second member of that name, left out");
      return;
    }
  }
  set.members.push_back(std::move(member));
}

// The set goes out only with members; an empty one is noted instead.
void keepIfFilled(DefinitionSet&& set, Definitions& out) {
  if (set.members.empty()) out.notes.push_back(set.name + ": no " + (set.quantities ? "quantities" : "properties") + ", left out");
  else out.sets.push_back(std::move(set));
}

void collectPropertySets(const CIfcProyectPSet& document, Definitions& out) {
  for (const CIfcRelationProyectPSet_IfcObject& relation : document.relations) {
    bool found = false;
    for (const CIfcPropertySet& set : document.propertySets) found = found || equalsNoCase(fieldText(set.name), fieldText(relation.pset));
    if (!found) out.notes.push_back(utf8(relation.pset) + ": the relation to " + utf8(relation.object) + " names no set of the document");
  }
  for (const CIfcPropertySet& source : document.propertySets) {
    DefinitionSet set;
    set.name = utf8(source.name);
    set.description = utf8(source.description);
    for (const CIfcRelationProyectPSet_IfcObject& relation : document.relations)
      if (equalsNoCase(fieldText(relation.pset), fieldText(source.name))) addEntity(set, utf8(relation.object), out);
    for (const CIfcPropertyName& property : source.properties) {
      Member member;
      member.name = utf8(property.name);
      member.description = utf8(property.description);
      member.measure = std::string(propertyMeasure(property.valueType, property.unit));
      member.optional = property.optional;
      if (property.valueType == PropertyEnumerated)
        member.enumeration = enumerationFor(document, fieldText(property.enumName), set.name + "." + member.name, out);
      addMember(set, std::move(member), out);
    }
    keepIfFilled(std::move(set), out);
  }
}

void collectQuantitySets(const CIfcProyectQSet& document, Definitions& out) {
  for (const CIfcQuantitySet& source : document.quantitySets) {
    DefinitionSet set;
    set.quantities = true;
    set.name = utf8(source.name);
    set.description = utf8(source.description);
    if (source.typeZep[0] != '\0') addEntity(set, utf8(source.typeZep), out);
    for (const CIfcQuantityName& quantity : source.quantities) {
      Member member;
      member.name = utf8(quantity.name);
      member.description = utf8(quantity.description);
      member.measure = std::string(quantityMeasure(quantity.measureType));
      member.optional = !quantity.exported;
      member.quantityKind = quantity.measureType;
      addMember(set, std::move(member), out);
    }
    keepIfFilled(std::move(set), out);
  }
}

}  // namespace

Definitions collectDefinitions(const CIfcProyectPSet& properties, const CIfcProyectQSet* quantities) {
  Definitions out;
  collectPropertySets(properties, out);
  if (quantities != nullptr) collectQuantitySets(*quantities, out);
  return out;
}

}  // namespace orvane::exports
