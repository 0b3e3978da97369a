// The editor entry points: each runs its editor inside an editor session (an application object,
// message boxes, the Qt views) and leaves everything else to the toolkit-free flows of
// editors/entry_points.h. Nothing thrown inside reaches the host.
#include "api/guard.h"
#include "editors/common/messages.h"
#include "editors/entry_points.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"
#include "ui/editor_session.h"

namespace {

using orvane::DialogServices;

// The test entries open the sample project; the build says where it lives.
const char* const kSampleSets = ORVANE_SAMPLES_DIR "/proyecto-psets.xml";
const char* const kSampleQuantities = ORVANE_SAMPLES_DIR "/proyecto-qsets.xml";
const char* const kSampleMessages = ORVANE_SAMPLES_DIR "/mensajes.txt";

template <class Work>
bool session(Work&& work) noexcept {
  return orvane::api::guarded(false, [&] { return orvane::runEditorSession(work); });
}

// What an assignment entry gives when its editor cannot be shown: as if the user had cancelled,
// true exactly when the definitions document can be read.
template <class Document>
bool readable(const char* path) noexcept {
  return orvane::api::guarded(false, [&] { return Document().lee(path) == 1; });
}

}  // namespace

extern "C" {

void fijaRutaMensajes(const char* messagePath) noexcept { orvane::setRutaMensajes(messagePath); }

void PropertiesSet(const char* path, const char* messagePath, const char* catalogPath) noexcept {
  session([&](DialogServices& services) { orvane::editPropertySets(services, path, messagePath, catalogPath); });
}

bool asignarPropiedades(const char* path, const char* assignmentPath, const char* messagePath,
                        const char* catalogPath) noexcept {
  bool read = false;
  const bool shown = session([&](DialogServices& services) {
    read = orvane::assignPropertySets(services, path, assignmentPath, messagePath, catalogPath);
  });
  return shown ? read : readable<CIfcProyectPSet>(path);
}

void QuantitiesSet(const char* path) noexcept {
  session([&](DialogServices& services) { orvane::editQuantitySets(services, path); });
}

bool asignarCuantificadores(const char* path, const char* objectPath, const char* objectKind, const double* values,
                            int valueCount) noexcept {
  bool read = false;
  const bool shown = session([&](DialogServices& services) {
    read = orvane::assignQuantitySets(services, path, objectPath, objectKind, values, valueCount);
  });
  return shown ? read : readable<CIfcProyectQSet>(path);
}

}  // extern "C"

void tiposEnumerados() noexcept {
  session([](DialogServices& services) { orvane::editEnumeratedTypes(services, kSampleSets, kSampleMessages); });
}

void prueba() noexcept {
  session([](DialogServices& services) { orvane::editPropertySets(services, kSampleSets, kSampleMessages, nullptr); });
}

void pruebaQSet() noexcept {
  session([](DialogServices& services) { orvane::editQuantitySets(services, kSampleQuantities); });
}

// Enters the editor session and leaves it: a host checks with it that the editors can run.
void pruebaAsignaQSet() noexcept {
  session([](DialogServices&) {});
}
