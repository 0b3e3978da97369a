// The records of a property-set document: enumerated types with their values, property sets with
// their property definitions, and the relations of IFC element types to property sets.
//
// Every text is a zero-terminated narrow text in a 512-byte field (at most 511 bytes). The library
// cuts longer texts when it fills a field; a host that writes a field itself keeps within it.
// Texts are the bytes the file or the editors gave: the library converts no code page.
#ifndef ORVANE_IFC_PROPERTY_SET_H
#define ORVANE_IFC_PROPERTY_SET_H

#include <cstdint>
#include <vector>

#include "orvane/export.h"

inline constexpr int kTextFieldSize = 512;

// The type of a property's value, as held in CIfcPropertyName::valueType.
enum PropertyValueType : int32_t {
  PropertyInteger = 0,
  PropertyReal = 1,
  PropertyString = 2,
  PropertyEnumerated = 3,  // the value is one literal of the CIfcEnum named by enumName
  PropertyBoolean = 4,
  PropertyDateTime = 5,
};

// Unit names by CIfcPropertyName::unit. Index 0 is "no unit". The degree sign of "ºC" is the single
// Windows-1252 byte 0xBA, as the host writes it.
inline constexpr int kUnitCount = 10;
inline constexpr const char* UnitTable[kUnitCount] = {"", "m", "m2", "m3", ("\xBA" "C"),
                                                      "gr", "J", "rad", "seg", "w"};

// One value of an enumerated type.
class ORVANE_API CIfcNodoEnum {
 public:
  CIfcNodoEnum() { text[0] = '\0'; }
  virtual ~CIfcNodoEnum();
  CIfcNodoEnum(const CIfcNodoEnum&) = default;
  CIfcNodoEnum(CIfcNodoEnum&&) noexcept = default;
  CIfcNodoEnum& operator=(const CIfcNodoEnum&) = default;
  CIfcNodoEnum& operator=(CIfcNodoEnum&&) noexcept = default;

  int32_t value = 0;
  char text[kTextFieldSize];
};

// An enumerated type: a named list of values, in file order.
class ORVANE_API CIfcEnum {
 public:
  CIfcEnum() { name[0] = description[0] = '\0'; }
  virtual ~CIfcEnum();
  CIfcEnum(const CIfcEnum&) = default;
  CIfcEnum(CIfcEnum&&) noexcept = default;
  CIfcEnum& operator=(const CIfcEnum&) = default;
  CIfcEnum& operator=(CIfcEnum&&) noexcept = default;

  std::vector<CIfcNodoEnum> elements;
  char name[kTextFieldSize];
  char description[kTextFieldSize];
};

// One property definition with its current value.
//
// An Integer or Real property holds either a number (intValue / realValue, textValue empty) or a
// reference to a host variable in textValue ("Group.Variable$"); a non-empty textValue wins when
// the value is written. A Boolean keeps its value in intValue (1 = yes).
class ORVANE_API CIfcPropertyName {
 public:
  CIfcPropertyName() { name[0] = description[0] = rule[0] = textValue[0] = enumName[0] = '\0'; }
  virtual ~CIfcPropertyName();
  CIfcPropertyName(const CIfcPropertyName&) = default;
  CIfcPropertyName(CIfcPropertyName&&) noexcept = default;
  CIfcPropertyName& operator=(const CIfcPropertyName&) = default;
  CIfcPropertyName& operator=(CIfcPropertyName&&) noexcept = default;

  char name[kTextFieldSize];
  char description[kTextFieldSize];
  char rule[kTextFieldSize];  // free text, carried through unchanged
  int32_t valueType = PropertyInteger;
  bool optional = false;
  int32_t intValue = 0;
  double realValue = 0.0;
  char textValue[kTextFieldSize];
  char enumName[kTextFieldSize];  // for an Enumerated property: the name of its CIfcEnum
  int32_t unit = 0;               // index into UnitTable
};

// A property set and its properties, in file or insertion order.
class ORVANE_API CIfcPropertySet {
 public:
  CIfcPropertySet() { name[0] = description[0] = '\0'; }
  virtual ~CIfcPropertySet();
  CIfcPropertySet(const CIfcPropertySet&) = default;
  CIfcPropertySet(CIfcPropertySet&&) noexcept = default;
  CIfcPropertySet& operator=(const CIfcPropertySet&) = default;
  CIfcPropertySet& operator=(CIfcPropertySet&&) noexcept = default;

  std::vector<CIfcPropertyName> properties;
  char name[kTextFieldSize];
  char description[kTextFieldSize];
  bool selected = false;  // editor state: copied with the record, never read from or written to a file
};

// The assignment of a property set (by name) to an IFC element type.
class ORVANE_API CIfcRelationProyectPSet_IfcObject {
 public:
  CIfcRelationProyectPSet_IfcObject() { pset[0] = object[0] = '\0'; }
  virtual ~CIfcRelationProyectPSet_IfcObject();
  CIfcRelationProyectPSet_IfcObject(const CIfcRelationProyectPSet_IfcObject&) = default;
  CIfcRelationProyectPSet_IfcObject(CIfcRelationProyectPSet_IfcObject&&) noexcept = default;
  CIfcRelationProyectPSet_IfcObject& operator=(const CIfcRelationProyectPSet_IfcObject&) = default;
  CIfcRelationProyectPSet_IfcObject& operator=(CIfcRelationProyectPSet_IfcObject&&) noexcept = default;

  char pset[kTextFieldSize];
  char object[kTextFieldSize];
};

#endif
