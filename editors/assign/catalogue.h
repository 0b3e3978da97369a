// The host variable catalogue: for each kind of host object (a group), the host properties it can
// compute (its variables). Property values may refer to them instead of holding a literal.
//
// The host publishes it as a text file in its ANSI code page, one group per line:
//     Eje;PK,Cota,Pendiente
// the group's name, a semicolon, then its variables separated by commas. There is no header,
// comment, quoting, escaping or trimming: blanks belong to the names, and the line feed is no
// separator, so the last variable of a line keeps it ("Pendiente\n"). Empty names are skipped; a
// line without any variable is dropped. Names are kept as the file's bytes, duplicates included.
#ifndef ORVANE_EDITORS_ASSIGN_CATALOGUE_H
#define ORVANE_EDITORS_ASSIGN_CATALOGUE_H

#include <cstdio>
#include <string_view>
#include <vector>

#include "orvane/ifc_property_set.h"  // kTextFieldSize

// One host variable.
class CZepVariable {
 public:
  CZepVariable() { name[0] = '\0'; }
  explicit CZepVariable(std::string_view text);  // cut to fit `name`
  virtual ~CZepVariable();
  CZepVariable(const CZepVariable&) = default;
  CZepVariable(CZepVariable&&) noexcept = default;
  CZepVariable& operator=(const CZepVariable&) = default;
  CZepVariable& operator=(CZepVariable&&) noexcept = default;

  char name[kTextFieldSize];
};

// One kind of host object with its variables, in file order.
class CZepGrupo {
 public:
  CZepGrupo() { name[0] = '\0'; }
  explicit CZepGrupo(std::string_view text);  // cut to fit `name`
  virtual ~CZepGrupo();
  CZepGrupo(const CZepGrupo&) = default;
  CZepGrupo(CZepGrupo&&) noexcept = default;
  // Copies the name, empties `variables` and appends a copy of each of the source's, in order.
  CZepGrupo& operator=(const CZepGrupo& other);
  CZepGrupo& operator=(CZepGrupo&&) noexcept = default;

  int getNumVariables() const noexcept;
  // The variable at `index`, or null outside 0 .. getNumVariables() - 1.
  const CZepVariable* getVariable(int index) const noexcept;
  CZepVariable* getVariable(int index) noexcept;

  std::vector<CZepVariable> variables;
  char name[kTextFieldSize];
};

// The catalogue: groups in the order the file lists them, nothing sorted or merged.
class CConjuntoVariableZep {
 public:
  CConjuntoVariableZep() = default;
  virtual ~CConjuntoVariableZep();
  CConjuntoVariableZep(const CConjuntoVariableZep&) = default;
  CConjuntoVariableZep(CConjuntoVariableZep&&) noexcept = default;
  CConjuntoVariableZep& operator=(const CConjuntoVariableZep&) = default;
  CConjuntoVariableZep& operator=(CConjuntoVariableZep&&) noexcept = default;

  // Appends every group `stream` holds, reading it to its end; the stream stays open. Gives 1 when
  // the catalogue has groups afterwards (those of earlier calls count), else 0. A null stream
  // reads nothing. A read error ends reading as the end of the file does.
  int leeFichero(std::FILE* stream);

  int getNumGrupos() const noexcept;
  // The group at `index`, or null outside 0 .. getNumGrupos() - 1.
  const CZepGrupo* getGrupo(int index) const noexcept;
  CZepGrupo* getGrupo(int index) noexcept;

  std::vector<CZepGrupo> groups;

 private:
  void readGroup(char* line);
};

#endif
