// SPDX-License-Identifier: Apache-2.0
#include "TripRun.h"

#include <ZRCore/ZRPlatform.h>
#include <place/PlaceDocument.h>
#include <place/PlaceFile.h>
#include <place/PlaceJson.h>
#include <trip/outputs/OutputError.h>
#include <trip/outputs/Outputs.h>
#include <trip/replay/ManagerPipeline.h>
#include <trip/replay/Recording.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Interruption.h>
#include <zrcore/place/PlaceFaults.h>
#include <zrcore/sound/TripSpeaker.h>
#include <zrcore/view/TripView.h>

#include <chrono>
#include <filesystem>
#include <utility>

namespace {

bool isInterrupted() { return interruption::signal() != 0; }

/// The platform's clock tells the recording's time.
NSDate presentTime() {
  return {std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count()};
}

TripView::Shape shapeFor(const TripArguments& arguments) {
  if (arguments.json) return TripView::Shape::json;
  if (arguments.quiet) return TripView::Shape::nothing;
  return Terminal::canRedraw() ? TripView::Shape::table : TripView::Shape::lines;
}

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

class TripRun {
 public:
  explicit TripRun(const TripArguments& arguments)
      : arguments_(arguments),
        name_(shownName(arguments.file)),
        view_(shapeFor(arguments), arguments.rate.has_value(), arguments.filter),
        pacer_(arguments.rate, view_.waiter()) {
    view_.setName(name_);
  }

  int run();

 private:
  bool readRoute(const std::string& path);
  bool readPlaces(const std::string& path);
  bool openOutputs(const std::filesystem::path& folder);
  void speak(std::shared_ptr<SpokenFile> file);
  int replay(trip::Recording& recording);

  const TripArguments& arguments_;
  std::string name_;
  TripView view_;
  trip::Pacer pacer_;
  trip::ManagerPipeline::Options pipelineOptions_;
  std::vector<trip::PlaceMark> places_;
  bool inputsHaveFaults_ = false;  // of the route and the places
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
  for (const std::string& input : {arguments_.file, arguments_.routeFile.value_or("-")}) {
    std::error_code error;
    if (!std::filesystem::equivalent(folder / "trip.csv", input, error)) continue;
    view_.messages().about(shownName(input), "would be overwritten by --out; choose another folder");
    return false;
  }
  view_.addOutput(trip::makeOutputs(folder, arguments_.force, std::move(places_)));
  return true;
}

/// Once the platform is in use.
void TripRun::speak(std::shared_ptr<SpokenFile> file) {
  if (!file) view_.sleepBy([](double seconds) { ZRRunLinuxLoopFor(seconds, [] { return false; }); });
  view_.addOutput(std::make_unique<TripSpeaker>(std::move(file), TripSpeaker::Time::replayed, view_.messages()));
}

int TripRun::replay(trip::Recording& recording) {
  const auto clock = std::make_shared<trip::RecordingClock>();
  SpeakingPlatform speaking;
  if (arguments_.speech) speaking = speakingPlatform(*arguments_.speech, arguments_.force, view_.messages());
  ZRPlatform platform = speaking.platform;
  platform.clock = clock;
  if (!ZRPlatformInstall(platform)) {
    view_.messages().say("the location service is in use already");
    return kExitServiceMissing;
  }
  if (arguments_.speech) speak(speaking.file);
  pipelineOptions_.filtersMeasuredValues = arguments_.filter == "measured";
  trip::ManagerPipeline pipeline(std::move(pipelineOptions_));

  trip::TripReplay::Options options;
  options.source = arguments_.file == "-" ? "-" : std::filesystem::path(arguments_.file).filename().string();
  options.filter = arguments_.filter;
  options.completion.assumedAccuracyMeters = arguments_.assumedAccuracyMeters;
  options.completion.derivesSpeed = arguments_.derivesSpeed;
  options.intake.leavesOutEstimates = arguments_.leavesOutEstimates;
  options.intake.repairsWeekRollover = arguments_.repairsWeekRollover;
  options.intake.now = presentTime;
  options.window = trip::TimeWindow(arguments_.from, arguments_.to);
  trip::TripReplay replay(options, recording, pipeline, pacer_, *clock, view_);

  bool isCutShort = false;
  try {
    replay.run();
  } catch (const trip::RecordingError& error) {
    view_.messages().about(name_, error.what());
    isCutShort = true;
  }
  const trip::TripSummary summary = replay.summary();
  view_.finish(summary);

  if (isInterrupted()) {
    view_.messages().about(name_, "interrupted; what was replayed until then is complete");
    return interruption::exitCode();
  }
  if (summary.fixes == 0 && !view_.wantsToStop()) {
    const bool isWindowed = arguments_.from || arguments_.to;
    view_.messages().about(name_, isWindowed ? "no fix between --from and --to" : "no fix to replay");
    return kExitDataFault;
  }
  return isCutShort || inputsHaveFaults_ || summary.faults > 0 ? kExitDataFault : kExitDone;
}

int TripRun::run() {
  try {
    trip::Recording recording(arguments_.file, isInterrupted);
    if (arguments_.routeFile && !readRoute(*arguments_.routeFile)) return kExitDataFault;
    if (arguments_.placesFile && !readPlaces(*arguments_.placesFile)) return kExitDataFault;
    if (arguments_.outputFolder && !openOutputs(*arguments_.outputFolder)) return kExitUsage;
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

}  // namespace

int runTrip(const TripArguments& arguments) {
  interruption::listen();
  return TripRun(arguments).run();
}
