// Host variable references: a property value that points at a host variable of the catalogue
// instead of holding a literal. Its text is the group's name, a full stop, the variable's name and
// a dollar sign, "Eje.PK$", exactly the catalogue's bytes (a variable that ended its catalogue line
// carries that line feed into the reference). The host resolves it when it exports.
#ifndef ORVANE_EDITORS_ASSIGN_HOST_VARIABLE_H
#define ORVANE_EDITORS_ASSIGN_HOST_VARIABLE_H

#include <string>
#include <string_view>

#include "editors/assign/catalogue.h"

namespace orvane {

// Writes "%s.%s$" of `group` and `variable` into `value`. A pair that does not fit in 512 bytes
// with the full stop, the "$" and the terminator is refused: the result is false and `value` is
// left as it was, since a cut reference would point at another variable or at none.
bool makeReference(std::string_view group, std::string_view variable, char (&value)[512]);

// The value editor's test: a non-empty value whose last character is "$".
bool endsAsReference(std::string_view value);

// The value grid's test: a "$" anywhere. Such a cell is shown read-only.
bool containsReference(std::string_view value);

struct ReferenceParts {
  std::string group;
  std::string variable;
};

// Splits a reference whose final "$" is already removed, as strtok at "." would: leading full stops
// are skipped, the group part runs to the next full stop, and everything after that one, full stops
// included, is the variable part. So "Eje.PK.1" gives ("Eje", "PK.1") and "..Eje" gives ("Eje", "");
// a group name with a full stop of its own does not come back whole.
ReferenceParts splitReference(std::string_view valueWithoutDollar);

// The parts the value editor preselects for any value: a reference is split without its "$", any
// other non-empty text is all group part, and an empty value gives two empty parts.
ReferenceParts partsOfValue(std::string_view value);

struct CatalogueIndex {
  int group = 0;
  int variable = 0;
  friend bool operator==(const CatalogueIndex&, const CatalogueIndex&) = default;
};

// Finds the parts in the catalogue, names compared ignoring ASCII case: the last group whose name
// equals the group part, else group 0; in that group the last variable whose name equals the
// variable part, else variable 0. The indices are positions to preselect, not proof that something
// is there: an empty catalogue gives {0, 0} with no group 0, and a group without variables gives
// variable 0 with no variable 0. Check them with getGrupo / getVariable.
CatalogueIndex resolveReference(const CConjuntoVariableZep& catalogue, const ReferenceParts& parts);

}  // namespace orvane

#endif
