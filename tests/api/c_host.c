// A host written in C99, built against the installed header and library: it calls the document,
// exchange and export entries (the two with C++ names by their symbol names) and checks one result
// of each; what each entry does is tested in api_tests, the records' layout by the header itself.
// Exits non-zero on any mismatch. Usage: c_host <folder for its files> <installed proyecto-psets.xml>
#include <stdio.h>
#include <string.h>

#include <orvane/orvane.h>

void* _Z20nuevaPropiedadEnteraPvPKci(void* doc, const char* name, int value);
int _Z13getEnumeradosPcS_PS_i(char* path, char* typeName, char** valueBuffers, int maxValues);

static int failures = 0;

#define CHECK(condition) \
  ((condition) ? (void)0 : (void)(fprintf(stderr, "%s:%d: failed: %s\n", __FILE__, __LINE__, #condition), ++failures))

static int same(const char* actual, const char* expected) { return actual != NULL && strcmp(actual, expected) == 0; }

int main(int argc, char** argv) {
  static FlatPropertyRecord properties[3] = {
      {.valueType = 3, .setName = "Forjados", .enumName = "Colores", .propertyName = "Color", .valueText = "Rojo"}};
  FlatQuantityRecord quantities[2] = {{.measureType = 1, .setName = "Muros", .quantityName = "Area", .value = 12.5}};
  static char path[6][1024], literal[512];
  static const char* const names[6] = {"document.xml", "partial.xml", "quantities.xml", "out.xml", "out.ids", "out.ifc"};
  char typeName[] = "ACABADOS";
  char* buffers[1] = {literal};
  if (argc != 3) return 2;
  for (int i = 0; i < 6; ++i) snprintf(path[i], sizeof path[i], "%s/%s", argv[1], names[i]);

  void* doc = nuevoIfcProyectPSet();
  CHECK(doc != NULL && nuevoPSet(doc, "Muros") != NULL && nuevaPropiedadDoble(doc, "Altura", 2.75) != NULL);
  CHECK(_Z20nuevaPropiedadEnteraPvPKci(doc, "Plantas", -7) != NULL && nuevaPropiedadStr(doc, "Acabado", "Liso") != NULL);
  CHECK(same(getPset(doc, 0), "Muros") && same(getNombrePropiedad(doc, 0, 1), "Plantas"));
  CHECK(getValorPropiedadDoble(doc, 0, 1) == -7.0 && getUnidadPropiedad(doc, 0, 0) == 0);
  CHECK(same(getValorPropiedadStr(doc, 0, 2), "Liso") && same(getValorPropiedadStr2(doc, "MUROS", "acabado"), "Liso"));
  CHECK(guardaIfcProyectPset(doc, path[0]) == 1);
  liberaIfcProyectPset(doc);

  CHECK(setPropiedadesFichero(path[0], path[1], properties, 1, 1) == 1);
  doc = cargaIfcProyectPSet(path[0]);
  CHECK(doc != NULL && same(getValorPropiedadStr2(doc, "forjados", "COLOR"), "Rojo"));
  liberaIfcProyectPset(doc);
  memset(properties, 0, sizeof properties);
  CHECK(getPropiedadesFichero(path[0], properties, 3) == 3 && same(properties[1].valueText, "2.750"));
  CHECK(exportaIds(path[0], NULL, path[4], "C") == 1 && exportaPlantillasIfc(path[0], NULL, path[5], NULL) == 1);

  CHECK(_Z13getEnumeradosPcS_PS_i(argv[2], typeName, buffers, 1) == 1 && same(literal, "Enlucido"));

  CHECK(setCuantificadoresFichero(path[2], path[3], quantities, 1) == 1);
  memset(quantities, 0, sizeof quantities);
  CHECK(getCuantificadoresFichero(path[3], quantities, 2) == 1 && quantities[0].value == 12.5);
  fijaRutaMensajes(NULL);

  if (failures != 0) fprintf(stderr, "c host: %d checks failed\n", failures);
  return failures != 0;
}
