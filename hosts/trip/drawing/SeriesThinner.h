// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_SERIESTHINNER_H
#define ZRCORE_HOSTS_TRIP_DRAWING_SERIESTHINNER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace trip {

/// A measured value of one fix.
struct SeriesPoint {
  std::uint64_t index = 0;        ///< number of the fix
  std::optional<double> seconds;  ///< since 1970
  double value = 0.0;
  bool startsStroke = false;  ///< whether something is missing before it, so that no line leads to it
};

/// A series of values that gets coarser as it grows, so that it never holds more than a given number of buckets.
///
/// Each bucket stands for a run of consecutive values; when all are used, neighbours are merged and the runs are twice
/// as long. The runs are counted in values, not in seconds: times may be missing or go backwards, and a series without
/// any time can still be drawn over the fix number. An interruption inside a run is forgotten.
class SeriesThinner {
 public:
  enum class Keep {
    extremes,  ///< the least and the greatest value of each run, in their order
    newest     ///< the last value of each run: for angles, which have no least and greatest
  };

  /// @param maxBuckets  at least 2, even
  SeriesThinner(std::size_t maxBuckets, Keep keep);

  void add(std::uint64_t index, std::optional<double> seconds, double value);
  /// Something is missing here: the next value starts a stroke of its own.
  void interrupt() { isInterrupted_ = true; }

  /// At most two points per bucket, in the order in which they were added.
  std::vector<SeriesPoint> points() const;
  std::size_t bucketCount() const { return buckets_.size(); }

 private:
  struct Bucket {
    SeriesPoint least, greatest;
    bool startsStroke = false;
  };

  void merge(Bucket& into, const Bucket& later) const;
  void halve();

  std::size_t maxBuckets_;
  Keep keep_;
  std::uint64_t valuesPerBucket_ = 1;
  std::uint64_t valuesInLast_ = 0;
  bool isInterrupted_ = true;
  std::vector<Bucket> buckets_;
};

}  // namespace trip

#endif
