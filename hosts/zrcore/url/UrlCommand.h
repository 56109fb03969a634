// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_URL_URLCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_URL_URLCOMMAND_H

class CommandLine;

/// Adds `url` to the tool's subcommands.
void addUrlCommand(CommandLine& tool);

#endif
