// orvane edit | assign: the editors of liborvane opened from the shell, through the same entry
// points a CAD program calls. They need a display; without one the library says so on stderr and
// changes nothing, and the command exits with 2.
#include <CLI/CLI.hpp>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <vector>

#include "commands.h"
#include "orvane/orvane.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

struct EditorOptions {
  std::string file;
  std::string object;    // assign: the host object's document
  std::string messages;  // the host's message file (captions and messages)
  std::string catalog;   // the host's variable catalogue
  std::string kind;      // assign qsets: the host object's kind
  std::vector<double> values;
};

const char* orNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// Whether the library could show its editors: by the rule it applies itself (it then returns as
// if the user had cancelled and says why on stderr), a platform that needs no display server
// (offscreen, vnc...), a Wayland display, or an X display whose local socket exists.
bool editorsCanBeShown() {
  const std::string platform = variable("QT_QPA_PLATFORM");
  const bool x11 = platform.rfind("xcb", 0) == 0, wayland = platform.rfind("wayland", 0) == 0;
  if (!platform.empty() && !x11 && !wayland) return true;
  if (wayland || (platform.empty() && !variable("WAYLAND_DISPLAY").empty())) return !variable("WAYLAND_DISPLAY").empty();
  const std::string display = variable("DISPLAY");
  if (display.empty()) return false;
  if (display[0] != ':') return true;  // a remote display: only connecting would tell
  return ::access(("/tmp/.X11-unix/X" + display.substr(1, display.find('.') - 1)).c_str(), F_OK) == 0;
}

// After an entry point returned: nothing was edited when it could show no editor (exit 2).
int editorShown() {
  if (!editorsCanBeShown()) throw ToolError("no editor could be shown; nothing was edited");
  return kExitOk;
}

// The message file every editor reads its captions from: the one given, else the sample project's
// as installed, else the one in the source tree (a tool run from its build folder).
std::string messageFile(const std::string& given) {
  if (!given.empty()) return given;
  for (const char* sample : {ORVANE_INSTALLED_MESSAGES, ORVANE_SOURCE_MESSAGES})
    if (::access(sample, R_OK) == 0) return sample;
  return {};
}

// Stores the message file before an editor opens: the quantity editors take none of their own.
void useMessages(EditorOptions& options) {
  options.messages = messageFile(options.messages);
  fijaRutaMensajes(orNull(options.messages));
}

void addMessages(CLI::App& command, EditorOptions& options) {
  command.add_option("--messages", options.messages,
                     "The host's message file (captions and messages); the sample project's when not given")
      ->check(CLI::ExistingFile);
}

void addTextFiles(CLI::App& command, EditorOptions& options) {
  addMessages(command, options);
  command.add_option("--catalog", options.catalog, "The host's variable catalogue (Group;Var1,Var2 lines)")
      ->check(CLI::ExistingFile);
}

int assignPropertySets(EditorOptions& options) {
  useMessages(options);
  if (!asignarPropiedades(options.file.c_str(), options.object.c_str(), orNull(options.messages),
                          orNull(options.catalog)))
    throw ToolError(options.file + ": not a readable property-set document");
  return editorShown();
}

int assignQuantitySets(EditorOptions& options) {
  useMessages(options);
  if (!asignarCuantificadores(options.file.c_str(), options.object.c_str(), options.kind.c_str(),
                              options.values.data(), static_cast<int>(options.values.size())))
    throw ToolError(options.file + ": not a readable quantity-set document");
  return editorShown();
}

void addEdit(CLI::App& app, Action& action) {
  CLI::App* edit = app.add_subcommand("edit", "Open the definition editors on a document (needs a display)");
  edit->require_subcommand(0, 1);
  edit->footer("OK writes the document, keeping its previous version as FILE.bak; Cancel writes nothing.");

  auto psets = std::make_shared<EditorOptions>();
  CLI::App* p = edit->add_subcommand("psets", "Property sets and enumerated types (PropertiesSet)");
  p->add_option("FILE", psets->file, "Property-set document (a missing one is created on OK)")->required();
  addTextFiles(*p, *psets);
  p->callback([psets, &action] {
    action = [psets] {
      useMessages(*psets);
      PropertiesSet(psets->file.c_str(), orNull(psets->messages), orNull(psets->catalog));
      return editorShown();
    };
  });

  auto qsets = std::make_shared<EditorOptions>();
  CLI::App* q = edit->add_subcommand("qsets", "Quantity sets (QuantitiesSet)");
  q->add_option("FILE", qsets->file, "Quantity-set document")->required();
  addMessages(*q, *qsets);
  q->callback([qsets, &action] {
    action = [qsets] {
      useMessages(*qsets);
      QuantitiesSet(qsets->file.c_str());
      return editorShown();
    };
  });
}

void addAssign(CLI::App& app, Action& action) {
  CLI::App* assign = app.add_subcommand("assign", "Open the assignment editors for one host object (needs a display)");
  assign->require_subcommand(0, 1);
  assign->footer("OK writes both documents, each keeping its previous version as .bak; Cancel writes nothing.");

  auto psets = std::make_shared<EditorOptions>();
  CLI::App* p = assign->add_subcommand("psets", "Property sets and values of an object (asignarPropiedades)");
  p->add_option("FILE", psets->file, "Property-set definitions")->required()->check(CLI::ExistingFile);
  p->add_option("OBJECT", psets->object, "The object's property-set document (a missing one is created on OK)")
      ->required();
  addTextFiles(*p, *psets);
  p->callback([psets, &action] { action = [psets] { return assignPropertySets(*psets); }; });

  auto qsets = std::make_shared<EditorOptions>();
  CLI::App* q = assign->add_subcommand("qsets", "Quantity sets of an object, with measured values (asignarCuantificadores)");
  q->add_option("FILE", qsets->file, "Quantity-set definitions")->required()->check(CLI::ExistingFile);
  q->add_option("OBJECT", qsets->object, "The object's quantity-set document (a missing one is created on OK)")
      ->required();
  q->add_option("--kind", qsets->kind, "The object's kind; Eje and Superficie take the measured values")
      ->required();
  q->add_option("--values", qsets->values, "Measured values, in the order of a set's quantities (at most 3 used)")
      ->delimiter(',');
  addMessages(*q, *qsets);
  q->callback([qsets, &action] { action = [qsets] { return assignQuantitySets(*qsets); }; });
}

}  // namespace

void addEditorCommands(CLI::App& app, Action& action) {
  addEdit(app, action);
  addAssign(app, action);
}

}  // namespace orvane::cli
