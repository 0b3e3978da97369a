// A fresh folder for one test, removed with everything in it when the test ends.
#ifndef ORVANE_TESTS_TEMP_DIR_H
#define ORVANE_TESTS_TEMP_DIR_H

#include <filesystem>
#include <string>
#include <string_view>

namespace orvane::test {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // The full path of `name` inside the folder, as the narrow text the library takes.
  std::string file(std::string_view name) const;
  // Writes `bytes` to `name` in the folder and gives the file's path.
  std::string write(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

// Whole-file helpers for checking what the library wrote.
std::string readBytes(const std::filesystem::path& path);
void writeBytes(const std::filesystem::path& path, std::string_view bytes);

}  // namespace orvane::test

#endif
