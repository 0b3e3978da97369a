#include "editors/assign/catalogue.h"

#include <string.h>  // strtok_r

#include <climits>

#include "editors/common/line_reader.h"
#include "model/text.h"

namespace {

int countOf(std::size_t size) { return size > INT_MAX ? INT_MAX : static_cast<int>(size); }

template <class List>
auto* elementAt(List& list, int index) {
  return (index >= 0 && static_cast<std::size_t>(index) < list.size()) ? &list[static_cast<std::size_t>(index)]
                                                                      : nullptr;
}

}  // namespace

CZepVariable::CZepVariable(std::string_view text) { orvane::copyText(name, text); }
CZepVariable::~CZepVariable() = default;

CZepGrupo::CZepGrupo(std::string_view text) { orvane::copyText(name, text); }
CZepGrupo::~CZepGrupo() = default;

CZepGrupo& CZepGrupo::operator=(const CZepGrupo& other) {
  if (this == &other) return *this;  // emptying first would lose the variables
  orvane::copyText(name, orvane::fieldText(other.name));
  variables.clear();
  for (const CZepVariable& variable : other.variables) variables.push_back(variable);
  return *this;
}

int CZepGrupo::getNumVariables() const noexcept { return countOf(variables.size()); }
const CZepVariable* CZepGrupo::getVariable(int index) const noexcept { return elementAt(variables, index); }
CZepVariable* CZepGrupo::getVariable(int index) noexcept { return elementAt(variables, index); }

CConjuntoVariableZep::~CConjuntoVariableZep() = default;

int CConjuntoVariableZep::getNumGrupos() const noexcept { return countOf(groups.size()); }
const CZepGrupo* CConjuntoVariableZep::getGrupo(int index) const noexcept { return elementAt(groups, index); }
CZepGrupo* CConjuntoVariableZep::getGrupo(int index) noexcept { return elementAt(groups, index); }

int CConjuntoVariableZep::leeFichero(std::FILE* stream) {
  if (stream != nullptr && !std::feof(stream)) {
    // Zeroed, so a file that is empty from the start parses as an empty line.
    char line[512] = {};
    do {
      // The read's result is not tested, as the host's catalogues have always been read: after a
      // last line with its line feed, the failed read leaves that line's split buffer, whose group
      // name, now alone, yields no group.
      orvane::readTextLine(line, sizeof line, stream);
      readGroup(line);
    } while (!std::feof(stream) && !std::ferror(stream));
  }
  return groups.empty() ? 0 : 1;
}

// Splits one line as strtok would: the group name up to the first ";" (leading ones skipped), then
// the variables between commas. Further semicolons belong to the names and the line feed stays on
// the last one.
void CConjuntoVariableZep::readGroup(char* line) {
  char* rest = nullptr;
  const char* groupName = strtok_r(line, ";", &rest);
  if (groupName == nullptr) return;
  CZepGrupo group(groupName);
  for (const char* variable = strtok_r(nullptr, ",", &rest); variable != nullptr;
       variable = strtok_r(nullptr, ",", &rest))
    group.variables.emplace_back(variable);
  if (!group.variables.empty()) groups.push_back(std::move(group));
}
