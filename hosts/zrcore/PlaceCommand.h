// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_PLACECOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_PLACECOMMAND_H

#include <CLI/CLI.hpp>

/// Adds `place` to the tool. Its run stores the tool's exit code.
void addPlaceCommand(CLI::App& tool, int& exitCode);

#endif
