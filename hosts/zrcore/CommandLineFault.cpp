// SPDX-License-Identifier: Apache-2.0
#include "CommandLineFault.h"

#include <algorithm>
#include <vector>

#include "Messages.h"
#include "NearestName.h"

namespace {

/// What was probably meant; where nothing is near, where to look.
std::string remedy(std::string_view word, const std::vector<std::string>& names, const std::string& otherwise) {
  const auto nearest = nearestName(word, names);
  return nearest ? "; did you mean '" + *nearest + "'?" : otherwise;
}

std::vector<std::string> commandNames(const CLI::App& tool) {
  std::vector<std::string> names;
  for (const CLI::App* command : tool.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> optionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    for (const std::string& name : option->get_snames()) names.push_back("-" + name);
  }
  return names;
}

}  // namespace

std::string unknownCommand(const CLI::App& tool, const std::string& name) {
  return inQuotes(name) + " is no command" + remedy(name, commandNames(tool), "; 'zrcore help' lists them");
}

std::string commandLineFault(const CLI::App& tool, const CLI::ParseError& error) {
  const auto parsed = tool.get_subcommands();
  const CLI::App& command = parsed.empty() ? tool : *parsed.front();
  const std::string help = "; 'zrcore help" + (parsed.empty() ? "" : " " + command.get_name()) + "' says more";

  // What is left over tells more than what is missing: a slip is the likely cause of both.
  for (const CLI::App* app : {&tool, &command}) {
    const std::vector<std::string> left = app->remaining();
    const auto option = std::find_if(left.begin(), left.end(), [](const auto& word) { return word.starts_with('-'); });
    if (option == left.end()) continue;
    const std::string word = option->substr(0, option->find('='));
    const std::string of = app == &tool ? "zrcore" : "zrcore " + app->get_name();
    return inQuotes(word) + " is no option of '" + of + "'" + remedy(word, optionNames(*app), help);
  }
  const std::vector<std::string> left = command.remaining();
  if (parsed.empty()) return left.empty() ? "give a command; 'zrcore help' lists them" : unknownCommand(tool, left[0]);
  if (!left.empty()) return inQuotes(left[0]) + " is one argument too many" + help;
  return ZRPrintableText(error.what(), 2 * ZRLongestExcerpt) + help;
}
