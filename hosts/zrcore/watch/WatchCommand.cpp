// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRLocationManager.h>
#include <glib.h>
#include <owners/GLib.h>
#include <trip/outputs/GpxRecording.h>
#include <trip/outputs/OutputError.h>
#include <trip/replay/LocationRow.h>
#include <trip/replay/SummaryCounter.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/InterruptibleLoop.h>
#include <zrcore/Interruption.h>
#include <zrcore/sound/TripSpeaker.h>
#include <zrcore/view/TripView.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "WatchOptions.h"

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

/// The tool's own words to whoever asks the user for permission.
class WatchBundle final : public ZRBundle {
 public:
  bool hasInfoValueForKey(std::string_view key) const override { return infoStringForKey(key).has_value(); }
  std::optional<std::string> infoStringForKey(std::string_view key) const override {
    if (key != "NSLocationWhenInUseUsageDescription") return std::nullopt;
    return "zrcore watch shows where this machine is.";
  }
  std::optional<std::string> bundleIdentifier() const override { return std::nullopt; }
  std::optional<std::string> localizedStringForKey(std::string_view) const override { return std::nullopt; }
  std::optional<std::string> frameworkResource(std::string_view, std::string_view) const override {
    return std::nullopt;
  }
};

/// Wakes the main loop once, to see that the time is over.
class MainTimer {
 public:
  explicit MainTimer(double seconds)
      : source_(g_timeout_source_new(static_cast<guint>(std::min(seconds * 1000.0, 4e9)))) {
    const auto dispatch = [](gpointer self) -> gboolean {
      static_cast<MainTimer*>(self)->isOver_ = true;
      return G_SOURCE_REMOVE;
    };
    g_source_set_callback(source_.get(), dispatch, this, nullptr);
    g_source_attach(source_.get(), nullptr);
  }
  MainTimer(const MainTimer&) = delete;
  MainTimer& operator=(const MainTimer&) = delete;

  bool isOver() const { return isOver_; }

 private:
  owners::Source source_;
  bool isOver_ = false;
};

trip::TripSummary summaryAtStart(const WatchOptions& options) {
  trip::TripSummary summary;
  summary.source = *options.source;
  summary.format = "live";
  summary.filter = *options.filter;
  return summary;
}

class WatchRun final : public ZRDidUpdateLocations,
                       public ZRDidFailWithError,
                       public std::enable_shared_from_this<WatchRun> {
 public:
  explicit WatchRun(const WatchOptions& options)
      : options_(options),
        isForced_(*options.force),
        view_(options.shape.shape(), true, *options.filter),
        counter_(summaryAtStart(options)) {
    view_.setName(excerpt(*options.source));
  }

  int run();

 private:
  int watch();
  bool install();
  void listen();
  int exitCode() const;

  void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) override;
  void locationManagerDidFailWithError(ZRLocationManager&, const NSError& error) override;

  const WatchOptions& options_;
  bool isForced_;
  TripView view_;
  trip::SummaryCounter counter_;
  std::unique_ptr<MainTimer> redraw_;
  std::string fault_;  ///< told last, and no fix since
  bool isOver_ = false;
};

void WatchRun::locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) {
  fault_.clear();
  for (const auto& location : locations) {
    trip::TripRow row = trip::rowOfLocation(*location);
    row.index = counter_.counts().fixes;
    counter_.row(row);
    view_.row(row);
  }
  isOver_ = isOver_ || view_.wantsToStop();
  // The table is drawn at a bounded rate: the last of a quick succession is drawn by this.
  redraw_ = std::make_unique<MainTimer>(LiveTable::kSecondsBetweenDrawings);
}

void WatchRun::locationManagerDidFailWithError(ZRLocationManager&, const NSError& error) {
  // The platform's log has reported it already.
  fault_ = error.userInfo.at(ZRPositioningFaultKey);
  isOver_ = isOver_ || fault_ == "badSource" || (fault_ == "lost" && options_.source->starts_with("file:"));
}

int WatchRun::exitCode() const {
  if (interruption::signal() != 0) return interruption::exitCode();
  if (fault_ == "badSource") return kExitServiceMissing;
  if (counter_.counts().fixes > 0 || view_.wantsToStop()) return kExitDone;
  return fault_.empty() || fault_ == "noFix" || fault_ == "lost" ? kExitDataFault : kExitServiceMissing;
}

/// Puts the platform of this machine to use. False, with a message, when another one is.
bool WatchRun::install() {
  ZRLinuxOptions linuxOptions;
  linuxOptions.positioning = *options_.source;
  linuxOptions.leavesOutEstimates = *options_.leavesOutEstimates;
  linuxOptions.repairsWeekRollover = *options_.repairsWeekRollover;
  const auto& speech = *options_.speech;
  SpeakingPlatform speaking = speakingPlatform(speech, isForced_, view_.messages(), linuxOptions);
  speaking.platform.bundle = std::make_shared<WatchBundle>();
  return installPlatform(speaking, speech ? std::optional(TripSpeaker::Time::live) : std::nullopt, view_);
}

/// Hears the location service until it is over.
void WatchRun::listen() {
  ZRLocationManager::setFiltersMeasuredValues(*options_.filter == "measured");
  const auto manager = ZRLocationManager::init();
  manager->setDelegate(shared_from_this());
  manager->startUpdatingLocation();

  std::unique_ptr<MainTimer> whole;
  if (const auto& seconds = *options_.forSeconds) whole = std::make_unique<MainTimer>(*seconds);
  runLoopUntil([&] {
    if (redraw_ && redraw_->isOver()) {
      redraw_.reset();
      view_.refresh();
    }
    return isOver_ || (whole && whole->isOver());
  });
  redraw_.reset();
  manager->stopUpdatingLocation();
}

int WatchRun::watch() {
  if (const auto& file = *options_.recordFile) view_.addOutput(std::make_unique<trip::GpxRecording>(*file, isForced_));
  if (!install()) return kExitServiceMissing;
  const auto life = ZRFollowLinuxLife();
  listen();
  trip::TripSummary summary = counter_.summary();
  summary.deliveredByClient = {{"plain", summary.fixes}};
  view_.finish(summary);
  return exitCode();
}

int WatchRun::run() {
  try {
    return watch();
  } catch (const trip::OutputError& error) {
    view_.messages().say(error.what());
    return exitCodeOf(error);
  }
}

int runWatch(const WatchOptions& options) {
  interruption::listen();
  return std::make_shared<WatchRun>(options)->run();
}

}  // namespace

void addWatchCommand(CommandLine& tool) { tool.add<WatchOptions>("watch", kWatchDescription, kWatchFooter, runWatch); }
