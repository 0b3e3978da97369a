// CIfcProyectQSet: the quantity-set document, read from and written to one XML file
// (root element "QuantitiesSetQuorsel").
#ifndef ORVANE_IFC_PROYECT_QSET_H
#define ORVANE_IFC_PROYECT_QSET_H

#include <vector>

#include "orvane/export.h"
#include "orvane/ifc_quantity_set.h"

class ORVANE_API CIfcProyectQSet {
 public:
  CIfcProyectQSet();
  CIfcProyectQSet(const CIfcProyectQSet& other);
  CIfcProyectQSet(CIfcProyectQSet&& other) noexcept;
  CIfcProyectQSet& operator=(const CIfcProyectQSet& other);
  CIfcProyectQSet& operator=(CIfcProyectQSet&& other) noexcept;
  virtual ~CIfcProyectQSet();

  // Reads the file at `path` and appends its types, objects and sets to the lists; then sorts
  // quantitySets by name, ignoring ASCII case. Returns 1, or 0 when the file cannot be opened or
  // is not well-formed XML (no message). A file without a "QuantitiesSetQuorsel" root reads as
  // empty and returns 1. A record that fails to read shows its message and ends its list.
  int lee(const char* path);

  // Writes the document to `path`, first copying an existing file there to path + ".bak".
  // Always returns 1.
  int graba(const char* path);

  // Kept for the host's interface: does nothing and returns 0.
  int edita();

  std::vector<CIfcQuantitySet> quantitySets;
  std::vector<CIfcType> types;
  std::vector<CIfcObject> objects;
};

#endif
