// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_WATCHCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_WATCHCOMMAND_H

#include <CLI/CLI.hpp>

/// Adds `watch` to the tool's subcommands. When it was the one asked for, `exitCode` gets its result.
void addWatchCommand(CLI::App& tool, int& exitCode);

#endif
