#include "model/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdio>

namespace orvane {
namespace {

// open is variadic in C; the seam wants one fixed signature.
int openFile(const char* path, int flags, mode_t mode) { return ::open(path, flags, mode); }

const FileSystem kPosix{openFile,    ::read,   ::write,     ::fsync,      ::fchmod,    ::close,
                        std::rename, ::unlink, ::fstat,     ::fchown,     ::ftruncate, ::linkat,
                        ::flistxattr, ::fgetxattr, ::fsetxattr};

FileSystem current = kPosix;

}  // namespace

const FileSystem& posixFileSystem() noexcept { return kPosix; }

const FileSystem& fileSystem() noexcept { return current; }

FileSystem setFileSystem(const FileSystem& replacement) noexcept {
  const FileSystem previous = current;
  current = replacement;
  return previous;
}

}  // namespace orvane
