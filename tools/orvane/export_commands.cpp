// orvane export-ids | export-ifc: a property-set document (and a quantity-set document) as an IDS
// file of requirements or an IFC4 library of property-set templates, through exportaIds and
// exportaPlantillasIfc.
#include <tinyxml2.h>

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "commands.h"
#include "documents.h"
#include "text.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

struct ExportOptions {
  std::string psets;
  std::string qsets;
  std::string out;
  std::string title;
};

using ExportFunction = int (*)(const char*, const char*, const char*, const char*) noexcept;

struct Summary {
  std::size_t sets = 0;
  std::size_t members = 0;
  std::vector<std::string> notes;
};

// What the written IDS file holds, read back from it.
Summary idsSummary(const std::string& path) {
  Summary summary;
  tinyxml2::XMLDocument document;
  if (document.LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS) throw ToolError(path + ": could not be read back");
  const tinyxml2::XMLElement* specifications = document.RootElement()->FirstChildElement("specifications");
  for (const tinyxml2::XMLNode* node = specifications->FirstChild(); node; node = node->NextSibling()) {
    if (const tinyxml2::XMLComment* comment = node->ToComment()) summary.notes.emplace_back(trim(comment->Value()));
    const tinyxml2::XMLElement* entry = node->ToElement();
    if (entry == nullptr) continue;
    ++summary.sets;
    const tinyxml2::XMLElement* requirements = entry->FirstChildElement("requirements");
    for (auto* p = requirements ? requirements->FirstChildElement("property") : nullptr; p; p = p->NextSiblingElement("property"))
      ++summary.members;
  }
  return summary;
}

// What the written IFC file holds: its templates and its comments, one instance per line.
Summary ifcSummary(const std::string& path) {
  Summary summary;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.find("=IFCPROPERTYSETTEMPLATE(") != std::string::npos) ++summary.sets;
    if (line.find("=IFCSIMPLEPROPERTYTEMPLATE(") != std::string::npos) ++summary.members;
    if (line.rfind("/* ", 0) == 0) summary.notes.emplace_back(trim(std::string_view(line).substr(2, line.size() - 4)));
  }
  return summary;
}

int runExport(const ExportOptions& options, ExportFunction exportFunction, Summary (*summarise)(const std::string&),
              const char* setsWord, const char* membersWord) {
  requireDocument(options.psets, DocumentKind::PropertySets);
  if (!options.qsets.empty()) {
    requireDocument(options.qsets, DocumentKind::QuantitySets);
    requireDistinct(options.qsets, options.out);
  }
  requireDistinct(options.psets, options.out);
  requireWritableTarget(options.out);
  if (exportFunction(options.psets.c_str(), options.qsets.c_str(), options.out.c_str(), options.title.c_str()) != 1)
    throw ToolError(options.out + ": not written (the documents hold no set with properties or quantities, "
                                  "or the file could not be written)");
  const Summary summary = summarise(options.out);
  for (const std::string& note : summary.notes) std::cout << "note: " << note << '\n';
  std::cout << "Wrote " << options.out << ": " << summary.sets << ' ' << setsWord << ", " << summary.members << ' '
            << membersWord << ".\n";
  return kExitOk;
}

CLI::App* addExport(CLI::App& app, Action& action, const char* name, const char* description, const char* outHelp,
                    ExportFunction exportFunction, Summary (*summarise)(const std::string&), const char* setsWord,
                    const char* membersWord) {
  auto options = std::make_shared<ExportOptions>();
  CLI::App* command = app.add_subcommand(name, description);
  command->add_option("PSETS", options->psets, "Property-set document (XML)")->required();
  command->add_option("QSETS", options->qsets, "Quantity-set document (XML)");
  command->add_option("-o,--out", options->out, outHelp)->required();
  command->add_option("--title", options->title, "Title of the result (default: the property-set file's name)");
  command->callback([=, &action] {
    action = [=] { return runExport(*options, exportFunction, summarise, setsWord, membersWord); };
  });
  return command;
}

}  // namespace

void addExportCommands(CLI::App& app, Action& action) {
  addExport(app, action, "export-ids", "Write the sets as an IDS 1.0 file of requirements", "IDS file to write",
            exportaIds, idsSummary, "specifications", "property requirements")
      ->footer("One specification per set and IFC element type; a set without element types applies wherever a\n"
               "model carries it. Sets without properties are left out (see the notes).");
  addExport(app, action, "export-ifc", "Write the sets as an IFC4 library of property-set templates",
            "IFC file to write", exportaPlantillasIfc, ifcSummary, "set templates", "property templates")
      ->footer("An IfcProjectLibrary of IfcPropertySetTemplates; exporting the same documents twice gives the\n"
               "same file. Sets without properties are left out (see the notes).");
}

}  // namespace orvane::cli
