// The document files on disk: links, long names, and what a save respects of the files it replaces.
#include <gtest/gtest.h>

#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "model/file_io.h"
#include "support/temp_dir.h"

using orvane::test::readBytes;
using orvane::test::TempDir;
using orvane::test::writeBytes;
namespace fs = std::filesystem;

namespace {

// A link is written through to the file it names, a dangling one (relative to its folder) makes
// that file; a chain is followed and a loop refused, the links staying links.
TEST(FileIo, LinksAreWrittenThroughAndALoopIsRefused) {
  TempDir dir;
  fs::create_symlink("new.xml", dir.file("dangling.xml"));
  writeBytes(dir.file("real.xml"), "old");
  fs::create_symlink(dir.file("real.xml"), dir.file("one.xml"));
  fs::create_symlink("one.xml", dir.file("two.xml"));
  fs::create_symlink("b.xml", dir.file("a.xml"));
  fs::create_symlink("a.xml", dir.file("b.xml"));
  ASSERT_TRUE(orvane::writeTextFile(dir.file("dangling.xml").c_str(), "new"));
  ASSERT_TRUE(orvane::writeTextFile(dir.file("two.xml").c_str(), "new"));
  EXPECT_FALSE(orvane::writeTextFile(dir.file("a.xml").c_str(), "x"));
  EXPECT_EQ(readBytes(dir.file("new.xml")), "new");
  EXPECT_EQ(readBytes(dir.file("real.xml")), "new");
  for (const char* link : {"dangling.xml", "one.xml", "two.xml", "a.xml", "b.xml"})
    EXPECT_TRUE(fs::is_symlink(dir.file(link))) << link;
  EXPECT_EQ(dir.names().size(), 7u);
}

// The temporary file is named after the target; a name near the system's limit of 255 bytes leaves
// no room for that, and the save must still work.
TEST(FileIo, ANameAtTheLengthLimitIsStillReplaced) {
  TempDir dir;
  const std::string path = dir.write(std::string(246, 'n') + ".xml", "old");
  ASSERT_TRUE(orvane::saveDocument(path.c_str(), "new"));
  EXPECT_EQ(readBytes(path), "new");
  EXPECT_EQ(readBytes(path + ".bak"), "old");
  EXPECT_EQ(dir.names().size(), 2u);
}

// A regular file is read whole, NUL bytes and all, through a link; other files are refused where
// the host's text files test them.
TEST(FileIo, ReadFileReadsARegularFileWhole) {
  TempDir dir;
  std::string contents;
  fs::create_symlink(dir.write("real", std::string("by\0es", 5)), dir.file("link"));
  ASSERT_TRUE(orvane::readFile(dir.file("link").c_str(), contents));
  EXPECT_EQ(contents, std::string("by\0es", 5));
  EXPECT_FALSE(orvane::readFile(nullptr, contents));
}

// What a save respects, on real files: who may write the document and its backup, its owner, mode,
// extended attributes and hard links, and what lies at the backup's name. The saver is this
// process (root) or a child that became the unprivileged user 65534 ("nobody").
constexpr uid_t kNobody = 65534;
constexpr uid_t kSomeoneElse = 1234;

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
  void own(const std::string& file, uid_t owner, gid_t group, mode_t mode) const {
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
     [](Scene s) { s.own(s.path, kNobody, kNobody, 0444); }, false, "old 0444 65534:65534 1 (old file)", "(missing)",
     "(missing)"},
    {"root's document in a folder the saver may write is left as it was", true, [](Scene) {}, false,
     "old 0644 0:0 1 (old file)", "(missing)", "(missing)"},
    {"another owner's document the saver's group may write keeps its owner (written in place)", true,
     [](Scene s) { s.own(s.path, kSomeoneElse, kNobody, 0660); }, true, "new 0660 1234:65534 1 (old file)",
     "old 0600 65534:65534 1", "(missing)"},
    {"an older backup the saver could not write is kept", true,
     [](Scene s) { s.own(s.path, kNobody, kNobody, 0644), writeBytes(s.backup, "older"); }, true,
     "new 0644 65534:65534 1", "older 0644 0:0 1", "(missing)"},
    {"a link planted at the backup's name is replaced, not followed", true,
     [](Scene s) {
       s.own(s.path, kNobody, kNobody, 0644);
       writeBytes(s.other, "private");
       s.own(s.other, kNobody, kNobody, 0600);
       fs::create_symlink(s.other, s.backup);
     },
     true, "new 0644 65534:65534 1", "old 0644 65534:65534 1 (old file)", "private 0600 65534:65534 1"},
    {"root keeps root's powers over a read-only document", false,
     [](Scene s) { s.own(s.path, kNobody, kNobody, 0444); }, true, "new 0444 65534:65534 1",
     "old 0444 65534:65534 1 (old file)", "(missing)"},
    {"owner, group, mode, ACL and extended attributes are kept", false,
     [](Scene s) {
       s.own(s.path, kSomeoneElse, kSomeoneElse, 0640);
       const std::string acl = readableByUser4321();
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
    for (const std::string& file : {scene.path, scene.backup}) {
      if (!scene.withAttributes) break;  // the file system has no extended attributes or ACLs
      EXPECT_EQ(attributeOf(file, "user.origin"), "cad") << file;
      EXPECT_EQ(attributeOf(file, "system.posix_acl_access"), readableByUser4321()) << file;
    }
    for (const std::string& name : scene.dir.names()) EXPECT_EQ(name.find(".orvane-save"), std::string::npos) << name;
  }
}

}  // namespace
