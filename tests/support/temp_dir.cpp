#include "support/temp_dir.h"

#include <unistd.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace orvane::test {

namespace fs = std::filesystem;

TempDir::TempDir(Place place) {
  const bool inMemory = place == Place::kMemory && ::access("/dev/shm", W_OK) == 0;
  std::string pattern = ((inMemory ? fs::path("/dev/shm") : fs::temp_directory_path()) / "orvane-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
  path_ = pattern;
}

// A test may have taken its permissions away.
TempDir::~TempDir() {
  std::error_code ignored;
  fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ignored);
  fs::remove_all(path_, ignored);
}

std::set<std::string> TempDir::names() const {
  std::set<std::string> found;
  for (const auto& entry : fs::directory_iterator(path_)) found.insert(entry.path().filename().string());
  return found;
}

std::string readBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string writeBytes(const fs::path& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));  // truncated
  return path.string();
}

}  // namespace orvane::test
