// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_MARKTHINNER_H
#define ZRCORE_HOSTS_TRIP_DRAWING_MARKTHINNER_H

#include <ZRCore/ZRGeometry.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace trip {

/// Places to be marked, at most a given number: when there are more, every second, fourth … is kept.
class MarkThinner {
 public:
  explicit MarkThinner(std::size_t maxMarks) : maxMarks_(maxMarks) {}

  void add(ZRMapPoint place) {
    if (count_++ % stride_ != 0) return;
    if (marks_.size() == maxMarks_) {
      for (std::size_t i = 0; 2 * i < marks_.size(); ++i) marks_[i] = marks_[2 * i];
      marks_.resize((marks_.size() + 1) / 2);
      stride_ *= 2;
      if ((count_ - 1) % stride_ != 0) return;
    }
    marks_.push_back(place);
  }

  const std::vector<ZRMapPoint>& marks() const { return marks_; }
  std::uint64_t count() const { return count_; }  ///< of all that were added

 private:
  std::size_t maxMarks_;
  std::uint64_t stride_ = 1;
  std::uint64_t count_ = 0;
  std::vector<ZRMapPoint> marks_;
};

}  // namespace trip

#endif
