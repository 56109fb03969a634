// SPDX-License-Identifier: Apache-2.0
#include "Completion.h"

namespace pages {
namespace {

std::string fishQuoted(std::string text) { return "'" + with(with(text, "\\", "\\\\"), "'", "\\'") + "'"; }

std::string offering(const std::vector<Offer>& offers) {
  return offers.empty() ? "" : " -a " + fishQuoted("(__zrcore_offer " + quotedOffers(offers) + ")");
}

}  // namespace

std::string fishCompletion(const std::vector<CommandText>& texts) {
  std::string rows;
  for (const CommandText& text : texts) {
    const std::string command = subcommand(text);
    if (command.empty()) continue;
    rows += "complete -c zrcore -n __fish_use_subcommand -a " + command + " -d " + fishQuoted(brief(text.description)) +
            "\n";
    const std::string row = "complete -c zrcore -n '__fish_seen_subcommand_from " + command + "'";
    for (const OptionText& option : text.options) {
      if (option.names.empty()) continue;
      rows += row;
      for (const std::string& name : option.names) {
        rows += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
      }
      rows += (option.takesValue ? " -x" + offering(option.offers) : "") + " -d " +
              fishQuoted(brief(option.description)) + "\n";
    }
    if (const auto arguments = offering(argumentOffers(text)); !arguments.empty()) rows += row + arguments + "\n";
  }
  return "# Completion of zrcore for fish, made from what its --help says.\n" + filled("zrcore.fish.in", texts) + rows;
}

}  // namespace pages
