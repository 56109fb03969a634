// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_WATCH_WATCHCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_WATCH_WATCHCOMMAND_H

class CommandLine;

/// Adds `watch` to the tool's subcommands.
void addWatchCommand(CommandLine& tool);

#endif
