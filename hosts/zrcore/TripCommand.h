// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_TRIPCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_TRIPCOMMAND_H

#include <CLI/CLI.hpp>

/// Adds `trip` to the tool's subcommands. When it was the one asked for, `exitCode` gets its result.
void addTripCommand(CLI::App& tool, int& exitCode);

#endif
