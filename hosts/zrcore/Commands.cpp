// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"

#include "CommandLine.h"

void addCommands(CommandLine& tool) {
  addTripCommand(tool);
  addPlaceCommand(tool);
  addConfigCommand(tool);
  addUrlCommand(tool);
  addAgoCommand(tool);
  addSayCommand(tool);
  addWatchCommand(tool);
  addDoctorCommand(tool);
  tool.addHelp();
}
