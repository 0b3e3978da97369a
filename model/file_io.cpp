#include "model/file_io.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <optional>
#include <utility>

#include "model/file_system.h"

namespace orvane {
namespace {

const FileSystem& sys() { return fileSystem(); }

// The kernel gives up on a chain of symbolic links after as many hops (ELOOP).
constexpr int kMaxLinkHops = 40;
// Room left in a file name for the temporary file's prefix and suffix.
constexpr std::size_t kMaxNameInTemporary = 200;
constexpr std::size_t kChunkSize = 16384;

// A descriptor closed through the seam when it goes out of scope, unless closed before.
class Descriptor {
 public:
  explicit Descriptor(int fd) noexcept : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) sys().close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const noexcept { return fd_; }
  bool valid() const noexcept { return fd_ >= 0; }

  // Closes now. Linux releases the descriptor even when close fails, so it is never retried; a
  // failure here is a late write error (a full disk on a network file system), not to be ignored.
  bool close() noexcept { return sys().close(std::exchange(fd_, -1)) == 0; }

 private:
  int fd_;
};

bool writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = sys().write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;  // nothing written for a non-empty request would loop forever
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Writes `text` with every line feed turned into CR LF, a chunk at a time: a large document is not
// copied whole a second time just to change its line ends.
bool writeWithWindowsLineEnds(int fd, std::string_view text) {
  char chunk[kChunkSize];
  std::size_t used = 0;
  for (char c : text) {
    if (used + 2 > sizeof chunk) {
      if (!writeAll(fd, std::string_view(chunk, used))) return false;
      used = 0;
    }
    if (c == '\n') chunk[used++] = '\r';
    chunk[used++] = c;
  }
  return writeAll(fd, std::string_view(chunk, used));
}

// Reads `fd` to its end, handing every chunk to `take`, which may stop the reading by returning false.
template <class Take>
bool readAll(int fd, Take take) {
  char chunk[kChunkSize];
  for (;;) {
    const ssize_t got = sys().read(fd, chunk, sizeof chunk);
    if (got == 0) return true;
    if (got < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    if (!take(std::string_view(chunk, static_cast<std::size_t>(got)))) return false;
  }
}

// Opens `path` for reading when it is a regular file. O_NONBLOCK keeps a FIFO from blocking the
// open; such a file, a folder or a device (/dev/zero would never end) is then refused.
int openRegularFile(const char* path, struct stat& info) {
  const int fd = sys().open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK, 0);
  if (fd < 0) return -1;
  if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
    sys().close(fd);
    return -1;
  }
  return fd;
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string inFolder(const std::string& folder, const std::string& name) {
  return folder.back() == '/' ? folder + name : folder + "/" + name;
}

// The file at the end of the chain of symbolic links that starts at `path` (path itself when it is
// no link; a dangling link gives the missing file it names). Empty when the chain is too long or a
// link cannot be read.
std::string followLinks(const char* path) {
  std::string current = path;
  for (int hop = 0; hop < kMaxLinkHops; ++hop) {
    struct stat info {};
    if (::lstat(current.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return current;
    std::string target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(current.c_str(), target.data(), target.size());
    if (length <= 0 || static_cast<std::size_t>(length) >= target.size()) return {};
    target.resize(static_cast<std::size_t>(length));
    current = target.front() == '/' ? target : inFolder(folderOf(current), target);
  }
  return {};
}

// Where a replacing write goes, and the mode the new file must get (none: what creating a file
// gives under the umask).
struct Target {
  std::string path;
  std::optional<mode_t> mode;
};

// Only a regular file, or a name where there is none yet, may be replaced: renaming over a folder
// or a device (/dev/null) would destroy it.
std::optional<Target> replaceableTarget(const char* path) {
  std::string resolved = followLinks(path);
  const std::string name = nameOf(resolved);
  if (name.empty() || name == "." || name == "..") return std::nullopt;
  struct stat info {};
  if (::stat(resolved.c_str(), &info) != 0) return Target{std::move(resolved), std::nullopt};
  if (!S_ISREG(info.st_mode)) return std::nullopt;
  return Target{std::move(resolved), info.st_mode & 07777};
}

// A new file beside the target, hidden and named after it (".doc.xml.1234-5.tmp"), that is
// removed again unless it was renamed over the target.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& target) : file_(create(target, path_)), exists_(file_.valid()) {}
  ~TemporaryFile() {
    if (file_.valid()) file_.close();
    if (exists_) sys().unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  bool created() const noexcept { return exists_; }
  int fd() const noexcept { return file_.get(); }

  // Flushes the file to disk, closes it and renames it over `target`.
  bool commit(const std::string& target) {
    const bool synced = sys().fsync(file_.get()) == 0;
    if (!file_.close() || !synced) return false;
    if (sys().rename(path_.c_str(), target.c_str()) != 0) return false;
    exists_ = false;
    return true;
  }

 private:
  // Names that a crashed save left behind are skipped.
  static int create(const std::string& target, std::string& path) {
    static std::atomic<unsigned> counter{0};
    std::string name = nameOf(target);
    if (name.size() > kMaxNameInTemporary) name = "orvane";
    const std::string prefix = inFolder(folderOf(target), "." + name + "." + std::to_string(::getpid()) + "-");
    for (int attempt = 0; attempt < 100; ++attempt) {
      path = prefix + std::to_string(counter++) + ".tmp";
      const int fd = sys().open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
  }

  std::string path_;
  Descriptor file_;
  bool exists_;
};

// A rename is only on disk once the folder that holds it is.
bool syncFolder(const std::string& folder) {
  Descriptor fd(sys().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0));
  if (!fd.valid()) return false;
  const bool synced = sys().fsync(fd.get()) == 0;
  return fd.close() && synced;
}

// Puts what `fill` writes to a descriptor in place of the target, all or nothing.
template <class Fill>
bool replaceFile(const Target& target, Fill fill) {
  TemporaryFile temporary(target.path);
  if (!temporary.created()) return false;
  if (target.mode && sys().fchmod(temporary.fd(), *target.mode) != 0) return false;
  if (!fill(temporary.fd()) || !temporary.commit(target.path)) return false;
  return syncFolder(folderOf(target.path));
}

}  // namespace

bool readFile(const char* path, std::string& contents) {
  contents.clear();
  if (path == nullptr) return false;
  struct stat info {};
  Descriptor fd(openRegularFile(path, info));
  if (!fd.valid()) return false;
  contents.reserve(static_cast<std::size_t>(info.st_size));
  return readAll(fd.get(), [&](std::string_view chunk) {
    contents.append(chunk);
    return true;
  });
}

void backupFile(const char* path) noexcept {
  try {
    if (path == nullptr) return;
    struct stat info {};
    Descriptor source(openRegularFile(path, info));
    if (!source.valid()) return;
    std::optional<Target> backup = replaceableTarget((std::string(path) + ".bak").c_str());
    if (!backup) return;
    backup->mode = info.st_mode & 07777;  // a copy keeps the original's mode
    replaceFile(*backup, [&](int fd) {
      return readAll(source.get(), [&](std::string_view chunk) { return writeAll(fd, chunk); });
    });
  } catch (...) {
    // Out of memory for a name: the save goes on without a backup, as with any failed copy.
  }
}


bool writeTextFile(const char* path, std::string_view text) {
  return writeTextFile(path, [text](const ChunkSink& sink) { return sink(text); });
}

bool writeTextFile(const char* path, const ChunkProducer& produce) {
  if (path == nullptr) return false;
  const std::optional<Target> target = replaceableTarget(path);
  if (!target) return false;
  return replaceFile(*target, [&](int fd) {
    return produce([fd](std::string_view chunk) { return writeWithWindowsLineEnds(fd, chunk); });
  });
}

}  // namespace orvane
