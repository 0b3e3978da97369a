#include "suggestion.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <vector>

namespace orvane::cli {

namespace {

constexpr std::size_t kMostEdits = 2;

std::size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

}  // namespace

std::string suggestionFor(const CLI::App& app, const CLI::Error& error) {
  if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr) return "";
  const std::string message = error.what();
  // CLI11 lists the unexpected arguments last first: the word typed first ends the message.
  const std::string word = message.substr(message.rfind(' ') + 1);
  // The last command the user did give: the mistyped word was meant as one of its subcommands.
  const CLI::App* command = &app;
  std::string path = app.get_name();
  while (!command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
    path += " " + command->get_name();
  }
  std::string best;
  std::size_t bestDistance = kMostEdits + 1;
  for (const CLI::App* candidate : command->get_subcommands({})) {
    const std::size_t distance = editDistance(word, candidate->get_name());
    if (distance < bestDistance && distance < word.size()) {
      best = candidate->get_name();
      bestDistance = distance;
    }
  }
  return best.empty() ? "" : "Did you mean \"" + path + " " + best + "\"?\n";
}

}  // namespace orvane::cli
