// The document files on disk: line ends, modes, links, and no leftovers after a failed save.
#include <gtest/gtest.h>

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "model/file_io.h"
#include "support/temp_dir.h"

using orvane::test::readBytes;
using orvane::test::TempDir;
using orvane::test::writeBytes;
namespace fs = std::filesystem;

namespace {

std::size_t entriesIn(const fs::path& folder) {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder)) ++count;
  return count;
}

TEST(FileIo, TextIsWrittenWithWindowsLineEnds) {
  TempDir dir;
  ASSERT_TRUE(orvane::writeTextFile(dir.file("a.xml").c_str(), "<a>\n  <b/>\n</a>\n"));
  EXPECT_EQ(readBytes(dir.file("a.xml")), "<a>\r\n  <b/>\r\n</a>\r\n");
  EXPECT_EQ(entriesIn(dir.path()), 1u);  // no temporary file left beside it
}

// A file-size limit makes the write itself fail halfway, for root as for anyone.
TEST(FileIo, AWriteThatFailsHalfwayLeavesTheOldFileAsItWas) {
  TempDir dir;
  const std::string path = dir.file("a.xml");
  writeBytes(path, "old contents");
  struct rlimit previous {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &previous), 0);
  const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit small = previous;
  small.rlim_cur = 1000;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const bool written = orvane::writeTextFile(path.c_str(), std::string(5000, 'x'));
  ::setrlimit(RLIMIT_FSIZE, &previous);
  std::signal(SIGXFSZ, previousHandler);
  EXPECT_FALSE(written);
  EXPECT_EQ(readBytes(path), "old contents");
  EXPECT_EQ(entriesIn(dir.path()), 1u);
}

TEST(FileIo, BackupCopiesTheFileAndIgnoresAMissingOne) {
  TempDir dir;
  const std::string path = dir.file("a.xml");
  orvane::backupFile(path.c_str());
  EXPECT_FALSE(fs::exists(path + ".bak"));
  writeBytes(path, "one");
  orvane::backupFile(path.c_str());
  writeBytes(path, "two");
  orvane::backupFile(path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), "two");
}

TEST(FileIo, ADanglingLinkIsWrittenThroughToTheFileItNames) {
  TempDir dir;
  const std::string link = dir.file("link.xml");
  fs::create_symlink("new.xml", link);  // relative: resolved from the link's folder
  ASSERT_TRUE(orvane::writeTextFile(link.c_str(), "new"));
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(readBytes(dir.file("new.xml")), "new");
  EXPECT_EQ(entriesIn(dir.path()), 2u);
}

TEST(FileIo, AChainOfLinksIsFollowedAndALoopIsRefused) {
  TempDir dir;
  writeBytes(dir.file("real.xml"), "old");
  fs::create_symlink(dir.file("real.xml"), dir.file("one.xml"));
  fs::create_symlink("one.xml", dir.file("two.xml"));
  ASSERT_TRUE(orvane::writeTextFile(dir.file("two.xml").c_str(), "new"));
  EXPECT_EQ(readBytes(dir.file("real.xml")), "new");
  EXPECT_TRUE(fs::is_symlink(dir.file("one.xml")) && fs::is_symlink(dir.file("two.xml")));

  fs::create_symlink("b.xml", dir.file("a.xml"));
  fs::create_symlink("a.xml", dir.file("b.xml"));
  EXPECT_FALSE(orvane::writeTextFile(dir.file("a.xml").c_str(), "x"));
  EXPECT_TRUE(fs::is_symlink(dir.file("a.xml")) && fs::is_symlink(dir.file("b.xml")));
  EXPECT_EQ(entriesIn(dir.path()), 5u);
}

// The temporary file is named after the target; a name near the system's limit of 255 bytes
// leaves no room for that, and the save must still work.
TEST(FileIo, ANameAtTheLengthLimitIsStillReplaced) {
  TempDir dir;
  const std::string path = dir.file(std::string(250, 'n') + ".xml");
  writeBytes(path, "old");
  ASSERT_TRUE(orvane::writeTextFile(path.c_str(), "new"));
  EXPECT_EQ(readBytes(path), "new");
  EXPECT_EQ(entriesIn(dir.path()), 1u);
}

TEST(FileIo, FoldersDevicesAndMissingFoldersAreNeverWritten) {
  TempDir dir;
  EXPECT_FALSE(orvane::writeTextFile(dir.file("missing/a.xml").c_str(), "x"));
  EXPECT_FALSE(orvane::writeTextFile(dir.path().c_str(), "x"));
  EXPECT_FALSE(orvane::writeTextFile((dir.path().string() + "/").c_str(), "x"));
  EXPECT_FALSE(orvane::writeTextFile("", "x"));
  EXPECT_FALSE(orvane::writeTextFile(nullptr, "x"));
  EXPECT_EQ(entriesIn(dir.path()), 0u);
  EXPECT_FALSE(orvane::writeTextFile("/dev/null", "x"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

// A FIFO with no writer would block an ordinary open for ever; a device like /dev/zero never ends.
// A regular file is read whole, NUL bytes and all.
TEST(FileIo, ReadFileTakesOnlyRegularFiles) {
  TempDir dir;
  std::string contents;
  ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(orvane::readFile(dir.file("pipe").c_str(), contents));
  EXPECT_FALSE(orvane::readFile(dir.path().c_str(), contents));
  EXPECT_FALSE(orvane::readFile(dir.file("none").c_str(), contents));
  EXPECT_FALSE(orvane::readFile("/dev/zero", contents));
  EXPECT_FALSE(orvane::readFile("/dev/null", contents));
  EXPECT_FALSE(orvane::readFile(nullptr, contents));
  writeBytes(dir.file("real"), std::string("by\0es", 5));
  fs::create_symlink(dir.file("real"), dir.file("link"));
  ASSERT_TRUE(orvane::readFile(dir.file("link").c_str(), contents));
  EXPECT_EQ(contents, std::string("by\0es", 5));
  // With a size bound: a file of exactly the bound is read, a larger one refused.
  EXPECT_TRUE(orvane::readFile(dir.file("real").c_str(), contents, 5));
  EXPECT_FALSE(orvane::readFile(dir.file("real").c_str(), contents, 4));
}

// What a save respects, on real files: who may write the document and its backup, its owner,
// mode, extended attributes and hard links, and links planted at the backup's name. The saver is
// this process (root) or a child that became the unprivileged user 65534 ("nobody").
constexpr uid_t kNobody = 65534;
constexpr uid_t kSomeoneElse = 1234;

struct FileFacts {
  std::string bytes;
  uid_t owner = 0;
  gid_t group = 0;
  mode_t mode = 0;
  nlink_t links = 0;
};

FileFacts factsOf(const std::string& path) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0) return {"(missing)"};
  if (!S_ISREG(info.st_mode)) return {"(not a regular file)"};
  return {readBytes(path), info.st_uid, info.st_gid, info.st_mode & 07777, info.st_nlink};
}

ino_t inodeOf(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0 ? info.st_ino : 0;
}

std::string attributeOf(const std::string& path, const char* name) {
  char value[256];
  const ssize_t length = ::getxattr(path.c_str(), name, value, sizeof value);
  return length < 0 ? "(none)" : std::string(value, static_cast<std::size_t>(length));
}

// An access ACL that also lets user 4321 read: owner rw, user 4321 r, group r, mask r, others none.
std::string readableByUser4321() {
  const auto le16 = [](unsigned v) { return std::string{char(v & 0xff), char(v >> 8)}; };
  const auto le32 = [&](unsigned v) { return le16(v & 0xffff) + le16(v >> 16); };
  const auto entry = [&](unsigned tag, unsigned perm, unsigned id) { return le16(tag) + le16(perm) + le32(id); };
  return le32(2) + entry(0x01, 6, ~0u) + entry(0x02, 4, 4321) + entry(0x04, 4, ~0u) + entry(0x10, 4, ~0u) +
         entry(0x20, 0, ~0u);
}

struct SaveScene {
  TempDir dir;
  std::string path = dir.file("doc.xml");
  std::string backup = path + ".bak";
  std::string other = dir.file("other");  // a file the case may use: a victim, a second link
  bool withAttributes = false;            // the document has an ACL and an extended attribute

  ino_t oldInode = 0;

  SaveScene() {
    ::chmod(dir.path().c_str(), 0777);  // the unprivileged saver may create files here
    writeBytes(path, "old");
    ::chmod(path.c_str(), 0644);
    oldInode = inodeOf(path);
  }
  void own(const std::string& file, uid_t owner, gid_t group, mode_t mode) const {
    ASSERT_EQ(::chown(file.c_str(), owner, group), 0);
    ASSERT_EQ(::chmod(file.c_str(), mode), 0);
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

struct SaveCase {
  const char* name;
  bool unprivileged;
  void (*prepare)(SaveScene&);
  void (*check)(const SaveScene&, bool saved);
};

const SaveCase kSaveCases[] = {
    {"a read-only document of the saver is left as it was", true,
     [](SaveScene& s) { s.own(s.path, kNobody, kNobody, 0444); },
     [](const SaveScene& s, bool saved) {
       EXPECT_FALSE(saved);
       const FileFacts doc = factsOf(s.path);
       EXPECT_EQ(doc.bytes, "old");
       EXPECT_EQ(doc.mode, 0444u);
       EXPECT_FALSE(fs::exists(s.backup));
     }},
    {"root's document in a folder the saver may write is left as it was", true, [](SaveScene&) {},
     [](const SaveScene& s, bool saved) {
       EXPECT_FALSE(saved);
       EXPECT_EQ(factsOf(s.path).bytes, "old");
       EXPECT_EQ(factsOf(s.path).owner, 0u);
     }},
    {"another owner's document the saver's group may write keeps its owner", true,
     [](SaveScene& s) { s.own(s.path, kSomeoneElse, kNobody, 0660); },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       const FileFacts doc = factsOf(s.path);
       EXPECT_EQ(doc.bytes, "new");  // written in place, after the backup
       EXPECT_EQ(doc.owner, kSomeoneElse);
       EXPECT_EQ(doc.group, kNobody);
       EXPECT_EQ(doc.mode, 0660u);
       EXPECT_EQ(factsOf(s.backup).bytes, "old");
     }},
    {"an older backup the saver could not write is kept", true,
     [](SaveScene& s) {
       s.own(s.path, kNobody, kNobody, 0644);
       writeBytes(s.backup, "older");
     },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       EXPECT_EQ(factsOf(s.path).bytes, "new");
       EXPECT_EQ(factsOf(s.backup).bytes, "older");
     }},
    {"a link planted at the backup's name is replaced, not followed", true,
     [](SaveScene& s) {
       s.own(s.path, kNobody, kNobody, 0644);
       writeBytes(s.other, "private");
       s.own(s.other, kNobody, kNobody, 0600);
       fs::create_symlink(s.other, s.backup);
     },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       EXPECT_EQ(factsOf(s.other).bytes, "private");
       EXPECT_EQ(factsOf(s.other).mode, 0600u);
       EXPECT_EQ(factsOf(s.backup).bytes, "old");  // a regular file of its own
       EXPECT_EQ(factsOf(s.path).bytes, "new");
     }},
    {"root keeps root's powers over a read-only document", false,
     [](SaveScene& s) { s.own(s.path, kNobody, kNobody, 0444); },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       EXPECT_EQ(factsOf(s.path).bytes, "new");
       EXPECT_EQ(factsOf(s.path).mode, 0444u);
       EXPECT_EQ(factsOf(s.backup).owner, kNobody);
     }},
    {"owner, group, mode, ACL and extended attributes are kept", false,
     [](SaveScene& s) {
       s.own(s.path, kSomeoneElse, kSomeoneElse, 0640);
       const std::string acl = readableByUser4321();
       s.withAttributes = ::setxattr(s.path.c_str(), "user.origin", "cad", 3, 0) == 0 &&
                          ::setxattr(s.path.c_str(), "system.posix_acl_access", acl.data(), acl.size(), 0) == 0;
     },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       for (const std::string& file : {s.path, s.backup}) {
         SCOPED_TRACE(file);
         const FileFacts facts = factsOf(file);
         EXPECT_EQ(facts.owner, kSomeoneElse);
         EXPECT_EQ(facts.group, kSomeoneElse);
         EXPECT_EQ(facts.mode, 0640u);
         if (!s.withAttributes) continue;  // the file system has no extended attributes or ACLs
         EXPECT_EQ(attributeOf(file, "user.origin"), "cad");
         EXPECT_EQ(attributeOf(file, "system.posix_acl_access"), readableByUser4321());
       }
       EXPECT_EQ(factsOf(s.path).bytes, "new");
     }},
    {"a document with another hard link is written in place", false,
     [](SaveScene& s) { ASSERT_EQ(::link(s.path.c_str(), s.other.c_str()), 0); },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       EXPECT_EQ(factsOf(s.path).bytes, "new");
       EXPECT_EQ(factsOf(s.other).bytes, "new");
       EXPECT_EQ(factsOf(s.path).links, 2u);
       EXPECT_EQ(factsOf(s.backup).bytes, "old");
     }},
    {"the second names a killed save gave the old document are no links of the user's", false,
     [](SaveScene& s) {
       ASSERT_EQ(::link(s.path.c_str(), (s.dir.path() / ".doc.xml.bak.orvane-save").c_str()), 0);
       ASSERT_EQ(::link(s.path.c_str(), s.backup.c_str()), 0);
     },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       EXPECT_EQ(factsOf(s.path).bytes, "new");
       EXPECT_EQ(factsOf(s.backup).bytes, "old");
       EXPECT_EQ(inodeOf(s.backup), s.oldInode);  // not written in place: the old file is the backup
       EXPECT_EQ(factsOf(s.backup).links, 1u);
     }},
    {"a FIFO at the backup's name is replaced by the backup", false,
     [](SaveScene& s) { ASSERT_EQ(::mkfifo(s.backup.c_str(), 0666), 0); },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       EXPECT_EQ(factsOf(s.backup).bytes, "old");
     }},
    {"a folder at the backup's name stays and the document is saved", false,
     [](SaveScene& s) { fs::create_directory(s.backup); },
     [](const SaveScene& s, bool saved) {
       EXPECT_TRUE(saved);
       EXPECT_TRUE(fs::is_directory(s.backup));
       EXPECT_EQ(factsOf(s.path).bytes, "new");
     }},
};

TEST(FileIo, ASaveRespectsWhatTheFileSystemProtects) {
  if (::geteuid() != 0) GTEST_SKIP() << "the cases need root, to make other owners' files and to drop to nobody";
  for (const SaveCase& test : kSaveCases) {
    SCOPED_TRACE(test.name);
    SaveScene scene;
    test.prepare(scene);
    if (::testing::Test::HasFatalFailure()) return;
    const bool saved = saveAs(test.unprivileged, scene.path);
    test.check(scene, saved);
    // No temporary file is left in any case.
    for (const auto& entry : fs::directory_iterator(scene.dir.path()))
      EXPECT_EQ(entry.path().filename().string().find(".orvane-save"), std::string::npos);
  }
}

// A file system that is full: the save fails and the old document stays. Made as a small tmpfs in
// a mount namespace of a child process; skipped where that is not allowed.
TEST(FileIo, ASaveOnAFullFileSystemLeavesTheOldDocument) {
  TempDir dir;
  const std::string path = dir.file("doc.xml");
  const pid_t child = ::fork();
  if (child == 0) {
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("tmpfs", dir.path().c_str(), "tmpfs", 0, "size=64k") != 0)
      ::_exit(77);
    writeBytes(path, "old");
    writeBytes(dir.file("filler"), std::string(1 << 20, 'f'));  // takes what is left
    const bool saved = orvane::saveDocument(path.c_str(), std::string(32768, 'n'));
    const bool kept = readBytes(path) == "old" && !fs::exists(path + ".bak.orvane-save") &&
                      std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()) <= 3;
    ::_exit(!saved && kept ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "no tmpfs can be mounted here";
  EXPECT_EQ(WEXITSTATUS(status), 0) << "the save reported success or changed the old document";
}

}  // namespace
