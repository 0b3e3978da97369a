// orvane psets|qsets export | import: a whole document as JSON and back, losing nothing.
// Unlike list and merge, which go through the flat exchange and its fixed records, these read and
// write the document classes themselves, so every field the file holds comes through.
#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>

#include "commands.h"
#include "csv.h"
#include "document_csv.h"
#include "document_json.h"
#include "documents.h"
#include "scratch_folder.h"
#include "tool_error.h"

namespace fs = std::filesystem;

namespace orvane::cli {

namespace {

constexpr const char* kStandardStream = "-";

void copyStream(std::istream& in, std::ostream& out, const std::string& what) {
  out << in.rdbuf();
  if (!out.flush()) throw ToolError(what + ": could not be written");
}

// The JSON form of the document in `name`: JSON when its first character opens an object, else the
// CSV rows of export --format csv.
Json readDocumentJson(const std::string& name, DocumentKind kind) {
  const std::string text = readInputFile(name, "input file");
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first != std::string::npos && text[first] == '{') {
    try {
      return Json::parse(text);
    } catch (const Json::parse_error& error) {
      throw ToolError(name + ": not JSON (" + error.what() + ")");
    }
  }
  const std::string source = name == kStandardStream ? "standard input" : name;
  const std::vector<CsvRecord> rows = parseCsv(text, source);
  return kind == DocumentKind::PropertySets ? propertyJsonFromCsv(rows, source) : quantityJsonFromCsv(rows, source);
}

struct ExportOptions {
  std::string file;
  std::string out = kStandardStream;
  std::string format = "json";
};

struct ImportOptions {
  std::string json;
  std::string out;
  bool quiet = false;
};

void writeExport(const Json& json, DocumentKind kind, const std::string& format, const std::string& out) {
  std::ostringstream text;
  if (format == "csv") {
    if (kind == DocumentKind::PropertySets) writePropertyCsv(text, json);
    else writeQuantityCsv(text, json);
  } else {
    text << json.dump(2) << '\n';
  }
  if (out == kStandardStream) {
    std::cout << text.str();
    if (!std::cout.flush()) throw ToolError("standard output: could not be written");
    return;
  }
  requireWritableTarget(out);
  std::ofstream file(out, std::ios::binary);
  if (!(file << text.str()) || !file.flush()) throw ToolError(out + ": could not be written");
}

std::size_t setCount(const CIfcProyectPSet& document) { return document.propertySets.size(); }
std::size_t setCount(const CIfcProyectQSet& document) { return document.quantitySets.size(); }

template <class Document>
void writeDocument(Document& document, const std::string& out, const ScratchFolder& scratch) {
  const std::string path = out == kStandardStream ? scratch.file("output.xml") : out;
  if (out != kStandardStream) requireWritableTarget(out);
  document.graba(path.c_str());
  // graba reports no failure, so the file is read back: a document that is not there, or that has
  // fewer sets than were written, is one.
  Document written;
  if (written.lee(path.c_str()) != 1 || setCount(written) != setCount(document))
    throw ToolError(out + ": the document could not be written whole");
  if (out != kStandardStream) return;
  std::ifstream file(path, std::ios::binary);
  copyStream(file, std::cout, "standard output");
}

int exportDocument(DocumentKind kind, const ExportOptions& options) {
  ScratchFolder scratch;
  const std::string path = documentArgument(options.file, scratch);
  requireDocument(path, kind);
  if (kind == DocumentKind::PropertySets) {
    CIfcProyectPSet document;
    if (document.lee(path.c_str()) != 1) throw ToolError(options.file + ": the library could not read it");
    writeExport(propertyDocumentToJson(document), kind, options.format, options.out);
  } else {
    CIfcProyectQSet document;
    if (document.lee(path.c_str()) != 1) throw ToolError(options.file + ": the library could not read it");
    writeExport(quantityDocumentToJson(document), kind, options.format, options.out);
  }
  return kExitOk;
}

int importDocument(DocumentKind kind, const ImportOptions& options) {
  if (options.json != kStandardStream && options.out != kStandardStream) requireDistinct(options.json, options.out);
  const Json json = readDocumentJson(options.json, kind);
  ScratchFolder scratch;
  std::string summary;
  if (kind == DocumentKind::PropertySets) {
    CIfcProyectPSet document;
    propertyDocumentFromJson(json, document);
    writeDocument(document, options.out, scratch);
    summary = std::to_string(document.propertySets.size()) + " sets, " + std::to_string(document.enums.size()) +
              " enumerated types, " + std::to_string(document.relations.size()) + " relations";
  } else {
    CIfcProyectQSet document;
    quantityDocumentFromJson(json, document);
    writeDocument(document, options.out, scratch);
    summary = std::to_string(document.quantitySets.size()) + " quantity sets, " +
              std::to_string(document.types.size()) + " kinds, " + std::to_string(document.objects.size()) +
              " element types";
  }
  // On standard output the document is the output; a word about it would spoil it.
  if (options.out != kStandardStream && !options.quiet) std::cout << "Wrote " << options.out << ": " << summary << ".\n";
  return kExitOk;
}

void addExport(CLI::App& group, DocumentKind kind, Action& action) {
  auto options = std::make_shared<ExportOptions>();
  CLI::App* command = group.add_subcommand("export", "Print the whole document as JSON or CSV (lossless; see import)");
  command->add_option("FILE", options->file, "Document (XML); - reads standard input")->required();
  command->add_option("-o,--output", options->out, "JSON file to write; - (the default) is standard output");
  command->add_option("--format", options->format, "Output format: json (the default) or csv")
      ->check(CLI::IsMember({"json", "csv"}));
  command->footer(
      "Every field the document holds, in its order. `import` turns the JSON back into a document\n"
      "byte for byte the same as the library writes this one. Texts that are not UTF-8 appear as\n"
      "{\"windows-1252\": \"...\"}; CSV holds the document's own bytes, one line per record. The formats\n"
      "are described in docs/file-formats.md.");
  command->callback([options, kind, &action] { action = [options, kind] { return exportDocument(kind, *options); }; });
}

void addImport(CLI::App& group, DocumentKind kind, Action& action) {
  auto options = std::make_shared<ImportOptions>();
  CLI::App* command = group.add_subcommand("import", "Write a document from the JSON or CSV that export prints");
  command->add_option("JSON|CSV", options->json, "JSON or CSV file (JSON when it starts with {); - reads standard input")
      ->required();
  command->add_option("-o,--output", options->out, "Document (XML) to write, FILE.bak keeping an older one; - is "
                                                   "standard output")
      ->required();
  command->add_flag("-q,--quiet", options->quiet, "Print nothing but errors");
  command->footer("The JSON is checked whole before anything is written; a text longer than a field's 511\n"
                  "bytes is refused, not cut.");
  command->callback([options, kind, &action] { action = [options, kind] { return importDocument(kind, *options); }; });
}

}  // namespace

void addDocumentCommands(CLI::App& app, Action& action) {
  for (const auto& [name, kind] : {std::pair{"psets", DocumentKind::PropertySets},
                                   std::pair{"qsets", DocumentKind::QuantitySets}}) {
    CLI::App* group = app.get_subcommand(name);
    addExport(*group, kind, action);
    addImport(*group, kind, action);
  }
}

}  // namespace orvane::cli
