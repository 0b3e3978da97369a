// A host program: builds a document through the handle interface, saves it, reads it back through
// the exported class and the flat exchange. Exits 0 when everything agrees.
#include <orvane/ifc_proyect_pset.h>
#include <orvane/orvane.h>

#include <cstdio>
#include <cstring>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) return 2;  // usage: consumer FOLDER
  const std::string path = std::string(argv[1]) + "/walls.xml";
  void* doc = nuevoIfcProyectPSet();
  nuevoPSet(doc, "Pset_WallCommon");
  nuevaPropiedadDoble(doc, "Height", 2.75);
  nuevaPropiedadEntera(doc, "Layers", 3);
  guardaIfcProyectPset(doc, path.c_str());
  liberaIfcProyectPset(doc);

  CIfcProyectPSet document;
  if (document.lee(path.c_str()) != 1 || document.propertySets.size() != 1) return 1;
  FlatPropertyRecord records[4] = {};
  const int count = getPropiedadesFichero(path.c_str(), records, 4);
  if (count != 2 || std::strcmp(records[0].valueText, "2.750") != 0 || std::strcmp(records[1].valueText, "3") != 0) return 1;
  std::printf("consumer: %s has %d properties\n", document.propertySets[0].name, count);
  return 0;
}
