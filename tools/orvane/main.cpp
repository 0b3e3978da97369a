// orvane: property-set and quantity-set documents from the shell, through liborvane as a host
// program reaches them.
#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>

#include "commands.h"
#include "suggestion.h"
#include "tool_error.h"

namespace {

using orvane::cli::Action;
using orvane::cli::kExitError;

std::string usageMessage(const CLI::App* app, const CLI::Error& error) {
  return std::string("orvane: ") + error.what() + "\n" + orvane::cli::suggestionFor(*app, error) +
         "Run with --help for more information.\n";
}

// Everything written to standard output must have reached it (a full disk, a closed pipe): the
// one check of the output, made after every command.
void requireOutputWritten() {
  std::cout.flush();
  errno = 0;
  if (std::fflush(stdout) == 0 && !std::ferror(stdout) && std::cout.good()) return;
  const std::string why = errno != 0 ? std::strerror(errno) : "write error";
  throw orvane::cli::ToolError("cannot write the output (" + why + ")");
}

int run(int argc, char** argv) {
  CLI::App app("orvane: list, merge, import and check IFC property-set and quantity-set documents",
               "orvane");
  // At most one command; none at all is refused after parsing, so that a mistyped command is
  // named in the message rather than reported as a missing one.
  app.require_subcommand(0, 1);
  app.failure_message(usageMessage);
  app.set_version_flag("--version", "orvane " ORVANE_VERSION);
  Action action;
  orvane::cli::addPsetsCommands(app, action);
  orvane::cli::addQsetsCommands(app, action);
  orvane::cli::addDocumentCommands(app, action);
  orvane::cli::addImportCommand(app, action);
  orvane::cli::addCheckCommand(app, action);
  orvane::cli::addExportCommands(app, action);
  orvane::cli::addEditorCommands(app, action);
  app.footer("Every command takes --help. Exit status: 0 done, 1 check found problems, 2 error.");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    // --help arrives here too, with a success code.
    return app.exit(error) == 0 ? 0 : kExitError;
  }
  if (!action) throw orvane::cli::ToolError("a command is required; run with --help to see them");
  const int status = action();
  requireOutputWritten();
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  // A closed pipe is a failed write like a full disk: reported and exit 2, not a silent death.
  std::signal(SIGPIPE, SIG_IGN);
  // Whatever goes wrong ends in one line on stderr and an exit status, never in a stack trace.
  try {
    return run(argc, argv);
  } catch (const orvane::cli::ToolError& error) {
    std::cerr << "orvane: " << error.what() << '\n';
  } catch (const std::bad_alloc&) {
    std::cerr << "orvane: out of memory\n";
  } catch (const std::exception& error) {
    std::cerr << "orvane: unexpected error: " << error.what() << '\n';
  } catch (...) {
    std::cerr << "orvane: unexpected error\n";
  }
  return kExitError;
}
