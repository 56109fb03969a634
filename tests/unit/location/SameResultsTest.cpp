// SPDX-License-Identifier: Apache-2.0
// The filter against its rules written down plainly, with a distance and a bearing computed for every fix.
#include <gtest/gtest.h>
#include <ZRCore/ZRGeometry.hpp>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <random>

#include "LocationFilter.h"
#include "LocationSupport.h"

namespace {

class PlainFilter {
 public:
  bool judgesPlaces = false;

  void pass(const std::shared_ptr<ZRLocation>& fix) {
    const double accuracy = fix->horizontalAccuracy();
    if (accuracy > 100.0) good_ = 0, stable_ = ++bad_ < 3 && stable_;
    if (accuracy > 0.0 && accuracy <= 100.0) bad_ = 0, stable_ = ++good_ >= 3 || stable_;
    if (stable_ && (fix->speed() >= 54.0 || (judgesPlaces && guidance_ && isTooFar(*fix)))) {
      fix->setExceedsMovementLimit(true);
      ++rejected_;
    }
    if (rejected_ > 2 || !fix->exceedsMovementLimit()) guidance_ = fix, rejected_ = 0;
    if (significant_.empty()) {
      significant_.push_back(fix);
    } else if (fix->distanceFromLocation(*significant_.back()) >= 8.0 && !fix->exceedsMovementLimit()) {
      fix->setSignificantChange(true);
      significant_.push_back(fix);
      if (significant_.size() > 3) significant_.erase(significant_.begin());
    }
    if (lockStart_ && fix->distanceFromLocation(*lockStart_) < lockMeters_) {
      fix->setSmoothCourse(lockCourse_);
    } else {
      lockStart_.reset();
      fix->setSmoothCourse(ZRCoordinateUtils::bearingFromTo(significant_.front()->coordinate(), fix->coordinate()));
    }
    fix->setSmoothSpeed(fix->speed());
    if (!(fix->speed() >= 0.0)) return;
    if (!fix->exceedsMovementLimit()) speeds_.push_back(fix->speed());
    if (speeds_.size() > 3) speeds_.erase(speeds_.begin());
    const auto count = static_cast<double>(speeds_.size());
    if (count > 0.0) fix->setSmoothSpeed(std::accumulate(speeds_.begin(), speeds_.end(), 0.0) / count);
  }
  void lock(double degrees, double meters) { lockStart_ = guidance_, lockCourse_ = degrees, lockMeters_ = meters; }

 private:
  bool isTooFar(const ZRLocation& fix) const {
    const double seconds = fix.timestamp().secondsSince1970 - guidance_->timestamp().secondsSince1970;
    return seconds > 0.0 && fix.distanceFromLocation(*guidance_) / seconds >= 54.0;
  }

  int good_ = 0, bad_ = 0, rejected_ = 0;
  bool stable_ = false;
  std::shared_ptr<ZRLocation> guidance_, lockStart_;
  double lockCourse_ = 0.0, lockMeters_ = 0.0;
  std::vector<std::shared_ptr<ZRLocation>> significant_;
  std::vector<double> speeds_;
};

/// Ways that keep to what is hard to decide: steps of 8 m, poles, the antimeridian, straight north, no way at all; and
/// now and then numbers that are none.
class RandomTrip {
 public:
  explicit RandomTrip(unsigned seed) : random_(seed) {}

  bool oneIn(unsigned n) { return random_() % n == 0; }
  double upTo(double limit) { return std::uniform_real_distribution(0.0, limit)(random_); }

  ZRPositionFix next() {
    if (oneIn(500)) begin();
    const double step = oneIn(2) ? 8.0 * (1.0 + (upTo(2.0) - 1.0) * std::pow(10.0, -upTo(14.0))) : upTo(60.0);
    const double heading = oneIn(8) ? 1.5707963267948966 * static_cast<double>(random_() % 4) : upTo(6.283185307179586);
    const double degrees = step / EarthRadius * 57.29577951308232;
    if (!oneIn(20)) latitude_ += degrees * std::cos(heading);
    const double parallel = std::fmax(std::cos(latitude_ / 57.29577951308232), 1e-9);
    if (!oneIn(20)) longitude_ += degrees * std::sin(heading) / parallel;
    if (longitude_ > 180.0) longitude_ -= 360.0;
    seconds_ += oneIn(50) ? -upTo(5.0) : upTo(2.0);
    ZRPositionFix fix{.coordinate = {latitude_, longitude_},
                      .horizontalAccuracy = oneIn(30) ? 150.0 : 100.0 - upTo(1.0) * (oneIn(9) ? 200.0 : 1.0),
                      .speed = oneIn(30) ? 54.0 + upTo(1.0) : upTo(54.0) - (oneIn(9) ? 60.0 : 0.0),
                      .timestamp = {seconds_}};
    if (oneIn(1000)) spoil(fix);
    return fix;
  }

 private:
  void begin() {
    latitude_ = std::vector{89.9999, -89.99999, 0.0, 179.0, upTo(180.0) - 90.0, upTo(180.0) - 90.0}[random_() % 6];
    longitude_ = oneIn(3) ? 179.9999 : upTo(360.0) - 180.0;
  }
  void spoil(ZRPositionFix& fix) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double odd[] = {std::nan(""), kInfinity, -kInfinity, 1e300, 5e-324, -0.0};
    double* const fields[] = {&fix.coordinate.latitude, &fix.coordinate.longitude, &fix.horizontalAccuracy, &fix.speed,
                              &fix.timestamp.secondsSince1970};
    *fields[random_() % std::size(fields)] = odd[random_() % std::size(odd)];
  }

  std::mt19937 random_;
  double latitude_ = 48.0, longitude_ = 11.0, seconds_ = 0.0;
};

bool isSame(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}
bool isSame(const ZRLocation& a, const auto& found, bool significantChange) {
  return isSame(a.smoothCourse(), found.smoothCourse) && isSame(a.smoothSpeed(), found.smoothSpeed) &&
         a.exceedsMovementLimit() == found.exceedsMovementLimit && a.significantChange() == significantChange;
}

/// ZRCORE_FILTER_FIXES in the environment asks for another number of fixes than a million.
long countOfFixes() {
  const char* const asked = std::getenv("ZRCORE_FILTER_FIXES");
  return asked != nullptr ? std::atol(asked) : 1'000'000;
}

TEST(SameResults, OneFixAtATimeAndInBatchesAsThePlainRulesSay) {
  for (const bool measured : {true, false}) {
    PlainFilter plain;
    plain.judgesPlaces = measured;
    LocationFilter filter;
    ZRLocationBatchFilter batches(measured);
    RandomTrip trip(7);
    const auto signs = measured ? LocationFilter::JumpSigns::ownSpeedAndPlace : LocationFilter::JumpSigns::ownSpeed;
    std::vector<ZRPositionFix> fixes;
    std::vector<ZRFilteredFix> flat;
    for (long done = 0, significant = 0; done < countOfFixes() / 2; done += static_cast<long>(fixes.size())) {
      fixes.clear();
      for (auto left = static_cast<int>(trip.upTo(100.0)); left >= 0; --left) fixes.push_back(trip.next());
      flat.assign(fixes.size(), {});
      batches.filter(fixes.data(), flat.data(), fixes.size());
      for (std::size_t i = 0; i < fixes.size(); ++i) {
        const auto expected = ZRLocation::initWithCLLocation(*CLLocation::initWithFix(fixes[i]));
        if (measured) {
          expected->setHorizontalAccuracy(fixes[i].horizontalAccuracy);
          expected->setSpeed(fixes[i].speed);
        }
        const LocationFilter::Reading reading{fixes[i].coordinate, fixes[i].timestamp, expected->speed(), false};
        filter.updateStability(expected->horizontalAccuracy());
        const ZRFilteredFix single = filter.judged(reading, signs);
        plain.pass(expected);
        ASSERT_TRUE(isSame(*expected, single, single.significantChange)) << "fix " << done + static_cast<long>(i);
        ASSERT_TRUE(isSame(*expected, flat[i], flat[i].significantChange)) << "fix " << done + static_cast<long>(i);
        significant += single.significantChange ? 1 : 0;
      }
      if (trip.oneIn(5)) {
        const double degrees = trip.upTo(360.0), meters = trip.upTo(100.0);
        plain.lock(degrees, meters);
        filter.lockSmoothCourse(degrees, meters);
        batches.lockSmoothCourseToCourseUntilMoved(degrees, meters);
      }
      ASSERT_GE(significant * 10, done / 10) << "the trip hardly moves";
    }
    EXPECT_EQ(filter.isStable(), batches.receiverIsStable());
    batches.reset();
    EXPECT_FALSE(batches.receiverIsStable());
  }
}

}  // namespace
