// CIfcProyectPSet: the property-set document of a project, read from and written to one XML file
// (root element "PropertySetsBIM").
#ifndef ORVANE_IFC_PROYECT_PSET_H
#define ORVANE_IFC_PROYECT_PSET_H

#include <vector>

#include "orvane/export.h"
#include "orvane/ifc_property_set.h"

class ORVANE_API CIfcProyectPSet {
 public:
  CIfcProyectPSet();
  CIfcProyectPSet(const CIfcProyectPSet& other);
  CIfcProyectPSet(CIfcProyectPSet&& other) noexcept;
  CIfcProyectPSet& operator=(const CIfcProyectPSet& other);
  CIfcProyectPSet& operator=(CIfcProyectPSet&& other) noexcept;
  virtual ~CIfcProyectPSet();

  // Reads the file at `path` and appends its enumerated types, sets and relations to the lists
  // (nothing is emptied first); then sorts enums and propertySets by name, ignoring ASCII case.
  // Returns 1, or 0 when the file cannot be opened or is not well-formed XML (no message), or when
  // its root is not "PropertySetsBIM" ("Error lectura XML. CIfcProyectPSet"). A record that fails
  // to read shows its own message and ends the reading of its list; what was read stays.
  int lee(const char* path);

  // Writes the document to `path`, first copying an existing file there to path + ".bak".
  // Always returns 1: a file that cannot be written is left as it was, and that is the only trace.
  int graba(const char* path);

  // Kept for the host's interface: does nothing and returns 0.
  int edita();

  std::vector<CIfcPropertySet> propertySets;
  std::vector<CIfcEnum> enums;
  std::vector<CIfcRelationProyectPSet_IfcObject> relations;
};

#endif
