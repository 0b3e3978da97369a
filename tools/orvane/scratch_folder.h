// A private temporary folder, removed with everything in it when the object goes. The library
// reads and writes documents only by path, so a document that comes from a standard stream, or
// a merge that must not touch its input, goes through one.
#ifndef ORVANE_TOOLS_SCRATCH_FOLDER_H
#define ORVANE_TOOLS_SCRATCH_FOLDER_H

#include <stdlib.h>

#include <filesystem>
#include <string>

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

}  // namespace orvane::cli

#endif
