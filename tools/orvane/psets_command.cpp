// orvane psets list | merge | enums: the flat property exchange of liborvane from the shell.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>

#include "commands.h"
#include "documents.h"
#include "listing.h"
#include "orvane/ifc_proyect_pset.h"
#include "quiet.h"
#include "record_csv.h"
#include "scratch_folder.h"
#include "text.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

struct ListOptions {
  std::string file;
  Format format = Format::Table;
};

struct MergeOptions {
  std::string file;
  std::string partial;
  std::string records;
  bool save = false;
  bool quiet = false;
};

struct EnumsOptions {
  std::string file;
  std::string type;
  Format format = Format::Table;
};

int listProperties(const ListOptions& options) {
  const ScratchFolder scratch;
  const std::string file = documentArgument(options.file, scratch);
  requireDocument(file, DocumentKind::PropertySets);
  printListing(std::cout, propertyListing(readPropertyRecords(file)), options.format);
  return kExitOk;
}

int mergeProperties(const MergeOptions& options) {
  requireDocument(options.file, DocumentKind::PropertySets);
  requireDistinct(options.file, options.partial);
  requireWritableTarget(options.partial);
  if (options.save) requireWritableTarget(options.file);
  const std::vector<FlatPropertyRecord> records = readPropertyCsv(options.records);
  setPropiedadesFichero(options.file.c_str(), options.partial.c_str(), records.data(),
                        static_cast<int>(records.size()), options.save ? 1 : 0);
  // The library reports no write failure; a partial document that is not there is one.
  if (!std::filesystem::exists(options.partial)) throw ToolError(options.partial + ": could not be written");
  const SilencedOutput silenced(options.quiet);
  std::cout << "Merged " << records.size() << " record" << (records.size() == 1 ? "" : "s") << " from "
            << options.records << ".\n"
            << "Wrote the sets they name to " << options.partial << ".\n"
            << (options.save ? "Saved " + options.file + " (the previous version is " + options.file + ".bak).\n"
                             : options.file + " is unchanged; add --save to write the merge into it.\n");
  return kExitOk;
}

// The enumerated type's own name when `file` has one that matches `type` ignoring case.
std::optional<std::string> findEnum(const std::string& file, const std::string& type) {
  CIfcProyectPSet document;
  document.lee(file.c_str());
  for (const CIfcEnum& candidate : document.enums)
    if (equalsNoCase(fieldString(candidate.name), type)) return fieldString(candidate.name);
  return std::nullopt;
}

int listEnumValues(const EnumsOptions& options) {
  requireDocument(options.file, DocumentKind::PropertySets);
  // getEnumerados answers 0 both for an unknown type and for one without values.
  if (!findEnum(options.file, options.type))
    throw ToolError(options.file + " has no enumerated type \"" + options.type + "\"");
  Listing listing{{{"value"}}, {}};
  for (const std::string& value : readEnumValues(options.file, options.type)) listing.rows.push_back({value});
  printListing(std::cout, listing, options.format);
  return kExitOk;
}

void addList(CLI::App& psets, Action& action) {
  auto options = std::make_shared<ListOptions>();
  CLI::App* list = psets.add_subcommand("list", "List every property of a property-set document");
  list->add_option("FILE", options->file, "Property-set document (XML); - reads standard input")->required();
  addFormatOption(*list, options->format);
  list->footer(
      "Columns: set, property, type, value, unit, enum, as getPropiedadesFichero gives them: sets by name,\n"
      "Real values with three decimals, no value for Boolean and DateTime properties.");
  list->callback([options, &action] { action = [options] { return listProperties(*options); }; });
}

void addMerge(CLI::App& psets, Action& action) {
  auto options = std::make_shared<MergeOptions>();
  CLI::App* merge = psets.add_subcommand("merge", "Merge property records from a CSV file (setPropiedadesFichero)");
  merge->add_option("FILE", options->file, "Property-set document to merge into")->required();
  merge->add_option("PARTIAL", options->partial, "File for the partial document: the sets the records name")
      ->required();
  merge->add_option("RECORDS", options->records, "CSV file of records (see below)")->required();
  merge->add_flag("--save", options->save, "Also write the merged document back to FILE (keeping FILE.bak)");
  merge->add_flag("-q,--quiet", options->quiet, "Print nothing but errors");
  merge->footer(propertyCsvHelp());
  merge->callback([options, &action] { action = [options] { return mergeProperties(*options); }; });
}

void addEnums(CLI::App& psets, Action& action) {
  auto options = std::make_shared<EnumsOptions>();
  CLI::App* enums = psets.add_subcommand("enums", "List the values of an enumerated type (getEnumerados)");
  enums->add_option("FILE", options->file, "Property-set document")->required();
  enums->add_option("TYPE", options->type, "Name of the enumerated type (any letter case)")->required();
  addFormatOption(*enums, options->format);
  enums->callback([options, &action] { action = [options] { return listEnumValues(*options); }; });
}

}  // namespace

void addPsetsCommands(CLI::App& app, Action& action) {
  CLI::App* psets = app.add_subcommand("psets", "Property-set documents through the flat exchange");
  psets->require_subcommand(0, 1);
  addList(*psets, action);
  addMerge(*psets, action);
  addEnums(*psets, action);
}

}  // namespace orvane::cli
