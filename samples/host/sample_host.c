/* A host program as small as can be: it opens Orvane's editors on a project folder through the
 * same entry points a CAD program calls. `make run` uses it on a copy of samples/.
 *
 *   orvane_sample_host FOLDER [psets | assign | qsets | assign-qsets]
 *
 * FOLDER holds the sample project's files (proyecto-psets.xml, objeto-psets.xml, proyecto-qsets.xml,
 * mensajes.txt, variables.txt). */
#include <stdio.h>
#include <string.h>

#include <orvane/orvane.h>

static const char* in(const char* folder, const char* name, char* path, size_t size) {
  snprintf(path, size, "%s/%s", folder, name);
  return path;
}

int main(int argc, char** argv) {
  if (argc < 2) {
    fprintf(stderr, "usage: %s FOLDER [psets | assign | qsets | assign-qsets]\n", argv[0]);
    return 2;
  }
  const char* folder = argv[1];
  const char* editor = argc > 2 ? argv[2] : "psets";
  char sets[4096], objectSets[4096], quantities[4096], objectQuantities[4096], messages[4096], catalog[4096];
  in(folder, "proyecto-psets.xml", sets, sizeof sets);
  in(folder, "objeto-psets.xml", objectSets, sizeof objectSets);
  in(folder, "proyecto-qsets.xml", quantities, sizeof quantities);
  in(folder, "objeto-qsets.xml", objectQuantities, sizeof objectQuantities);
  in(folder, "mensajes.txt", messages, sizeof messages);
  in(folder, "variables.txt", catalog, sizeof catalog);

  /* Every editor reads its captions from the project's message file; the quantity editors have no
   * parameter for it, so it is given once, before any editor opens. */
  fijaRutaMensajes(messages);

  if (strcmp(editor, "psets") == 0) {
    PropertiesSet(sets, messages, catalog);
  } else if (strcmp(editor, "assign") == 0) {
    if (!asignarPropiedades(sets, objectSets, messages, catalog)) fprintf(stderr, "cannot read %s\n", sets);
  } else if (strcmp(editor, "qsets") == 0) {
    QuantitiesSet(quantities);
  } else if (strcmp(editor, "assign-qsets") == 0) {
    /* An axis whose host measured a length of 125.5 m and a height difference of 3.2 m. */
    const double measured[] = {125.5, 3.2};
    if (!asignarCuantificadores(quantities, objectQuantities, "Eje", measured, 2))
      fprintf(stderr, "cannot read %s\n", quantities);
  } else {
    fprintf(stderr, "unknown editor: %s\n", editor);
    return 2;
  }
  return 0;
}
