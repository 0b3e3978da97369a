// A host written in C++ uses the two document classes through liborvane.so and its public headers.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "support/temp_dir.h"

using orvane::test::TempDir;

TEST(ExportedClasses, PropertySetDocumentRoundTripsThroughTheSharedLibrary) {
  TempDir dir;
  const std::string path = dir.file("p.xml");
  CIfcProyectPSet doc;
  doc.propertySets.emplace_back();
  std::strcpy(doc.propertySets[0].name, "Muros");
  doc.propertySets[0].properties.emplace_back();
  std::strcpy(doc.propertySets[0].properties[0].name, "Altura");
  ASSERT_EQ(doc.graba(path.c_str()), 1);

  auto* loaded = new CIfcProyectPSet;  // destroyed through the exported virtual destructor
  ASSERT_EQ(loaded->lee(path.c_str()), 1);
  CIfcProyectPSet copy(*loaded);
  delete loaded;
  ASSERT_EQ(copy.propertySets.size(), 1u);
  EXPECT_STREQ(copy.propertySets[0].properties.at(0).name, "Altura");
}

TEST(ExportedClasses, QuantitySetDocumentRoundTripsThroughTheSharedLibrary) {
  TempDir dir;
  const std::string path = dir.file("q.xml");
  CIfcProyectQSet doc;
  doc.quantitySets.emplace_back();
  std::strcpy(doc.quantitySets[0].name, "Ejes");
  doc.quantitySets[0].quantities.emplace_back();
  doc.quantitySets[0].quantities[0].value = 3.25;
  ASSERT_EQ(doc.graba(path.c_str()), 1);
  CIfcProyectQSet again;
  ASSERT_EQ(again.lee(path.c_str()), 1);
  ASSERT_EQ(again.quantitySets.size(), 1u);
  EXPECT_DOUBLE_EQ(again.quantitySets[0].quantities.at(0).value, 3.25);
}
