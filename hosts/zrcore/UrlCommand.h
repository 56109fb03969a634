// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_URLCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_URLCOMMAND_H

#include <CLI/CLI.hpp>

/// Adds `url` to the tool. Its run stores the tool's exit code.
void addUrlCommand(CLI::App& tool, int& exitCode);

#endif
