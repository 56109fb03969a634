// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_SAYCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_SAYCOMMAND_H

#include <CLI/CLI.hpp>

/// Adds the subcommand `say` to the tool. When it is on the command line, it runs while the line is parsed.
void addSayCommand(CLI::App& tool, int& exitCode);

#endif
