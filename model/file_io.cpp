#include "model/file_io.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "model/file_system.h"

namespace orvane {
namespace {

const FileSystem& sys() { return fileSystem(); }

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
  void reset(int fd) noexcept {
    if (fd_ >= 0) sys().close(fd_);
    fd_ = fd;
  }
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
  while (!text.empty()) {
    const std::size_t lineFeed = text.find('\n');
    const std::size_t plain = std::min(lineFeed == std::string_view::npos ? text.size() : lineFeed,
                                       sizeof chunk - 2 - used);
    std::memcpy(chunk + used, text.data(), plain);
    used += plain;
    text.remove_prefix(plain);
    if (!text.empty() && text.front() == '\n') {
      chunk[used++] = '\r';
      chunk[used++] = '\n';
      text.remove_prefix(1);
    }
    if (used + 2 >= sizeof chunk) {
      if (!writeAll(fd, std::string_view(chunk, used))) return false;
      used = 0;
    }
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

bool sameFile(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

// True when `name` is, itself and not through a link, the file `file` describes.
bool namesFile(const std::string& name, const struct stat& file) {
  struct stat info {};
  return ::lstat(name.c_str(), &info) == 0 && sameFile(info, file);
}

std::string procPathOf(int fd) { return "/proc/self/fd/" + std::to_string(fd); }

// The path the kernel reached when it opened `fd` from `path`, links followed. Empty when it is no
// longer the name of that very file (renamed or removed meanwhile).
std::string resolvedPath(int fd, const char* path, const struct stat& opened) {
  std::string resolved(PATH_MAX, '\0');
  const ssize_t length = ::readlink(procPathOf(fd).c_str(), resolved.data(), resolved.size());
  if (length > 0 && static_cast<std::size_t>(length) < resolved.size()) {
    resolved.resize(static_cast<std::size_t>(length));
  } else {
    // No /proc: the C library resolves the same links the open followed.
    char* real = ::realpath(path, nullptr);
    if (real == nullptr) return {};
    resolved = real;
    std::free(real);
  }
  struct stat named {};
  if (::stat(resolved.c_str(), &named) != 0 || !sameFile(named, opened)) return {};
  return resolved;
}

// The document a save replaces. It is opened for writing, as a plain save that overwrites the file opens it, by the
// kernel's own path resolution, so that a file the saver may not write (read-only, another
// owner's, a link the kernel refuses to follow in a sticky folder) refuses the save, for root as
// the kernel decides for root.
struct SaveTarget {
  Descriptor file{-1};     // the existing document, open for writing; none for a new name
  std::string path;        // where the document's name is, links resolved
  struct stat info {};     // the existing document
  bool createdThroughLink = false;  // a dangling link: the save made the file it names
};

bool openSaveTarget(const char* path, SaveTarget& target) {
  constexpr int kFlags = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  int fd = sys().open(path, kFlags, 0);
  if (fd < 0 && errno == ENOENT) {
    struct stat link {};
    if (::lstat(path, &link) != 0) {
      if (errno != ENOENT) return false;
      target.path = path;  // a new file: the rename makes it
      return !nameOf(target.path).empty();
    }
    if (!S_ISLNK(link.st_mode)) return false;
    // A link to a missing file: make that file through the link, as a plain save through the link does.
    fd = sys().open(path, kFlags | O_CREAT, 0666);
    target.createdThroughLink = fd >= 0;
  }
  if (fd < 0) return false;
  target.file.reset(fd);
  // Only a regular file is replaced: renaming over a device (/dev/null) would destroy it. A
  // FIFO without reader does not even open (O_NONBLOCK), a folder does not open for writing.
  if (sys().fstat(fd, &target.info) != 0 || !S_ISREG(target.info.st_mode)) return false;
  target.path = resolvedPath(fd, path, target.info);
  return !target.path.empty();
}

// The name under which a finished unnamed file waits for its rename: fixed per target, so that a
// save killed in that instant leaves one whole file that the next save removes.
std::string pendingName(const std::string& target) {
  std::string name = nameOf(target);
  if (name.size() > kMaxNameInTemporary) name = "orvane";
  return inFolder(folderOf(target), "." + name + ".orvane-save");
}

// Gives the file open as `fd` the name `pending` as well, removing what a killed save left there.
// Through /proc, or by the descriptor itself where there is no /proc (that needs a privilege).
bool linkAsPending(int fd, const std::string& pending) {
  for (int attempt = 0; attempt < 2; ++attempt) {
    if (sys().linkat(AT_FDCWD, procPathOf(fd).c_str(), AT_FDCWD, pending.c_str(), AT_SYMLINK_FOLLOW) == 0 ||
        (errno == ENOENT && sys().linkat(fd, "", AT_FDCWD, pending.c_str(), AT_EMPTY_PATH) == 0))
      return true;
    if (errno != EEXIST || sys().unlink(pending.c_str()) != 0) return false;
  }
  return false;
}

// The new contents of a file, written beside it and renamed over it when complete. Unnamed
// (O_TMPFILE) where the file system allows it, so that a crash leaves nothing; elsewhere a hidden
// name of its own (".doc.xml.1234-5.tmp") that is removed again unless renamed over the target.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& target) : target_(target), file_(create()) {}
  ~TemporaryFile() {
    if (file_.valid()) file_.close();
    if (!named_.empty()) sys().unlink(named_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  bool created() const noexcept { return file_.valid(); }
  int fd() const noexcept { return file_.get(); }

  // Flushes the file to disk and renames it over the target.
  bool commit() {
    if (sys().fsync(file_.get()) != 0) return false;
    if (named_.empty() && !link()) return false;
    if (!file_.close()) return false;
    if (sys().rename(named_.c_str(), target_.c_str()) != 0) return false;
    named_.clear();
    return true;
  }

 private:
  int create() {
    const int fd = sys().open(folderOf(target_).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (fd >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return fd;
    return createNamed();
  }

  // Names that a crashed save left behind are skipped.
  int createNamed() {
    static std::atomic<unsigned> counter{0};
    std::string name = nameOf(target_);
    if (name.size() > kMaxNameInTemporary) name = "orvane";
    const std::string prefix = inFolder(folderOf(target_), "." + name + "." + std::to_string(::getpid()) + "-");
    for (int attempt = 0; attempt < 100; ++attempt) {
      std::string path = prefix + std::to_string(counter++) + ".tmp";
      const int fd = sys().open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
      if (fd >= 0) named_ = std::move(path);
      if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
  }

  // Gives the unnamed file its pending name.
  bool link() {
    const std::string pending = pendingName(target_);
    if (!linkAsPending(file_.get(), pending)) return false;
    named_ = pending;
    return true;
  }

  std::string target_;
  std::string named_;  // the temporary's name while it has one
  Descriptor file_;
};

// A rename is only on disk once the folder that holds it is.
bool syncFolder(const std::string& folder) {
  Descriptor fd(sys().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0));
  if (!fd.valid()) return false;
  const bool synced = sys().fsync(fd.get()) == 0;
  return fd.close() && synced;
}

// The kernel gives each file its own security label; it is not the saver's to copy.
bool isOwnLabel(const char* name) { return std::strcmp(name, "security.selinux") == 0; }

// Copies the extended attributes of `from` to `to`, POSIX ACLs (system.posix_acl_access) among
// them. False when one could not be copied.
bool copyExtendedAttributes(int from, int to) {
  const ssize_t size = sys().flistxattr(from, nullptr, 0);
  if (size < 0) return errno == ENOTSUP;  // a file system without them
  std::vector<char> names(static_cast<std::size_t>(size) + 1, '\0');
  const ssize_t got = sys().flistxattr(from, names.data(), names.size() - 1);
  if (got < 0) return false;
  for (std::size_t at = 0; at < static_cast<std::size_t>(got); at += std::strlen(&names[at]) + 1) {
    const char* name = &names[at];
    if (isOwnLabel(name)) continue;
    const ssize_t length = sys().fgetxattr(from, name, nullptr, 0);
    if (length < 0) return false;
    std::vector<char> value(static_cast<std::size_t>(length) + 1);
    const ssize_t read = sys().fgetxattr(from, name, value.data(), value.size() - 1);
    if (read < 0 || sys().fsetxattr(to, name, value.data(), static_cast<std::size_t>(read), 0) != 0) return false;
  }
  return true;
}

// Gives `to` the owner, group, mode and extended attributes of the file `from`. The owner first:
// a change of owner clears the set-id bits and file capabilities that come after it. False when
// one of them could not be kept (the saver may not give a file away).
bool keepAttributes(int from, const struct stat& info, int to) {
  struct stat made {};
  if (sys().fstat(to, &made) != 0) return false;
  if ((made.st_uid != info.st_uid || made.st_gid != info.st_gid) && sys().fchown(to, info.st_uid, info.st_gid) != 0)
    return false;
  if (sys().fchmod(to, info.st_mode & 07777) != 0) return false;
  return copyExtendedAttributes(from, to);
}

// Writes what `fill` writes to a descriptor over the file at `target`, all or nothing: into a
// temporary file that is renamed over it once complete and on disk. `model`, when there is one,
// gives the file its attributes. `beforeWriting` runs once the replacement is sure to be possible.
// kNotReplaceable: no temporary file could be made beside the target (a folder the saver may not
// write) or it could not get the attributes; nothing changed.
enum class Replaced { kDone, kFailed, kNotReplaceable };

template <class BeforeWriting, class Fill>
Replaced replaceFile(const std::string& target, const Descriptor* model, const struct stat& info,
                     BeforeWriting beforeWriting, Fill fill) {
  TemporaryFile temporary(target);
  if (!temporary.created()) return Replaced::kNotReplaceable;
  if (model != nullptr && !keepAttributes(model->get(), info, temporary.fd())) return Replaced::kNotReplaceable;
  beforeWriting();
  if (!fill(temporary.fd()) || !temporary.commit()) return Replaced::kFailed;
  return syncFolder(folderOf(target)) ? Replaced::kDone : Replaced::kFailed;
}

// The plain overwrite: the existing file truncated and written again, through the
// descriptor that was opened for writing. Only when a whole backup of it is on disk.
template <class Fill>
bool writeInPlace(int fd, Fill fill) {
  return sys().ftruncate(fd, 0) == 0 && fill(fd) && sys().fsync(fd) == 0;
}

// A backup the saver could not open for writing is kept as it is; a folder cannot be replaced. A
// link, FIFO or device at the backup's name is replaced by the backup itself (a rename replaces
// the name, never what it points at).
bool backupNameIsFree(const std::string& backup) {
  struct stat info {};
  if (::lstat(backup.c_str(), &info) != 0) return errno == ENOENT;
  if (S_ISDIR(info.st_mode)) return false;
  if (!S_ISREG(info.st_mode)) return true;
  Descriptor writable(sys().open(backup.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0));
  return writable.valid();
}

// Copies the regular file open as `source` (described by `info`) to `backup`: a whole copy with
// the document's owner, group, mode and attributes as far as the saver may give them, or the older
// backup as it was. True when the copy is complete and on disk.
bool copyToBackup(int source, const struct stat& info, const std::string& backup) {
  TemporaryFile temporary(backup);
  if (!temporary.created()) return false;
  // The copy holds the document's bytes: where it cannot have the document's owner and attributes,
  // only its owner, the saver, may read it.
  if (!keepAttributes(source, info, temporary.fd()) && sys().fchmod(temporary.fd(), info.st_mode & 0700) != 0)
    return false;
  const bool copied = readAll(source, [&](std::string_view chunk) { return writeAll(temporary.fd(), chunk); });
  return copied && temporary.commit() && syncFolder(folderOf(backup));
}

// Opens the document behind `target` for reading, for its backup; -1 when it cannot be read.
int openForBackup(const SaveTarget& target, struct stat& info) {
  const int fd = openRegularFile(target.path.c_str(), info);
  if (fd >= 0 && !sameFile(info, target.info)) {
    sys().close(fd);
    return -1;
  }
  return fd;
}

// Makes the old document itself the backup, when the new one is to arrive by rename: a second
// name for the very file the save opened, made under a pending name and renamed over the backup's,
// so that the backup is whole at every moment. The rename of the new document then leaves the old
// under the backup's name alone. Nothing is copied and nothing is synced but the name. False where
// the file system or the kernel's link protection refuses the link.
bool linkToBackup(const SaveTarget& target, const std::string& backup) {
  const std::string pending = pendingName(backup);
  if (!linkAsPending(target.file.get(), pending)) return false;
  if (sys().rename(pending.c_str(), backup.c_str()) != 0) {
    sys().unlink(pending.c_str());
    return false;
  }
  // The document's own folder is synced after its rename; a backup beside a link to it is elsewhere.
  struct stat backupFolder {}, documentFolder {};
  const bool sameFolder = ::stat(folderOf(backup).c_str(), &backupFolder) == 0 &&
                          ::stat(folderOf(target.path).c_str(), &documentFolder) == 0 &&
                          sameFile(backupFolder, documentFolder);
  return sameFolder || syncFolder(folderOf(backup));
}

// The backup of the document a save replaces: linked when `mayLink` (the old file will not be
// written again), copied otherwise. True when a whole backup is on disk.
bool backUp(const SaveTarget& target, const std::string& backup, bool mayLink) {
  if (mayLink && namesFile(backup, target.info)) return true;  // already its backup (a killed save)
  if (!backupNameIsFree(backup)) return false;
  if (mayLink && linkToBackup(target, backup)) return true;
  struct stat info {};
  Descriptor source(openForBackup(target, info));
  return source.valid() && copyToBackup(source.get(), info, backup);
}

// A save killed after linking the old document to its backup's pending name, or to the backup's
// name itself, leaves the document with a second name. Such names are no hard links of the user's:
// they do not count, so that the document is still replaced rather than written in place. The
// pending one goes; the backup stays, as the backup of that document.
void forgetOwnLinks(SaveTarget& target, const std::string& backup) {
  const std::string pending = pendingName(backup);
  if (target.info.st_nlink > 1 && namesFile(pending, target.info) && sys().unlink(pending.c_str()) == 0)
    --target.info.st_nlink;
  if (target.info.st_nlink > 1 && namesFile(backup, target.info)) --target.info.st_nlink;
}

// The save: the backup (when asked for), then the new document in place of the old one, all or
// nothing; in place only where a replacement could not keep the document's owner, attributes or
// other hard links, or cannot be made in its folder, and then only after a whole backup is on disk.
bool save(const char* path, const ChunkProducer& produce, bool withBackup) {
  if (path == nullptr) return false;
  SaveTarget target;
  if (!openSaveTarget(path, target)) return false;
  const bool existed = target.file.valid() && !target.createdThroughLink;
  // A killed save's second names are discounted for every save, with a backup or without: they are
  // no hard links of the user's, and the document is still replaced rather than refused.
  const std::string backupName = std::string(path) + ".bak";
  if (existed) forgetOwnLinks(target, backupName);
  const std::string backup = withBackup && existed ? backupName : std::string();
  const auto fill = [&](int fd) {
    return produce([fd](std::string_view chunk) { return writeWithWindowsLineEnds(fd, chunk); });
  };
  const auto backUpByLink = [&] {
    if (!backup.empty()) backUp(target, backup, true);
  };
  Replaced result = Replaced::kNotReplaceable;
  if (!existed || target.info.st_nlink == 1)
    result = replaceFile(target.path, existed ? &target.file : nullptr, target.info, backUpByLink, fill);
  if (result == Replaced::kNotReplaceable && !backup.empty() && backUp(target, backup, false))
    return writeInPlace(target.file.get(), fill);
  if (result != Replaced::kDone && target.createdThroughLink) sys().unlink(target.path.c_str());
  return result == Replaced::kDone;
}

}  // namespace

bool readFile(const char* path, std::string& contents) { return readFile(path, contents, SIZE_MAX - 1); }

bool readFile(const char* path, std::string& contents, std::size_t maxBytes) {
  contents.clear();
  if (path == nullptr) return false;
  struct stat info {};
  Descriptor fd(openRegularFile(path, info));
  if (!fd.valid() || static_cast<std::uintmax_t>(info.st_size) > maxBytes) return false;
  contents.reserve(static_cast<std::size_t>(info.st_size));
  return readAll(fd.get(), [&](std::string_view chunk) {
    if (chunk.size() > maxBytes - contents.size()) return false;
    contents.append(chunk);
    return true;
  });
}

void backupFile(const char* path) noexcept {
  try {
    if (path == nullptr) return;
    struct stat info {};
    const std::string backup = std::string(path) + ".bak";
    Descriptor source(openRegularFile(path, info));
    if (source.valid() && backupNameIsFree(backup)) copyToBackup(source.get(), info, backup);
  } catch (...) {
    // Out of memory for a name: the save goes on without a backup, as with any failed copy.
  }
}

bool writeTextFile(const char* path, std::string_view text) {
  return writeTextFile(path, [text](const ChunkSink& sink) { return sink(text); });
}

bool writeTextFile(const char* path, const ChunkProducer& produce) { return save(path, produce, false); }

bool saveDocument(const char* path, const ChunkProducer& produce) { return save(path, produce, true); }

bool saveDocument(const char* path, std::string_view text) {
  return saveDocument(path, [text](const ChunkSink& sink) { return sink(text); });
}

}  // namespace orvane
