// The editor entry points: each runs its editor inside an editor session (an application object,
// message boxes, the Qt views) and leaves everything else to the toolkit-free flows of
// editors/entry_points.h. Nothing thrown inside reaches the host.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "api/guard.h"
#include "editors/common/messages.h"
#include "editors/entry_points.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"
#include "ui/editor_session.h"

namespace {

using orvane::DialogServices;

// The test entries work on the user's own copy of the installed sample project, never on the
// installed files and never on a build or source folder: $XDG_DATA_HOME/orvane/samples (or
// ~/.local/share/orvane/samples), copied on first use from ORVANE_SAMPLES when that is set, else
// from the folder the samples are installed to.
constexpr const char* kSampleFiles[] = {"proyecto-psets.xml", "proyecto-qsets.xml", "mensajes.txt"};

std::filesystem::path userSamplesFolder() {
  const char* dataHome = std::getenv("XDG_DATA_HOME");
  const char* home = std::getenv("HOME");
  std::filesystem::path base;
  if (dataHome != nullptr && dataHome[0] == '/') base = dataHome;
  else if (home != nullptr && home[0] != '\0') base = std::filesystem::path(home) / ".local" / "share";
  else return {};
  return base / "orvane" / "samples";
}

// The path of `name` in the user's sample copy, made first when it is not there. A file that
// cannot be copied is left missing: its editor then opens empty, as on any missing document.
std::string sampleFile(const char* name) {
  const std::filesystem::path folder = userSamplesFolder();
  if (folder.empty()) return {};
  const char* fromEnvironment = std::getenv("ORVANE_SAMPLES");
  const std::filesystem::path installed =
      fromEnvironment != nullptr && fromEnvironment[0] != '\0' ? fromEnvironment : ORVANE_INSTALLED_SAMPLES_DIR;
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  for (const char* file : kSampleFiles)
    std::filesystem::copy_file(installed / file, folder / file, std::filesystem::copy_options::skip_existing, ignored);
  return (folder / name).string();
}

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
  session([](DialogServices& services) {
    orvane::editEnumeratedTypes(services, sampleFile("proyecto-psets.xml").c_str(), sampleFile("mensajes.txt").c_str());
  });
}

void prueba() noexcept {
  session([](DialogServices& services) {
    orvane::editPropertySets(services, sampleFile("proyecto-psets.xml").c_str(), sampleFile("mensajes.txt").c_str(),
                             nullptr);
  });
}

void pruebaQSet() noexcept {
  session([](DialogServices& services) { orvane::editQuantitySets(services, sampleFile("proyecto-qsets.xml").c_str()); });
}

// Enters the editor session and leaves it: a host checks with it that the editors can run.
void pruebaAsignaQSet() noexcept {
  session([](DialogServices&) {});
}
