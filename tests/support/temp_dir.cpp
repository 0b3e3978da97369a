#include "support/temp_dir.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <unistd.h>

namespace orvane::test {

TempDir::TempDir(Place place) {
  std::error_code error;
  const bool inMemory = place == Place::kMemory && std::filesystem::is_directory("/dev/shm", error) &&
                        ::access("/dev/shm", W_OK) == 0;
  std::string pattern =
      ((inMemory ? std::filesystem::path("/dev/shm") : std::filesystem::temp_directory_path()) / "orvane-test-XXXXXX")
          .string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                               std::filesystem::perm_options::add, ignored);
  std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::file(std::string_view name) const { return (path_ / name).string(); }

std::set<std::string> TempDir::names() const {
  std::set<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(path_)) found.insert(entry.path().filename().string());
  return found;
}

std::string TempDir::write(std::string_view name, std::string_view bytes) const {
  const std::string path = file(name);
  writeBytes(path, bytes);
  return path;
}

std::string readBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeBytes(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace orvane::test
