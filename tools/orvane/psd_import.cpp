#include "psd_import.h"

#include <algorithm>
#include <iomanip>
#include <set>

#include "psd_types.h"
#include "text.h"

namespace orvane::cli {

namespace {

// Property shapes of the PSD that a property of a document cannot hold.
const std::map<std::string, std::string>& unsupportedShapes() {
  static const std::map<std::string, std::string> shapes{
      {"TypePropertyBoundedValue", "bounded value (a range of values)"},
      {"TypePropertyTableValue", "table value (defining and defined values)"},
      {"TypePropertyListValue", "list value (several values)"},
      {"TypePropertyReferenceValue", "reference value (refers to another IFC entity)"},
      {"TypeComplexProperty", "complex property (properties within a property)"},
  };
  return shapes;
}

std::string item(const std::string& set, const std::string& member) { return set + "." + member; }

// Copies `text` into a record's field, reporting a cut.
template <std::size_t N>
void fit(char (&field)[N], const std::string& text, const std::string& what, const std::string& where,
         ImportReport& report) {
  if (!copyField(field, text)) report.changed(what + " cut to " + std::to_string(N - 1) + " bytes", where);
}

// Enumerated types by name. A list whose name is taken by other values is kept under another
// name, so no property ends up offering the wrong values.
class EnumRegistry {
 public:
  std::string add(const std::string& name, const std::vector<std::string>& values, const std::string& setName,
                  const std::string& where, ImportReport& report) {
    const std::string chosen = nameFor(name, values, setName);
    if (!equalsNoCase(chosen, name))
      report.changed("enumerated type renamed, its name was taken by other values", where + ": " + name + " -> " + chosen);
    return chosen;
  }

  // The name of a list already known with exactly these values.
  std::optional<std::string> identical(const std::vector<std::string>& values) const {
    for (const Entry& entry : entries_)
      if (entry.values == values) return entry.name;
    return std::nullopt;
  }

  std::vector<CIfcEnum> types(ImportReport& report) const {
    std::vector<CIfcEnum> types;
    for (const Entry& entry : entries_) types.push_back(enumType(entry, report));
    return types;
  }

 private:
  struct Entry {
    std::string name;
    std::vector<std::string> values;
  };

  // The name `values` are kept under: the entry of that name or of one of its variants with the
  // same values, or a new entry, named `name` if free, else after the set.
  std::string nameFor(const std::string& name, const std::vector<std::string>& values, const std::string& setName) {
    std::vector<std::size_t>& variants = variants_[foldCase(name)];
    for (const std::size_t i : variants)
      if (entries_[i].values == values) return entries_[i].name;
    std::string candidate = variants.empty() ? name : name + "_" + setName;
    for (int n = 2; byName_.count(foldCase(candidate)) > 0; ++n) candidate = name + "_" + setName + "_" + std::to_string(n);
    byName_.emplace(foldCase(candidate), entries_.size());
    variants.push_back(entries_.size());
    entries_.push_back({candidate, values});
    return candidate;
  }

  static CIfcEnum enumType(const Entry& entry, ImportReport& report) {
    CIfcEnum type;
    fit(type.name, entry.name, "enumerated type name", entry.name, report);
    int32_t code = 1;
    for (const std::string& value : entry.values) {
      // A value without text would make the whole list unreadable to the library.
      if (value.empty()) {
        report.leftOut("empty enumeration value", entry.name);
        continue;
      }
      CIfcNodoEnum node;
      node.value = code++;
      fit(node.text, value, "enumeration value", item(entry.name, value), report);
      type.elements.push_back(node);
    }
    if (type.elements.empty()) report.changed("enumerated type without values", entry.name);
    return type;
  }

  std::vector<Entry> entries_;
  std::map<std::string, std::size_t> byName_;                 // folded name -> entry
  std::map<std::string, std::vector<std::size_t>> variants_;  // folded name asked for -> entries
};

// The sets and properties that go in: the first of a name wins, nameless ones stay out.
std::vector<PsdSet> selectSets(const std::vector<PsdSet>& sets, bool withQuantities, ImportReport& report) {
  std::vector<PsdSet> selected;
  std::set<std::string> seen;
  for (const PsdSet& set : sets) {
    if (set.quantities && !withQuantities) {
      report.leftOut("quantity set (no --qto file given)", set.name);
      continue;
    }
    if (!seen.insert(foldCase(set.name)).second) {
      report.leftOut("set name already imported", set.name + " (" + set.source.filename().string() + ")");
      continue;
    }
    PsdSet kept = set;
    kept.properties.clear();
    std::set<std::string> names;
    for (const PsdProperty& property : set.properties) {
      if (property.name.empty()) report.leftOut("property without a name", set.name);
      else if (!names.insert(foldCase(property.name)).second) report.leftOut("property name repeated in its set", item(set.name, property.name));
      else kept.properties.push_back(property);
    }
    selected.push_back(std::move(kept));
  }
  return selected;
}

// Gives every enumerated property the name of its type in the registry. Named lists go first, so
// that an unnamed list can take the name of an identical named one wherever it comes.
void resolveEnumerations(std::vector<PsdSet>& sets, EnumRegistry& registry, ImportReport& report) {
  for (PsdSet& set : sets)
    for (PsdProperty& property : set.properties)
      if (property.hasEnumListName)
        property.enumName = registry.add(property.enumName, property.enumValues, set.name, item(set.name, property.name), report);
  for (PsdSet& set : sets) {
    for (PsdProperty& property : set.properties) {
      if (property.shape != "TypePropertyEnumeratedValue" || property.hasEnumListName) continue;
      const std::string where = item(set.name, property.name);
      if (const std::optional<std::string> same = registry.identical(property.enumValues)) {
        property.enumName = *same;
        report.changed("unnamed value list given the name of an identical list", where + ": " + *same);
      } else {
        property.enumName = registry.add("PEnum_" + property.name, property.enumValues, set.name, where, report);
        report.changed("unnamed value list named PEnum_<property>", where + ": " + property.enumName);
      }
    }
  }
}

std::optional<ValueMapping> propertyMapping(const std::string& setName, const PsdProperty& property, ImportReport& report) {
  const std::string where = item(setName, property.name);
  if (property.shape == "TypePropertyEnumeratedValue") return ValueMapping{PropertyEnumerated, 0, ""};
  if (property.shape == "TypePropertySingleValue") {
    std::optional<ValueMapping> mapping = mapDataType(property.dataType);
    if (!mapping) report.leftOut("data type not representable", where + " (" + property.dataType + ")");
    else if (!mapping->loss.empty()) report.changed(mapping->loss, where + (property.dataType.empty() ? "" : " (" + property.dataType + ")"));
    return mapping;
  }
  const auto unsupported = unsupportedShapes().find(property.shape);
  report.leftOut(unsupported != unsupportedShapes().end() ? unsupported->second : "unknown property type", where);
  return std::nullopt;
}

CIfcPropertyName makeProperty(const std::string& setName, const PsdProperty& source, const ValueMapping& mapping,
                              ImportReport& report) {
  const std::string where = item(setName, source.name);
  CIfcPropertyName property;
  fit(property.name, source.name, "property name", where, report);
  fit(property.description, source.definition, "description", where, report);
  property.valueType = mapping.valueType;
  property.unit = mapping.unit;
  property.optional = true;  // IFC makes every property of a set optional
  if (mapping.valueType == PropertyEnumerated) fit(property.enumName, source.enumName, "enumerated type name", where, report);
  return property;
}

// "IfcActuator/ELECTRICACTUATOR" names an entity and one of its predefined types; a relation
// holds the entity alone.
std::string entityOf(const std::string& applicableClass, const std::string& setName, ImportReport& report) {
  const std::size_t slash = applicableClass.find('/');
  if (slash == std::string::npos) return applicableClass;
  report.changed("predefined type dropped from an applicable class", setName + ": " + applicableClass);
  return std::string(trim(std::string_view(applicableClass).substr(0, slash)));
}

std::vector<std::string> entities(const PsdSet& set, ImportReport& report) {
  std::vector<std::string> found;
  for (const std::string& applicableClass : set.applicableClasses) {
    if (applicableClass.empty()) {
      report.leftOut("empty applicable class", set.name);
      continue;
    }
    const std::string entity = entityOf(applicableClass, set.name, report);
    const bool known = std::any_of(found.begin(), found.end(), [&](const std::string& e) { return equalsNoCase(e, entity); });
    if (!known) found.push_back(entity);
  }
  return found;
}

void addPropertySet(const PsdSet& source, CIfcProyectPSet& document, ImportReport& report) {
  CIfcPropertySet set;
  fit(set.name, source.name, "set name", source.name, report);
  fit(set.description, source.definition, "description", source.name, report);
  for (const PsdProperty& property : source.properties)
    if (const std::optional<ValueMapping> mapping = propertyMapping(source.name, property, report))
      set.properties.push_back(makeProperty(source.name, property, *mapping, report));
  document.propertySets.push_back(std::move(set));
  for (const std::string& entity : entities(source, report)) {
    CIfcRelationProyectPSet_IfcObject relation;
    fit(relation.pset, source.name, "set name", source.name, report);
    fit(relation.object, entity, "applicable class", source.name, report);
    document.relations.push_back(relation);
  }
}

CIfcQuantitySet makeQuantitySet(const PsdSet& source, std::vector<std::string>& objects, ImportReport& report) {
  CIfcQuantitySet set;
  fit(set.name, source.name, "set name", source.name, report);
  fit(set.description, source.definition, "description", source.name, report);
  const std::vector<std::string> linked = entities(source, report);
  if (!linked.empty()) {
    fit(set.typeZep, linked.front(), "applicable class", source.name, report);
    objects.push_back(linked.front());
  }
  for (std::size_t i = 1; i < linked.size(); ++i)
    report.changed("applicable class not linked (a quantity set links one element type)", source.name + ": " + linked[i]);
  std::set<std::string> names;
  for (const PsdQuantity& definition : source.quantityDefs) {
    const std::string where = item(source.name, definition.name);
    const std::optional<int32_t> kind = mapQuantityKind(definition.kind);
    if (definition.name.empty()) {
      report.leftOut("quantity without a name", source.name);
      continue;
    }
    if (!kind) {
      report.leftOut("quantity kind " + definition.kind + " (only lengths, areas and volumes are kept)", where);
      continue;
    }
    if (!names.insert(foldCase(definition.name)).second) {
      report.leftOut("quantity name repeated in its set", where);
      continue;
    }
    CIfcQuantityName quantity;
    fit(quantity.name, definition.name, "quantity name", where, report);
    fit(quantity.description, definition.definition, "description", where, report);
    quantity.measureType = *kind;
    set.quantities.push_back(quantity);
  }
  return set;
}

template <class Record>
void sortByName(std::vector<Record>& records) {
  std::stable_sort(records.begin(), records.end(),
                   [](const Record& a, const Record& b) { return lessNoCase(a.name, b.name); });
}

void fillQuantityDocument(const std::vector<PsdSet>& sets, CIfcProyectQSet& document, ImportReport& report) {
  for (const char* kind : QuantityMeasureNames) {
    CIfcType type;
    copyField(type.name, kind);
    document.types.push_back(type);
  }
  std::vector<std::string> objects;
  for (const PsdSet& set : sets)
    if (set.quantities) document.quantitySets.push_back(makeQuantitySet(set, objects, report));
  std::sort(objects.begin(), objects.end(), lessNoCase);
  objects.erase(std::unique(objects.begin(), objects.end(), [](const std::string& a, const std::string& b) { return equalsNoCase(a, b); }),
                objects.end());
  for (const std::string& name : objects) {
    CIfcObject object;
    fit(object.name, name, "applicable class", name, report);
    document.objects.push_back(object);
  }
  sortByName(document.quantitySets);
}

}  // namespace

void ImportReport::print(std::ostream& out, bool items) const {
  std::size_t largest = 0;
  for (const auto* reasons : {&leftOut_, &changed_})
    for (const auto& reason : *reasons) largest = std::max(largest, reason.second.size());
  const int width = static_cast<int>(std::to_string(largest).size());
  const auto section = [&](const char* title, const std::map<std::string, std::vector<std::string>>& reasons) {
    if (reasons.empty()) return;
    std::vector<const std::pair<const std::string, std::vector<std::string>>*> ordered;
    for (const auto& reason : reasons) ordered.push_back(&reason);
    std::stable_sort(ordered.begin(), ordered.end(), [](auto a, auto b) { return a->second.size() > b->second.size(); });
    out << title << '\n';
    for (const auto* reason : ordered) {
      out << "  " << std::setw(width) << reason->second.size() << "  " << reason->first << '\n';
      if (items)
        for (const std::string& entry : reason->second) out << "        " << entry << '\n';
    }
  };
  section("Left out:", leftOut_);
  section("Kept with changes:", changed_);
}

ImportResult importSets(const std::vector<PsdSet>& sets, bool withQuantities, ImportReport& report) {
  std::vector<PsdSet> selected = selectSets(sets, withQuantities, report);
  EnumRegistry registry;
  resolveEnumerations(selected, registry, report);
  ImportResult result;
  for (const PsdSet& set : selected)
    if (!set.quantities) addPropertySet(set, result.properties, report);
  result.properties.enums = registry.types(report);
  sortByName(result.properties.propertySets);
  sortByName(result.properties.enums);
  if (withQuantities) fillQuantityDocument(selected, result.quantities, report);
  return result;
}

}  // namespace orvane::cli
