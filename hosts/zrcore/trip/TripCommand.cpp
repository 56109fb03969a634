// SPDX-License-Identifier: Apache-2.0
#include "TripCommand.h"

#include <zrcore/CommandLine.h>
#include <zrcore/Messages.h>

#include <charconv>
#include <cmath>
#include <memory>

#include "TripRun.h"

namespace {

constexpr const char* kTripDescription =
    "Replays a recorded trip through the location service and shows what the filter makes of it.\n"
    "Reads GPX, NMEA 0183, gpsd JSON lines and CSV (time,lat,lon,altitude,accuracy,speed,course; separated by commas,\n"
    "semicolons or tabs), told apart by content, packed by gzip or not.";

constexpr const char* kTripFooter = R"(
Output:
  On a terminal a live table: time (UTC), position, accuracy, raw and smoothed (~) course and speed, S: significant
  movement, J: implausible jump, whether the receiver has settled. Otherwise one line per fix, columns separated by
  tabs, named by the first line, "-" for what is unknown. Messages and the summary go to the standard error stream.
  The summary tells what the filter did: the top speed as told and smoothed, and by how much the course changes from fix
  to fix while moving above 1 m/s, from place to place and smoothed (the median, and what nine in ten do not exceed).
  Three clients listen to the service: a plain one, one with a snap filter, and one from a quarter to three quarters of
  the file (of a stream: from the 101st to the 200th fix).

Exit codes:
  0  done
  1  the recording cannot be read, it holds no fix, or a position, time, speed, course or altitude in it was lost; what
     else is wrong with it is a warning
  2  the command line must be changed; a file would be overwritten without --force
  3  the system does not give what is needed: no room or no right to write
  129 to 153  128 and the number of the signal that ended it early; what was replayed until then is complete

Examples:
  zrcore trip drive.gpx --out result
  zrcore trip drive.csv --rate 10 --from 09:30 --to 09:45
  gpspipe -w | zrcore trip - --json | jq -c 'select(.jump)')";

/// A number above 0, "max" for none.
std::optional<double> parseRate(const std::string& text) {
  if (text == "max") return std::nullopt;
  double rate = 0.0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, rate);
  if (error != std::errc() || rest != end || !std::isfinite(rate) || rate <= 0.0) {
    throw UsageFault("--rate", inQuotes(text) + " is neither a number above 0 nor 'max'");
  }
  return rate;
}

void addTimeOption(Command& command, const std::string& name, std::optional<trip::TimeBound>& bound,
                   const std::string& description) {
  command
      .option(
          name,
          [&bound, name](const std::string& text) {
            bound = trip::parseTimeBound(text);
            if (!bound) {
              throw UsageFault(name,
                               inQuotes(text) + " is no time; give it as in 2026-05-09T09:30:00Z, 09:30:00 or +90");
            }
          },
          description)
      .valueName("TIME");
}

/// @throws UsageFault
void checkStandardInput(const TripArguments& arguments) {
  const bool isRouteStandardInput = arguments.routeFile == "-";
  if (arguments.file == "-" && isRouteStandardInput) {
    throw UsageFault("--route", "the recording already takes the standard input");
  }
  if (arguments.placesFile == "-" && (arguments.file == "-" || isRouteStandardInput)) {
    throw UsageFault("--places", "the standard input is taken already");
  }
}

}  // namespace

void addTripCommand(CommandLine& tool) {
  const auto arguments = std::make_shared<TripArguments>();
  Command command = tool.add("trip", kTripDescription, kTripFooter, [arguments] {
    checkStandardInput(*arguments);
    return runTrip(*arguments);
  });

  command.option("FILE", arguments->file, "The recording; - for standard input").required();
  const CommandOption out = command
                                .option("--out", arguments->outputFolder,
                                        "Write trip.csv, trip.geojson, summary.json, trip.png and trip.svg there")
                                .valueName("DIR")
                                .notEmpty();
  command.flag("--force", arguments->force, "Let --out and --speak overwrite files");
  command
      .option("--filter", arguments->filter,
              "measured: by the accuracy and speed that the receiver tells, so that jumps are found and speeds are "
              "smoothed; documented: without them, as a host's service does unless it is told otherwise [measured]")
      .valueName("NAME")
      .oneOf({"documented", "measured"});
  command
      .option(
          "--rate", [arguments](const std::string& text) { arguments->rate = parseRate(text); },
          "Times the recorded speed: 1, 10, or max for no waiting [max]. Pauses of over a minute are cut to one")
      .valueName("RATE");
  addTimeOption(
      command, "--from", arguments->from,
      "Leave out fixes before this time: ISO 8601, HH:MM[:SS] (UTC) on the recording's first day, or +SECONDS "
      "after its start");
  addTimeOption(command, "--to", arguments->to, "Leave out fixes after this time");
  command.option("--assume-accuracy", arguments->assumedAccuracyMeters, "Accuracy of fixes that tell none")
      .valueName("METRES")
      .positive();
  command.flag("--derive-speed", arguments->derivesSpeed, "Work out missing speeds from the places and times");
  command.flag("--no-estimates", arguments->leavesOutEstimates,
               "Leave out positions by dead reckoning or a simulator, as far as the receiver tells them");
  command.flag("--week-rollover", arguments->repairsWeekRollover,
               "Add 1024 weeks to dates, as often as they then still lie in the past: for receivers whose week counter "
               "has rolled over");
  command
      .option("--route", arguments->routeFile,
              "A recording of the route that the second client snaps to; without it, the way already replayed")
      .valueName("FILE");
  command
      .option("--places", arguments->placesFile,
              "Mark these places in the pictures: what a geocoding service answered, as 'zrcore place' reads it")
      .valueName("FILE")
      .needs(out);
  command
      .option(
          "--speak", [arguments](const std::string& text) { arguments->speech = SoundTarget::parse("--speak", text); },
          "Speak at the start, at each turn and at the end. sound: through the sound server; wav:FILE: into a WAV "
          "file, on the recording's time")
      .valueName("TARGET");
  const CommandOption json =
      command.flag("--json", arguments->json, "One JSON object per fix; the last line is {\"summary\": ...}");
  command.flag("--quiet", arguments->quiet, "Show no fixes").excludes(json);
}
