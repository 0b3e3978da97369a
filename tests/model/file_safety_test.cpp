// The document files on disk: links, long names, what a save respects of the files it replaces, every
// file call failing in turn, and saves killed halfway.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <map>
#include <random>
#include <regex>

#include "document_kinds.h"
#include "model/file_io.h"
#include "model/file_system.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

// A link is written through to the file it names, a dangling one (relative to its folder) makes
// that file; a chain is followed and a loop refused, the links staying links. A file is read whole,
// NUL bytes and all. The temporary file is named after the target: a name near the system's limit of
// 255 bytes leaves no room for that, and the save must still work. A write without a backup (the
// tool's outputs) replaces a document a killed save left with second names, rather than refusing
// it as a document with hard links of the user's.
TEST(FileIo, LinksWholeFilesAndLongNames) {
  TempDir dir;
  const std::string bytes("n\0ew", 4);
  fs::create_symlink("new.xml", dir.file("dangling.xml"));
  writeBytes(dir.file("real.xml"), "old");
  fs::create_symlink(dir.file("real.xml"), dir.file("one.xml"));
  fs::create_symlink("one.xml", dir.file("two.xml"));
  fs::create_symlink("b.xml", dir.file("a.xml"));
  fs::create_symlink("a.xml", dir.file("b.xml"));
  ASSERT_TRUE(orvane::writeTextFile(dir.file("dangling.xml").c_str(), "new"));
  ASSERT_TRUE(orvane::writeTextFile(dir.file("two.xml").c_str(), bytes));
  EXPECT_FALSE(orvane::writeTextFile(dir.file("a.xml").c_str(), "x"));
  EXPECT_EQ(readBytes(dir.file("new.xml")), "new");
  std::string contents;
  EXPECT_TRUE(orvane::readFile(dir.file("one.xml").c_str(), contents));
  EXPECT_EQ(contents, bytes);
  EXPECT_FALSE(orvane::readFile(nullptr, contents));
  for (const char* link : {"dangling.xml", "one.xml", "two.xml", "a.xml", "b.xml"})
    EXPECT_TRUE(fs::is_symlink(dir.file(link))) << link;
  const std::string longName = dir.write(std::string(246, 'n') + ".xml", "old");
  ASSERT_TRUE(orvane::saveDocument(longName.c_str(), "new"));
  EXPECT_EQ(readBytes(longName), "new");
  EXPECT_EQ(readBytes(longName + ".bak"), "old");
  const std::string doc = dir.write("doc.xml", "old");
  ASSERT_EQ(::link(doc.c_str(), dir.file(".doc.xml.bak.orvane-save").c_str()), 0);
  ASSERT_EQ(::link(doc.c_str(), dir.file("doc.xml.bak").c_str()), 0);
  ASSERT_TRUE(orvane::writeTextFile(doc.c_str(), "new"));
  EXPECT_EQ(readBytes(doc) + readBytes(doc + ".bak"), "newold");
  EXPECT_EQ(dir.names().size(), 11u);  // the killed save's pending name is gone too
}

// What a save respects, on real files: who may write the document and its backup, its owner, mode,
// extended attributes and hard links, and what lies at the backup's name. The saver is this
// process (root) or a child that became the unprivileged user 65534 ("nobody").
constexpr uid_t kNobody = 65534, kSomeoneElse = 1234;

struct stat statOf(const std::string& path) {
  struct stat info {};
  ::lstat(path.c_str(), &info);
  return info;
}

std::string attributeOf(const std::string& path, const char* name) {
  char value[256];
  const ssize_t length = ::getxattr(path.c_str(), name, value, sizeof value);
  return length < 0 ? "(none)" : std::string(value, static_cast<std::size_t>(length));
}

// An access ACL that also lets user 4321 (0x10E1) read, as the kernel stores it: version 2, then
// tag, permissions and id (little-endian) of owner rw, user 4321 r, group r, mask r, others none.
const std::string kReadableByUser4321(
    "\2\0\0\0" "\1\0\6\0\xFF\xFF\xFF\xFF" "\2\0\4\0\xE1\x10\0\0" "\4\0\4\0\xFF\xFF\xFF\xFF"
    "\x10\0\4\0\xFF\xFF\xFF\xFF" "\x20\0\0\0\xFF\xFF\xFF\xFF", 44);

struct SaveScene {
  TempDir dir;
  std::string path = dir.file("doc.xml"), backup = path + ".bak";
  std::string other = dir.file("other");  // a file the case may use: a victim, a second link
  bool withAttributes = false;            // the document has an ACL and an extended attribute
  ino_t oldInode = 0;

  SaveScene() {
    ::chmod(dir.path().c_str(), 0777);  // the unprivileged saver may create files here
    writeBytes(path, "old");
    ::chmod(path.c_str(), 0644);
    oldInode = statOf(path).st_ino;
  }
  void own(const std::string& file, mode_t mode, uid_t owner = kNobody, gid_t group = kNobody) const {
    ASSERT_EQ(::chown(file.c_str(), owner, group), 0);
    ASSERT_EQ(::chmod(file.c_str(), mode), 0);
  }
  // "new 0644 0:0 1 (old file)": bytes, mode, owner and group, links, and whether it is the old
  // document's file.
  std::string stateOf(const std::string& file) const {
    const auto type = fs::symlink_status(file).type();
    if (type == fs::file_type::not_found || type == fs::file_type::directory)
      return type == fs::file_type::directory ? "(folder)" : "(missing)";
    if (type != fs::file_type::regular) return "(not a regular file)";
    const struct stat info = statOf(file);
    char mode[8];
    std::snprintf(mode, sizeof mode, "%04o", unsigned(info.st_mode & 07777));
    return readBytes(file) + " " + mode + " " + std::to_string(info.st_uid) + ":" + std::to_string(info.st_gid) + " " +
           std::to_string(info.st_nlink) + (info.st_ino == oldInode ? " (old file)" : "");
  }
};

// Saves "new" at `path`, as root or in a child that became nobody (group nogroup); true when the
// save reported success.
bool saveAs(bool unprivileged, const std::string& path) {
  if (!unprivileged) return orvane::saveDocument(path.c_str(), "new");
  const pid_t child = ::fork();
  if (child == 0) {
    const bool dropped = ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
    ::_exit(dropped ? (orvane::saveDocument(path.c_str(), "new") ? 0 : 1) : 2);
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) == 2)
    ADD_FAILURE() << "the unprivileged saver did not run";
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

using Scene = SaveScene&;
const struct SaveCase {
  const char* name;
  bool unprivileged;
  void (*prepare)(SaveScene&);
  bool saved;
  const char *document, *backup, *other;  // their states after the save
} kSaveCases[] = {
    {"a read-only document of the saver is left as it was", true,
     [](Scene s) { s.own(s.path, 0444); }, false, "old 0444 65534:65534 1 (old file)", "(missing)", "(missing)"},
    {"root's document in a folder the saver may write is left as it was", true, [](Scene) {}, false,
     "old 0644 0:0 1 (old file)", "(missing)", "(missing)"},
    {"another owner's document the saver's group may write keeps its owner (written in place)", true,
     [](Scene s) { s.own(s.path, 0660, kSomeoneElse); }, true, "new 0660 1234:65534 1 (old file)",
     "old 0600 65534:65534 1", "(missing)"},
    {"an older backup the saver could not write is kept", true,
     [](Scene s) { s.own(s.path, 0644), writeBytes(s.backup, "older"); }, true,
     "new 0644 65534:65534 1", "older 0644 0:0 1", "(missing)"},
    {"a link planted at the backup's name is replaced, not followed", true,
     [](Scene s) {
       s.own(s.path, 0644);
       s.own(s.dir.write("other", "private"), 0600);
       fs::create_symlink(s.other, s.backup);
     },
     true, "new 0644 65534:65534 1", "old 0644 65534:65534 1 (old file)", "private 0600 65534:65534 1"},
    {"root keeps root's powers over a read-only document", false, [](Scene s) { s.own(s.path, 0444); }, true,
     "new 0444 65534:65534 1", "old 0444 65534:65534 1 (old file)", "(missing)"},
    {"owner, group, mode, ACL and extended attributes are kept", false,
     [](Scene s) {
       s.own(s.path, 0640, kSomeoneElse, kSomeoneElse);
       const std::string& acl = kReadableByUser4321;
       s.withAttributes = ::setxattr(s.path.c_str(), "user.origin", "cad", 3, 0) == 0 &&
                          ::setxattr(s.path.c_str(), "system.posix_acl_access", acl.data(), acl.size(), 0) == 0;
     },
     true, "new 0640 1234:1234 1", "old 0640 1234:1234 1 (old file)", "(missing)"},
    {"a document with another hard link is written in place", false,
     [](Scene s) { ASSERT_EQ(::link(s.path.c_str(), s.other.c_str()), 0); }, true, "new 0644 0:0 2 (old file)",
     "old 0644 0:0 1", "new 0644 0:0 2 (old file)"},
    {"the second names a killed save gave the old document are no links of the user's", false,
     [](Scene s) {
       ASSERT_EQ(::link(s.path.c_str(), (s.dir.path() / ".doc.xml.bak.orvane-save").c_str()), 0);
       ASSERT_EQ(::link(s.path.c_str(), s.backup.c_str()), 0);
     },
     true, "new 0644 0:0 1", "old 0644 0:0 1 (old file)", "(missing)"},  // not written in place
    {"a FIFO at the backup's name is replaced by the backup", false,
     [](Scene s) { ASSERT_EQ(::mkfifo(s.backup.c_str(), 0666), 0); }, true, "new 0644 0:0 1",
     "old 0644 0:0 1 (old file)", "(missing)"},
    {"a folder at the backup's name stays and the document is saved", false,
     [](Scene s) { fs::create_directory(s.backup); }, true, "new 0644 0:0 1", "(folder)", "(missing)"},
};

TEST(FileIo, ASaveRespectsWhatTheFileSystemProtects) {
  if (::geteuid() != 0) GTEST_SKIP() << "the cases need root, to make other owners' files and to drop to nobody";
  for (const SaveCase& test : kSaveCases) {
    SCOPED_TRACE(test.name);
    SaveScene scene;
    test.prepare(scene);
    if (::testing::Test::HasFatalFailure()) return;
    EXPECT_EQ(saveAs(test.unprivileged, scene.path), test.saved);
    EXPECT_EQ(scene.stateOf(scene.path), test.document);
    EXPECT_EQ(scene.stateOf(scene.backup), test.backup);
    EXPECT_EQ(scene.stateOf(scene.other), test.other);
    // Set by the case that gives them, where the file system has extended attributes and ACLs.
    for (const std::string& file : {scene.path, scene.backup}) {
      if (!scene.withAttributes) continue;
      EXPECT_EQ(attributeOf(file, "user.origin") + attributeOf(file, "system.posix_acl_access"),
                "cad" + kReadableByUser4321) << file;
    }
    for (const std::string& name : scene.dir.names()) EXPECT_EQ(name.find(".orvane-save"), std::string::npos) << name;
  }
}

// Every call the documents make to the file system failing in turn, with a full disk, an I/O error
// or a refused permission. A save still gives 1; the document on disk is then the old one or the new
// one, whole and with its mode; the backup is the older one or a whole copy of the old one; no
// temporary file and no open descriptor is left. A read that fails gives 0 without a message.

// What the replacement calls share (the seam takes plain functions, so they can't capture).
struct Faults {
  std::size_t failAt = 0;  // the call, counted from 1, that fails; 0 for none
  int error = 0;
  std::size_t maxWrite = SIZE_MAX;      // larger writes are cut short
  // Every other read and write first fails with EINTR; a file system without O_TMPFILE.
  bool interrupt = false, interruptNow = false, noUnnamedFiles = false;
  std::vector<std::string> calls;  // "operation path"
  std::map<int, std::string> open;  // descriptor -> file
} faults;

const orvane::FileSystem& real() { return orvane::posixFileSystem(); }

bool failsNow(const char* operation, const std::string& path) {
  faults.calls.push_back(std::string(operation) + " " + path);
  if (faults.calls.size() != faults.failAt) return false;
  errno = faults.error;
  return true;
}

bool interrupted() {
  faults.interruptNow = faults.interrupt && !faults.interruptNow;
  if (faults.interruptNow) errno = EINTR;
  return faults.interruptNow;
}

std::string fileOf(int fd) { return faults.open.count(fd) != 0 ? faults.open[fd] : std::string(); }

// A call on a descriptor, counted under its name and the descriptor's file.
#define ON_FD(op) [](int fd, auto... rest) { return failsNow(#op, fileOf(fd)) ? -1 : real().op(fd, rest...); }

constexpr orvane::FileSystem kCountingCalls{
    [](const char* path, int flags, mode_t mode) {  // an unnamed temporary file is opened on its folder
      const bool unnamed = (flags & O_TMPFILE) == O_TMPFILE;
      if (failsNow(unnamed ? "opentmp" : "open", path)) return -1;
      if (unnamed && faults.noUnnamedFiles) return errno = EOPNOTSUPP, -1;
      const int fd = real().open(path, flags, mode);
      if (fd >= 0) faults.open[fd] = path;
      return fd;
    },
    [](int fd, void* buffer, std::size_t size) -> ssize_t {
      return interrupted() || failsNow("read", fileOf(fd)) ? -1 : real().read(fd, buffer, size);
    },
    [](int fd, const void* bytes, std::size_t size) -> ssize_t {
      if (interrupted() || failsNow("write", fileOf(fd))) return -1;
      return real().write(fd, bytes, std::min(size, faults.maxWrite));
    },
    ON_FD(fsync), ON_FD(fchmod),
    [](int fd) {  // Linux releases a descriptor even when close reports an error, so the real close always runs
      const std::string path = fileOf(fd);
      faults.open.erase(fd);
      const int result = real().close(fd);
      return failsNow("close", path) ? -1 : result;
    },
    [](const char* from, const char* to) { return failsNow("rename", to) ? -1 : real().rename(from, to); },
    [](const char* path) { return real().unlink(path); },  // removing a temporary file is the cleanup itself
    ON_FD(fstat), ON_FD(fchown), ON_FD(ftruncate),
    [](int fromFolder, const char* from, int toFolder, const char* to, int flags) {
      return failsNow("linkat", to) ? -1 : real().linkat(fromFolder, from, toFolder, to, flags);
    },
    ON_FD(flistxattr), ON_FD(fgetxattr), ON_FD(fsetxattr)};

// Puts the counting calls in place for the life of the object, with a fresh plan.
struct FaultyFileSystem {
  explicit FaultyFileSystem(std::size_t failAt = 0, int error = 0) : previous(orvane::setFileSystem(kCountingCalls)) {
    faults = Faults{};
    faults.failAt = failAt;
    faults.error = error;
  }
  ~FaultyFileSystem() { orvane::setFileSystem(previous); }
  const orvane::FileSystem previous;
};

template <class Document>
class FileCallsFailing : public ::testing::Test {
 protected:
  void SetUp() override {
    addSet(newDocument, "Nuevo", 3);
    newDocument.graba(path.c_str());
    newBytes = readBytes(path);
  }

  // The old document with mode 0640 and an older backup beside it, or no file at all.
  void putOldFiles(bool withOldDocument = true) {
    for (const std::string& name : dir.names()) std::filesystem::remove(dir.path() / name);
    if (!withOldDocument) return;
    writeBytes(path, oldBytes);
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    writeBytes(backup, olderBytes);
  }

  // The calls of a save that nothing disturbs.
  std::vector<std::string> undisturbedSave(bool withOldDocument) {
    putOldFiles(withOldDocument);
    FaultyFileSystem counting;
    newDocument.graba(path.c_str());
    return faults.calls;
  }

  TempDir dir;
  MessageRecorder messages;
  const std::string path = dir.file("doc.xml"), backup = path + ".bak";
  const std::string oldBytes = "the document this save replaces", olderBytes = "an earlier save's backup";
  Document newDocument;
  std::string newBytes;
};

TYPED_TEST_SUITE(FileCallsFailing, DocumentTypes);

// Phases of a save over an existing file: the opening of the document for writing (its first two
// calls), which refuses the save; the document's temporary file and its attributes; the backup, a
// check that the older one may be replaced, then the old document linked under its name (copied
// where the link fails); the new document's writes up to its rename; its folder flush. A failure in
// the backup's check keeps the older backup, and the document is still saved; one in making the
// temporary file or giving it the attributes writes the document in place after a copied backup.
// With no file yet there is nothing to back up: only the document's own calls can stop the save.
TYPED_TEST(FileCallsFailing, EachCallFailingLeavesWholeFilesAndNoLeftovers) {
  for (bool existing : {true, false}) {
    const std::vector<std::string> calls = this->undisturbedSave(existing);
    const auto firstCall = [&](std::size_t from, const std::string& call) {
      return std::size_t(std::find(calls.begin() + long(from), calls.end(), call) - calls.begin());
    };
    EXPECT_EQ(readBytes(this->path), this->newBytes);
    EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
    if (existing) {
      std::set<std::string> operations;
      for (const std::string& call : calls) operations.insert(call.substr(0, call.find(' ')));
      // The backup is linked through the seam too, and the old document is not read again to copy it.
      EXPECT_EQ(operations, (std::set<std::string>{"open", "opentmp", "write", "fsync", "fstat", "fchmod",
                                                   "flistxattr", "linkat", "close", "rename"}));
      EXPECT_EQ(readBytes(this->backup), this->oldBytes);
    }
    const std::size_t backupRename = existing ? firstCall(0, "rename " + this->backup) : 0;
    const std::size_t documentRename = firstCall(backupRename, "rename " + this->path);
    ASSERT_LT(documentRename, calls.size());
    for (int error : {ENOSPC, EIO, EACCES}) {
      for (std::size_t i = 0; i < calls.size(); ++i) {
        SCOPED_TRACE(testing::Message() << (existing ? "" : "first save, ") << std::strerror(error) << " in call "
                                        << i + 1 << ": " << calls[i]);
        this->putOldFiles(existing);
        {
          FaultyFileSystem failing(i + 1, error);
          EXPECT_EQ(this->newDocument.graba(this->path.c_str()), 1);
          EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
        }
        if (!existing) {
          EXPECT_EQ(this->dir.names().size(), i <= documentRename ? 0u : 1u);
          EXPECT_EQ(readBytes(this->path), i <= documentRename ? "" : this->newBytes);  // "" when there is none
          continue;
        }
        const bool refused = i <= 1;
        const bool documentKept = refused || (i > backupRename && i <= documentRename);
        const bool backupKept = refused || calls[i] == "open " + this->backup;
        EXPECT_EQ(readBytes(this->path), documentKept ? this->oldBytes : this->newBytes);
        EXPECT_EQ(statOf(this->path).st_mode & 07777, 0640u);
        EXPECT_EQ(readBytes(this->backup), backupKept ? this->olderBytes : this->oldBytes);
        EXPECT_EQ(this->dir.names(), (std::set<std::string>{"doc.xml", "doc.xml.bak"}));
      }
    }
  }
  this->putOldFiles();
  for (std::size_t failAt : {1, 2}) {  // a read failing at its open or its first read
    SCOPED_TRACE(testing::Message() << "reading, call " << failAt);
    FaultyFileSystem failing(failAt, failAt == 1 ? EACCES : EIO);
    TypeParam doc = this->newDocument;
    EXPECT_EQ(doc.lee(this->path.c_str()), 0);
    EXPECT_EQ(faults.calls.at(failAt - 1), (failAt == 1 ? "open " : "read ") + this->path);
    EXPECT_EQ(setNames(doc), std::vector<std::string>{"Nuevo"});
    EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
  }
  EXPECT_TRUE(this->messages.messages().empty());
}

// Writes cut short, reads and writes interrupted, or a file system without unnamed files, where the
// new document goes through a hidden named one, gone once it is renamed: the save still completes.
TYPED_TEST(FileCallsFailing, ShortInterruptedAndNamedTemporaryWritesComplete) {
  for (bool choppy : {true, false}) {
    SCOPED_TRACE(choppy ? "short and interrupted calls" : "no unnamed files");
    this->putOldFiles();
    FaultyFileSystem seam;
    faults.maxWrite = choppy ? 7 : SIZE_MAX;
    faults.interrupt = choppy;
    faults.noUnnamedFiles = !choppy;
    EXPECT_EQ(this->newDocument.graba(this->path.c_str()), 1);
    EXPECT_EQ(readBytes(this->path), this->newBytes);
    EXPECT_EQ(readBytes(this->backup), this->oldBytes);
    std::string whole;  // and a whole-file read through the same calls
    EXPECT_TRUE(orvane::readFile(this->path.c_str(), whole) && whole == this->newBytes);
    EXPECT_EQ(this->dir.names(), (std::set<std::string>{"doc.xml", "doc.xml.bak"}));
    EXPECT_EQ(std::any_of(faults.calls.begin(), faults.calls.end(), [](const std::string& call) {
      return std::regex_search(call, std::regex("^open .*/\\.doc\\.xml\\.[0-9]+-[0-9]+\\.tmp$"));
    }), !choppy);
  }
}

// A save killed at any moment, as a host that crashes or is killed would be: a child process saves
// in a loop and is killed with SIGKILL after a random delay. Whatever the moment, the document is
// the old or the new one byte for byte, both saved whole; so is its backup. No temporary file is left, except a
// whole new version under its one pending name when the kill fell between naming and renaming it,
// which the next save removes. The files lie in memory where the system allows, so 200 kills take
// well under a second; what a killed process leaves depends only on the order of its calls.

TEST(SaveCrash, AKilledSaveLeavesTheOldOrTheNewDocument) {
  TempDir dir(TempDir::Place::kMemory);
  MessageRecorder quiet;
  const std::string path = dir.file("doc.xml");
  CIfcProyectPSet oldDoc, newDoc;
  for (int i = 0; i < 30; ++i) {
    if (i < 20) addSet(oldDoc, ("Anterior" + std::to_string(1000 + i)).c_str(), 4);
    addSet(newDoc, ("Nuevo" + std::to_string(1000 + i)).c_str(), 4);
  }
  newDoc.graba(path.c_str());
  const std::string newBytes = readBytes(path);
  const auto start = std::chrono::steady_clock::now();
  oldDoc.graba(path.c_str());
  const std::string oldBytes = readBytes(path);
  // Delays up to a few saves' time put the kill anywhere in a save, also in the first one.
  const auto window =
      std::chrono::duration_cast<std::chrono::microseconds>(3 * (std::chrono::steady_clock::now() - start));
  std::mt19937 random(20261121);
  std::uniform_int_distribution<long> delay(0, std::max<long>(window.count(), 200));
  const std::set<std::string> mayStay{"doc.xml", "doc.xml.bak", ".doc.xml.orvane-save", ".doc.xml.bak.orvane-save"};
  int sawOld = 0, sawNew = 0;
  for (int run = 0; run < 200; ++run) {
    SCOPED_TRACE(testing::Message() << "run " << run);
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {  // tells the parent it runs, then saves the two documents in turn until killed
      if (::write(ready[1], "r", 1) != 1) ::_exit(1);
      for (;;) newDoc.graba(path.c_str()), oldDoc.graba(path.c_str());
    }
    char running = 0;
    ASSERT_EQ(::read(ready[0], &running, 1), 1);
    ::close(ready[0]);
    ::close(ready[1]);
    ::usleep(useconds_t(delay(random)));
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));

    (readBytes(path) == oldBytes ? sawOld : sawNew)++;
    for (const std::string& name : dir.names()) {
      ASSERT_EQ(mayStay.count(name), 1u) << name << " was left";
      const std::string bytes = readBytes(dir.file(name));
      ASSERT_TRUE(bytes == oldBytes || bytes == newBytes) << name << " is not whole";
    }
  }
  // Both outcomes occur, or the delays did not spread the kills over the saves.
  EXPECT_TRUE(sawOld > 0 && sawNew > 0) << sawOld << " old, " << sawNew << " new";
  newDoc.graba(path.c_str());
  EXPECT_EQ(dir.names(), (std::set<std::string>{"doc.xml", "doc.xml.bak"})) << "a killed save's file was left";
  EXPECT_TRUE(quiet.messages().empty());
}

}  // namespace
