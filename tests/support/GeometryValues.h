// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_GEOMETRYVALUES_H
#define ZRCORE_TESTS_SUPPORT_GEOMETRYVALUES_H

#include <array>
#include <bit>
#include <cstdint>
#include <limits>

#include "TestSeed.h"

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kWorld = 67108864.0;

/// The doubles of a geometry record (or of a double), as something that compares and prints. -0 equals 0.
template <class Record>
std::array<double, sizeof(Record) / sizeof(double)> values(const Record& record) {
  return std::bit_cast<std::array<double, sizeof(Record) / sizeof(double)>>(record);
}

/// The same to the bit, for signs of zero. All NaN count as one.
template <class Record>
std::array<std::uint64_t, sizeof(Record) / sizeof(double)> bits(const Record& record) {
  std::array<std::uint64_t, sizeof(Record) / sizeof(double)> result{};
  std::size_t next = 0;
  for (const double value : values(record)) {
    result[next++] = std::bit_cast<std::uint64_t>(value == value ? value : kNaN);
  }
  return result;
}

/// Reproducible doubles in [0, 1), the same on every system (the standard distributions are not).
class Dice {
 public:
  double roll() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(state_ >> 11U) * 0x1p-53;
  }
  double between(double low, double high) { return low + roll() * (high - low); }

 private:
  std::uint64_t state_ = testSeed(1);
};

#endif
