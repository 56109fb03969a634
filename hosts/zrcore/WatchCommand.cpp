// SPDX-License-Identifier: Apache-2.0
#include "WatchCommand.h"

#include <policy/PositioningSource.h>

#include <memory>
#include <variant>

#include "OptionChecks.h"
#include "WatchRun.h"

namespace {

constexpr const char* kDescription =
    "Shows where this machine is, through the location service, until it is interrupted.\n"
    "Sources: auto, gpsd[:HOST[:PORT]], gpsd:/PATH, geoclue, nmea:PATH (a serial device, a FIFO, a socket), file:PATH.";

constexpr const char* kFooter = R"(
Output:
  As 'zrcore trip': on a terminal a live table, otherwise one line per fix. Messages and the summary go to the standard
  error stream; a source that is lost is looked for until it comes back.
  Stopped with Ctrl-Z it gives its receiver free, and takes it again when it is continued.

Exit codes:
  0  done: the time given by --for is over, the recording of file:PATH has ended, or nobody reads any more,
     with neither --record nor --speak
  1  the source had nothing to say in the time given by --for
  2  the command line must be changed; a file would be overwritten without --force
  3  the system does not give what is needed: no source answers, no permission, no room or no right to write
  129 to 153  128 and the number of the signal that ended it

Examples:
  zrcore watch
  zrcore watch gpsd:10.0.0.7 --filter measured --record drive.gpx
  zrcore watch nmea:/dev/ttyUSB0 --for 60 --json)";

}  // namespace

void addWatchCommand(CLI::App& tool, int& exitCode) {
  const auto arguments = std::make_shared<WatchArguments>();
  CLI::App& command = *tool.add_subcommand("watch", kDescription);
  command.footer(kFooter);

  command.add_option("SOURCE", arguments->source, "Where positions come from [auto]");
  command
      .add_option("--record", arguments->recordFile,
                  "Write the fixes there, as GPX. The file appears with the first fix, and is whole at any moment from "
                  "then on, "
                  "whatever becomes of the tool")
      ->type_name("FILE.gpx")
      ->check(someName());
  command.add_flag("--force", arguments->force, "Let --record and --speak overwrite files");
  command.add_option("--filter", arguments->filter, "As in 'zrcore trip': documented or measured [documented]")
      ->type_name("NAME")
      ->check(CLI::IsMember({"documented", "measured"}));
  command
      .add_option_function<std::string>(
          "--speak", [arguments](const std::string& text) { arguments->speech = SoundTarget::parse("--speak", text); },
          "Speak at the start, at each turn and at the end. sound: through the sound server; wav:FILE: into a WAV "
          "file, one prompt after the other")
      ->type_name("TARGET");
  command.add_option("--for", arguments->forSeconds, "End after so long")
      ->type_name("SECONDS")
      ->check(positiveNumber());
  CLI::Option* const json =
      command.add_flag("--json", arguments->json, "One JSON object per fix; the last line is {\"summary\": ...}");
  command.add_flag("--quiet", arguments->quiet, "Show no fixes")->excludes(json);

  command.callback([arguments, &exitCode] {
    const auto source = policy::parsePositioningSource(arguments->source);
    if (const auto* const why = std::get_if<std::string>(&source)) throw CLI::ValidationError("SOURCE", *why);
    exitCode = runWatch(*arguments);
  });
}
