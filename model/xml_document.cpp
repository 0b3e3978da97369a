#include "model/xml_document.h"

#include <string>

#include "model/file_io.h"

namespace orvane::xml {
namespace {

// The printer writes a carriage return in a text or attribute as it is, and XML parsers read a bare
// one, or one before a line feed, as a line feed: a text with a Windows line break would come back
// changed. Written as a character reference it comes back as it was. The printer writes none of its
// own, so every one is a record's.
std::string carriageReturnsEscaped(std::string_view printed) {
  std::string out;
  out.reserve(printed.size() + 32);
  for (char c : printed) {
    if (c == '\r') out += "&#13;";
    else out.push_back(c);
  }
  return out;
}

}  // namespace

bool loadTree(const char* path, tinyxml2::XMLDocument& tree) noexcept {
  if (path == nullptr) return false;
  try {
    std::string bytes;
    if (!readFile(path, bytes)) return false;
    return tree.Parse(bytes.data(), bytes.size()) == tinyxml2::XML_SUCCESS;
  } catch (...) {
    // No memory for the file or its tree: it can't be loaded, which the readers report silently.
    return false;
  }
}

void saveWithBackup(const char* path, const tinyxml2::XMLPrinter& printer) {
  if (path == nullptr) return;
  const auto size = static_cast<std::size_t>(printer.CStrSize());
  const std::string_view printed(printer.CStr(), size > 0 ? size - 1 : 0);
  if (printed.find('\r') == std::string_view::npos) saveDocument(path, printed);
  else saveDocument(path, carriageReturnsEscaped(printed));
}

}  // namespace orvane::xml
