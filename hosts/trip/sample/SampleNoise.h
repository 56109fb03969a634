// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_SAMPLE_SAMPLENOISE_H
#define ZRCORE_HOSTS_TRIP_SAMPLE_SAMPLENOISE_H

#include <cmath>
#include <cstdint>

// Random numbers that are the same everywhere for the same seed; the standard distributions differ between libraries.

namespace trip {

/// SplitMix64 (Steele, Lea and Flood 2014).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  /// [0, 1)
  double uniform() {
    state_ += 0x9e3779b97f4a7c15;
    std::uint64_t bits = state_;
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111eb;
    return static_cast<double>((bits ^ (bits >> 31)) >> 11) * 0x1p-53;
  }

  /// Nearly normal, mean 0, deviation 1: a sum of twelve uniform numbers needs no logarithm, whose last bits differ
  /// between libraries.
  double normal() {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) sum += uniform();
    return sum;
  }

 private:
  std::uint64_t state_;
};

/// An error that forgets itself slowly, as a receiver's does (first-order Gauss-Markov). Deviation 1.
class DriftingError {
 public:
  /// @param kept  how much of the error is left after one step, 0 to 1
  DriftingError(Random& random, double kept) : kept_(kept), value_(random.normal()) {}

  double next(Random& random) {
    value_ = kept_ * value_ + std::sqrt(1.0 - kept_ * kept_) * random.normal();
    return value_;
  }

 private:
  double kept_;
  double value_;
};

}  // namespace trip

#endif
