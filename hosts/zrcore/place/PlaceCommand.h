// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_PLACE_PLACECOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_PLACE_PLACECOMMAND_H

class CommandLine;

/// Adds `place` to the tool's subcommands.
void addPlaceCommand(CommandLine& tool);

#endif
