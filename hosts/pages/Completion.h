// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PAGES_COMPLETION_H
#define ZRCORE_HOSTS_PAGES_COMPLETION_H

#include <zrcore/CommandText.h>

#include <string>
#include <string_view>
#include <vector>

namespace pages {

// What a shell reads to complete the words of a program's command line.
// Each takes the program's texts, first its own, then those of its subcommands.

std::string bashCompletion(const std::vector<CommandText>& texts);
std::string zshCompletion(const std::vector<CommandText>& texts);
std::string fishCompletion(const std::vector<CommandText>& texts);

// What they share.

/// A file of this folder with what all shells know in place of "@NAME@": the endings of the files of RECORDING, PLACES
/// and SOUND, with bars between; a command that lists the VOICES of the speech engine; the program's COMMANDS.
std::string filled(const char* file, const std::vector<CommandText>& texts);
/// "" for nothing.
std::string whatName(Offer::What what);
/// "zrcore trip" without the program.
std::string subcommand(const CommandText& text);
/// Offers as words of a shell: 'wav:|sound', with what comes behind a word behind the bar.
std::string quotedOffers(const std::vector<Offer>& offers);
/// What is offered for the arguments, whichever it is.
std::vector<Offer> argumentOffers(const CommandText& text);
/// Between single quotes, as bash and zsh read it.
std::string shellWord(std::string_view text);
/// A description's first sentence.
std::string brief(const std::string& description);
/// `text` with all `name` replaced.
std::string with(std::string text, std::string_view name, std::string_view value);

}  // namespace pages

#endif
