// SPDX-License-Identifier: Apache-2.0
#include "SeriesThinner.h"

namespace trip {

SeriesThinner::SeriesThinner(std::size_t maxBuckets, Keep keep) : maxBuckets_(maxBuckets), keep_(keep) {
  buckets_.reserve(maxBuckets_);
}

void SeriesThinner::add(std::uint64_t index, std::optional<double> seconds, double value) {
  const SeriesPoint point{index, seconds, value, false};
  const Bucket single{point, point, isInterrupted_};
  isInterrupted_ = false;
  if (!buckets_.empty() && valuesInLast_ < valuesPerBucket_) {
    merge(buckets_.back(), single);
    ++valuesInLast_;
    return;
  }
  if (buckets_.size() == maxBuckets_) halve();
  buckets_.push_back(single);
  valuesInLast_ = 1;
}

std::vector<SeriesPoint> SeriesThinner::points() const {
  std::vector<SeriesPoint> points;
  for (const Bucket& bucket : buckets_) {
    const bool leastFirst = bucket.least.index <= bucket.greatest.index;
    points.push_back(leastFirst ? bucket.least : bucket.greatest);
    points.back().startsStroke = bucket.startsStroke;
    if (bucket.least.index != bucket.greatest.index) points.push_back(leastFirst ? bucket.greatest : bucket.least);
  }
  return points;
}

void SeriesThinner::merge(Bucket& into, const Bucket& later) const {
  if (keep_ == Keep::newest) {
    into.least = later.least;
    into.greatest = later.greatest;
    return;
  }
  if (later.least.value < into.least.value) into.least = later.least;
  if (later.greatest.value > into.greatest.value) into.greatest = later.greatest;
}

void SeriesThinner::halve() {
  for (std::size_t i = 0; i < buckets_.size() / 2; ++i) {
    Bucket merged = buckets_[2 * i];
    merge(merged, buckets_[2 * i + 1]);
    buckets_[i] = merged;
  }
  buckets_.resize(buckets_.size() / 2);
  valuesPerBucket_ *= 2;
}

}  // namespace trip
