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
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/file_system.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "support/message_recorder.h"
#include "support/temp_dir.h"

using namespace orvane::test;
namespace fs = std::filesystem;

namespace {

// One call the model made: the operation and the file it concerned.
struct Call {
  std::string operation;
  std::string path;
};

// What the replacement calls share (the seam takes plain functions, so they can't capture).
struct Faults {
  std::size_t failAt = 0;  // the call, counted from 1, that fails; 0 for none
  int error = 0;
  std::size_t maxWrite = SIZE_MAX;  // larger writes are cut short
  bool interrupt = false;           // every other read and write first fails with EINTR
  bool interruptNow = false;
  std::vector<Call> calls;
  std::map<int, std::string> open;  // descriptor -> file
};
Faults faults;

const orvane::FileSystem& real() { return orvane::posixFileSystem(); }

bool failsNow(const char* operation, const std::string& path) {
  faults.calls.push_back({operation, path});
  if (faults.calls.size() != faults.failAt) return false;
  errno = faults.error;
  return true;
}

bool interrupted() {
  if (!faults.interrupt) return false;
  faults.interruptNow = !faults.interruptNow;
  if (faults.interruptNow) errno = EINTR;
  return faults.interruptNow;
}

std::string fileOf(int fd) {
  const auto found = faults.open.find(fd);
  return found == faults.open.end() ? std::string() : found->second;
}

// An unnamed temporary file is opened on its folder: "opentmp" tells it from other opens.
int openCall(const char* path, int flags, mode_t mode) {
  if (failsNow((flags & O_TMPFILE) == O_TMPFILE ? "opentmp" : "open", path)) return -1;
  const int fd = real().open(path, flags, mode);
  if (fd >= 0) faults.open[fd] = path;
  return fd;
}

ssize_t readCall(int fd, void* buffer, std::size_t size) {
  if (interrupted() || failsNow("read", fileOf(fd))) return -1;
  return real().read(fd, buffer, size);
}

ssize_t writeCall(int fd, const void* bytes, std::size_t size) {
  if (interrupted() || failsNow("write", fileOf(fd))) return -1;
  return real().write(fd, bytes, std::min(size, faults.maxWrite));
}

int fsyncCall(int fd) { return failsNow("fsync", fileOf(fd)) ? -1 : real().fsync(fd); }

int fchmodCall(int fd, mode_t mode) { return failsNow("fchmod", fileOf(fd)) ? -1 : real().fchmod(fd, mode); }

// Linux releases a descriptor even when close reports an error, so the real close always runs.
int closeCall(int fd) {
  const std::string path = fileOf(fd);
  faults.open.erase(fd);
  const int result = real().close(fd);
  return failsNow("close", path) ? -1 : result;
}

int renameCall(const char* from, const char* to) { return failsNow("rename", to) ? -1 : real().rename(from, to); }

// Removing a temporary file is the cleanup itself; it is not made to fail.
int unlinkCall(const char* path) { return real().unlink(path); }

int fstatCall(int fd, struct stat* info) { return failsNow("fstat", fileOf(fd)) ? -1 : real().fstat(fd, info); }
int fchownCall(int fd, uid_t owner, gid_t group) {
  return failsNow("fchown", fileOf(fd)) ? -1 : real().fchown(fd, owner, group);
}
int ftruncateCall(int fd, off_t length) { return failsNow("ftruncate", fileOf(fd)) ? -1 : real().ftruncate(fd, length); }
int linkatCall(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
  return failsNow("linkat", to) ? -1 : real().linkat(fromFolder, from, toFolder, to, flags);
}
ssize_t flistxattrCall(int fd, char* names, std::size_t size) {
  return failsNow("flistxattr", fileOf(fd)) ? -1 : real().flistxattr(fd, names, size);
}
ssize_t fgetxattrCall(int fd, const char* name, void* value, std::size_t size) {
  return failsNow("fgetxattr", fileOf(fd)) ? -1 : real().fgetxattr(fd, name, value, size);
}
int fsetxattrCall(int fd, const char* name, const void* value, std::size_t size, int flags) {
  return failsNow("fsetxattr", fileOf(fd)) ? -1 : real().fsetxattr(fd, name, value, size, flags);
}

constexpr orvane::FileSystem kCountingCalls{openCall,      readCall,       writeCall,     fsyncCall,    fchmodCall,
                                            closeCall,     renameCall,     unlinkCall,    fstatCall,    fchownCall,
                                            ftruncateCall, linkatCall,     flistxattrCall, fgetxattrCall, fsetxattrCall};

// Puts the counting calls in place for the life of the object, with a fresh plan.
class FaultyFileSystem {
 public:
  explicit FaultyFileSystem(std::size_t failAt = 0, int error = 0) {
    faults = Faults{};
    faults.failAt = failAt;
    faults.error = error;
    previous_ = orvane::setFileSystem(kCountingCalls);
  }
  ~FaultyFileSystem() { orvane::setFileSystem(previous_); }
  FaultyFileSystem(const FaultyFileSystem&) = delete;
  FaultyFileSystem& operator=(const FaultyFileSystem&) = delete;

 private:
  orvane::FileSystem previous_{};
};

std::set<std::string> entriesIn(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename().string());
  return names;
}

mode_t modeOf(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

// A document that differs from `other` in its one set.
void nameOnlySet(CIfcProyectPSet& doc, const char* name) {
  doc.propertySets.assign(1, CIfcPropertySet());
  std::strcpy(doc.propertySets[0].name, name);
  doc.propertySets[0].properties.assign(3, CIfcPropertyName());
}

void nameOnlySet(CIfcProyectQSet& doc, const char* name) {
  doc.quantitySets.assign(1, CIfcQuantitySet());
  std::strcpy(doc.quantitySets[0].name, name);
  doc.quantitySets[0].quantities.assign(3, CIfcQuantityName());
}

std::string onlySetName(const CIfcProyectPSet& doc) {
  return doc.propertySets.size() == 1 ? doc.propertySets[0].name : "(not one set)";
}

std::string onlySetName(const CIfcProyectQSet& doc) {
  return doc.quantitySets.size() == 1 ? doc.quantitySets[0].name : "(not one set)";
}

template <class Document>
class FileCallsFailing : public ::testing::Test {
 protected:
  void SetUp() override {
    nameOnlySet(oldDocument, "Anterior");
    nameOnlySet(newDocument, "Nuevo");
    oldBytes = bytesSaved(oldDocument);
    newBytes = bytesSaved(newDocument);
  }

  std::string bytesSaved(Document& doc) {
    TempDir scratch;
    const std::string file = scratch.file("doc.xml");
    doc.graba(file.c_str());
    return readBytes(file);
  }

  // The old document with mode 0640, and an older backup beside it (or no file at all).
  void putOldFiles(bool withOldDocument = true) {
    for (const std::string& name : entriesIn(dir.path())) fs::remove(dir.path() / name);
    if (!withOldDocument) return;
    writeBytes(path, oldBytes);
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    writeBytes(backup, olderBytes);
  }

  // The calls of a save that nothing disturbs.
  std::vector<Call> undisturbedSave(bool withOldDocument = true) {
    putOldFiles(withOldDocument);
    FaultyFileSystem counting;
    newDocument.graba(path.c_str());
    return faults.calls;
  }

  static std::size_t firstCall(const std::vector<Call>& calls, std::size_t from, const char* operation,
                               const std::string& pathEnd) {
    for (std::size_t i = from; i < calls.size(); ++i) {
      const Call& call = calls[i];
      if (call.operation == operation && call.path.size() >= pathEnd.size() &&
          call.path.compare(call.path.size() - pathEnd.size(), pathEnd.size(), pathEnd) == 0)
        return i;
    }
    ADD_FAILURE() << "no " << operation << " of *" << pathEnd;
    return calls.size();
  }

  TempDir dir;
  MessageRecorder messages;
  const std::string path = dir.file("doc.xml");
  const std::string backup = path + ".bak";
  const std::string olderBytes = "the backup of an earlier save";
  Document oldDocument, newDocument;
  std::string oldBytes, newBytes;
};

using Documents = ::testing::Types<CIfcProyectPSet, CIfcProyectQSet>;
TYPED_TEST_SUITE(FileCallsFailing, Documents);

TYPED_TEST(FileCallsFailing, ASaveUsesOnlyTheSeam) {
  const std::vector<Call> calls = this->undisturbedSave();
  std::set<std::string> operations;
  for (const Call& call : calls) operations.insert(call.operation);
  // The backup is linked through the seam too, and the old document is not read again to copy it.
  EXPECT_EQ(operations, (std::set<std::string>{"open", "opentmp", "write", "fsync", "fstat", "fchmod",
                                               "flistxattr", "linkat", "close", "rename"}));
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
TYPED_TEST(FileCallsFailing, EachCallFailingLeavesWholeFilesAndNoLeftovers) {
  const std::vector<Call> calls = this->undisturbedSave();
  const std::size_t backupRename = this->firstCall(calls, 0, "rename", ".bak");
  const std::size_t documentRename = this->firstCall(calls, backupRename, "rename", "/doc.xml");
  ASSERT_LT(documentRename, calls.size());

  for (int error : {ENOSPC, EIO, EACCES}) {
    for (std::size_t i = 0; i < calls.size(); ++i) {
      SCOPED_TRACE(testing::Message() << std::strerror(error) << " in call " << i + 1 << ": "
                                      << calls[i].operation << " " << calls[i].path);
      this->putOldFiles();
      {
        FaultyFileSystem failing(i + 1, error);
        EXPECT_EQ(this->newDocument.graba(this->path.c_str()), 1);
        EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
      }
      const bool refused = i <= 1;
      const bool documentKept = refused || (i > backupRename && i <= documentRename);
      const bool backupKept = refused || (calls[i].operation == "open" && calls[i].path == this->backup);
      EXPECT_EQ(readBytes(this->path), documentKept ? this->oldBytes : this->newBytes);
      EXPECT_EQ(modeOf(this->path), 0640u);
      EXPECT_EQ(readBytes(this->backup), backupKept ? this->olderBytes : this->oldBytes);
      EXPECT_EQ(entriesIn(this->dir.path()), (std::set<std::string>{"doc.xml", "doc.xml.bak"}));
    }
  }
  EXPECT_TRUE(this->messages.messages().empty());
}

// With no file yet there is nothing to back up: only the document's own calls can stop the save.
TYPED_TEST(FileCallsFailing, EachCallFailingOnAFirstSaveLeavesNoFileOrAWholeOne) {
  const std::vector<Call> calls = this->undisturbedSave(false);
  const std::size_t documentRename = this->firstCall(calls, 0, "rename", "/doc.xml");
  ASSERT_LT(documentRename, calls.size());
  for (std::size_t i = 0; i < calls.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "call " << i + 1 << ": " << calls[i].operation << " " << calls[i].path);
    this->putOldFiles(false);
    {
      FaultyFileSystem failing(i + 1, ENOSPC);
      EXPECT_EQ(this->newDocument.graba(this->path.c_str()), 1);
    }
    if (i <= documentRename) {
      EXPECT_TRUE(entriesIn(this->dir.path()).empty());
    } else {
      EXPECT_EQ(entriesIn(this->dir.path()), std::set<std::string>{"doc.xml"});
      EXPECT_EQ(readBytes(this->path), this->newBytes);
    }
  }
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
}

TYPED_TEST(FileCallsFailing, AFailingReadGivesZeroWithoutMessageAndKeepsTheDocument) {
  this->putOldFiles();
  for (const char* operation : {"open", "read"}) {
    for (int error : {EIO, EACCES}) {
      SCOPED_TRACE(testing::Message() << operation << " " << std::strerror(error));
      FaultyFileSystem counting;
      TypeParam doc = this->newDocument;
      faults.failAt = std::string(operation) == "open" ? 1 : 2;
      faults.error = error;
      EXPECT_EQ(doc.lee(this->path.c_str()), 0);
      EXPECT_EQ(onlySetName(doc), "Nuevo");
      EXPECT_TRUE(faults.open.empty()) << "a descriptor was left open";
    }
  }
  EXPECT_TRUE(this->messages.messages().empty());
}

}  // namespace
