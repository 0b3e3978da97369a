// A host without any display calls the editor entry points: each says why on stderr and returns as
// if the user had cancelled, changing no file. (orvane edit and assign check the results of
// asignarPropiedades and of asignarCuantificadores on a readable file; here are the reasons named.)
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "orvane/orvane.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

TEST(HeadlessEditors, EveryEntryReturnsAsIfCancelledAndSaysWhy) {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
  TempDir dir;
  const std::string defs = dir.write("defs.xml", psetFile("", propertySet("Muros"))),
                    quantities = dir.write("q.xml", qsetFile("", "", "")), none = dir.file("none.xml");
  const double values[] = {1.0};
  testing::internal::CaptureStderr();
  PropertiesSet(defs.c_str(), nullptr, nullptr);
  QuantitiesSet(quantities.c_str());
  EXPECT_FALSE(asignarCuantificadores(none.c_str(), dir.file("objq.xml").c_str(), "Eje", values, 1));
  pruebaAsignaQSet();
  std::string message = testing::internal::GetCapturedStderr();
  for (const char* says : {"the editors need a display", "DISPLAY is not set", "xvfb-run"})
    EXPECT_NE(message.find(says), std::string::npos) << message;
  EXPECT_EQ(dir.names(), (std::set<std::string>{"defs.xml", "q.xml"}));

  ::setenv("DISPLAY", ":97", 1);  // a local display no X server runs is not tried
  testing::internal::CaptureStderr();
  PropertiesSet(defs.c_str(), nullptr, nullptr);
  message = testing::internal::GetCapturedStderr();
  ::unsetenv("DISPLAY");
  EXPECT_NE(message.find(":97 is not running"), std::string::npos) << message;
}

}  // namespace
