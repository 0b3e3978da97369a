// The documents the commands are given, checked before the library reads them, and read as a
// host reads them: through liborvane's exported functions.
//
// The library reads an unreadable or foreign file as an empty document, and a merge would then
// write an empty document over it. The tool refuses such files up front instead.
#ifndef ORVANE_TOOLS_DOCUMENTS_H
#define ORVANE_TOOLS_DOCUMENTS_H

#include <string>
#include <vector>

#include "orvane/orvane.h"

namespace orvane::cli {

enum class DocumentKind { PropertySets, QuantitySets };

// The largest file the tool reads (a document, a records file, a catalogue).
inline constexpr std::size_t kMaxInputBytes = std::size_t{256} << 20;

// Every file a command reads is opened here. Throws a ToolError unless `path` names a regular
// file of at most kMaxInputBytes that can be opened: a FIFO (which would block), a device
// (/dev/zero never ends) or a folder is refused without reading it. `what` names the file in the
// message ("records file", "catalogue").
void requireReadableFile(const std::string& path, const std::string& what);

// The bytes of the file at `path`, under the same rules; "-" reads standard input, to the same bound.
std::string readInputFile(const std::string& path, const std::string& what);

// The kind of the XML document at `path`, by its root element ("PropertySetsBIM" or
// "QuantitiesSetQuorsel"). Throws a ToolError for a missing, malformed or foreign file.
DocumentKind documentKind(const std::string& path);

// Throws a ToolError unless `path` holds a document of `kind`.
void requireDocument(const std::string& path, DocumentKind kind);

// Throws a ToolError unless a file can be written at `path`: its folder exists, and it is missing
// or a regular file the tool may open for writing. The library reports no failed write (it leaves
// such a file as it was), so the tool looks first and says why.
void requireWritableTarget(const std::string& path);

// Throws a ToolError when `output` is the same file as `input`.
void requireDistinct(const std::string& input, const std::string& output);

// Every record getPropiedadesFichero / getCuantificadoresFichero gives for `path`. Records start
// zeroed, so fields the library leaves alone read as empty.
std::vector<FlatPropertyRecord> readPropertyRecords(const std::string& path);
std::vector<FlatQuantityRecord> readQuantityRecords(const std::string& path);

// The literals of enumerated type `typeName` through getEnumerados, in order.
std::vector<std::string> readEnumValues(const std::string& path, const std::string& typeName);

}  // namespace orvane::cli

#endif
