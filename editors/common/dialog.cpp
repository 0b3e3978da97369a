#include "editors/common/dialog.h"

#include <string_view>

#include "editors/common/text_codec.h"

namespace orvane {

DialogServices::~DialogServices() = default;
Dialog::~Dialog() = default;

std::u16string folderOf(const char* path) {
  if (path == nullptr) return {};
  const std::string_view text(path);
  const std::size_t slash = text.find_last_of('/');
  if (slash == std::string_view::npos) return {};
  return fromUtf8(text.substr(0, slash == 0 ? 1 : slash));
}

}  // namespace orvane
