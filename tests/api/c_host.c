/* A host written in C99, built against the installed header and library. It makes a property-set
 * document through the handle, saves and reloads it, and exchanges properties and quantities
 * through flat records. Record fields are checked at their byte offsets, as a host in another
 * language would see them, not through the struct. Exits non-zero on any mismatch.
 * Usage: c_host <folder for its files> */
#include <float.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <orvane/orvane.h>

/* The entries with C++ names, reached by their symbol names. */
void* _Z20nuevaPropiedadEnteraPvPKci(void* doc, const char* name, int value);
int _Z13getEnumeradosPcS_PS_i(char* path, char* typeName, char** valueBuffers, int maxValues);

static int failures = 0;

#define CHECK(condition)                                                   \
  do {                                                                     \
    if (!(condition)) {                                                    \
      fprintf(stderr, "%s:%d: failed: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                          \
    }                                                                      \
  } while (0)

enum { PROPERTY_SIZE = 1032, QUANTITY_SIZE = 528, FIELD = 256 };
enum { P_TYPE = 0, P_SET = 4, P_ENUM = 260, P_NAME = 516, P_VALUE = 772, P_UNIT = 1028 };
enum { Q_KIND = 0, Q_SET = 4, Q_NAME = 260, Q_PAD = 516, Q_VALUE = 520 };

static int32_t intAt(const void* record, size_t offset) {
  int32_t value;
  memcpy(&value, (const char*)record + offset, sizeof value);
  return value;
}

static double doubleAt(const void* record, size_t offset) {
  double value;
  memcpy(&value, (const char*)record + offset, sizeof value);
  return value;
}

static void putInt(void* record, size_t offset, int32_t value) {
  memcpy((char*)record + offset, &value, sizeof value);
}

static void putDouble(void* record, size_t offset, double value) {
  memcpy((char*)record + offset, &value, sizeof value);
}

static void putText(void* record, size_t offset, const char* text) {
  memcpy((char*)record + offset, text, strlen(text) + 1);
}

/* The field at `offset` holds `expected`, terminated inside the field. */
static int textIs(const void* record, size_t offset, const char* expected) {
  const char* field = (const char*)record + offset;
  return memchr(field, '\0', FIELD) != NULL && strcmp(field, expected) == 0;
}

/* Every byte of [offset, offset + size) is `fill`. */
static int untouched(const void* record, size_t offset, size_t size, unsigned char fill) {
  const unsigned char* bytes = (const unsigned char*)record + offset;
  size_t i;
  for (i = 0; i < size; ++i)
    if (bytes[i] != fill) return 0;
  return 1;
}

static int sameText(const char* actual, const char* expected) {
  return actual != NULL && strcmp(actual, expected) == 0;
}

static void path(char* out, const char* folder, const char* name) {
  snprintf(out, 1024, "%s/%s", folder, name);
}

/* Index of the set named `name` in a handle's document, or -1. */
static int setIndex(void* doc, const char* name) {
  int i;
  for (i = 0; getPset(doc, i) != NULL; ++i)
    if (strcmp(getPset(doc, i), name) == 0) return i;
  return -1;
}

static void buildAndQuery(const char* file) {
  void* doc = nuevoIfcProyectPSet();
  CHECK(doc != NULL);
  CHECK(nuevaPropiedadDoble(doc, "Huerfana", 1.0) == NULL); /* no set to hold it yet */
  CHECK(nuevoPSet(doc, "Muros") != NULL);
  CHECK(nuevaPropiedadDoble(doc, "Altura", 2.75) != NULL);
  CHECK(_Z20nuevaPropiedadEnteraPvPKci(doc, "Plantas", -7) != NULL);
  CHECK(nuevaPropiedadStr(doc, "Acabado", "Liso") != NULL);
  CHECK(nuevoPSet(doc, "cubierta") != NULL);
  CHECK(nuevaPropiedadStr(doc, "Material", "Teja") != NULL);

  /* Insertion order until the document is saved and loaded again. */
  CHECK(sameText(getPset(doc, 0), "Muros"));
  CHECK(sameText(getPset(doc, 1), "cubierta"));
  CHECK(getPset(doc, 2) == NULL);
  CHECK(getPset(doc, -1) == NULL);
  CHECK(sameText(getNombrePropiedad(doc, 0, 1), "Plantas"));
  CHECK(getNombrePropiedad(doc, 0, 3) == NULL);
  CHECK(getValorPropiedadDoble(doc, 0, 1) == -7.0);
  CHECK(getValorPropiedadDoble(doc, 0, 2) == DBL_MAX);
  CHECK(getValorPropiedadStr(doc, 0, 0) == NULL);
  CHECK(sameText(getValorPropiedadStr(doc, 1, 0), "Teja"));
  CHECK(sameText(getValorPropiedadStr2(doc, "MUROS", "acabado"), "Liso"));
  CHECK(getUnidadPropiedad(doc, 0, 0) == 0);
  CHECK(guardaIfcProyectPset(doc, file) == 1);
  liberaIfcProyectPset(doc);
  liberaIfcProyectPset(NULL);

  doc = cargaIfcProyectPSet(file);
  CHECK(doc != NULL);
  if (doc == NULL) return;
  CHECK(sameText(getPset(doc, 0), "cubierta")); /* sorted by name, ignoring case */
  CHECK(sameText(getPset(doc, 1), "Muros"));
  CHECK(getValorPropiedadDoble(doc, 1, 0) == 2.75);
  CHECK(getValorPropiedadDoble(doc, 1, 1) == -7.0);
  CHECK(sameText(getValorPropiedadStr(doc, 1, 2), "Liso"));
  liberaIfcProyectPset(doc);
}

static void readProperties(const char* file) {
  static unsigned char records[6 * PROPERTY_SIZE];
  const struct { int32_t type; const char* set; const char* name; const char* value; } expected[] = {
      {2, "cubierta", "Material", "Teja"},
      {1, "Muros", "Altura", "2.750"},
      {0, "Muros", "Plantas", "-7"},
      {2, "Muros", "Acabado", "Liso"},
  };
  int i;
  CHECK(sizeof(FlatPropertyRecord) == PROPERTY_SIZE);
  memset(records, 0x5A, sizeof records);
  CHECK(getPropiedadesFichero(file, (FlatPropertyRecord*)records, 6) == 4);
  for (i = 0; i < 4; ++i) {
    const unsigned char* record = records + (size_t)i * PROPERTY_SIZE;
    CHECK(intAt(record, P_TYPE) == expected[i].type);
    CHECK(textIs(record, P_SET, expected[i].set));
    CHECK(textIs(record, P_NAME, expected[i].name));
    CHECK(textIs(record, P_VALUE, expected[i].value));
    CHECK(intAt(record, P_UNIT) == 0);
    /* Not an enumerated property: enumName keeps the host's bytes, as does the rest of each text
     * field after its terminator. */
    CHECK(untouched(record, P_ENUM, FIELD, 0x5A));
    CHECK(untouched(record, P_SET + strlen(expected[i].set) + 1, FIELD - strlen(expected[i].set) - 1, 0x5A));
  }
  CHECK(untouched(records, 4 * PROPERTY_SIZE, 2 * PROPERTY_SIZE, 0x5A));
  CHECK(getPropiedadesFichero(file, (FlatPropertyRecord*)records, 0) == 0);
}

static void writeProperties(const char* file, const char* partial) {
  static unsigned char records[2 * PROPERTY_SIZE];
  unsigned char* update = records;
  unsigned char* added = records + PROPERTY_SIZE;
  void* doc;
  int walls;
  memset(records, 0, sizeof records);
  putInt(update, P_TYPE, 1);
  putText(update, P_SET, "MUROS");
  putText(update, P_NAME, "altura");
  putText(update, P_VALUE, "3.5");
  putInt(update, P_UNIT, 1);
  putInt(added, P_TYPE, 3);
  putText(added, P_SET, "Forjados");
  putText(added, P_ENUM, "Colores");
  putText(added, P_NAME, "Color");
  putText(added, P_VALUE, "Rojo");
  CHECK(setPropiedadesFichero(file, partial, (const FlatPropertyRecord*)records, 2, 1) == 1);

  doc = cargaIfcProyectPSet(file);
  CHECK(doc != NULL);
  if (doc == NULL) return;
  walls = setIndex(doc, "Muros");
  CHECK(walls >= 0);
  CHECK(setIndex(doc, "MUROS") < 0); /* matched, not added */
  CHECK(sameText(getNombrePropiedad(doc, walls, 0), "Altura"));
  CHECK(getValorPropiedadDoble(doc, walls, 0) == 3.5);
  CHECK(getUnidadPropiedad(doc, walls, 0) == 1);
  CHECK(sameText(getValorPropiedadStr2(doc, "forjados", "COLOR"), "Rojo"));
  liberaIfcProyectPset(doc);

  /* The partial document holds the two named sets, each with its one property. */
  doc = cargaIfcProyectPSet(partial);
  CHECK(doc != NULL);
  if (doc == NULL) return;
  CHECK(sameText(getPset(doc, 0), "Forjados"));
  CHECK(sameText(getPset(doc, 1), "MUROS"));
  CHECK(getPset(doc, 2) == NULL);
  CHECK(sameText(getNombrePropiedad(doc, 1, 0), "altura"));
  CHECK(getNombrePropiedad(doc, 1, 1) == NULL);
  liberaIfcProyectPset(doc);
}

static void readEnumeration(const char* file) {
  char first[512], second[512], third[512];
  char* buffers[3];
  char name[] = "COLORES";
  char unknown[] = "Tamanos";
  char mutablePath[1024];
  FILE* out = fopen(file, "w");
  CHECK(out != NULL);
  if (out == NULL) return;
  fputs("<?xml version=\"1.0\" encoding=\"UTF8\"?>\n<PropertySetsBIM><TypesEnum>"
        "<TypeEnum Name=\"Colores\" Description=\"\"><Elements>"
        "<Element Value=\"1\">Rojo</Element><Element Value=\"2\">Azul</Element>"
        "</Elements></TypeEnum></TypesEnum></PropertySetsBIM>\n",
        out);
  fclose(out);
  buffers[0] = first;
  buffers[1] = second;
  buffers[2] = third;
  strcpy(third, "sin tocar");
  snprintf(mutablePath, sizeof mutablePath, "%s", file);
  CHECK(_Z13getEnumeradosPcS_PS_i(mutablePath, name, buffers, 3) == 2);
  CHECK(strcmp(first, "Rojo") == 0);
  CHECK(strcmp(second, "Azul") == 0);
  CHECK(strcmp(third, "sin tocar") == 0);
  CHECK(_Z13getEnumeradosPcS_PS_i(mutablePath, unknown, buffers, 3) == 0);
}

static void exchangeQuantities(const char* file, const char* fileOut) {
  static unsigned char records[3 * QUANTITY_SIZE];
  static unsigned char read[4 * QUANTITY_SIZE];
  const unsigned char* axes = read;
  const unsigned char* walls = read + QUANTITY_SIZE;
  CHECK(sizeof(FlatQuantityRecord) == QUANTITY_SIZE);
  memset(records, 0, sizeof records);
  putInt(records, Q_KIND, 1);
  putText(records, Q_SET, "Muros");
  putText(records, Q_NAME, "Area");
  putDouble(records, Q_VALUE, 12.5);
  putInt(records + QUANTITY_SIZE, Q_KIND, 0);
  putText(records + QUANTITY_SIZE, Q_SET, "Ejes");
  putText(records + QUANTITY_SIZE, Q_NAME, "Longitud");
  putDouble(records + QUANTITY_SIZE, Q_VALUE, 3.25);
  putInt(records + 2 * QUANTITY_SIZE, Q_KIND, 1); /* same set and quantity: the first one wins */
  putText(records + 2 * QUANTITY_SIZE, Q_SET, "muros");
  putText(records + 2 * QUANTITY_SIZE, Q_NAME, "AREA");
  putDouble(records + 2 * QUANTITY_SIZE, Q_VALUE, 99.0);
  CHECK(setCuantificadoresFichero(file, fileOut, (const FlatQuantityRecord*)records, 3) == 1);

  memset(read, 0x33, sizeof read);
  CHECK(getCuantificadoresFichero(file, (FlatQuantityRecord*)read, 4) == 2);
  CHECK(intAt(axes, Q_KIND) == 0);
  CHECK(textIs(axes, Q_SET, "Ejes"));
  CHECK(textIs(axes, Q_NAME, "Longitud"));
  CHECK(doubleAt(axes, Q_VALUE) == 3.25);
  CHECK(intAt(walls, Q_KIND) == 1);
  CHECK(textIs(walls, Q_SET, "Muros"));
  CHECK(textIs(walls, Q_NAME, "Area"));
  CHECK(doubleAt(walls, Q_VALUE) == 12.5);
  CHECK(untouched(axes, Q_PAD, 4, 0x33));
  CHECK(untouched(walls, Q_PAD, 4, 0x33));
  CHECK(untouched(walls, Q_SET + 6, FIELD - 6, 0x33));
  CHECK(untouched(read, 2 * QUANTITY_SIZE, 2 * QUANTITY_SIZE, 0x33));

  memset(read, 0x33, sizeof read);
  CHECK(getCuantificadoresFichero(fileOut, (FlatQuantityRecord*)read, 4) == 2);
  CHECK(doubleAt(walls, Q_VALUE) == 12.5);
  CHECK(getCuantificadoresFichero(file, (FlatQuantityRecord*)read, -1) == 0);
}

int main(int argc, char** argv) {
  char document[1024], partial[1024], enums[1024], quantities[1024], quantitiesOut[1024];
  if (argc != 2) {
    fprintf(stderr, "usage: c_host <folder>\n");
    return 2;
  }
  path(document, argv[1], "document.xml");
  path(partial, argv[1], "partial.xml");
  path(enums, argv[1], "enums.xml");
  path(quantities, argv[1], "quantities.xml");
  path(quantitiesOut, argv[1], "quantities-out.xml");

  buildAndQuery(document);
  readProperties(document);
  writeProperties(document, partial);
  readEnumeration(enums);
  exchangeQuantities(quantities, quantitiesOut);

  if (failures != 0) {
    fprintf(stderr, "c host: %d checks failed\n", failures);
    return 1;
  }
  printf("c host: all checks passed\n");
  return 0;
}
