// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_PLAYBACK_H
#define ZRCORE_HOSTS_DEMO_PLAYBACK_H

#include <ZRCore/ZRPlatform.h>

namespace demo {

/// The position of a playback that runs, rests, jumps and changes its speed. It moves when it is asked to.
class Playback {
 public:
  /// The most real time that one step may take: a machine that slept, or a clock that was set, does not move the trip.
  static constexpr double kLongestStepSeconds = 1.0;

  /// `clock` must outlive the playback.
  explicit Playback(const ZRClock& clock) : clock_(clock) {}

  /// A new trip: at its start, resting, at the same rate.
  void load(double durationSeconds);

  /// From the end it starts anew.
  void play();
  void pause();
  bool isPlaying() const { return isPlaying_; }

  /// Recorded seconds per real second; a rate that is not a number above 0 changes nothing.
  void setRate(double rate);
  double rate() const { return rate_; }

  /// Takes a position outside the trip as the nearest inside.
  void seek(double seconds);

  /// Moves on by what the clock says; at the end the playback rests.
  void step();

  double positionSeconds() const { return position_; }
  double durationSeconds() const { return duration_; }

 private:
  const ZRClock& clock_;
  double duration_ = 0.0, position_ = 0.0, rate_ = 1.0;
  double lastStep_ = 0.0;  ///< on the clock
  bool isPlaying_ = false;
};

}  // namespace demo

#endif
