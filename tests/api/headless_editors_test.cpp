// A host without any display calls the editor entry points: each says why on stderr and returns as
// if the user had cancelled, changing no file. (orvane edit and assign check the same through the
// tool; here are the results each entry gives and the reasons it names.)
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "orvane/orvane.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

// What `call` writes to stderr.
template <class Call>
std::string stderrOf(const TempDir& dir, Call call) {
  std::fflush(stderr);
  const int saved = ::dup(2);
  EXPECT_NE(std::freopen(dir.file("stderr.txt").c_str(), "w", stderr), nullptr);
  call();
  std::fflush(stderr);
  ::dup2(saved, 2);
  ::close(saved);
  return readBytes(dir.file("stderr.txt"));
}

TEST(HeadlessEditors, EveryEntryReturnsAsIfCancelledAndSaysWhy) {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
  TempDir dir;
  const std::string defs = dir.write("defs.xml", psetFile("", propertySet("Muros"))),
                    quantities = dir.write("q.xml", qsetFile("", "", "")), none = dir.file("none.xml");
  const double values[] = {1.0};
  std::string message = stderrOf(dir, [&] {
    PropertiesSet(defs.c_str(), nullptr, nullptr);
    EXPECT_TRUE(asignarPropiedades(defs.c_str(), dir.file("obj.xml").c_str(), nullptr, nullptr));
    EXPECT_FALSE(asignarPropiedades(none.c_str(), dir.file("obj.xml").c_str(), nullptr, nullptr));
    QuantitiesSet(quantities.c_str());
    EXPECT_TRUE(asignarCuantificadores(quantities.c_str(), dir.file("objq.xml").c_str(), "Eje", values, 1));
    EXPECT_FALSE(asignarCuantificadores(none.c_str(), dir.file("objq.xml").c_str(), "Eje", values, 1));
    pruebaAsignaQSet();
  });
  for (const char* says : {"the editors need a display", "DISPLAY is not set", "xvfb-run"})
    EXPECT_NE(message.find(says), std::string::npos) << message;
  EXPECT_EQ(dir.names(), (std::set<std::string>{"defs.xml", "q.xml", "stderr.txt"}));

  ::setenv("DISPLAY", ":97", 1);  // a local display no X server runs is not tried
  message = stderrOf(dir, [&] { PropertiesSet(defs.c_str(), nullptr, nullptr); });
  ::unsetenv("DISPLAY");
  EXPECT_NE(message.find(":97 is not running"), std::string::npos) << message;
}

}  // namespace
