// SPDX-License-Identifier: Apache-2.0
#include "WatchCommand.h"

#include <policy/PositioningSource.h>
#include <zrcore/CommandLine.h>

#include <memory>
#include <variant>

#include "WatchRun.h"

namespace {

constexpr const char* kWatchDescription =
    "Shows where this machine is, through the location service, until it is interrupted.\n"
    "Sources: auto, gpsd[:HOST[:PORT]], gpsd:/PATH, geoclue, nmea:PATH (a serial device, a FIFO, a socket), file:PATH.";

constexpr const char* kWatchFooter = R"(
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
  zrcore watch gpsd:10.0.0.7 --record drive.gpx
  zrcore watch nmea:/dev/ttyUSB0 --for 60 --json)";

}  // namespace

void addWatchCommand(CommandLine& tool) {
  const auto arguments = std::make_shared<WatchArguments>();
  Command command = tool.add("watch", kWatchDescription, kWatchFooter, [arguments] {
    const auto source = policy::parsePositioningSource(arguments->source);
    if (const auto* const why = std::get_if<std::string>(&source)) throw UsageFault("SOURCE", *why);
    return runWatch(*arguments);
  });

  command.option("SOURCE", arguments->source, "Where positions come from [auto]");
  command
      .option("--record", arguments->recordFile,
              "Write the fixes there, as GPX. The file appears with the first fix, and is whole at any moment from "
              "then on, "
              "whatever becomes of the tool")
      .valueName("FILE.gpx")
      .notEmpty();
  command.flag("--force", arguments->force, "Let --record and --speak overwrite files");
  command.option("--filter", arguments->filter, "As in 'zrcore trip': measured or documented [measured]")
      .valueName("NAME")
      .oneOf({"documented", "measured"});
  command
      .option(
          "--speak", [arguments](const std::string& text) { arguments->speech = SoundTarget::parse("--speak", text); },
          "Speak at the start, at each turn and at the end. sound: through the sound server; wav:FILE: into a WAV "
          "file, one prompt after the other")
      .valueName("TARGET");
  command.flag("--no-estimates", arguments->leavesOutEstimates, "As in 'zrcore trip'");
  command.flag("--week-rollover", arguments->repairsWeekRollover, "As in 'zrcore trip'");
  command.option("--for", arguments->forSeconds, "End after so long").valueName("SECONDS").positive();
  const CommandOption json =
      command.flag("--json", arguments->json, "One JSON object per fix; the last line is {\"summary\": ...}");
  command.flag("--quiet", arguments->quiet, "Show no fixes").excludes(json);
}
