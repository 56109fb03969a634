// SPDX-License-Identifier: Apache-2.0
#include "TripCommand.h"

#include <charconv>
#include <cmath>
#include <memory>

#include "OptionChecks.h"
#include "TripRun.h"

namespace {

constexpr const char* kDescription =
    "Replays a recorded trip through the location service and shows what the filter makes of it.\n"
    "Reads GPX, NMEA 0183, gpsd JSON lines and CSV (time,lat,lon,altitude,accuracy,speed,course; separated by commas,\n"
    "semicolons or tabs), told apart by content, packed by gzip or not.";

constexpr const char* kFooter = R"(
Output:
  On a terminal a live table: time (UTC), position, accuracy, raw and smoothed (~) course and speed, S: significant
  movement, J: implausible jump, whether the receiver has settled. Otherwise one line per fix, columns separated by tabs, named by
  the first line, "-" for what is unknown. Messages and the summary go to the standard error stream.
  Three clients listen to the service: a plain one, one with a snap filter, and one from a quarter to three quarters of
  the file (of a stream: from the 101st to the 200th fix).

Exit codes:
  0  done
  1  the recording can't be read, part of it was dropped, or it holds no fix
  2  the command line must be changed; a file would be overwritten without --force
  3  the system does not give what is needed: no room or no right to write
  129 to 153  128 and the number of the signal that ended it early; what was replayed until then is complete

Examples:
  zrcore trip drive.gpx --out result
  zrcore trip drive.csv --filter measured --rate 10 --from 09:30 --to 09:45
  gpspipe -w | zrcore trip - --json | jq -c 'select(.jump)')";

/// A number above 0, "max" for none.
std::optional<double> parseRate(const std::string& text) {
  if (text == "max") return std::nullopt;
  double rate = 0.0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, rate);
  if (error != std::errc() || rest != end || !std::isfinite(rate) || rate <= 0.0) {
    throw CLI::ValidationError("--rate", inQuotes(text) + " is neither a number above 0 nor 'max'");
  }
  return rate;
}

void addTimeOption(CLI::App& command, const std::string& name, std::optional<trip::TimeBound>& bound,
                   const std::string& description) {
  command
      .add_option_function<std::string>(
          name,
          [&bound, name](const std::string& text) {
            bound = trip::parseTimeBound(text);
            if (!bound)
              throw CLI::ValidationError(
                  name, inQuotes(text) + " is no time; give it as in 2026-05-09T09:30:00Z, 09:30:00 or +90");
          },
          description)
      ->type_name("TIME");
}

}  // namespace

void addTripCommand(CLI::App& tool, int& exitCode) {
  const auto arguments = std::make_shared<TripArguments>();
  CLI::App& command = *tool.add_subcommand("trip", kDescription);
  command.footer(kFooter);

  command.add_option("FILE", arguments->file, "The recording; - for standard input")->required();
  command
      .add_option("--out", arguments->outputFolder,
                  "Write trip.csv, trip.geojson, summary.json, trip.png and trip.svg there")
      ->type_name("DIR")
      ->check(someName());
  command.add_flag("--force", arguments->force, "Let --out and --speak overwrite files");
  command
      .add_option("--filter", arguments->filter,
                  "documented: as the service filters by default, without the receiver's measured accuracy and speed; "
                  "measured: with them [documented]")
      ->type_name("NAME")
      ->check(CLI::IsMember({"documented", "measured"}));
  command
      .add_option_function<std::string>(
          "--rate", [arguments](const std::string& text) { arguments->rate = parseRate(text); },
          "Times the recorded speed: 1, 10, or max for no waiting [max]. Pauses of over a minute are cut to one")
      ->type_name("RATE");
  addTimeOption(
      command, "--from", arguments->from,
      "Leave out fixes before this time: ISO 8601, HH:MM[:SS] (UTC) on the recording's first day, or +SECONDS "
      "after its start");
  addTimeOption(command, "--to", arguments->to, "Leave out fixes after this time");
  command.add_option("--assume-accuracy", arguments->assumedAccuracyMeters, "Accuracy of fixes that tell none")
      ->type_name("METRES")
      ->check(positiveNumber());
  command.add_flag("--derive-speed", arguments->derivesSpeed, "Work out missing speeds from the places and times");
  command
      .add_option("--route", arguments->routeFile,
                  "A recording of the route that the second client snaps to; without it, the way already replayed")
      ->type_name("FILE");
  command
      .add_option("--places", arguments->placesFile,
                  "Mark these places in the pictures: what a geocoding service answered, as 'zrcore place' reads it")
      ->type_name("FILE")
      ->needs("--out");
  command
      .add_option_function<std::string>(
          "--speak", [arguments](const std::string& text) { arguments->speech = SoundTarget::parse("--speak", text); },
          "Speak at the start, at each turn and at the end. sound: through the sound server; wav:FILE: into a WAV "
          "file, on the recording's time")
      ->type_name("TARGET");
  CLI::Option* const json =
      command.add_flag("--json", arguments->json, "One JSON object per fix; the last line is {\"summary\": ...}");
  command.add_flag("--quiet", arguments->quiet, "Show no fixes")->excludes(json);

  command.callback([arguments, &exitCode] {
    const bool isRouteStandardInput = arguments->routeFile == "-";
    if (arguments->file == "-" && isRouteStandardInput) {
      throw CLI::ValidationError("--route", "the recording already takes the standard input");
    }
    if (arguments->placesFile == "-" && (arguments->file == "-" || isRouteStandardInput)) {
      throw CLI::ValidationError("--places", "the standard input is taken already");
    }
    exitCode = runTrip(*arguments);
  });
}
