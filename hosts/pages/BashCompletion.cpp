// SPDX-License-Identifier: Apache-2.0
#include "Completion.h"

namespace pages {
std::string bashCompletion(const std::vector<CommandText>& texts) {
  std::string options, offers;
  for (const CommandText& text : texts) {
    const std::string command = subcommand(text);
    options += "    '" + command + "') options=(";
    for (const OptionText& option : text.options) {
      for (const std::string& name : option.names) {
        options += name + " ";
        if (!option.takesValue) continue;
        offers += "    " + shellWord(command + " " + name) + ") offers=(" + quotedOffers(option.offers) + ") ;;\n";
      }
    }
    options += ") ;;\n";
    auto arguments = argumentOffers(text);
    if (command.empty()) arguments = {{"", Offer::What::command}};
    offers += "    '" + command + " ') offers=(" + quotedOffers(arguments) + ") ;;\n";
  }
  const std::string tables = "_zrcore_options() { # COMMAND\n  case $1 in\n" + options +
                             "  esac\n}\n\n_zrcore_offers() { # COMMAND OPTION: fails when that has no value\n"
                             "  case \"$1 $2\" in\n" +
                             offers + "    *) return 1 ;;\n  esac\n}\n";
  return "# Completion of zrcore for bash, made from what its --help says.\n\n" + tables +
         filled("zrcore.bash.in", texts);
}

}  // namespace pages
