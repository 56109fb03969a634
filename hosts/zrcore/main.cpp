#include <CLI/CLI.hpp>
#include <clocale>

#include "ExitCodes.h"
#include "TripCommand.h"

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "");  // which characters the terminal shows; numbers stay as they are

  CLI::App tool("The ZRCore navigation kit on the command line", "zrcore");
  tool.set_version_flag("--version", "zrcore " ZRCORE_VERSION);
  tool.require_subcommand(1);
  int exitCode = kExitDone;
  addTripCommand(tool, exitCode);
  try {
    tool.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return tool.exit(error) == 0 ? kExitDone : kExitUsage;  // it prints help and version, too
  }
  return exitCode;
}
