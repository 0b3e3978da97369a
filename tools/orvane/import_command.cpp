// orvane import-psd: buildingSMART property-set definition files into a property-set document
// (and quantity-set definitions into a quantity-set document).
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <fstream>
#include <iostream>
#include <memory>

#include "commands.h"
#include "documents.h"
#include "psd_import.h"
#include "psd_reader.h"
#include "quiet.h"
#include "scratch_folder.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

struct ImportOptions {
  std::vector<std::string> paths;
  std::string out;
  std::string qto;
  bool verbose = false;
  bool quiet = false;
  std::string format = "text";
};

// The report as {"written": [...], "leftOut": {reason: [items]}, "changed": {reason: [items]}}.
void printJsonReport(const ImportOptions& options, const ImportReport& report) {
  nlohmann::ordered_json written = nlohmann::ordered_json::array({options.out});
  if (!options.qto.empty()) written.push_back(options.qto);
  const nlohmann::ordered_json json{{"written", written}, {"leftOut", report.leftOut()}, {"changed", report.changed()}};
  std::cout << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

std::size_t propertyCount(const CIfcProyectPSet& document) {
  std::size_t count = 0;
  for (const CIfcPropertySet& set : document.propertySets) count += set.properties.size();
  return count;
}

std::size_t quantityCount(const CIfcProyectQSet& document) {
  std::size_t count = 0;
  for (const CIfcQuantitySet& set : document.quantitySets) count += set.quantities.size();
  return count;
}

// graba reports no failure, so the file is read back to see that it holds what was written.
void savePropertySets(CIfcProyectPSet& document, const std::string& path) {
  document.graba(path.c_str());
  CIfcProyectPSet written;
  if (written.lee(path.c_str()) != 1 || written.propertySets.size() != document.propertySets.size() ||
      propertyCount(written) != propertyCount(document) || written.enums.size() != document.enums.size() ||
      written.relations.size() != document.relations.size())
    throw ToolError(path + ": the document could not be written whole");
  std::cout << "Wrote " << path << ": " << document.propertySets.size() << " sets, " << propertyCount(document)
            << " properties, " << document.enums.size() << " enumerated types, " << document.relations.size()
            << " relations.\n";
}

void saveQuantitySets(CIfcProyectQSet& document, const std::string& path) {
  document.graba(path.c_str());
  CIfcProyectQSet written;
  if (written.lee(path.c_str()) != 1 || written.quantitySets.size() != document.quantitySets.size() ||
      quantityCount(written) != quantityCount(document) || written.objects.size() != document.objects.size())
    throw ToolError(path + ": the document could not be written whole");
  std::cout << "Wrote " << path << ": " << document.quantitySets.size() << " quantity sets, "
            << quantityCount(document) << " quantities, " << document.objects.size() << " element types.\n";
}

// The outputs must be writable and must not overwrite each other or an input.
void checkOutputs(const ImportOptions& options, const std::vector<std::filesystem::path>& inputs) {
  std::vector<std::string> outputs{options.out};
  if (!options.qto.empty()) outputs.push_back(options.qto);
  for (const std::string& output : outputs) {
    requireWritableTarget(output);
    for (const std::filesystem::path& input : inputs) requireDistinct(input.string(), output);
  }
  if (outputs.size() == 2) requireDistinct(options.out, options.qto);
}

std::vector<PsdSet> readSets(const std::vector<std::filesystem::path>& files, ImportReport& report) {
  std::vector<PsdSet> sets;
  for (const std::filesystem::path& file : files) {
    PsdFile read = readPsdFile(file);
    if (read.set) sets.push_back(std::move(*read.set));
    else report.leftOut("file that is not a set definition", file.string() + " (" + read.problem + ")");
  }
  if (sets.empty()) throw ToolError("no property-set or quantity-set definitions found");
  std::size_t quantitySets = 0;
  for (const PsdSet& set : sets) quantitySets += set.quantities ? 1 : 0;
  std::cout << "Read " << files.size() << " file" << (files.size() == 1 ? "" : "s") << ": "
            << sets.size() - quantitySets << " property sets, " << quantitySets << " quantity sets.\n";
  return sets;
}

int importPsd(const ImportOptions& options) {
  // "-o -" writes the property-set document to standard output, and the report to stderr.
  const bool toStandardOutput = options.out == "-";
  if (toStandardOutput && options.format == "json")
    throw ToolError("--format json prints the report on standard output: give -o a file");
  const std::vector<std::filesystem::path> files = collectPsdFiles(options.paths);
  checkOutputs(options, files);
  const ScratchFolder scratch;
  const std::string out = toStandardOutput ? scratch.file("psets.xml") : options.out;
  ImportReport report;
  {
    // With --format json the report is the only output; with --quiet there is none.
    const SilencedOutput silenced(options.quiet || options.format == "json" || toStandardOutput);
    const std::vector<PsdSet> sets = readSets(files, report);
    ImportResult result = importSets(sets, !options.qto.empty(), report);
    savePropertySets(result.properties, out);
    if (!options.qto.empty()) saveQuantitySets(result.quantities, options.qto);
  }
  if (toStandardOutput) {
    std::ifstream document(out, std::ios::binary);
    std::cout << document.rdbuf();
    if (!std::cout.flush()) throw ToolError("standard output: could not be written");
  }
  if (options.format == "json") {
    if (!options.quiet) printJsonReport(options, report);
    return kExitOk;
  }
  if (options.quiet) return kExitOk;
  std::ostream& messages = toStandardOutput ? std::cerr : std::cout;
  report.print(messages, options.verbose);
  if (!options.verbose && !(report.leftOut().empty() && report.changed().empty()))
    messages << "Add --verbose to list every item.\n";
  return kExitOk;
}

}  // namespace

void addImportCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<ImportOptions>();
  CLI::App* command = app.add_subcommand(
      "import-psd", "Turn buildingSMART property-set definition (PSD XML) files into a property-set document");
  command->add_option("PATH", options->paths, "PSD files, or folders whose *.xml files are read")->required();
  command->add_option("-o,--output", options->out, "Property-set document to write (OUT.xml); - is standard output")->required();
  command->add_option("--qto", options->qto, "Quantity-set document to write the QtoSetDef files to");
  command->add_flag("-v,--verbose", options->verbose, "List every item left out or changed");
  command->add_flag("-q,--quiet", options->quiet, "Print nothing but errors");
  command->add_option("--format", options->format, "Report format: text (default) or json (every item)")
      ->check(CLI::IsMember({"text", "json"}));
  command->footer(
      "Each PropertySetDef becomes a set (its English definition as description), each PropertyDef a\n"
      "property, each EnumList an enumerated type and each applicable class a relation. QtoSetDef files\n"
      "go to the --qto document (lengths, areas and volumes). What a document cannot hold is reported.\n"
      "An existing output file is kept as OUT.xml.bak.");
  command->callback([options, &action] { action = [options] { return importPsd(*options); }; });
}

}  // namespace orvane::cli
