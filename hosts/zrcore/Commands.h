// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_COMMANDS_H
#define ZRCORE_HOSTS_ZRCORE_COMMANDS_H

class CommandLine;

// Each adds the subcommand of its name to the tool.

void addAgoCommand(CommandLine& tool);
void addConfigCommand(CommandLine& tool);
void addDoctorCommand(CommandLine& tool);
void addPlaceCommand(CommandLine& tool);
void addSayCommand(CommandLine& tool);
void addTripCommand(CommandLine& tool);
void addUrlCommand(CommandLine& tool);
void addWatchCommand(CommandLine& tool);

/// All of them, and the help.
void addCommands(CommandLine& tool);

inline constexpr const char* kToolDescription = "The ZRCore navigation kit on the command line";

#endif
