// A private temporary folder, removed with everything in it when the object goes. The library
// reads and writes documents only by path, so a document that comes from a standard stream, or
// a merge that must not touch its input, goes through one.
#ifndef ORVANE_TOOLS_SCRATCH_FOLDER_H
#define ORVANE_TOOLS_SCRATCH_FOLDER_H

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "documents.h"
#include "tool_error.h"

namespace orvane::cli {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "orvane-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw ToolError("cannot make a temporary folder in " + pattern);
    path_ = pattern;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string file(const char* name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// The path of the document `name` names on the command line: "-" is standard input, copied into
// `scratch` first; any other name is itself.
inline std::string documentArgument(const std::string& name, const ScratchFolder& scratch) {
  if (name != "-") return name;
  const std::string path = scratch.file("standard-input.xml");
  std::ofstream copy(path, std::ios::binary);
  copy << readInputFile(name, "document");
  if (!copy.flush()) throw ToolError("standard input: could not be kept in " + path);
  return path;
}

}  // namespace orvane::cli

#endif
