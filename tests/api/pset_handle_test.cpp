// The property-set document handle as a host uses it through liborvane.so: what each call gives for
// every value type and every index, and the failure results; and the two document classes as a C++
// host uses them. (The C host test reaches the same calls from C; the backup on save is the
// document's own.)
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
    const std::string path = dir_.file("p.xml");
    writeBytes(path, sampleFile());
    doc_ = cargaIfcProyectPSet(path.c_str());
    ASSERT_NE(doc_, nullptr);
  }
  void TearDown() override { liberaIfcProyectPset(doc_); }

  TempDir dir_;
  void* doc_ = nullptr;
};

std::string orNull(const char* text) { return text != nullptr ? text : "(null)"; }

// Numbers come from Integer and Real properties only, texts from String and Enumerated ones; an
// index outside its list gives the failure results.
TEST_F(LoadedDocument, EachCallByTypeAndIndex) {
  EXPECT_STREQ(getPset(doc_, 0), "C");  // sets are sorted when loaded
  EXPECT_STREQ(getPset(doc_, 1), "Pset_A");
  EXPECT_EQ(getPset(doc_, 2), nullptr);
  EXPECT_EQ(getPset(doc_, -1), nullptr);
  const struct {
    int set, property;
    const char* name;
    int unit;
    double number;
    const char* text;
  } rows[] = {
      {1, 0, "Entero", 3, 7.0, "(null)"},
      {1, 1, "Real", 0, 2.5, "(null)"},
      {1, 2, "Texto", 0, DBL_MAX, "Ladrillo"},
      {1, 3, "Color", 0, DBL_MAX, "Rojo"},
      {1, 4, "Portante", 0, DBL_MAX, "(null)"},
      {1, 5, "Fecha", 0, DBL_MAX, "(null)"},
      {1, 6, "Referencia", 0, 0.0, "(null)"},  // a reference yields the number field
      {1, 7, "(null)", 0, DBL_MAX, "(null)"},  // index equal to the number of properties
      {1, -1, "(null)", 0, DBL_MAX, "(null)"},
      {2, 0, "(null)", 0, DBL_MAX, "(null)"},
      {-1, 0, "(null)", 0, DBL_MAX, "(null)"},
      {0, 1, "(null)", 0, DBL_MAX, "(null)"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "set " << row.set << ", property " << row.property);
    EXPECT_EQ(orNull(getNombrePropiedad(doc_, row.set, row.property)), row.name);
    EXPECT_EQ(getUnidadPropiedad(doc_, row.set, row.property), row.unit);
    EXPECT_EQ(getValorPropiedadDoble(doc_, row.set, row.property), row.number);
    EXPECT_EQ(orNull(getValorPropiedadStr(doc_, row.set, row.property)), row.text);
  }
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

// The records the calls return, as a C++ host reads them.
TEST(HandleDocument, NewRecordsAreFilledAsTheHostExpects) {
  Handle doc(nuevoIfcProyectPSet());
  ASSERT_NE(doc.doc, nullptr);
  auto* set = static_cast<CIfcPropertySet*>(nuevoPSet(doc.doc, "Muros"));
  ASSERT_NE(set, nullptr);
  EXPECT_STREQ(set->name, "Muros");
  EXPECT_STREQ(set->description, "");
  // Each record is checked before the next call, which may move it.
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
  EXPECT_EQ(real->realValue, 2.75);
  auto* text = static_cast<CIfcPropertyName*>(nuevaPropiedadStr(doc.doc, "Acabado", "Liso"));
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->valueType, PropertyString);
  EXPECT_STREQ(text->textValue, "Liso");
  EXPECT_EQ(set->properties.size(), 3u);
}

TEST(HandleDocument, LongTextsAreCutToTheDocumentsFields) {
  Handle doc(nuevoIfcProyectPSet());
  ASSERT_NE(nuevoPSet(doc.doc, std::string(600, 'S').c_str()), nullptr);
  ASSERT_NE(nuevaPropiedadStr(doc.doc, std::string(600, 'P').c_str(), std::string(600, 'V').c_str()), nullptr);
  EXPECT_EQ(std::string(getPset(doc.doc, 0)), std::string(511, 'S'));
  EXPECT_EQ(std::string(getNombrePropiedad(doc.doc, 0, 0)), std::string(511, 'P'));
  EXPECT_EQ(std::string(getValorPropiedadStr(doc.doc, 0, 0)), std::string(511, 'V'));
}

TEST(HandleDocument, NullArgumentsAndMissingSetsGiveTheFailureResults) {
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
  EXPECT_EQ(nuevaPropiedadEntera(doc.doc, "a", 1), nullptr);  // no set to hold it
  EXPECT_EQ(nuevaPropiedadDoble(doc.doc, "b", 1.0), nullptr);
  EXPECT_EQ(nuevaPropiedadStr(doc.doc, "c", "x"), nullptr);
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
  const std::string broken = dir.file("broken.xml"), other = dir.file("other.xml");
  writeBytes(broken, "<PropertySetsBIM><PropertiesSet>");
  writeBytes(other, "<?xml version=\"1.0\"?><QuantitiesSetQuorsel/>");
  for (const std::string& path : {dir.file("missing.xml"), broken, other})
    EXPECT_EQ(cargaIfcProyectPSet(path.c_str()), nullptr) << path;
}

// A host written in C++ uses the two document classes through liborvane.so and its public headers:
// saving, loading, copying, and deleting through the exported virtual destructor.
TEST(ExportedClasses, BothDocumentsRoundTripThroughTheSharedLibrary) {
  TempDir dir;
  CIfcProyectPSet properties;
  std::strcpy(properties.propertySets.emplace_back().name, "Muros");
  std::strcpy(properties.propertySets[0].properties.emplace_back().name, "Altura");
  ASSERT_EQ(properties.graba(dir.file("p.xml").c_str()), 1);
  auto* loaded = new CIfcProyectPSet;
  ASSERT_EQ(loaded->lee(dir.file("p.xml").c_str()), 1);
  const CIfcProyectPSet copy(*loaded);
  delete loaded;
  ASSERT_EQ(copy.propertySets.size(), 1u);
  EXPECT_STREQ(copy.propertySets[0].properties.at(0).name, "Altura");

  CIfcProyectQSet quantities;
  std::strcpy(quantities.quantitySets.emplace_back().name, "Ejes");
  quantities.quantitySets[0].quantities.emplace_back().value = 3.25;
  ASSERT_EQ(quantities.graba(dir.file("q.xml").c_str()), 1);
  CIfcProyectQSet again;
  ASSERT_EQ(again.lee(dir.file("q.xml").c_str()), 1);
  ASSERT_EQ(again.quantitySets.size(), 1u);
  EXPECT_DOUBLE_EQ(again.quantitySets[0].quantities.at(0).value, 3.25);
}

}  // namespace
