#include "catalogue.h"

#include <algorithm>
#include <sstream>

#include "documents.h"
#include "text.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

std::string_view withoutLineEnd(std::string_view line) {
  while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.remove_suffix(1);
  return line;
}

}  // namespace

HostCatalogue HostCatalogue::read(const std::string& path) {
  std::istringstream in(readInputFile(path, "catalogue"));
  HostCatalogue catalogue;
  std::string line;
  while (std::getline(in, line)) {
    const std::string_view text = withoutLineEnd(line);
    const std::size_t semicolon = text.find(';');
    if (semicolon == std::string_view::npos || semicolon == 0) continue;
    std::set<std::string>& names = catalogue.variables_[foldCase(text.substr(0, semicolon))];
    std::string_view rest = text.substr(semicolon + 1);
    while (!rest.empty()) {
      const std::size_t comma = std::min(rest.find(','), rest.size());
      if (comma > 0) names.insert(foldCase(rest.substr(0, comma)));
      rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
  }
  return catalogue;
}

bool HostCatalogue::contains(std::string_view group, std::string_view variable) const {
  const auto found = variables_.find(foldCase(group));
  return found != variables_.end() && found->second.count(foldCase(variable)) > 0;
}

bool HostCatalogue::resolves(std::string_view reference) const {
  if (!isWellFormedReference(reference)) return false;
  const std::string_view body = reference.substr(0, reference.size() - 1);
  for (std::size_t dot = body.find('.'); dot != std::string_view::npos; dot = body.find('.', dot + 1))
    if (contains(body.substr(0, dot), body.substr(dot + 1))) return true;
  return false;
}

bool isWellFormedReference(std::string_view text) {
  if (text.size() < 4 || text.back() != '$' || text.find('$') != text.size() - 1) return false;
  const std::size_t dot = text.find('.');
  return dot != std::string_view::npos && dot > 0 && dot + 2 < text.size();
}

}  // namespace orvane::cli
