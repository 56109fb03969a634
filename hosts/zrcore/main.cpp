// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxSound.h>
#include <fcntl.h>

#include <CLI/CLI.hpp>
#include <clocale>
#include <cstdio>
#include <exception>
#include <string>

#include "AgoCommand.h"
#include "ConfigCommand.h"
#include "DoctorCommand.h"
#include "ExitCodes.h"
#include "Interruption.h"
#include "PlaceCommand.h"
#include "SayCommand.h"
#include "TripCommand.h"
#include "UrlCommand.h"
#include "WatchCommand.h"

namespace {

/// A standard stream that was closed by the caller must not become the first file that is opened.
void fillStandardStreams() {
  for (int stream = 0; stream <= 2; ++stream) {
    if (::fcntl(stream, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) < 0) return;
  }
}

/// Gives other applications' sound its volume back when a killed program has left it lowered. What goes wrong doctor
/// tells: most runs have nothing to do with sound.
void restoreSound() {
  std::string fault;
  if (ZRRestoreLinuxSound(fault) == 0) return;
  std::fprintf(stderr, "zrcore: a program that was killed had left other sound lowered; it has its volume back\n");
}

int runTool(int argc, char** argv) {
  CLI::App tool("The ZRCore navigation kit on the command line", "zrcore");
  tool.set_version_flag("--version", "zrcore " ZRCORE_VERSION);
  tool.require_subcommand(1);
  int exitCode = kExitDone;
  addTripCommand(tool, exitCode);
  addPlaceCommand(tool, exitCode);
  addConfigCommand(tool, exitCode);
  addUrlCommand(tool, exitCode);
  addAgoCommand(tool, exitCode);
  addSayCommand(tool, exitCode);
  addWatchCommand(tool, exitCode);
  addDoctorCommand(tool, exitCode);
  tool.parse_complete_callback([&tool] {
    if (!tool.got_subcommand("doctor")) restoreSound();  // which does so itself
  });
  try {
    tool.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return tool.exit(error) == 0 ? kExitDone : kExitUsage;  // it prints help and version, too
  }
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  fillStandardStreams();
  if (ZRGuardLinuxSound(argc, argv)) return kExitDone;
  interruption::beforeSuddenEnd(ZRRestoreLinuxSoundAtSuddenEnd);
  std::setlocale(LC_CTYPE, "");  // which characters the terminal shows; numbers stay as they are
  try {
    return runTool(argc, argv);
  } catch (const std::exception& error) {  // no memory left, above all
    std::fprintf(stderr, "zrcore: %s\n", error.what());
    return kExitServiceMissing;
  }
}
