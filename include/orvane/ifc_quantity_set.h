// The records of a quantity-set document: quantity sets with their quantities, and the two plain
// name lists of the document (quantity kinds and host object types).
//
// Texts follow the same rule as the property-set records: zero-terminated, 512-byte fields, bytes
// kept as read.
#ifndef ORVANE_IFC_QUANTITY_SET_H
#define ORVANE_IFC_QUANTITY_SET_H

#include <cstdint>
#include <vector>

#include "orvane/export.h"
#include "orvane/ifc_property_set.h"  // kTextFieldSize

// The kind of a quantity, as held in CIfcQuantityName::measureType. The document's type list is
// expected to hold the three literals in this order, so an index into it is a kind code.
enum QuantityMeasureType : int32_t {
  LengthMeasure = 0,  // "IfcLengthMeasure"
  AreaMeasure = 1,    // "IfcAreaMeasure"
  VolumeMeasure = 2,  // "IfcVolumeMeasure"
};

inline constexpr int kQuantityMeasureCount = 3;
inline constexpr const char* QuantityMeasureNames[kQuantityMeasureCount] = {
    "IfcLengthMeasure", "IfcAreaMeasure", "IfcVolumeMeasure"};

// One quantity of a set.
class ORVANE_API CIfcQuantityName {
 public:
  CIfcQuantityName() { name[0] = description[0] = '\0'; }
  virtual ~CIfcQuantityName();
  CIfcQuantityName(const CIfcQuantityName&) = default;
  CIfcQuantityName(CIfcQuantityName&&) noexcept = default;
  CIfcQuantityName& operator=(const CIfcQuantityName&) = default;
  CIfcQuantityName& operator=(CIfcQuantityName&&) noexcept = default;

  char name[kTextFieldSize];
  char description[kTextFieldSize];
  bool exported = true;
  int32_t measureType = LengthMeasure;
  double value = 0.0;
};

// A quantity set, its quantities in file order, and the host element type it is linked to.
class ORVANE_API CIfcQuantitySet {
 public:
  CIfcQuantitySet() { name[0] = description[0] = typeZep[0] = '\0'; }
  virtual ~CIfcQuantitySet();
  CIfcQuantitySet(const CIfcQuantitySet&) = default;
  CIfcQuantitySet(CIfcQuantitySet&&) noexcept = default;
  CIfcQuantitySet& operator=(const CIfcQuantitySet&) = default;
  CIfcQuantitySet& operator=(CIfcQuantitySet&&) noexcept = default;

  std::vector<CIfcQuantityName> quantities;
  char name[kTextFieldSize];
  char description[kTextFieldSize];
  char typeZep[kTextFieldSize];  // the name of an entry of the document's objects list
};

// An entry of the document's list of quantity kinds.
class ORVANE_API CIfcType {
 public:
  CIfcType() { name[0] = '\0'; }
  virtual ~CIfcType();
  CIfcType(const CIfcType&) = default;
  CIfcType(CIfcType&&) noexcept = default;
  CIfcType& operator=(const CIfcType&) = default;
  CIfcType& operator=(CIfcType&&) noexcept = default;

  char name[kTextFieldSize];
};

// An entry of the document's list of host object types.
class ORVANE_API CIfcObject {
 public:
  CIfcObject() { name[0] = '\0'; }
  virtual ~CIfcObject();
  CIfcObject(const CIfcObject&) = default;
  CIfcObject(CIfcObject&&) noexcept = default;
  CIfcObject& operator=(const CIfcObject&) = default;
  CIfcObject& operator=(CIfcObject&&) noexcept = default;

  char name[kTextFieldSize];
};

#endif
