// What the two exports state, gathered once from a property-set document and, optionally, a
// quantity-set document: sets with their IFC element types and their typed members, every text in
// UTF-8 (a text that is not UTF-8 is read as the host's Windows-1252).
//
// The rules both exports follow:
//   - A set applies to the IFC element types its relations name (a quantity set: its linked
//     element), each once. A name that is no IFC entity name (a host element type such as "Muro")
//     is noted and not used. A set left without element types applies wherever it is found.
//   - A set without members is left out, with a note: IFC has no empty property set, so no model
//     can meet it nor a library hold it.
//   - A member whose name repeats an earlier one of its set (ignoring ASCII case) is left out with
//     a note, as IFC allows one property of a name per set.
//   - An Enumerated property whose type is missing, or has no values, is a plain label, noted.
//   - A relation naming a set the document lacks is noted.
#ifndef ORVANE_EXPORTS_DEFINITIONS_H
#define ORVANE_EXPORTS_DEFINITIONS_H

#include <cstdint>
#include <string>
#include <vector>

class CIfcProyectPSet;
class CIfcProyectQSet;

namespace orvane::exports {

// An enumerated type with its values in file order, each value once.
struct Enumeration {
  std::string name;
  std::vector<std::string> values;
};

// A property or a quantity.
struct Member {
  std::string name;
  std::string description;
  std::string measure;        // IFC defined type: "IfcLengthMeasure", "IfcLabel", ...
  bool optional = false;      // an optional property, or a quantity the host does not export
  int enumeration = -1;       // index into Definitions::enumerations (which has values), or -1
  int32_t quantityKind = -1;  // QuantityMeasureType for a quantity, -1 for a property
};

struct DefinitionSet {
  bool quantities = false;
  std::string name;
  std::string description;
  std::vector<std::string> entities;  // IFC entity names as the document writes them
  std::vector<Member> members;
};

struct Definitions {
  std::vector<DefinitionSet> sets;  // property sets, then quantity sets, each in document order
  std::vector<Enumeration> enumerations;
  std::vector<std::string> notes;   // one line for each thing not exported as the document has it
};

// `quantities` may be null.
Definitions collectDefinitions(const CIfcProyectPSet& properties, const CIfcProyectQSet* quantities);

}  // namespace orvane::exports

#endif
