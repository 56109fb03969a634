// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_REPLAY_TRIPREPLAY_H
#define ZRCORE_HOSTS_TRIP_REPLAY_TRIPREPLAY_H

#include <ZRCore/ZRPlatform.h>
#include <readers/FixCompletion.h>
#include <readers/FixIntake.h>
#include <readers/FixReader.h>
#include <trip/TripRow.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "Pacer.h"
#include "Recording.h"
#include "SummaryCounter.h"
#include "TimeWindow.h"
#include "TripPipeline.h"

namespace trip {

/// Time as the recording reports it: that of the fix delivered last; 0 before the first.
class RecordingClock final : public ZRClock {
 public:
  NSDate now() const override { return now_; }
  void setNow(NSDate now) { now_ = now; }

 private:
  NSDate now_;
};

/// Hears what comes of a replay.
class ReplayListener {
 public:
  virtual ~ReplayListener() = default;
  virtual void row(const TripRow& row) = 0;
  virtual void remark(const readers::Remark& remark) = 0;
  /// The replay moved on. `fraction`: 0 to 1; nullopt for a stream.
  virtual void progress(std::optional<double> fraction) = 0;
  /// Asked before each fix; true drops the rest of the recording.
  virtual bool wantsToStop() const = 0;
};

/// A window that ends before it begins.
class ReversedWindow : public std::runtime_error {
 public:
  ReversedWindow() : std::runtime_error("--to lies before --from") {}
};

/// Takes a recording through a pipeline, fix by fix.
///
/// The half-way client listens from one quarter to three quarters of the recording, measured in bytes, or, with a
/// stream, from its 101st to its 200th replayed fix.
class TripReplay final : private readers::Listener {
 public:
  struct Options {
    std::string source;  ///< for the summary
    std::string filter;  ///< for the summary
    readers::FixIntake::Options intake;
    readers::FixCompletion::Options completion;
    TimeWindow window;
  };

  /// All references must outlive the replay.
  TripReplay(const Options& options, Recording& recording, TripPipeline& pipeline, Pacer& pacer, RecordingClock& clock,
             ReplayListener& listener);

  /// Runs the whole replay, once.
  /// @throws RecordingError, ReversedWindow, and whatever the listener throws
  void run();

  /// What there is so far; after `run` did not come to its end, too.
  TripSummary summary() const;

 private:
  void fix(const readers::SourceFix& fix) override;
  void remark(const readers::Remark& remark) override;
  void replayFix(const readers::SourceFix& fix);
  void switchHalfWayClient();
  void hold(const std::function<void()>& step);

  Recording& recording_;
  TripPipeline& pipeline_;
  Pacer& pacer_;
  RecordingClock& clock_;
  ReplayListener& listener_;
  readers::FixIntake intake_;
  readers::FixCompletion completion_;
  TimeWindow window_;
  SummaryCounter counter_;
  std::exception_ptr failure_;
  bool isHalfWay_ = false;
};

}  // namespace trip

#endif
