#include "editors/assign/host_variable.h"

#include <cstring>

#include "model/names.h"
#include "model/text.h"

namespace orvane {

bool makeReference(std::string_view group, std::string_view variable, char (&value)[512]) {
  // group, ".", variable, "$" and the terminator
  if (group.size() > sizeof value - 3 || variable.size() > sizeof value - 3 - group.size()) return false;
  char* out = value;
  std::memcpy(out, group.data(), group.size());
  out += group.size();
  *out++ = '.';
  std::memcpy(out, variable.data(), variable.size());
  out += variable.size();
  *out++ = '$';
  *out = '\0';
  return true;
}

bool endsAsReference(std::string_view value) { return !value.empty() && value.back() == '$'; }

bool containsReference(std::string_view value) { return value.find('$') != std::string_view::npos; }

ReferenceParts splitReference(std::string_view valueWithoutDollar) {
  ReferenceParts parts;
  const std::size_t start = valueWithoutDollar.find_first_not_of('.');
  if (start == std::string_view::npos) return parts;
  const std::string_view rest = valueWithoutDollar.substr(start);
  const std::size_t stop = rest.find('.');
  parts.group = rest.substr(0, stop);
  if (stop != std::string_view::npos) parts.variable = rest.substr(stop + 1);
  return parts;
}

ReferenceParts partsOfValue(std::string_view value) {
  if (endsAsReference(value)) return splitReference(value.substr(0, value.size() - 1));
  ReferenceParts parts;
  parts.group = value;
  return parts;
}

CatalogueIndex resolveReference(const CConjuntoVariableZep& catalogue, const ReferenceParts& parts) {
  CatalogueIndex index;
  for (int g = 0; g < catalogue.getNumGrupos(); ++g)
    if (equalsNoCase(fieldText(catalogue.getGrupo(g)->name), parts.group)) index.group = g;
  const CZepGrupo* group = catalogue.getGrupo(index.group);
  if (group == nullptr) return index;
  for (int v = 0; v < group->getNumVariables(); ++v)
    if (equalsNoCase(fieldText(group->getVariable(v)->name), parts.variable)) index.variable = v;
  return index;
}

}  // namespace orvane
