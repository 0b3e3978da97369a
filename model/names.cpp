#include "model/names.h"

#include <algorithm>

namespace orvane {

int compareNoCase(std::string_view a, std::string_view b) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int ca = foldAscii(static_cast<unsigned char>(a[i]));
    const int cb = foldAscii(static_cast<unsigned char>(b[i]));
    if (ca != cb) return ca - cb;
  }
  return (a.size() < b.size()) ? -1 : (a.size() > b.size()) ? 1 : 0;
}

}  // namespace orvane
