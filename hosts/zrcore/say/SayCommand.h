// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_SAY_SAYCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_SAY_SAYCOMMAND_H

class CommandLine;

/// Adds `say` to the tool's subcommands.
void addSayCommand(CommandLine& tool);

#endif
