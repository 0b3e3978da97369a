#include "model/xml_document.h"

#include <string>

#include "model/file_io.h"

namespace orvane::xml {

bool loadTree(const char* path, tinyxml2::XMLDocument& tree) {
  if (path == nullptr) return false;
  std::string bytes;
  if (!readFile(path, bytes)) return false;
  return tree.Parse(bytes.data(), bytes.size()) == tinyxml2::XML_SUCCESS;
}

void saveWithBackup(const char* path, const tinyxml2::XMLPrinter& printer) {
  if (path == nullptr) return;
  backupFile(path);
  const auto size = static_cast<std::size_t>(printer.CStrSize());
  writeTextFile(path, std::string_view(printer.CStr(), size > 0 ? size - 1 : 0));
}

}  // namespace orvane::xml
