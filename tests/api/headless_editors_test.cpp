// A host without any display calls the editor entry points: each writes why to stderr and returns
// as if the user had cancelled, changing no file, and the process goes on.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "orvane/orvane.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

class HeadlessEditors : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
    definitions = dir.file("defs.xml");
    writeBytes(definitions, psetFile("", propertySet("Muros")));
    quantities = dir.file("q.xml");
    writeBytes(quantities, qsetFile("", "", ""));
  }
  // What `call` writes to stderr.
  template <class Call>
  std::string stderrOf(Call call) {
    const std::string capture = dir.file("stderr.txt");
    std::fflush(stderr);
    const int saved = ::dup(2);
    std::FILE* file = std::freopen(capture.c_str(), "w", stderr);
    EXPECT_NE(file, nullptr);
    call();
    std::fflush(stderr);
    ::dup2(saved, 2);
    ::close(saved);
    return readBytes(capture);
  }
  TempDir dir;
  std::string definitions, quantities;
};

TEST_F(HeadlessEditors, EveryEntryReturnsAsIfCancelledAndSaysWhy) {
  const std::string before = readBytes(definitions);
  const std::string message = stderrOf([&] {
    PropertiesSet(definitions.c_str(), nullptr, nullptr);
    EXPECT_TRUE(asignarPropiedades(definitions.c_str(), dir.file("obj.xml").c_str(), nullptr, nullptr));
    EXPECT_FALSE(asignarPropiedades(dir.file("none.xml").c_str(), dir.file("obj.xml").c_str(), nullptr, nullptr));
    QuantitiesSet(quantities.c_str());
    const double values[] = {1.0};
    EXPECT_TRUE(asignarCuantificadores(quantities.c_str(), dir.file("objq.xml").c_str(), "Eje", values, 1));
    EXPECT_FALSE(asignarCuantificadores(dir.file("none.xml").c_str(), dir.file("objq.xml").c_str(), "Eje", values, 1));
    pruebaAsignaQSet();
  });
  EXPECT_NE(message.find("the editors need a display"), std::string::npos) << message;
  EXPECT_NE(message.find("DISPLAY is not set"), std::string::npos);
  EXPECT_NE(message.find("xvfb-run"), std::string::npos);
  EXPECT_EQ(readBytes(definitions), before);
  EXPECT_FALSE(std::filesystem::exists(definitions + ".bak"));
  EXPECT_FALSE(std::filesystem::exists(dir.file("obj.xml")));
  EXPECT_FALSE(std::filesystem::exists(dir.file("objq.xml")));
}

TEST_F(HeadlessEditors, ALocalDisplayThatIsNotRunningIsNotTried) {
  ::setenv("DISPLAY", ":97", 1);  // no X server has this socket
  const std::string message = stderrOf([&] { PropertiesSet(definitions.c_str(), nullptr, nullptr); });
  EXPECT_NE(message.find(":97 is not running"), std::string::npos) << message;
  ::unsetenv("DISPLAY");
}

}  // namespace
