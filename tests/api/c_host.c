/* A host written in C99, built against the installed header and library: it reaches every exported
 * entry once, the two with C++ names by their symbol names. What each entry does is tested in
 * api_tests and the records' layout is checked by the header itself when it compiles; this host
 * proves that a C program can include, link and call them. Exits non-zero on any mismatch.
 * Usage: c_host <folder for its files> */
#include <stdio.h>
#include <string.h>

#include <orvane/orvane.h>

void* _Z20nuevaPropiedadEnteraPvPKci(void* doc, const char* name, int value);
int _Z13getEnumeradosPcS_PS_i(char* path, char* typeName, char** valueBuffers, int maxValues);

static int failures = 0;

#define CHECK(condition)                                                      \
  do {                                                                        \
    if (!(condition)) {                                                       \
      fprintf(stderr, "%s:%d: failed: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                             \
    }                                                                         \
  } while (0)

static int same(const char* actual, const char* expected) { return actual != NULL && strcmp(actual, expected) == 0; }

int main(int argc, char** argv) {
  static FlatPropertyRecord properties[3];
  static FlatQuantityRecord quantities[2];
  char document[1024], partial[1024], quantityFile[1024], quantityOut[1024], literal[512];
  char typeName[] = "colores";
  char* buffers[1];
  void* doc;
  FILE* out;
  if (argc != 2) {
    fprintf(stderr, "usage: c_host <folder>\n");
    return 2;
  }
  snprintf(document, sizeof document, "%s/document.xml", argv[1]);
  snprintf(partial, sizeof partial, "%s/partial.xml", argv[1]);
  snprintf(quantityFile, sizeof quantityFile, "%s/quantities.xml", argv[1]);
  snprintf(quantityOut, sizeof quantityOut, "%s/quantities-out.xml", argv[1]);

  doc = nuevoIfcProyectPSet();
  CHECK(doc != NULL && nuevoPSet(doc, "Muros") != NULL);
  CHECK(nuevaPropiedadDoble(doc, "Altura", 2.75) != NULL);
  CHECK(_Z20nuevaPropiedadEnteraPvPKci(doc, "Plantas", -7) != NULL);
  CHECK(nuevaPropiedadStr(doc, "Acabado", "Liso") != NULL);
  CHECK(same(getPset(doc, 0), "Muros") && same(getNombrePropiedad(doc, 0, 1), "Plantas"));
  CHECK(getValorPropiedadDoble(doc, 0, 1) == -7.0 && getUnidadPropiedad(doc, 0, 0) == 0);
  CHECK(same(getValorPropiedadStr(doc, 0, 2), "Liso") && same(getValorPropiedadStr2(doc, "MUROS", "acabado"), "Liso"));
  CHECK(guardaIfcProyectPset(doc, document) == 1);
  liberaIfcProyectPset(doc);
  liberaIfcProyectPset(NULL);

  properties[0].valueType = 3;
  strcpy(properties[0].setName, "Forjados");
  strcpy(properties[0].enumName, "Colores");
  strcpy(properties[0].propertyName, "Color");
  strcpy(properties[0].valueText, "Rojo");
  CHECK(setPropiedadesFichero(document, partial, properties, 1, 1) == 1);
  doc = cargaIfcProyectPSet(document);
  CHECK(doc != NULL && same(getValorPropiedadStr2(doc, "forjados", "COLOR"), "Rojo"));
  liberaIfcProyectPset(doc);
  memset(properties, 0, sizeof properties);
  CHECK(getPropiedadesFichero(document, properties, 3) == 3);
  CHECK(same(properties[0].setName, "Forjados") && same(properties[2].propertyName, "Plantas"));
  CHECK(properties[1].valueType == 1 && same(properties[1].valueText, "2.750"));

  out = fopen(partial, "w");
  CHECK(out != NULL);
  if (out != NULL) {
    fputs("<PropertySetsBIM><TypesEnum><TypeEnum Name=\"Colores\" Description=\"\"><Elements>"
          "<Element Value=\"1\">Rojo</Element></Elements></TypeEnum></TypesEnum></PropertySetsBIM>", out);
    fclose(out);
  }
  buffers[0] = literal;
  CHECK(_Z13getEnumeradosPcS_PS_i(partial, typeName, buffers, 1) == 1 && same(literal, "Rojo"));

  quantities[0].measureType = 1;
  strcpy(quantities[0].setName, "Muros");
  strcpy(quantities[0].quantityName, "Area");
  quantities[0].value = 12.5;
  CHECK(setCuantificadoresFichero(quantityFile, quantityOut, quantities, 1) == 1);
  memset(quantities, 0, sizeof quantities);
  CHECK(getCuantificadoresFichero(quantityOut, quantities, 2) == 1);
  CHECK(quantities[0].measureType == 1 && same(quantities[0].quantityName, "Area") && quantities[0].value == 12.5);

  if (failures != 0) {
    fprintf(stderr, "c host: %d checks failed\n", failures);
    return 1;
  }
  printf("c host: all checks passed\n");
  return 0;
}
