// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_CONFIGCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_CONFIGCOMMAND_H

#include <CLI/CLI.hpp>

/// Adds `config` to the tool. Its run stores the tool's exit code.
void addConfigCommand(CLI::App& tool, int& exitCode);

#endif
