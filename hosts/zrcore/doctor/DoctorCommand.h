// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_DOCTOR_DOCTORCOMMAND_H
#define ZRCORE_HOSTS_ZRCORE_DOCTOR_DOCTORCOMMAND_H

class CommandLine;

/// Adds `doctor` to the tool's subcommands.
void addDoctorCommand(CommandLine& tool);

#endif
