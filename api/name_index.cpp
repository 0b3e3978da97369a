#include "api/name_index.h"

#include "model/names.h"

namespace orvane::api {

std::size_t NameIndex::FoldedHash::operator()(std::string_view name) const noexcept {
  // FNV-1a over the folded bytes, so names equal but for ASCII case hash alike.
  std::size_t hash = 14695981039346656037ull;
  for (char c : name) {
    hash ^= foldAscii(static_cast<unsigned char>(c));
    hash *= 1099511628211ull;
  }
  return hash;
}

bool NameIndex::FoldedEqual::operator()(std::string_view a, std::string_view b) const noexcept {
  return equalsNoCase(a, b);
}

std::optional<std::size_t> NameIndex::find(std::string_view name) const {
  const auto found = positions_.find(name);
  if (found == positions_.end()) return std::nullopt;
  return found->second;
}

void NameIndex::add(std::string_view name, std::size_t position) {
  if (positions_.find(name) == positions_.end()) positions_.emplace(std::string(name), position);
}

}  // namespace orvane::api
