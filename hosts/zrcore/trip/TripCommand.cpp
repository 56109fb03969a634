// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRPlatform.h>
#include <place/PlaceDocument.h>
#include <place/PlaceFile.h>
#include <place/PlaceJson.h>
#include <trip/outputs/OutputError.h>
#include <trip/outputs/Outputs.h>
#include <trip/replay/ManagerPipeline.h>
#include <trip/replay/Recording.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Interruption.h>
#include <zrcore/place/PlaceFaults.h>
#include <zrcore/sound/TripSpeaker.h>
#include <zrcore/view/TripView.h>

#include <chrono>
#include <filesystem>
#include <utility>

#include "TripOptions.h"

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

bool isInterrupted() { return interruption::signal() != 0; }

/// Takes the places of another recording as a route.
class RouteReader final : public readers::Listener {
 public:
  RouteReader(Messages& messages, std::string name) : messages_(messages), name_(std::move(name)) {}

  void fix(const readers::SourceFix& fix) override { route.append(fix.coordinate); }
  void remark(const readers::Remark& remark) override {
    hasFaults = hasFaults || remark.severity == readers::Severity::fault;
    messages_.remark(name_, remark);
  }

  trip::RouteSnapper route;
  bool hasFaults = false;

 private:
  Messages& messages_;
  std::string name_;
};

/// The platform's clock tells the recording's time.
NSDate presentTime() {
  return {std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count()};
}

class TripRun {
 public:
  explicit TripRun(const TripOptions& options)
      : options_(options),
        isForced_(*options.force),
        name_(shownName(*options.file)),
        view_(options.shape.shape(), options.rate->has_value(), *options.filter),
        pacer_(*options.rate, view_.waiter()) {
    view_.setName(name_);
  }

  int run();

 private:
  bool readRoute(const std::string& path);
  bool readPlaces(const std::string& path);
  bool openOutputs(const std::filesystem::path& folder);
  bool install();
  trip::TripReplay::Options replayOptions() const;
  int replay(trip::Recording& recording);
  int exitCode(const trip::TripSummary& summary);

  const TripOptions& options_;
  bool isForced_;
  std::string name_;
  TripView view_;
  trip::Pacer pacer_;
  std::shared_ptr<trip::RecordingClock> clock_ = std::make_shared<trip::RecordingClock>();
  trip::ManagerPipeline::Options pipelineOptions_;
  std::vector<trip::PlaceMark> places_;
  bool inputsHaveFaults_ = false;  // the route, the places, or a recording that was cut short
};

/// False, with a message, when there is no route in the file.
bool TripRun::readRoute(const std::string& path) {
  const std::string name = shownName(path);
  RouteReader reader(view_.messages(), name);
  try {
    trip::Recording(path, isInterrupted).read(reader, [] {});
    view_.messages().endRemarks(name);
  } catch (const trip::RecordingError& error) {
    view_.messages().about(name, error.what());
    return false;
  }
  if (reader.route.empty()) {
    view_.messages().about(name, "holds no position to make a route of");
    return false;
  }
  if (reader.hasFaults) inputsHaveFaults_ = true;
  pipelineOptions_.route = std::move(reader.route);
  return true;
}

/// False, with a message, when there is no place to mark in the file.
bool TripRun::readPlaces(const std::string& path) {
  const std::string name = shownName(path);
  try {
    const auto take = [this](const place::Result& result) {
      if (const auto position = place::position(*result.place)) {
        places_.push_back({*position, result.place->title().value_or("")});
      }
    };
    const place::Account account = place::readDocument(place::readFile(path), std::nullopt, take);
    if (tellFaults(view_.messages(), name, account)) inputsHaveFaults_ = true;
  } catch (const place::FileError& error) {
    view_.messages().about(name, error.what());
    return false;
  }
  if (places_.empty()) view_.messages().about(name, "holds no place with a position");
  return !places_.empty();
}

/// False, with a message, when what is read would be overwritten.
bool TripRun::openOutputs(const std::filesystem::path& folder) {
  // A table that an earlier run wrote can be replayed; --force must not put the new one in its place.
  for (const std::string& input : {*options_.file, options_.routeFile->value_or("-")}) {
    std::error_code error;
    if (!std::filesystem::equivalent(folder / "trip.csv", input, error)) continue;
    view_.messages().about(shownName(input), "would be overwritten by --out; choose another folder");
    return false;
  }
  view_.addOutput(trip::makeOutputs(folder, isForced_, std::move(places_)));
  return true;
}

/// Puts the platform of the replay to use. False, with a message, when another one is.
bool TripRun::install() {
  const auto& speech = *options_.speech;
  SpeakingPlatform speaking;
  if (speech) speaking = speakingPlatform(speech, isForced_, view_.messages());
  speaking.platform.clock = clock_;
  if (speech && !speaking.file) view_.sleepBy([](double seconds) { ZRRunLinuxLoopFor(seconds, [] { return false; }); });
  return installPlatform(speaking, speech ? std::optional(TripSpeaker::Time::replayed) : std::nullopt, view_);
}

trip::TripReplay::Options TripRun::replayOptions() const {
  trip::TripReplay::Options options;
  options.source = *options_.file == "-" ? "-" : std::filesystem::path(*options_.file).filename().string();
  options.filter = *options_.filter;
  options.completion.assumedAccuracyMeters = *options_.assumedAccuracyMeters;
  options.completion.derivesSpeed = *options_.derivesSpeed;
  options.intake.leavesOutEstimates = *options_.leavesOutEstimates;
  options.intake.repairsWeekRollover = *options_.repairsWeekRollover;
  options.intake.now = presentTime;
  options.window = trip::TimeWindow(*options_.from, *options_.to);
  return options;
}

int TripRun::replay(trip::Recording& recording) {
  if (!install()) return kExitServiceMissing;
  pipelineOptions_.filtersMeasuredValues = *options_.filter == "measured";
  trip::ManagerPipeline pipeline(std::move(pipelineOptions_));
  trip::TripReplay replay(replayOptions(), recording, pipeline, pacer_, *clock_, view_);
  try {
    replay.run();
  } catch (const trip::RecordingError& error) {
    view_.messages().about(name_, error.what());
    inputsHaveFaults_ = true;
  }
  const trip::TripSummary summary = replay.summary();
  view_.finish(summary);
  return exitCode(summary);
}

int TripRun::exitCode(const trip::TripSummary& summary) {
  if (isInterrupted()) {
    view_.messages().about(name_, "interrupted; what was replayed until then is complete");
    return interruption::exitCode();
  }
  if (summary.fixes == 0 && !view_.wantsToStop()) {
    const bool isWindowed = *options_.from || *options_.to;
    view_.messages().about(name_, isWindowed ? "no fix between --from and --to" : "no fix to replay");
    return kExitDataFault;
  }
  return inputsHaveFaults_ || summary.faults > 0 ? kExitDataFault : kExitDone;
}

int TripRun::run() {
  try {
    trip::Recording recording(*options_.file, isInterrupted);
    if (const auto& file = *options_.routeFile; file && !readRoute(*file)) return kExitDataFault;
    if (const auto& file = *options_.placesFile; file && !readPlaces(*file)) return kExitDataFault;
    if (const auto& folder = *options_.outputFolder; folder && !openOutputs(*folder)) return kExitUsage;
    return replay(recording);
  } catch (const trip::RecordingError& error) {
    if (isInterrupted()) return interruption::exitCode();  // before it could even be told what was coming in
    view_.messages().about(name_, error.what());
    return kExitDataFault;
  } catch (const trip::ReversedWindow& error) {
    view_.messages().say(error.what());
    return kExitUsage;
  } catch (const trip::OutputError& error) {
    view_.messages().say(error.what());
    return exitCodeOf(error);
  }
}

/// @throws UsageFault
void checkStandardInput(const TripOptions& options) {
  const bool isFile = *options.file == "-", isRoute = *options.routeFile == "-";
  if (isFile && isRoute) throw UsageFault("--route", "the recording already takes the standard input");
  if (*options.placesFile == "-" && (isFile || isRoute)) {
    throw UsageFault("--places", "the standard input is taken already");
  }
}

int runTrip(const TripOptions& options) {
  checkStandardInput(options);
  interruption::listen();
  return TripRun(options).run();
}

}  // namespace

void addTripCommand(CommandLine& tool) { tool.add<TripOptions>("trip", kTripDescription, kTripFooter, runTrip); }
