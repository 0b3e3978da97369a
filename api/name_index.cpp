#include "api/name_index.h"

#include "model/names.h"

namespace orvane::api {

std::size_t FoldedHash::operator()(std::string_view name) const noexcept {
  // FNV-1a over the folded bytes, so names equal but for ASCII case hash alike.
  std::size_t hash = 14695981039346656037ull;
  for (char c : name) {
    hash ^= foldAscii(static_cast<unsigned char>(c));
    hash *= 1099511628211ull;
  }
  return hash;
}

bool FoldedEqual::operator()(std::string_view a, std::string_view b) const noexcept {
  return equalsNoCase(a, b);
}

}  // namespace orvane::api
