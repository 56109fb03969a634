// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_AGOCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_AGOCOMMAND_H

#include <CLI/CLI.hpp>

/// Adds `ago` to the tool. Its run stores the tool's exit code.
void addAgoCommand(CLI::App& tool, int& exitCode);

#endif
