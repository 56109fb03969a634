// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_AGO_AGOCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_AGO_AGOCOMMAND_H

class CommandLine;

/// Adds `ago` to the tool's subcommands.
void addAgoCommand(CommandLine& tool);

#endif
