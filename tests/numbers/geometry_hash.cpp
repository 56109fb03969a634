// SPDX-License-Identifier: Apache-2.0
// Prints one hash per geometry function over the bits of its results for a million places, so that builds for several
// processors, by several compilers and with several C libraries can be compared. Needs no C++ library to run.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "EveryGeometryFunction.h"
#include "GeometryValues.h"

bool processorRunsThisBuild();

namespace {

constexpr int kRounds = 65000;  // of 16 places each
constexpr int kSkipped = 77;

class Hashes {
 public:
  template <class Result>
  void take(const char* function, const Result& result) {
    if constexpr (std::is_arithmetic_v<Result>) {
      mix(function, static_cast<double>(result));
    } else {
      mix(function, result);
    }
  }

  void print() const {
    for (const Entry* entry = entries_; entry != entries_ + count_; ++entry) {
      std::printf("%016llx %s\n", static_cast<unsigned long long>(entry->hash), entry->function);
    }
  }

 private:
  struct Entry {
    const char* function;
    std::uint64_t hash;
  };

  template <class Record>
  void mix(const char* function, const Record& record) {
    std::uint64_t& hash = hashOf(function);
    for (const std::uint64_t word : bits(record)) {
      hash = std::rotl(hash ^ word, 27) * 0x9e3779b97f4a7c15U;  // the turn brings high bits down into the product
    }
  }

  std::uint64_t& hashOf(const char* function) {
    for (Entry& entry : entries_) {
      if (entry.function == nullptr) entry = {function, 0xcbf29ce484222325U}, ++count_;
      if (std::strcmp(entry.function, function) == 0) return entry.hash;
    }
    std::abort();  // there are more functions than entries
  }

  Entry entries_[96] = {};
  int count_ = 0;
};

/// One number in a hundred is a special one.
double spiced(Dice& dice, double value) {
  constexpr double kSpecial[] = {0.0, -0.0, kInf, -kInf, kNaN, 90.0, -90.0, 180.0, -180.0, kWorld, 1e300, -1e-20};
  return dice.roll() < 0.01 ? kSpecial[static_cast<int>(dice.roll() * std::size(kSpecial))] : value;
}

CLLocationCoordinate2D coordinateFrom(Dice& dice) {
  const double latitude = spiced(dice, dice.between(-95.0, 95.0));
  return {latitude, spiced(dice, dice.between(-190.0, 190.0))};
}

ZRMapPoint pointFrom(Dice& dice) {
  const double x = spiced(dice, dice.between(-0.2 * kWorld, 1.2 * kWorld));
  return {x, spiced(dice, dice.between(-0.2 * kWorld, 1.2 * kWorld))};
}

ZRMapRect rectFrom(Dice& dice) {
  const ZRMapPoint origin = pointFrom(dice);
  const double width = spiced(dice, dice.between(-kWorld, kWorld));
  return {origin, {width, spiced(dice, dice.between(-kWorld, kWorld))}};
}

GeometryArguments argumentsFrom(Dice& dice) {
  return {.here = coordinateFrom(dice),
          .there = coordinateFrom(dice),
          .elsewhere = coordinateFrom(dice),
          .point = pointFrom(dice),
          .otherPoint = pointFrom(dice),
          .rect = rectFrom(dice),
          .otherRect = rectFrom(dice),
          .amount = spiced(dice, dice.between(-1e4, 1e7))};
}

}  // namespace

int main() {
  if (!processorRunsThisBuild()) return kSkipped;
  Dice dice;
  Hashes hashes;
  for (int round = 0; round < kRounds; ++round) {
    callEveryGeometryFunction(argumentsFrom(dice),
                              [&](const char* function, const auto& result) { hashes.take(function, result); });
  }
  hashes.print();
}
