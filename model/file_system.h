// The operating-system calls behind every file the documents read and write, in one place, so that
// tests can make any one of them fail (a full disk, an I/O error, a refused permission) and prove
// that no document is lost. Outside tests these are always the POSIX calls themselves.
#ifndef ORVANE_MODEL_FILE_SYSTEM_H
#define ORVANE_MODEL_FILE_SYSTEM_H

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

namespace orvane {

// Each member behaves as the POSIX call of its name: -1 and errno on failure.
struct FileSystem {
  int (*open)(const char* path, int flags, mode_t mode);
  ssize_t (*read)(int fd, void* buffer, std::size_t size);
  ssize_t (*write)(int fd, const void* bytes, std::size_t size);
  int (*fsync)(int fd);
  int (*fchmod)(int fd, mode_t mode);
  int (*close)(int fd);
  int (*rename)(const char* from, const char* to);
  int (*unlink)(const char* path);
  int (*fstat)(int fd, struct stat* info);
  int (*fchown)(int fd, uid_t owner, gid_t group);
  int (*ftruncate)(int fd, off_t length);
  int (*linkat)(int fromFolder, const char* from, int toFolder, const char* to, int flags);
  ssize_t (*flistxattr)(int fd, char* names, std::size_t size);
  ssize_t (*fgetxattr)(int fd, const char* name, void* value, std::size_t size);
  int (*fsetxattr)(int fd, const char* name, const void* value, std::size_t size, int flags);
};

// The POSIX calls.
const FileSystem& posixFileSystem() noexcept;

// The calls the model uses: posixFileSystem() unless a test installed others.
const FileSystem& fileSystem() noexcept;

// For tests only: installs `replacement` and returns the calls it replaces, for putting them back.
// Not thread-safe, like the rest of the library's state.
FileSystem setFileSystem(const FileSystem& replacement) noexcept;

}  // namespace orvane

#endif
