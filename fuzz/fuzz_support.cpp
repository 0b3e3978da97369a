#include "fuzz/fuzz_support.h"

#include <stdlib.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "model/message_sink.h"

namespace orvane::fuzz {
namespace {

std::string makeScratchFolder() {
  std::error_code error;
  std::filesystem::path base = "/dev/shm";
  if (!std::filesystem::is_directory(base, error) || ::access(base.c_str(), W_OK) != 0)
    base = std::filesystem::temp_directory_path();
  std::string pattern = (base / "orvane-fuzz-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) fail("no scratch folder");
  return pattern;
}

// Never destroyed, so that the exit handler that removes the folder can still read its name.
const std::string& scratchFolder() {
  static const std::string* const folder = [] {
    const std::string* made = new std::string(makeScratchFolder());
    std::atexit([] {
      std::error_code ignored;
      std::filesystem::remove_all(scratchFolder(), ignored);
    });
    return made;
  }();
  return *folder;
}

}  // namespace

std::string scratchPath(const char* name) { return scratchFolder() + "/" + name; }

std::string writeScratchFile(const char* name, std::string_view bytes) {
  const std::string path = scratchPath(name);
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  check(out.good(), "the input could not be written to the scratch folder");
  return path;
}

void removeScratchFile(const char* name) {
  const std::string path = scratchPath(name);
  ::unlink(path.c_str());
  ::unlink((path + ".bak").c_str());
}

std::FILE* openBytes(const uint8_t* data, size_t size) {
  // fmemopen wants a buffer even for no bytes.
  static char none[1];
  void* buffer = size > 0 ? const_cast<uint8_t*>(data) : static_cast<void*>(none);
  return ::fmemopen(buffer, size, "r");
}

void silenceMessages() {
  static const bool silenced = [] {
    setMessageSink([](std::string_view) {});
    return true;
  }();
  (void)silenced;
}

void fail(const char* what) {
  std::fprintf(stderr, "broken invariant: %s\n", what);
  std::abort();
}

}  // namespace orvane::fuzz
