// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_CONFIG_CONFIGCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_CONFIG_CONFIGCOMMAND_H

class CommandLine;

/// Adds `config` to the tool's subcommands.
void addConfigCommand(CommandLine& tool);

#endif
