// SPDX-License-Identifier: Apache-2.0
#include "Playback.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace demo {

void Playback::load(double durationSeconds) {
  duration_ = std::isfinite(durationSeconds) ? std::max(0.0, durationSeconds) : 0.0;
  position_ = 0.0;
  isPlaying_ = false;
}

void Playback::play() {
  if (isPlaying_) return;
  if (position_ >= duration_) position_ = 0.0;
  lastStep_ = clock_.now().secondsSince1970;
  isPlaying_ = true;
}

void Playback::pause() {
  step();
  isPlaying_ = false;
}

void Playback::setRate(double rate) {
  if (!std::isfinite(rate) || rate <= 0.0) return;
  step();  // what has passed, passed at the old rate
  rate_ = rate;
}

void Playback::seek(double seconds) {
  step();
  position_ = std::fmin(std::fmax(seconds, 0.0), duration_);
}

void Playback::step() {
  if (!isPlaying_) return;
  const double now = clock_.now().secondsSince1970;
  const double passed = std::clamp(now - std::exchange(lastStep_, now), 0.0, kLongestStepSeconds);
  position_ = std::min(position_ + passed * rate_, duration_);
  if (position_ >= duration_) isPlaying_ = false;
}

}  // namespace demo
