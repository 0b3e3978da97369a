// The host variable catalogue reader on any file opened as the editors open it, and references to
// every variable it read resolved back.
#include "editors/assign/host_variable.h"
#include "fuzz/document_checks.h"

using namespace orvane;
using namespace orvane::fuzz;

namespace {

// The index of the last item named as `item` (ignoring case); nothing equal: the first.
template <class List, class Item>
int lastEqual(const List& list, const Item& item) {
  const auto last =
      std::find_if(list.rbegin(), list.rend(), [&](const auto& i) { return equalsNoCase(i.name, item.name); });
  return last == list.rend() ? 0 : static_cast<int>(list.rend() - last) - 1;
}

// A reference made from a group and a variable resolves to the last group of that name and in it to
// the last variable of that name (ignoring case); only a full stop in the group name is lost.
void checkReference(const CConjuntoVariableZep& catalogue, const CZepGrupo& group, const CZepVariable& variable) {
  char value[512];
  if (!makeReference(group.name, variable.name, value)) return;  // too long to be made
  check(endsAsReference(value), "a reference ends in $");
  const CatalogueIndex found = resolveReference(catalogue, partsOfValue(value));
  const CZepGrupo* resolved = catalogue.getGrupo(found.group);
  check(resolved != nullptr && resolved->getVariable(found.variable) != nullptr, "a reference resolves");
  if (std::strchr(group.name, '.') != nullptr) return;
  check(found.group == lastEqual(catalogue.groups, group), "a reference resolves to the last group of its name");
  check(found.variable == lastEqual(resolved->variables, variable), "... and to the last variable of its name");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string path = writeScratchFile("catalogue.txt", {reinterpret_cast<const char*>(data), size});
  CConjuntoVariableZep catalogue;
  const int result = catalogue.leeFichero(HostTextFile(path.c_str(), kMaxCatalogueBytes).stream());
  check(result == (catalogue.groups.empty() ? 0 : 1), "leeFichero gives 1 exactly when it has groups");
  for (const CZepGrupo& group : catalogue.groups) {
    check(terminated(group.name) && group.name[0] != '\0' && !std::strchr(group.name, ';'),
          "a group has a name, which ends at the first semicolon");
    check(!group.variables.empty(), "a group without variables is dropped");
    for (const CZepVariable& variable : group.variables) {
      check(terminated(variable.name) && variable.name[0] != '\0' && !std::strchr(variable.name, ','),
            "a variable has a name, which ends at a comma");
      checkReference(catalogue, group, variable);
    }
  }
  return 0;
}
