// orvane check: what in a document would surprise its user later.
#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <iostream>
#include <memory>
#include <optional>

#include "catalogue.h"
#include "checks.h"
#include "commands.h"
#include "documents.h"
#include "scratch_folder.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

struct CheckOptions {
  std::string file;
  std::string catalogue;
  std::string format = "text";
};

// {"file": ..., "problems": [{"where": ..., "what": ...}]}; texts that are not UTF-8 have their
// bad bytes replaced by U+FFFD.
void printJson(const std::string& file, const std::vector<Finding>& findings) {
  nlohmann::ordered_json problems = nlohmann::ordered_json::array();
  for (const Finding& finding : findings) problems.push_back({{"where", finding.where}, {"what", finding.what}});
  const nlohmann::ordered_json report{{"file", file}, {"problems", problems}};
  std::cout << report.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

int checkDocument(const CheckOptions& options) {
  const ScratchFolder scratch;
  const std::string file = documentArgument(options.file, scratch);
  const DocumentKind kind = documentKind(file);
  std::optional<HostCatalogue> catalogue;
  if (!options.catalogue.empty()) catalogue = HostCatalogue::read(options.catalogue);
  const std::vector<Finding> findings = kind == DocumentKind::PropertySets
                                            ? checkPropertyDocument(file, catalogue ? &*catalogue : nullptr)
                                            : checkQuantityDocument(file);
  if (options.format == "json") {
    printJson(options.file, findings);
    return findings.empty() ? kExitOk : kExitFindings;
  }
  for (const Finding& finding : findings) std::cout << finding.where << ": " << finding.what << '\n';
  if (findings.empty()) {
    std::cout << "No problems found in " << options.file << ".\n";
    return kExitOk;
  }
  std::cout << findings.size() << (findings.size() == 1 ? " problem" : " problems") << " found in " << options.file
            << ".\n";
  return kExitFindings;
}

}  // namespace

void addCheckCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* check = app.add_subcommand("check", "Report what in a document would surprise its user later");
  check->add_option("FILE", options->file, "Property-set or quantity-set document; - reads standard input")->required();
  check->add_option("--catalog", options->catalogue,
                    "Host variable catalogue (one group per line: Group;Var1,Var2) to resolve Group.Variable$ values");
  check->add_option("--format", options->format, "Output format: text (default) or json")
      ->check(CLI::IsMember({"text", "json"}));
  check->footer(
      "Property-set documents: Enumerated properties whose type is missing or whose value is not one of\n"
      "its values; Integer, Real and Boolean values that do not read as such; host variable references\n"
      "that are malformed or, with --catalog, not in the catalogue; names that differ only in case;\n"
      "names and values longer than the 255 bytes of a flat record; relations to missing sets.\n"
      "Quantity-set documents: names that differ only in case, names longer than 255 bytes, sets linked\n"
      "to an element type the document does not list, a kinds list other than the three measures.\n"
      "Exit status: 0 nothing found, 1 problems found, 2 error.");
  check->callback([options, &action] { action = [options] { return checkDocument(*options); }; });
}

}  // namespace orvane::cli
