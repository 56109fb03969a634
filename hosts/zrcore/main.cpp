// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPrintableText.h>
#include <fcntl.h>

#include <CLI/CLI.hpp>
#include <clocale>
#include <cstdio>
#include <exception>
#include <memory>

#include "AgoCommand.h"
#include "CommandLineFault.h"
#include "ConfigCommand.h"
#include "DoctorCommand.h"
#include "ExitCodes.h"
#include "PlaceCommand.h"
#include "SayCommand.h"
#include "StandardOutput.h"
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

/// Shows the help of the tool, or of one subcommand.
int showHelp(const CLI::App& tool, const std::string& name) {
  const auto commands = tool.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
  if (!name.empty() && commands.empty()) {
    std::fprintf(stderr, "zrcore: %s\n", unknownCommand(tool, name).c_str());
    return kExitUsage;
  }
  StandardOutput output;
  const CLI::App& shown = name.empty() ? tool : *commands.front();
  // Not by help(), which would give that of this very command.
  const std::string title = name.empty() ? tool.get_name() : tool.get_name() + " " + name;
  output.write(shown.get_formatter()->make_help(&shown, title, CLI::AppFormatMode::Normal));
  output.flush();
  return kExitDone;
}

void addHelpCommand(CLI::App& tool, int& exitCode) {
  const auto name = std::make_shared<std::string>();
  CLI::App& command = *tool.add_subcommand("help", "Shows what a command does, and its options.");
  command.add_option("COMMAND", *name, "The command; without it, all are listed");
  command.callback([&tool, name, &exitCode] { exitCode = showHelp(tool, *name); });
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
  addHelpCommand(tool, exitCode);
  try {
    tool.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return tool.exit(error);  // it prints help and version
    std::fprintf(stderr, "zrcore: %s\n", commandLineFault(tool, error).c_str());
    return kExitUsage;
  }
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  fillStandardStreams();
  std::setlocale(LC_CTYPE, "");  // which characters the terminal shows; numbers stay as they are
  try {
    return runTool(argc, argv);
  } catch (const std::exception& error) {  // no memory left, above all
    std::fprintf(stderr, "zrcore: %s\n", ZRPrintableText(error.what(), 2 * ZRLongestExcerpt).c_str());
    return kExitServiceMissing;
  }
}
