// The property-set document handle as a host uses it through liborvane.so.
#include <gtest/gtest.h>

#include <cfloat>
#include <cstring>
#include <string>

#include "orvane/orvane.h"
#include "support/documents.h"
#include "support/temp_dir.h"

using namespace orvane::test;

namespace {

// Frees the handle when the test ends, however it ends.
struct Handle {
  explicit Handle(void* handle) : doc(handle) {}
  ~Handle() { liberaIfcProyectPset(doc); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  void* doc;
};

// One set of every value type, beside a set whose name differs only in case.
std::string sampleFile() {
  return psetFile("",
                  propertySet("Pset_A", property("Entero", "Integer", "7", "Optional=\"No\" Unit=\"m3\" Rule=\"\"") +
                                            property("Real", "Real", "2.5") +
                                            property("Texto", "String", "Ladrillo") +
                                            property("Color", "Colores", "Rojo") +
                                            property("Portante", "Boolean", "Yes") +
                                            property("Fecha", "DateTime", "2026-11-21") +
                                            property("Referencia", "Integer", "Ejes.Ancho$")) +
                      propertySet("C", property("x", "String", "en C")));
}

class LoadedDocument : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = dir_.file("p.xml");
    writeBytes(path_, sampleFile());
    doc_ = cargaIfcProyectPSet(path_.c_str());
    ASSERT_NE(doc_, nullptr);
  }
  void TearDown() override { liberaIfcProyectPset(doc_); }

  TempDir dir_;
  std::string path_;
  void* doc_ = nullptr;
};

TEST_F(LoadedDocument, NumbersComeFromIntegerAndRealPropertiesOnly) {
  ASSERT_STREQ(getPset(doc_, 1), "Pset_A");
  EXPECT_EQ(getValorPropiedadDoble(doc_, 1, 0), 7.0);
  EXPECT_EQ(getValorPropiedadDoble(doc_, 1, 1), 2.5);
  EXPECT_EQ(getValorPropiedadDoble(doc_, 1, 2), DBL_MAX);  // String
  EXPECT_EQ(getValorPropiedadDoble(doc_, 1, 4), DBL_MAX);  // Boolean
  EXPECT_EQ(getValorPropiedadDoble(doc_, 1, 6), 0.0);      // a reference yields the number field
  EXPECT_EQ(getValorPropiedadDoble(doc_, 1, 7), DBL_MAX);
  EXPECT_EQ(getValorPropiedadDoble(doc_, 2, 0), DBL_MAX);
  EXPECT_EQ(DBL_MAX, 1.7976931348623157e+308);
}

TEST_F(LoadedDocument, TextsComeFromStringAndEnumeratedPropertiesOnly) {
  EXPECT_STREQ(getValorPropiedadStr(doc_, 1, 2), "Ladrillo");
  EXPECT_STREQ(getValorPropiedadStr(doc_, 1, 3), "Rojo");
  EXPECT_EQ(getValorPropiedadStr(doc_, 1, 0), nullptr);  // Integer
  EXPECT_EQ(getValorPropiedadStr(doc_, 1, 4), nullptr);  // Boolean
  EXPECT_EQ(getValorPropiedadStr(doc_, 1, 5), nullptr);  // DateTime
  EXPECT_EQ(getValorPropiedadStr(doc_, 1, 6), nullptr);  // Integer holding a reference
}

TEST_F(LoadedDocument, IndicesOutsideTheListsGiveTheFailureResults) {
  EXPECT_STREQ(getPset(doc_, 0), "C");  // sets are sorted when loaded
  EXPECT_EQ(getPset(doc_, 2), nullptr);
  EXPECT_EQ(getPset(doc_, -1), nullptr);
  EXPECT_STREQ(getNombrePropiedad(doc_, 1, 6), "Referencia");
  EXPECT_EQ(getNombrePropiedad(doc_, 1, 7), nullptr);
  EXPECT_EQ(getNombrePropiedad(doc_, 1, -1), nullptr);
  EXPECT_EQ(getNombrePropiedad(doc_, 2, 0), nullptr);
  EXPECT_EQ(getUnidadPropiedad(doc_, 1, 0), 3);
  EXPECT_EQ(getUnidadPropiedad(doc_, 1, 7), 0);  // index equal to the number of properties
  EXPECT_EQ(getUnidadPropiedad(doc_, -1, 0), 0);
  EXPECT_EQ(getValorPropiedadStr(doc_, 0, 1), nullptr);
}

TEST_F(LoadedDocument, FindsSetAndPropertyByNameIgnoringCase) {
  EXPECT_STREQ(getValorPropiedadStr2(doc_, "PSET_A", "texto"), "Ladrillo");
  EXPECT_STREQ(getValorPropiedadStr2(doc_, "c", "X"), "en C");
  EXPECT_EQ(getValorPropiedadStr2(doc_, "Pset_A", "Portante"), nullptr);
  EXPECT_EQ(getValorPropiedadStr2(doc_, "Pset_B", "Texto"), nullptr);
  EXPECT_EQ(getValorPropiedadStr2(doc_, "Pset_A", "Nada"), nullptr);
  EXPECT_EQ(getValorPropiedadStr2(doc_, nullptr, "Texto"), nullptr);
  EXPECT_EQ(getValorPropiedadStr2(doc_, "Pset_A", nullptr), nullptr);
}

TEST_F(LoadedDocument, NewSetGoesLastAndTakesTheNewProperties) {
  ASSERT_NE(nuevoPSet(doc_, "B"), nullptr);
  EXPECT_STREQ(getPset(doc_, 0), "C");
  EXPECT_STREQ(getPset(doc_, 1), "Pset_A");
  EXPECT_STREQ(getPset(doc_, 2), "B");
  ASSERT_NE(nuevaPropiedadStr(doc_, "Nueva", "v"), nullptr);
  EXPECT_STREQ(getNombrePropiedad(doc_, 2, 0), "Nueva");
  EXPECT_EQ(getNombrePropiedad(doc_, 1, 8), nullptr);
}

TEST(HandleDocument, TheFirstOfTwoSetsDifferingInCaseWins) {
  Handle doc(nuevoIfcProyectPSet());
  ASSERT_NE(nuevoPSet(doc.doc, "Muros"), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc.doc, "Alto", "primero"), nullptr);
  ASSERT_NE(nuevoPSet(doc.doc, "MUROS"), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc.doc, "Alto", "segundo"), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc.doc, "Ancho", "solo aqui"), nullptr);
  EXPECT_STREQ(getValorPropiedadStr2(doc.doc, "muros", "alto"), "primero");
  // The search stays in the first set of that name.
  EXPECT_EQ(getValorPropiedadStr2(doc.doc, "muros", "ancho"), nullptr);
}

TEST(HandleDocument, BuildsSavesAndLoadsADocument) {
  TempDir dir;
  const std::string path = dir.file("built.xml");
  {
    Handle doc(nuevoIfcProyectPSet());
    ASSERT_NE(doc.doc, nullptr);
    ASSERT_NE(nuevoPSet(doc.doc, "Muros"), nullptr);
    auto* whole = static_cast<CIfcPropertyName*>(nuevaPropiedadEntera(doc.doc, "Plantas", -7));
    ASSERT_NE(whole, nullptr);
    EXPECT_EQ(whole->valueType, PropertyInteger);
    EXPECT_EQ(whole->intValue, -7);
    EXPECT_STREQ(whole->description, "");
    EXPECT_EQ(whole->unit, 0);
    EXPECT_FALSE(whole->optional);
    auto* real = static_cast<CIfcPropertyName*>(nuevaPropiedadDoble(doc.doc, "Altura", 2.75));
    ASSERT_NE(real, nullptr);
    EXPECT_EQ(real->valueType, PropertyReal);
    auto* text = static_cast<CIfcPropertyName*>(nuevaPropiedadStr(doc.doc, "Acabado", "Liso"));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->valueType, PropertyString);
    auto* set = static_cast<CIfcPropertySet*>(nuevoPSet(doc.doc, "Cubierta"));
    ASSERT_NE(set, nullptr);
    EXPECT_STREQ(set->name, "Cubierta");
    EXPECT_STREQ(set->description, "");
    EXPECT_TRUE(set->properties.empty());
    EXPECT_EQ(guardaIfcProyectPset(doc.doc, path.c_str()), 1);
  }
  CIfcProyectPSet saved;
  ASSERT_EQ(saved.lee(path.c_str()), 1);
  ASSERT_EQ(saved.propertySets.size(), 2u);
  EXPECT_STREQ(saved.propertySets[0].name, "Cubierta");
  const CIfcPropertySet& walls = saved.propertySets[1];
  ASSERT_EQ(walls.properties.size(), 3u);
  EXPECT_EQ(walls.properties[0].intValue, -7);
  EXPECT_DOUBLE_EQ(walls.properties[1].realValue, 2.75);
  EXPECT_STREQ(walls.properties[2].textValue, "Liso");
}

TEST(HandleDocument, PropertiesNeedASet) {
  Handle doc(nuevoIfcProyectPSet());
  EXPECT_EQ(nuevaPropiedadEntera(doc.doc, "a", 1), nullptr);
  EXPECT_EQ(nuevaPropiedadDoble(doc.doc, "b", 1.0), nullptr);
  EXPECT_EQ(nuevaPropiedadStr(doc.doc, "c", "x"), nullptr);
  EXPECT_EQ(getPset(doc.doc, 0), nullptr);
}

TEST(HandleDocument, LongTextsAreCutToTheDocumentsFields) {
  Handle doc(nuevoIfcProyectPSet());
  ASSERT_NE(nuevoPSet(doc.doc, std::string(600, 'S').c_str()), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc.doc, std::string(600, 'P').c_str(), std::string(600, 'V').c_str()), nullptr);
  EXPECT_EQ(std::string(getPset(doc.doc, 0)), std::string(511, 'S'));
  EXPECT_EQ(std::string(getNombrePropiedad(doc.doc, 0, 0)), std::string(511, 'P'));
  EXPECT_EQ(std::string(getValorPropiedadStr(doc.doc, 0, 0)), std::string(511, 'V'));
}

TEST(HandleDocument, NullArgumentsGiveTheFailureResults) {
  liberaIfcProyectPset(nullptr);
  EXPECT_EQ(cargaIfcProyectPSet(nullptr), nullptr);
  EXPECT_EQ(nuevoPSet(nullptr, "S"), nullptr);
  EXPECT_EQ(nuevaPropiedadEntera(nullptr, "a", 1), nullptr);
  EXPECT_EQ(nuevaPropiedadDoble(nullptr, "a", 1.0), nullptr);
  EXPECT_EQ(nuevaPropiedadStr(nullptr, "a", "x"), nullptr);
  EXPECT_EQ(getPset(nullptr, 0), nullptr);
  EXPECT_EQ(getNombrePropiedad(nullptr, 0, 0), nullptr);
  EXPECT_EQ(getUnidadPropiedad(nullptr, 0, 0), 0);
  EXPECT_EQ(getValorPropiedadDoble(nullptr, 0, 0), DBL_MAX);
  EXPECT_EQ(getValorPropiedadStr(nullptr, 0, 0), nullptr);
  EXPECT_EQ(getValorPropiedadStr2(nullptr, "S", "a"), nullptr);
  EXPECT_EQ(guardaIfcProyectPset(nullptr, "/tmp/never-written.xml"), 0);

  Handle doc(nuevoIfcProyectPSet());
  EXPECT_EQ(nuevoPSet(doc.doc, nullptr), nullptr);
  EXPECT_EQ(getPset(doc.doc, 0), nullptr);  // nothing was appended
  ASSERT_NE(nuevoPSet(doc.doc, "S"), nullptr);
  EXPECT_EQ(nuevaPropiedadStr(doc.doc, "a", nullptr), nullptr);
  EXPECT_EQ(nuevaPropiedadStr(doc.doc, nullptr, "x"), nullptr);
  EXPECT_EQ(nuevaPropiedadDoble(doc.doc, nullptr, 1.0), nullptr);
  EXPECT_EQ(getNombrePropiedad(doc.doc, 0, 0), nullptr);
  EXPECT_EQ(guardaIfcProyectPset(doc.doc, nullptr), 0);
}

TEST(HandleDocument, FilesThatDoNotLoadGiveNoHandle) {
  TempDir dir;
  EXPECT_EQ(cargaIfcProyectPSet(dir.file("missing.xml").c_str()), nullptr);
  const std::string broken = dir.file("broken.xml");
  writeBytes(broken, "<PropertySetsBIM><PropertiesSet>");
  EXPECT_EQ(cargaIfcProyectPSet(broken.c_str()), nullptr);
  const std::string other = dir.file("other.xml");
  writeBytes(other, "<?xml version=\"1.0\"?><QuantitiesSetQuorsel/>");
  EXPECT_EQ(cargaIfcProyectPSet(other.c_str()), nullptr);
}

TEST(HandleDocument, SavingKeepsTheOldFileAsBackup) {
  TempDir dir;
  const std::string path = dir.file("p.xml");
  writeBytes(path, sampleFile());
  Handle doc(cargaIfcProyectPSet(path.c_str()));
  ASSERT_NE(doc.doc, nullptr);
  ASSERT_NE(nuevoPSet(doc.doc, "Nuevo"), nullptr);
  EXPECT_EQ(guardaIfcProyectPset(doc.doc, path.c_str()), 1);
  EXPECT_EQ(readBytes(path + ".bak"), sampleFile());
  EXPECT_NE(readBytes(path).find("Name=\"Nuevo\""), std::string::npos);
}

}  // namespace
