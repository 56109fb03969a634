// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_COMMANDLINEFAULT_H
#define ZRCORE_HOSTS_ZRCORE_COMMANDLINEFAULT_H

#include <CLI/CLI.hpp>
#include <string>

/// What is wrong with a command line, in one line; with the name that was probably meant, where there is one.
/// @param tool  which has just refused to parse it
std::string commandLineFault(const CLI::App& tool, const CLI::ParseError& error);

/// The same of a name that is no subcommand's.
std::string unknownCommand(const CLI::App& tool, const std::string& name);

#endif
