// The document files on disk: line ends, modes, links, and no leftovers after a failed save.
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
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

TEST(FileIo, AnExistingFileKeepsItsMode) {
  TempDir dir;
  const std::string path = dir.file("a.xml");
  writeBytes(path, "old");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  ASSERT_TRUE(orvane::writeTextFile(path.c_str(), "new"));
  struct stat info {};
  ASSERT_EQ(::stat(path.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640u);
  EXPECT_EQ(readBytes(path), "new");
}

TEST(FileIo, AWriteGoesThroughASymbolicLink) {
  TempDir dir;
  const std::string target = dir.file("real.xml");
  const std::string link = dir.file("link.xml");
  writeBytes(target, "old");
  fs::create_symlink(target, link);
  ASSERT_TRUE(orvane::writeTextFile(link.c_str(), "new"));
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(readBytes(target), "new");
}

TEST(FileIo, AFailedWriteLeavesNoFileBehind) {
  TempDir dir;
  EXPECT_FALSE(orvane::writeTextFile(dir.file("missing/a.xml").c_str(), "x"));
  EXPECT_EQ(entriesIn(dir.path()), 0u);
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

TEST(FileIo, ReadFileRefusesFoldersAndMissingFiles) {
  TempDir dir;
  std::string contents;
  EXPECT_FALSE(orvane::readFile(dir.path().c_str(), contents));
  EXPECT_FALSE(orvane::readFile(dir.file("none").c_str(), contents));
  writeBytes(dir.file("a"), std::string("x\0y", 3));
  ASSERT_TRUE(orvane::readFile(dir.file("a").c_str(), contents));
  EXPECT_EQ(contents, std::string("x\0y", 3));
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

TEST(FileIo, FoldersAndDevicesAreNeverReplaced) {
  TempDir dir;
  EXPECT_FALSE(orvane::writeTextFile(dir.path().c_str(), "x"));
  EXPECT_FALSE(orvane::writeTextFile((dir.path().string() + "/").c_str(), "x"));
  EXPECT_FALSE(orvane::writeTextFile("", "x"));
  EXPECT_FALSE(orvane::writeTextFile(nullptr, "x"));
  EXPECT_EQ(entriesIn(dir.path()), 0u);
  EXPECT_FALSE(orvane::writeTextFile("/dev/null", "x"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(FileIo, ABackupIsAWholeCopyWithTheDocumentsMode) {
  TempDir dir;
  const std::string path = dir.file("a.xml");
  std::string large(200000, 'x');
  for (std::size_t i = 0; i < large.size(); i += 97) large[i] = static_cast<char>(i % 251);
  writeBytes(path, large);
  ASSERT_EQ(::chmod(path.c_str(), 0604), 0);
  writeBytes(path + ".bak", "older");
  orvane::backupFile(path.c_str());
  EXPECT_EQ(readBytes(path + ".bak"), large);
  struct stat info {};
  ASSERT_EQ(::stat((path + ".bak").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0604u);
  EXPECT_EQ(entriesIn(dir.path()), 2u);
}

// A FIFO with no writer would block an ordinary open for ever; a device like /dev/zero never ends.
TEST(FileIo, ReadFileTakesOnlyRegularFiles) {
  TempDir dir;
  std::string contents;
  ASSERT_EQ(::mkfifo(dir.file("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(orvane::readFile(dir.file("pipe").c_str(), contents));
  EXPECT_FALSE(orvane::readFile("/dev/zero", contents));
  EXPECT_FALSE(orvane::readFile("/dev/null", contents));
  EXPECT_FALSE(orvane::readFile(nullptr, contents));
  writeBytes(dir.file("real"), "bytes");
  fs::create_symlink(dir.file("real"), dir.file("link"));
  ASSERT_TRUE(orvane::readFile(dir.file("link").c_str(), contents));
  EXPECT_EQ(contents, "bytes");
}

}  // namespace
