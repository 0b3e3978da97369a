// "Did you mean ...?" for a mistyped command word.
#ifndef ORVANE_TOOLS_SUGGESTION_H
#define ORVANE_TOOLS_SUGGESTION_H

#include <string>

namespace CLI {
class App;
class Error;
}  // namespace CLI

namespace orvane::cli {

// For an error about an unexpected argument, a line naming the command the user most likely
// meant: a subcommand of the last command given whose name is at most two edits away. Empty
// when there is none (or the error is another one).
std::string suggestionFor(const CLI::App& app, const CLI::Error& error);

}  // namespace orvane::cli

#endif
