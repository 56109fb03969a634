// SPDX-License-Identifier: Apache-2.0
#include "Completion.h"

namespace pages {
namespace {

std::string inBrackets(std::string text) {
  for (const char* const special : {"\\", "[", "]", ":"}) text = with(text, special, std::string("\\") + special);
  return text;
}

}  // namespace

std::string zshCompletion(const std::vector<CommandText>& texts) {
  std::string functions, described;
  for (const CommandText& text : texts) {
    const std::string command = subcommand(text);
    if (command.empty()) continue;
    described += "    " + shellWord(command + ":" + with(brief(text.description), ":", "\\:")) + "\n";
    std::string arguments = "_zrcore_of_" + command + "() {\n  _arguments";
    const auto add = [&](const std::string& beginning, const std::string& name, const std::vector<Offer>& offers) {
      const std::string function = "_zrcore_offers_" + command + "_" + name;
      functions +=
          function + "() { " + (offers.empty() ? "_message value" : "_zrcore_offer " + quotedOffers(offers)) + " }\n";
      arguments += " \\\n    " + shellWord(beginning + function);
    };
    for (const OptionText& option : text.options) {
      const std::string brackets = "[" + inBrackets(brief(option.description)) + "]";
      for (const std::string& name : option.names) {
        if (option.takesValue) {
          add(name + "=" + brackets + ":value:", name.substr(name.find_first_not_of('-')), option.offers);
        } else {
          arguments += " \\\n    " + shellWord(name + brackets);
        }
      }
    }
    add("*:argument:", "arguments", argumentOffers(text));
    functions += arguments + "\n}\n\n";
  }
  return "#compdef zrcore\n# Completion of zrcore for zsh, made from what its --help says.\n\n" + functions +
         with(filled("zrcore.zsh.in", texts), "@DESCRIBED@", described);
}

}  // namespace pages
