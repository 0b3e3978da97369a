// The command groups of `orvane`. Each adds its subcommands to the application; the one the user
// picks leaves its work in `action`, which main runs once the whole command line has parsed, so
// nothing is read or written before the arguments are known to be right.
#ifndef ORVANE_TOOLS_COMMANDS_H
#define ORVANE_TOOLS_COMMANDS_H

#include <functional>

namespace CLI {
class App;
}

namespace orvane::cli {

// Returns the exit status (kExitOk, kExitFindings); throws ToolError for a failure.
using Action = std::function<int()>;

void addPsetsCommands(CLI::App& app, Action& action);   // psets list | merge | enums
void addQsetsCommands(CLI::App& app, Action& action);   // qsets list | merge
void addImportCommand(CLI::App& app, Action& action);   // import-psd
void addCheckCommand(CLI::App& app, Action& action);    // check
void addExportCommands(CLI::App& app, Action& action);  // export-ids, export-ifc
// psets|qsets export | import; after addPsetsCommands and addQsetsCommands.
void addDocumentCommands(CLI::App& app, Action& action);

void addEditorCommands(CLI::App& app, Action& action);  // edit psets|qsets, assign psets|qsets

}  // namespace orvane::cli

#endif
