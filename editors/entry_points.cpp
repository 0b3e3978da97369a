#include "editors/entry_points.h"

#include <algorithm>
#include <cstdio>
#include <optional>

#include "editors/assign/property_assign_dlg.h"
#include "editors/common/line_reader.h"
#include "editors/common/messages.h"
#include "editors/common/text_codec.h"
#include "editors/psets/list_enums_dlg.h"
#include "editors/psets/properties_set_dlg.h"
#include "editors/qsets/quantity_assign_dlg.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"

namespace orvane {
namespace {

// Reads the host's variable catalogue when its file opens; a missing one (or a FIFO, a device, a
// file past the catalogue's size limit) leaves it empty. The file is closed before the editor is shown.
void readCatalogue(const char* catalogPath, CConjuntoVariableZep& catalogue) {
  if (catalogPath == nullptr) return;
  const HostTextFile file(catalogPath, kMaxCatalogueBytes);
  if (file.stream() != nullptr) catalogue.leeFichero(file.stream());
}

// Releases the message table however the entry point is left.
struct MessageTableScope {
  ~MessageTableScope() { liberaMensajes(); }
};

// "Guardar como...": the first `count` sets of the list (not the selected rows themselves), with the
// list's enumerated types and the relations the document was read with, go to a file the user picks.
void saveFirstSetsAs(DialogServices& services, CIfcProyectPSet& document, const CPropertiesSetDlg& list) {
  const FilePickerOptions options{
      {{u"Text Files (*.xml)", u"*.xml"}, {u"All Files (*.*)", u"*.*"}}, u"txt", true, list.documentFolder};
  const std::optional<std::u16string> chosen = services.pickFileToSave(options);
  const auto count = std::min<std::size_t>(static_cast<std::size_t>(list.selection.count), list.propertySets.size());
  document.propertySets.assign(list.propertySets.begin(), list.propertySets.begin() + static_cast<std::ptrdiff_t>(count));
  document.enums = list.enums;
  // A cancelled picker leaves no name: nothing is written, and the message is shown all the same.
  if (chosen && !chosen->empty()) document.graba(toUtf8(*chosen).c_str());
  services.showInformation(textoMensaje(3, 40));
}

}  // namespace

void editPropertySets(DialogServices& services, const char* path, const char* messagePath, const char* catalogPath) {
  setRutaMensajes(messagePath);
  MessageTableScope releaseTable;
  CIfcProyectPSet document;
  document.lee(path);  // a missing file opens an empty editor; the first OK creates it
  CPropertiesSetDlg list(services, document.propertySets, document.enums);
  list.documentFolder = folderOf(path);
  readCatalogue(catalogPath, list.catalogue);
  for (;;) {
    const int result = list.run();
    if (result == kDialogOk) {
      document.propertySets = list.propertySets;
      document.enums = list.enums;
      document.graba(path);
      return;
    }
    if (result == kDialogCancel) return;
    if (result == kDialogSaveAs) {
      if (list.selection.count < 1) services.showMessage(textoMensaje(3, 39));
      else saveFirstSetsAs(services, document, list);
    }
  }
}

bool assignPropertySets(DialogServices& services, const char* path, const char* assignmentPath,
                        const char* messagePath, const char* catalogPath) {
  setRutaMensajes(messagePath);
  MessageTableScope releaseTable;
  CIfcProyectPSet definitions;
  if (definitions.lee(path) == 0) return false;
  CIfcProyectPSet assigned;
  assigned.lee(assignmentPath);  // an object without a file starts with no sets
  CPropiedadesObjetosIFCDlg editor(services, definitions.propertySets, definitions.enums, assigned.propertySets);
  editor.documentFolder = folderOf(path);
  readCatalogue(catalogPath, editor.catalogue);
  if (editor.run() == kDialogOk) {
    // Both documents get the same enumerated types; their relations stay as read.
    definitions.propertySets = editor.setDefinitions;
    definitions.enums = editor.enumerations;
    definitions.graba(path);
    assigned.propertySets = editor.assignedSets;
    assigned.enums = editor.enumerations;
    assigned.graba(assignmentPath);
  }
  return true;
}

void editEnumeratedTypes(DialogServices& services, const char* path, const char* messagePath) {
  setRutaMensajes(messagePath);
  MessageTableScope releaseTable;
  CIfcProyectPSet document;
  document.lee(path);
  CListEnumsDlg editor(services, document.enums);
  if (editor.run() == kDialogOk) document.enums = editor.enums;
  document.graba(path);
}

void editQuantitySets(DialogServices& services, const char* path) {
  MessageTableScope releaseTable;  // the texts come from the path an earlier entry point stored
  CIfcProyectQSet document;
  document.lee(path);
  CPropertiesSetDlg list(services, document.quantitySets, document.types, document.objects);
  list.documentFolder = folderOf(path);
  if (list.run() != kDialogOk) return;
  document.types = list.types;
  document.objects = list.objects;
  document.quantitySets = list.quantitySets;
  document.graba(path);
}

bool assignQuantitySets(DialogServices& services, const char* path, const char* objectPath, const char* objectKind,
                        const double* values, int32_t valueCount) {
  MessageTableScope releaseTable;
  CIfcProyectQSet definitions;
  if (definitions.lee(path) == 0) return false;
  CIfcProyectQSet assigned;
  assigned.lee(objectPath);
  CCuantificadoresObjetosIFCDlg editor(services, definitions.quantitySets, assigned.quantitySets, objectKind, values,
                                       valueCount, definitions.types, definitions.objects);
  if (editor.run() == kDialogOk) {
    definitions.quantitySets = editor.definitions;
    definitions.graba(path);
    assigned.quantitySets = editor.assignments;
    assigned.graba(objectPath);
  }
  return true;
}

}  // namespace orvane
