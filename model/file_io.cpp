#include "model/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>

namespace orvane {
namespace {

bool writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// The file a write to `path` should replace: the target of a symbolic link, else `path` itself.
std::string resolveTarget(const char* path) {
  struct stat info {};
  if (::lstat(path, &info) == 0 && S_ISLNK(info.st_mode)) {
    char resolved[PATH_MAX];
    if (::realpath(path, resolved) != nullptr) return resolved;
  }
  return path;
}

// The mode the new file gets: the old file's, or what a plain creation would give.
mode_t modeFor(const std::string& target) {
  struct stat info {};
  if (::stat(target.c_str(), &info) == 0) return info.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

void syncFolderOf(const std::string& target) {
  const std::filesystem::path folder = std::filesystem::path(target).parent_path();
  const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}

}  // namespace

bool readFile(const char* path, std::string& contents) {
  contents.clear();
  const int fd = ::open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  struct stat info {};
  bool ok = ::fstat(fd, &info) == 0 && !S_ISDIR(info.st_mode);
  if (ok && S_ISREG(info.st_mode)) contents.reserve(static_cast<std::size_t>(info.st_size));
  char chunk[65536];
  while (ok) {
    const ssize_t got = ::read(fd, chunk, sizeof chunk);
    if (got == 0) break;
    if (got < 0) {
      if (errno == EINTR) continue;
      ok = false;
      break;
    }
    contents.append(chunk, static_cast<std::size_t>(got));
  }
  ::close(fd);
  return ok;
}

void backupFile(const char* path) noexcept {
  try {
    std::error_code ignored;
    std::filesystem::copy_file(path, std::string(path) + ".bak",
                               std::filesystem::copy_options::overwrite_existing, ignored);
  } catch (...) {
    // Out of memory for the name: the save goes on without a backup, as with any failed copy.
  }
}

std::string withWindowsLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  for (char c : text) {
    if (c == '\n') out.push_back('\r');
    out.push_back(c);
  }
  return out;
}

bool writeTextFile(const char* path, std::string_view text) {
  const std::string target = resolveTarget(path);
  std::string temporary = target + ".XXXXXX";
  const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
  if (fd < 0) return false;
  const bool written = ::fchmod(fd, modeFor(target)) == 0 &&
                       writeAll(fd, withWindowsLineEnds(text)) && ::fsync(fd) == 0;
  const bool closed = ::close(fd) == 0;
  if (!written || !closed || ::rename(temporary.c_str(), target.c_str()) != 0) {
    ::unlink(temporary.c_str());
    return false;
  }
  syncFolderOf(target);
  return true;
}

}  // namespace orvane
