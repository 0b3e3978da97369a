// Every call the documents make to the file system failing in turn, with a full disk, an I/O error
// or a refused permission. A save still gives 1; the document on disk is then the old one or the new
// one, whole and with its mode; the backup is the older one or a whole copy of the old one; no
// temporary file and no open descriptor is left. A read that fails gives 0 without a message.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "document_kinds.h"
#include "model/file_system.h"

using namespace orvane::test;

namespace {

struct Call {
  std::string operation, path;
};

// What the replacement calls share (the seam takes plain functions, so they can't capture).
struct Faults {
  std::size_t failAt = 0;  // the call, counted from 1, that fails; 0 for none
  int error = 0;
  std::size_t maxWrite = SIZE_MAX;      // larger writes are cut short
  bool interrupt = false, interruptNow = false;  // every other read and write first fails with EINTR
  std::vector<Call> calls;
  std::map<int, std::string> open;  // descriptor -> file
} faults;

const orvane::FileSystem& real() { return orvane::posixFileSystem(); }

bool failsNow(const char* operation, const std::string& path) {
  faults.calls.push_back({operation, path});
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
      if (failsNow((flags & O_TMPFILE) == O_TMPFILE ? "opentmp" : "open", path)) return -1;
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
class FaultyFileSystem {
 public:
  explicit FaultyFileSystem(std::size_t failAt = 0, int error = 0) : previous_(orvane::setFileSystem(kCountingCalls)) {
    faults = Faults{};
    faults.failAt = failAt;
    faults.error = error;
  }
  ~FaultyFileSystem() { orvane::setFileSystem(previous_); }

 private:
  orvane::FileSystem previous_;
};

mode_t modeOf(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

template <class Document>
class FileCallsFailing : public ::testing::Test {
 protected:
  void SetUp() override {
    addSet(oldDocument, "Anterior", 3);
    addSet(newDocument, "Nuevo", 3);
    oldDocument.graba(path.c_str());
    oldBytes = readBytes(path);
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
  std::vector<Call> undisturbedSave(bool withOldDocument) {
    putOldFiles(withOldDocument);
    FaultyFileSystem counting;
    newDocument.graba(path.c_str());
    return faults.calls;
  }

  static std::size_t firstCall(const std::vector<Call>& calls, std::size_t from, const char* operation,
                               const char* end) {
    const auto found = std::find_if(calls.begin() + long(from), calls.end(), [&](const Call& call) {
      return call.operation == operation && call.path.size() >= std::strlen(end) &&
             call.path.compare(call.path.size() - std::strlen(end), std::string::npos, end) == 0;
    });
    return std::size_t(found - calls.begin());
  }

  TempDir dir;
  MessageRecorder messages;
  const std::string path = dir.file("doc.xml"), backup = path + ".bak", olderBytes = "an earlier save's backup";
  Document oldDocument, newDocument;
  std::string oldBytes, newBytes;
};

TYPED_TEST_SUITE(FileCallsFailing, DocumentTypes);

TYPED_TEST(FileCallsFailing, ASaveUsesOnlyTheSeam) {
  std::set<std::string> operations;
  for (const Call& call : this->undisturbedSave(true)) operations.insert(call.operation);
  // The backup is linked through the seam too, and the old document is not read again to copy it.
  EXPECT_EQ(operations, (std::set<std::string>{"open", "opentmp", "write", "fsync", "fstat", "fchmod", "flistxattr",
                                               "linkat", "close", "rename"}));
  EXPECT_EQ(readBytes(this->path), this->newBytes);
  EXPECT_EQ(readBytes(this->backup), this->oldBytes);
  EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
}

// Phases of a save over an existing file: the opening of the document for writing (its first two
// calls), which refuses the save; the document's temporary file and its attributes; the backup, a
// check that the older one may be replaced, then the old document linked under its name (copied
// where the link fails); the new document's writes up to its rename; its folder flush. A failure in
// the backup's check keeps the older backup, and the document is still saved; one in making the
// temporary file or giving it the attributes writes the document in place after a copied backup.
// With no file yet there is nothing to back up: only the document's own calls can stop the save.
TYPED_TEST(FileCallsFailing, EachCallFailingLeavesWholeFilesAndNoLeftovers) {
  for (bool existing : {true, false}) {
    const std::vector<Call> calls = this->undisturbedSave(existing);
    const std::size_t backupRename = existing ? this->firstCall(calls, 0, "rename", ".bak") : 0;
    const std::size_t documentRename = this->firstCall(calls, backupRename, "rename", "/doc.xml");
    ASSERT_LT(documentRename, calls.size());
    for (int error : {ENOSPC, EIO, EACCES}) {
      for (std::size_t i = 0; i < calls.size(); ++i) {
        SCOPED_TRACE(testing::Message() << (existing ? "" : "first save, ") << std::strerror(error) << " in call "
                                        << i + 1 << ": " << calls[i].operation << " " << calls[i].path);
        this->putOldFiles(existing);
        {
          FaultyFileSystem failing(i + 1, error);
          EXPECT_EQ(this->newDocument.graba(this->path.c_str()), 1);
          EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
        }
        if (!existing) {
          const std::set<std::string> none, document{"doc.xml"};
          EXPECT_EQ(this->dir.names(), i <= documentRename ? none : document);
          if (i > documentRename) { EXPECT_EQ(readBytes(this->path), this->newBytes); }
          continue;
        }
        const bool refused = i <= 1;
        const bool documentKept = refused || (i > backupRename && i <= documentRename);
        const bool backupKept = refused || (calls[i].operation == "open" && calls[i].path == this->backup);
        EXPECT_EQ(readBytes(this->path), documentKept ? this->oldBytes : this->newBytes);
        EXPECT_EQ(modeOf(this->path), 0640u);
        EXPECT_EQ(readBytes(this->backup), backupKept ? this->olderBytes : this->oldBytes);
        EXPECT_EQ(this->dir.names(), (std::set<std::string>{"doc.xml", "doc.xml.bak"}));
      }
    }
  }
  EXPECT_TRUE(this->messages.messages().empty());
}

TYPED_TEST(FileCallsFailing, ShortAndInterruptedWritesAndReadsAreCompleted) {
  this->putOldFiles();
  FaultyFileSystem choppy;
  faults.maxWrite = 7;
  faults.interrupt = true;
  EXPECT_EQ(this->newDocument.graba(this->path.c_str()), 1);
  EXPECT_EQ(readBytes(this->path), this->newBytes);
  EXPECT_EQ(readBytes(this->backup), this->oldBytes);
  TypeParam loaded;
  EXPECT_EQ(loaded.lee(this->path.c_str()), 1);
  EXPECT_EQ(setNames(loaded), std::vector<std::string>{"Nuevo"});
}

TYPED_TEST(FileCallsFailing, AFailingReadGivesZeroWithoutMessageAndKeepsTheDocument) {
  this->putOldFiles();
  for (std::size_t failAt : {1, 2}) {  // the open, the first read
    for (int error : {EIO, EACCES}) {
      SCOPED_TRACE(testing::Message() << "call " << failAt << ": " << std::strerror(error));
      FaultyFileSystem failing(failAt, error);
      TypeParam doc = this->newDocument;
      EXPECT_EQ(doc.lee(this->path.c_str()), 0);
      EXPECT_EQ(faults.calls.at(failAt - 1).operation, failAt == 1 ? "open" : "read");
      EXPECT_EQ(setNames(doc), std::vector<std::string>{"Nuevo"});
      EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
    }
  }
  EXPECT_TRUE(this->messages.messages().empty());
}

}  // namespace
