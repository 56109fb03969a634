// SPDX-License-Identifier: Apache-2.0
#include "TripReplay.h"

#include <utility>

#include "TripClients.h"

namespace trip {

namespace {

constexpr std::uint64_t kHalfWayStartOfStream = 100, kHalfWayStopOfStream = 200;

TripSummary summaryAtStart(const TripReplay::Options& options, readers::Format format) {
  TripSummary summary;
  summary.source = options.source;
  summary.filter = options.filter;
  summary.format = readers::formatName(format);
  summary.couldAssumeAccuracy = !options.completion.assumedAccuracyMeters;
  summary.couldDeriveSpeed = !options.completion.derivesSpeed;
  return summary;
}

}  // namespace

TripReplay::TripReplay(const Options& options, Recording& recording, TripPipeline& pipeline, Pacer& pacer,
                       RecordingClock& clock, ReplayListener& listener)
    : recording_(recording),
      pipeline_(pipeline),
      pacer_(pacer),
      clock_(clock),
      listener_(listener),
      intake_(options.intake),
      completion_(options.completion),
      window_(options.window),
      counter_(summaryAtStart(options, recording.format())) {}

void TripReplay::run() {
  const auto tellProgress = [this] {
    if (failure_) std::rethrow_exception(failure_);
    listener_.progress(recording_.progress());
  };
  tellProgress();
  recording_.read(*this, tellProgress);
}

TripSummary TripReplay::summary() const {
  TripSummary summary = counter_.summary();
  summary.deliveredByClient = pipeline_.deliveredByClient();
  return summary;
}

/// Holds an exception back until the reader is done with its bytes: some readers stand on a library written in C, which
/// none may pass through.
void TripReplay::hold(const std::function<void()>& step) {
  if (failure_) return;
  try {
    step();
  } catch (...) {
    failure_ = std::current_exception();
  }
}

void TripReplay::fix(const readers::SourceFix& told) {
  hold([&] {
    readers::SourceFix fix = told;
    if (!intake_.takes(fix)) return;
    const bool isLive = !recording_.progress();
    if (const auto text = isLive ? intake_.remarkOnDate(fix) : std::nullopt) {
      remark({readers::Severity::warning, fix.line, *text});
    }
    replayFix(fix);
  });
}

void TripReplay::remark(const readers::Remark& remark) {
  hold([&] {
    counter_.remark(remark);
    listener_.remark(remark);
  });
}

void TripReplay::replayFix(const readers::SourceFix& fix) {
  if (listener_.wantsToStop()) return;
  const ZRPositionFix completed =
      completion_.complete(fix);  // also of fixes outside the window: later ones lean on them
  const bool isInside = window_.contains(fix.secondsSince1970);
  if (window_.isReversed()) throw ReversedWindow();
  if (!isInside) return;

  pacer_.waitUntilDue(fix.secondsSince1970);
  if (listener_.wantsToStop()) return;
  switchHalfWayClient();
  if (fix.secondsSince1970) clock_.setNow(completed.timestamp);
  auto row = pipeline_.deliver(completed);
  if (!row) return;
  row->index = counter_.counts().fixes;
  row->line = fix.line;
  row->isEstimated = fix.isEstimated;
  counter_.row(*row);
  listener_.row(*row);
}

void TripReplay::switchHalfWayClient() {
  const auto progress = recording_.progress();
  const std::uint64_t replayed = counter_.counts().fixes;
  const bool isHalfWay = progress ? TripClients::isHalfWay(*progress)
                                  : replayed >= kHalfWayStartOfStream && replayed < kHalfWayStopOfStream;
  if (std::exchange(isHalfWay_, isHalfWay) != isHalfWay) pipeline_.letHalfWayClientListen(isHalfWay);
}

}  // namespace trip
