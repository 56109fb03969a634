// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_TRIP_TRIPCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_TRIP_TRIPCOMMAND_H

class CommandLine;

/// Adds `trip` to the tool's subcommands.
void addTripCommand(CommandLine& tool);

#endif
