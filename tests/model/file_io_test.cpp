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

}  // namespace
