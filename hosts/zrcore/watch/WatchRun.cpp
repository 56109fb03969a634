// SPDX-License-Identifier: Apache-2.0
#include "WatchRun.h"

#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRLocationManager.h>
#include <glib.h>
#include <trip/outputs/GpxRecording.h>
#include <trip/outputs/OutputError.h>
#include <trip/replay/LocationRow.h>
#include <trip/replay/SummaryCounter.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/InterruptibleLoop.h>
#include <zrcore/Interruption.h>
#include <zrcore/sound/TripSpeaker.h>
#include <zrcore/view/TripView.h>

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace {

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

/// A GLib source of the default main context, which ends with its object.
class MainSource {
 public:
  MainSource(GSource* source, std::function<void()> fire) : source_(source), fire_(std::move(fire)) {
    const auto dispatch = [](gpointer self) -> gboolean {
      static_cast<MainSource*>(self)->fire_();
      return G_SOURCE_REMOVE;
    };
    g_source_set_callback(source_, dispatch, this, nullptr);
    g_source_attach(source_, nullptr);
  }
  MainSource(const MainSource&) = delete;
  MainSource& operator=(const MainSource&) = delete;
  ~MainSource() {
    g_source_destroy(source_);
    g_source_unref(source_);
  }

 private:
  GSource* source_;
  std::function<void()> fire_;
};

guint millisecondsOf(double seconds) { return static_cast<guint>(std::min(seconds * 1000.0, 4e9)); }

TripView::Shape shapeFor(const WatchArguments& arguments) {
  if (arguments.json) return TripView::Shape::json;
  if (arguments.quiet) return TripView::Shape::nothing;
  return Terminal::canRedraw() ? TripView::Shape::table : TripView::Shape::lines;
}

trip::TripSummary summaryAtStart(const WatchArguments& arguments) {
  trip::TripSummary summary;
  summary.source = arguments.source;
  summary.format = "live";
  summary.filter = arguments.filter;
  return summary;
}

class WatchRun final : public ZRDidUpdateLocations, public ZRDidFailWithError {
 public:
  explicit WatchRun(const WatchArguments& arguments)
      : arguments_(arguments), view_(shapeFor(arguments), true, arguments.filter), counter_(summaryAtStart(arguments)) {
    view_.setName(excerpt(arguments.source));
  }

  /// @param self  this object, as the delegate that the manager holds weakly
  static int run(const std::shared_ptr<WatchRun>& self);
  void say(std::string_view text) { view_.messages().say(text); }

 private:
  int exitCode() const;

  void locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) override;
  void locationManagerDidFailWithError(ZRLocationManager&, const NSError& error) override;

  const WatchArguments& arguments_;
  TripView view_;
  trip::SummaryCounter counter_;
  std::unique_ptr<MainSource> redraw_;
  std::string fault_;           ///< reported last, and no fix since
  std::exception_ptr failure_;  ///< of an output
  bool isOver_ = false;
};

void WatchRun::locationManagerDidUpdateLocations(ZRLocationManager&, const ZRLocations& locations) {
  fault_.clear();
  try {
    for (const auto& location : locations) {
      trip::TripRow row = trip::rowOfLocation(*location);
      row.index = counter_.counts().fixes;
      counter_.row(row);
      view_.row(row);
    }
  } catch (...) {  // GLib's C code stands between here and our caller
    failure_ = std::current_exception();
  }
  isOver_ = isOver_ || failure_ != nullptr || view_.wantsToStop();
  // The table is drawn at a bounded rate: the last of a quick succession is drawn by this.
  const guint delay = millisecondsOf(LiveTable::kSecondsBetweenDrawings);
  redraw_ = std::make_unique<MainSource>(g_timeout_source_new(delay), [this] { view_.refresh(); });
}

void WatchRun::locationManagerDidFailWithError(ZRLocationManager&, const NSError& error) {
  // The platform's log has reported it already.
  fault_ = error.userInfo.at(ZRPositioningFaultKey);
  isOver_ = isOver_ || fault_ == "badSource" || (fault_ == "lost" && arguments_.source.starts_with("file:"));
}

int WatchRun::exitCode() const {
  if (interruption::signal() != 0) return interruption::exitCode();
  if (fault_ == "badSource") return kExitServiceMissing;
  if (counter_.counts().fixes > 0 || view_.wantsToStop()) return kExitDone;
  return fault_.empty() || fault_ == "noFix" || fault_ == "lost" ? kExitDataFault : kExitServiceMissing;
}

int WatchRun::run(const std::shared_ptr<WatchRun>& self) {
  WatchRun& run = *self;
  if (run.arguments_.recordFile) {
    run.view_.addOutput(std::make_unique<trip::GpxRecording>(*run.arguments_.recordFile, run.arguments_.force));
  }

  ZRLinuxOptions options;
  options.positioning = run.arguments_.source;
  options.leavesOutEstimates = run.arguments_.leavesOutEstimates;
  options.repairsWeekRollover = run.arguments_.repairsWeekRollover;
  SpeakingPlatform speaking;
  if (run.arguments_.speech) {
    speaking = speakingPlatform(*run.arguments_.speech, run.arguments_.force, run.view_.messages(), options);
  } else {
    speaking.platform = makeLinuxPlatform(options);
    speaking.platform.log = std::make_shared<MessageLog>(run.view_.messages());
  }
  ZRPlatform& platform = speaking.platform;
  platform.bundle = std::make_shared<WatchBundle>();
  if (!ZRPlatformInstall(platform)) {
    run.say("the location service is in use already");
    return kExitServiceMissing;
  }
  if (run.arguments_.speech) {  // it stands on the platform in use
    run.view_.addOutput(std::make_unique<TripSpeaker>(speaking.file, TripSpeaker::Time::live, run.view_.messages()));
  }
  ZRLocationManager::setFiltersMeasuredValues(run.arguments_.filter == "measured");
  const auto life = ZRFollowLinuxLife();
  const auto manager = ZRLocationManager::init();
  manager->setDelegate(self);
  manager->startUpdatingLocation();

  std::unique_ptr<MainSource> timeIsUp;
  if (run.arguments_.forSeconds) {
    GSource* const timer = g_timeout_source_new(millisecondsOf(*run.arguments_.forSeconds));
    timeIsUp = std::make_unique<MainSource>(timer, [&run] { run.isOver_ = true; });
  }
  runLoopUntil([&run] { return run.isOver_; });
  timeIsUp.reset();
  run.redraw_.reset();
  manager->stopUpdatingLocation();
  if (run.failure_) std::rethrow_exception(run.failure_);

  trip::TripSummary summary = run.counter_.summary();
  summary.deliveredByClient = {{"plain", summary.fixes}};
  run.view_.finish(summary);
  return run.exitCode();
}

}  // namespace

int runWatch(const WatchArguments& arguments) {
  interruption::listen();
  const auto run = std::make_shared<WatchRun>(arguments);
  try {
    return WatchRun::run(run);
  } catch (const trip::OutputError& error) {
    run->say(error.what());
    return exitCodeOf(error);
  }
}
