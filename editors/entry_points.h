// What the editor entry points do, without any toolkit: load the documents, run the editor through
// the given services, and save only what the user confirmed. The exported functions wrap these with
// the Qt session (an application object, the library's resources) and the Qt services.
#ifndef ORVANE_EDITORS_ENTRY_POINTS_H
#define ORVANE_EDITORS_ENTRY_POINTS_H

#include <cstdint>

#include "editors/common/dialog.h"

namespace orvane {

// The property-set definitions and enumerated types of the document at `path`, with the host's
// message file and variable catalogue. Loops over save-as requests until OK (saves `path`) or Cancel.
void editPropertySets(DialogServices& services, const char* path, const char* messagePath,
                      const char* catalogPath);

// Assigns property sets and values to a host object. False, showing nothing, when the definitions
// document cannot be read; true otherwise.
bool assignPropertySets(DialogServices& services, const char* path, const char* assignmentPath,
                        const char* messagePath, const char* catalogPath);

// The enumerated types of the document at `path`, which is written back whatever the editor ends
// with (Cancel rewrites it unchanged, with a fresh backup).
void editEnumeratedTypes(DialogServices& services, const char* path, const char* messagePath);

// The quantity sets, kinds and host element types of the document at `path`.
void editQuantitySets(DialogServices& services, const char* path);

// Attaches quantity sets with the host's measured values to one object. False, showing nothing,
// when the definitions document cannot be read; true otherwise.
bool assignQuantitySets(DialogServices& services, const char* path, const char* objectPath,
                        const char* objectKind, const double* values, int32_t valueCount);

}  // namespace orvane

#endif
