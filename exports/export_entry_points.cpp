// exportaIds and exportaPlantillasIfc: a host's documents written as an IDS file or an IFC4
// project library. Each call reads the documents afresh, writes one new file and keeps nothing.
#include <filesystem>
#include <string>
#include <system_error>

#include "api/guard.h"
#include "exports/definitions.h"
#include "exports/ids_export.h"
#include "exports/ifc_export.h"
#include "model/file_io.h"
#include "model/text_codec.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"

namespace {

using orvane::exports::Definitions;

bool given(const char* text) { return text != nullptr && text[0] != '\0'; }

// Whether `out` is the file at `input`: an export never replaces the documents it reads.
bool sameFile(const char* out, const char* input) {
  if (!given(input)) return false;
  std::error_code error;
  return std::filesystem::equivalent(out, input, error) && !error;
}

// The title the host gave, or the property-set file's name without its extension.
std::string titleOf(const char* title, const char* psetsPath) {
  if (given(title)) return orvane::hostTextToUtf8(title);
  return orvane::hostTextToUtf8(std::filesystem::path(psetsPath).stem().string());
}

// Reads the documents and writes what `document` makes of them to `outPath`. 0 when an argument
// is missing, a document does not read, `document` gives nothing or the file cannot be written.
template <class MakeDocument>
int exportDefinitions(const char* psetsPath, const char* qsetsPath, const char* outPath, const char* title,
                      MakeDocument document) noexcept {
  if (!given(psetsPath) || !given(outPath)) return 0;
  return orvane::api::guarded(0, [&] {
    if (sameFile(outPath, psetsPath) || sameFile(outPath, qsetsPath)) return 0;
    CIfcProyectPSet properties;
    if (properties.lee(psetsPath) != 1) return 0;
    CIfcProyectQSet quantities;
    if (given(qsetsPath) && quantities.lee(qsetsPath) != 1) return 0;
    const Definitions definitions =
        orvane::exports::collectDefinitions(properties, given(qsetsPath) ? &quantities : nullptr);
    const std::string text = document(definitions, titleOf(title, psetsPath));
    if (text.empty()) return 0;
    return orvane::writeTextFile(outPath, text) ? 1 : 0;
  });
}

}  // namespace

extern "C" {

int exportaIds(const char* psetsPath, const char* qsetsPath, const char* outPath, const char* title) noexcept {
  return exportDefinitions(psetsPath, qsetsPath, outPath, title, orvane::exports::idsDocument);
}

int exportaPlantillasIfc(const char* psetsPath, const char* qsetsPath, const char* outPath,
                         const char* title) noexcept {
  return exportDefinitions(psetsPath, qsetsPath, outPath, title, orvane::exports::ifcLibraryDocument);
}

}  // extern "C"
