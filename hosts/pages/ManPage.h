// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_PAGES_MANPAGE_H
#define ZRCORE_HOSTS_PAGES_MANPAGE_H

#include <zrcore/CommandText.h>

#include <string>
#include <vector>

namespace pages {

/// The manual page of a command, in the macros of man(7): what its help says, section by section.
/// @param version   of all: "zrcore 1.0.0"
/// @param commands  listed as its subcommands, each with a page of its own
/// @param others    the names of other pages, for the end
std::string manPage(const CommandText& command, const std::string& version, const std::vector<CommandText>& commands,
                    const std::vector<std::string>& others);

/// "zrcore trip" is described by the page "zrcore-trip".
std::string pageName(const CommandText& command);

}  // namespace pages

#endif
