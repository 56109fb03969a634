// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_DOCTORCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_DOCTORCOMMAND_H

#include <CLI/CLI.hpp>

/// Adds `doctor` to the tool's subcommands. When it was the one asked for, `exitCode` gets its result.
void addDoctorCommand(CLI::App& tool, int& exitCode);

#endif
