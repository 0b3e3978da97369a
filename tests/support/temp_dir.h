// A fresh folder for one test, removed with everything in it when the test ends.
#ifndef ORVANE_TESTS_TEMP_DIR_H
#define ORVANE_TESTS_TEMP_DIR_H

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace orvane::test {

// Whole-file helpers for checking what the library wrote; writeBytes gives the path it wrote.
std::string readBytes(const std::filesystem::path& path);
std::string writeBytes(const std::filesystem::path& path, std::string_view bytes);

class TempDir {
 public:
  // kMemory puts the folder in /dev/shm where the system has one, for tests that save thousands of
  // times and care only about the bytes written, not about how a disk keeps them.
  enum class Place { kTemporary, kMemory };
  explicit TempDir(Place place = Place::kTemporary);
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // The full path of `name` inside the folder, as the narrow text the library takes.
  std::string file(std::string_view name) const { return (path_ / name).string(); }
  // Writes `bytes` to `name` in the folder and gives the file's path.
  std::string write(std::string_view name, std::string_view bytes) const { return writeBytes(file(name), bytes); }
  // The names of the entries in the folder.
  std::set<std::string> names() const;

 private:
  std::filesystem::path path_;
};

}  // namespace orvane::test

#endif
