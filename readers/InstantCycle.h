// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_INSTANTCYCLE_H
#define ZRCORE_READERS_INSTANTCYCLE_H

#include <algorithm>
#include <array>
#include <cstddef>

namespace readers {

/// How many parts an instant of a live source has. Sources repeat themselves from instant to instant, so the ones
/// before tell; the longest of the last few counts, because being told late costs a moment, and too early a
/// measurement.
class InstantCycle {
 public:
  /// An instant is over, and had so many.
  void learn(unsigned parts) { lengths_[learnt_++ % lengths_.size()] = parts; }

  /// Whether an instant that has so many is over, too. False while there is too little to tell by.
  bool isWhole(unsigned parts) const {
    constexpr std::size_t kEnoughToTellBy = 2;
    return learnt_ >= kEnoughToTellBy && parts >= *std::max_element(lengths_.begin(), lengths_.end());
  }

 private:
  std::array<unsigned, 4> lengths_{};
  std::size_t learnt_ = 0;
};

}  // namespace readers

#endif
