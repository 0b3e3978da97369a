// orvane qsets list | merge: the flat quantity exchange of liborvane from the shell.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "commands.h"
#include "documents.h"
#include "listing.h"
#include "quiet.h"
#include "record_csv.h"
#include "scratch_folder.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

struct ListOptions {
  std::string file;
  Format format = Format::Table;
};

struct MergeOptions {
  std::string file;
  std::string out;
  std::string records;
  bool save = false;
  bool quiet = false;
};

int listQuantities(const ListOptions& options) {
  const ScratchFolder scratch;
  const std::string file = documentArgument(options.file, scratch);
  requireDocument(file, DocumentKind::QuantitySets);
  printListing(std::cout, quantityListing(readQuantityRecords(file)), options.format);
  return kExitOk;
}

int mergeQuantities(const MergeOptions& options) {
  requireDocument(options.file, DocumentKind::QuantitySets);
  requireDistinct(options.file, options.out);
  requireWritableTarget(options.out);
  const std::vector<FlatQuantityRecord> records = readQuantityCsv(options.records);
  // setCuantificadoresFichero always rewrites the document it merges into: without --save it
  // merges into a copy, so FILE stays as it is.
  const ScratchFolder scratch;
  std::string target = options.file;
  if (!options.save) {
    target = scratch.file("document.xml");
    std::filesystem::copy_file(options.file, target);
  }
  setCuantificadoresFichero(target.c_str(), options.out.c_str(), records.data(), static_cast<int>(records.size()));
  if (!std::filesystem::exists(options.out)) throw ToolError(options.out + ": could not be written");
  const SilencedOutput silenced(options.quiet);
  std::cout << "Merged " << records.size() << " record" << (records.size() == 1 ? "" : "s") << " from "
            << options.records << ".\n"
            << "Wrote the sets they name to " << options.out << ".\n"
            << (options.save ? "Saved " + options.file + " (the previous version is " + options.file + ".bak).\n"
                             : options.file + " is unchanged; add --save to write the merge into it.\n");
  return kExitOk;
}

void addList(CLI::App& qsets, Action& action) {
  auto options = std::make_shared<ListOptions>();
  CLI::App* list = qsets.add_subcommand("list", "List every quantity of a quantity-set document");
  list->add_option("FILE", options->file, "Quantity-set document (XML); - reads standard input")->required();
  addFormatOption(*list, options->format);
  list->footer(
      "Columns: set, quantity, kind, value, as getCuantificadoresFichero gives them: sets by name, every\n"
      "quantity whatever its export flag, values with three decimals.");
  list->callback([options, &action] { action = [options] { return listQuantities(*options); }; });
}

void addMerge(CLI::App& qsets, Action& action) {
  auto options = std::make_shared<MergeOptions>();
  CLI::App* merge =
      qsets.add_subcommand("merge", "Merge quantity records from a CSV file (setCuantificadoresFichero)");
  merge->add_option("FILE", options->file, "Quantity-set document to merge into")->required();
  merge->add_option("OUT", options->out, "File for the sets the records name, alone")->required();
  merge->add_option("RECORDS", options->records, "CSV file of records (see below)")->required();
  merge->add_flag("--save", options->save, "Also write the merged document back to FILE (keeping FILE.bak)");
  merge->add_flag("-q,--quiet", options->quiet, "Print nothing but errors");
  merge->footer(quantityCsvHelp() +
                "\nThe merge only adds: a quantity FILE already holds keeps its value, and of two records\n"
                "naming the same set and quantity the first wins.");
  merge->callback([options, &action] { action = [options] { return mergeQuantities(*options); }; });
}

}  // namespace

void addQsetsCommands(CLI::App& app, Action& action) {
  CLI::App* qsets = app.add_subcommand("qsets", "Quantity-set documents through the flat exchange");
  qsets->require_subcommand(0, 1);
  addList(*qsets, action);
  addMerge(*qsets, action);
}

}  // namespace orvane::cli
