// A save killed at any moment, as a host that crashes or is killed would be: a child process saves
// in a loop and is killed with SIGKILL after a random delay. Whatever the moment, the document
// loads and is the old or the new one, whole; so is its backup. No temporary file is left, except a
// whole new version under its one pending name when the kill fell between naming and renaming it,
// which the next save removes. The files lie in memory where the system allows, so 200 kills take
// well under a second; what a killed process leaves depends only on the order of its calls.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <thread>

#include "document_kinds.h"

using namespace orvane::test;

namespace {

CIfcProyectPSet documentWithSets(const char* prefix, int sets) {
  CIfcProyectPSet doc;
  for (int i = 0; i < sets; ++i) addSet(doc, (prefix + std::to_string(1000 + i)).c_str(), 4);
  return doc;
}

TEST(SaveCrash, AKilledSaveLeavesTheOldOrTheNewDocument) {
  TempDir dir(TempDir::Place::kMemory);
  MessageRecorder quiet;
  const std::string path = dir.file("doc.xml");
  CIfcProyectPSet oldDoc = documentWithSets("Anterior", 20), newDoc = documentWithSets("Nuevo", 30);
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
  int sawOld = 0, sawNew = 0;
  const std::set<std::string> documentAndBackup{"doc.xml", "doc.xml.bak"};
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
    std::this_thread::sleep_for(std::chrono::microseconds(delay(random)));
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));

    const std::string bytes = readBytes(path);
    ASSERT_TRUE(bytes == oldBytes || bytes == newBytes) << "the document is damaged";
    (bytes == oldBytes ? sawOld : sawNew)++;
    CIfcProyectPSet loaded;
    ASSERT_EQ(loaded.lee(path.c_str()), 1);
    ASSERT_EQ(loaded.propertySets.size(), bytes == oldBytes ? 20u : 30u);
    for (const std::string& name : dir.names()) {
      if (name == "doc.xml") continue;
      ASSERT_TRUE(name == "doc.xml.bak" || name == ".doc.xml.orvane-save" || name == ".doc.xml.bak.orvane-save")
          << name << " was left";
      const std::string other = readBytes(dir.file(name));
      ASSERT_TRUE(other == oldBytes || other == newBytes) << name << " is not whole";
    }
  }
  // Both outcomes occur, or the delays did not spread the kills over the saves.
  EXPECT_GT(sawOld, 0);
  EXPECT_GT(sawNew, 0);
  newDoc.graba(path.c_str());
  EXPECT_EQ(dir.names(), documentAndBackup) << "the next save did not clear what a killed one left";
  EXPECT_TRUE(quiet.messages().empty());
}

}  // namespace
