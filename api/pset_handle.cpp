// The property-set document behind an opaque handle, for hosts that don't use the exported class.
#include <cfloat>
#include <memory>
#include <new>
#include <string_view>

#include "api/guard.h"
#include "model/names.h"
#include "model/text.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/orvane.h"

using orvane::api::guarded;

namespace {

CIfcProyectPSet* document(void* doc) { return static_cast<CIfcProyectPSet*>(doc); }

// The set at `set`, or null when the index is outside the list.
CIfcPropertySet* setAt(void* doc, int set) {
  if (doc == nullptr || set < 0) return nullptr;
  std::vector<CIfcPropertySet>& sets = document(doc)->propertySets;
  return static_cast<std::size_t>(set) < sets.size() ? &sets[static_cast<std::size_t>(set)] : nullptr;
}

// The property at (`set`, `property`), or null when either index is outside its list; the set
// index is checked first.
CIfcPropertyName* propertyAt(void* doc, int set, int property) {
  CIfcPropertySet* found = setAt(doc, set);
  if (found == nullptr || property < 0) return nullptr;
  std::vector<CIfcPropertyName>& properties = found->properties;
  return static_cast<std::size_t>(property) < properties.size()
             ? &properties[static_cast<std::size_t>(property)]
             : nullptr;
}

// Appends a property named `name` of `type`, its value given by `setValue`, to the last set and
// returns it; null when there is no set to hold it.
template <class SetValue>
void* appendProperty(void* doc, const char* name, PropertyValueType type, SetValue setValue) {
  if (doc == nullptr || name == nullptr) return nullptr;
  std::vector<CIfcPropertySet>& sets = document(doc)->propertySets;
  if (sets.empty()) return nullptr;
  CIfcPropertyName property;
  orvane::copyText(property.name, name);
  property.valueType = type;
  setValue(property);
  return &sets.back().properties.emplace_back(std::move(property));
}

const char* textValueOf(const CIfcPropertyName* property) {
  if (property == nullptr) return nullptr;
  if (property->valueType != PropertyString && property->valueType != PropertyEnumerated) return nullptr;
  return property->textValue;
}

}  // namespace

extern "C" {

void* nuevoIfcProyectPSet(void) noexcept { return new (std::nothrow) CIfcProyectPSet; }

void* cargaIfcProyectPSet(const char* path) noexcept {
  if (path == nullptr) return nullptr;
  return guarded<void*>(nullptr, [&]() -> void* {
    auto doc = std::make_unique<CIfcProyectPSet>();
    if (doc->lee(path) != 1) return nullptr;
    return doc.release();
  });
}

void* nuevoPSet(void* doc, const char* name) noexcept {
  if (doc == nullptr || name == nullptr) return nullptr;
  return guarded<void*>(nullptr, [&]() -> void* {
    CIfcPropertySet set;
    orvane::copyText(set.name, name);
    return &document(doc)->propertySets.emplace_back(std::move(set));
  });
}

void* nuevaPropiedadDoble(void* doc, const char* name, double value) noexcept {
  return guarded<void*>(nullptr, [&] {
    return appendProperty(doc, name, PropertyReal, [&](CIfcPropertyName& p) { p.realValue = value; });
  });
}

void* nuevaPropiedadStr(void* doc, const char* name, const char* value) noexcept {
  if (value == nullptr) return nullptr;
  return guarded<void*>(nullptr, [&] {
    return appendProperty(doc, name, PropertyString,
                          [&](CIfcPropertyName& p) { orvane::copyText(p.textValue, value); });
  });
}

const char* getPset(void* doc, int set) noexcept {
  const CIfcPropertySet* found = setAt(doc, set);
  return found != nullptr ? found->name : nullptr;
}

const char* getNombrePropiedad(void* doc, int set, int property) noexcept {
  const CIfcPropertyName* found = propertyAt(doc, set, property);
  return found != nullptr ? found->name : nullptr;
}

int getUnidadPropiedad(void* doc, int set, int property) noexcept {
  const CIfcPropertyName* found = propertyAt(doc, set, property);
  return found != nullptr ? found->unit : 0;
}

double getValorPropiedadDoble(void* doc, int set, int property) noexcept {
  const CIfcPropertyName* found = propertyAt(doc, set, property);
  if (found == nullptr) return DBL_MAX;
  if (found->valueType == PropertyReal) return found->realValue;
  if (found->valueType == PropertyInteger) return found->intValue;
  return DBL_MAX;
}

const char* getValorPropiedadStr(void* doc, int set, int property) noexcept {
  return textValueOf(propertyAt(doc, set, property));
}

const char* getValorPropiedadStr2(void* doc, const char* setName, const char* propName) noexcept {
  if (doc == nullptr || setName == nullptr || propName == nullptr) return nullptr;
  for (CIfcPropertySet& set : document(doc)->propertySets) {
    if (!orvane::equalsNoCase(set.name, setName)) continue;
    for (CIfcPropertyName& property : set.properties)
      if (orvane::equalsNoCase(property.name, propName)) return textValueOf(&property);
    return nullptr;  // only the first set of that name is searched
  }
  return nullptr;
}

int guardaIfcProyectPset(void* doc, const char* path) noexcept {
  if (doc == nullptr || path == nullptr) return 0;
  return guarded(0, [&] { return document(doc)->graba(path); });
}

void liberaIfcProyectPset(void* doc) noexcept { delete document(doc); }

}  // extern "C"

void* nuevaPropiedadEntera(void* doc, const char* name, int value) noexcept {
  return guarded<void*>(nullptr, [&] {
    return appendProperty(doc, name, PropertyInteger, [&](CIfcPropertyName& p) { p.intValue = value; });
  });
}
