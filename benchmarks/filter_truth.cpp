// SPDX-License-Identifier: Apache-2.0
// How true the filter of measured values is, on rides whose truth is known. filter_truth [OUTLIERS]
#include <ZRCore/ZRCore.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include "true_ride.h"

namespace {

using bench::Outliers, bench::PlaceNoise, bench::Vehicle;

constexpr Vehicle kVehicles[] = {
    {"car", 8.0, 36.0, 2.0, 12.0}, {"bicycle", 3.0, 9.0, 1.0, 6.0}, {"walk", 0.8, 1.6, 0.8, 1.5}};
constexpr PlaceNoise kNoises[] = {{"open sky, 3 m over 30 s", 3.0, 30.0, 0.3},
                                  {"streets, 8 m over 10 s", 8.0, 10.0, 0.5},
                                  {"3 m, new each fix", 0.0, 1.0, 3.0}};
constexpr double kRideSeconds = 3600.0;
constexpr double kMoving = 1.0;  // metres per second

struct Share {
  long marked = 0, all = 0;

  void count(bool isMarked) {
    ++all;
    marked += isMarked ? 1 : 0;
  }
  void add(const Share& other) {
    all += other.all;
    marked += other.marked;
  }
};

struct Errors {
  std::vector<float> raw, smoothed;

  static float quantile(std::vector<float>& values, double fraction) {
    if (values.empty()) return 0.0F;
    const auto at = values.begin() + static_cast<std::ptrdiff_t>(fraction * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
  }
  void print(int decimals) {
    for (std::vector<float>* const errors : {&raw, &smoothed}) {
      std::printf("  %6.*f %6.*f", decimals, quantile(*errors, 0.5), decimals, quantile(*errors, 0.9));
    }
  }
};

struct Judgement {
  Share outliers, good;
  Share outliersAtTunnels, goodAtTunnels;
  Errors course, speed;
};

double angleBetween(double a, double b) { return std::fabs(std::remainder(a - b, 360.0)); }

/// Rides of an hour each, days apart, through the one filter of the process.
Judgement judge(ZRLocationManager& manager, const Vehicle& vehicle, const PlaceNoise& noise, const Outliers& outliers,
                double fixesPerSecond, long wantedOutliers) {
  static double startSeconds = 1e9;
  Judgement result;
  for (std::uint64_t seed = 1; result.outliers.all < wantedOutliers; ++seed, startSeconds += 86400.0) {
    bench::TrueRide ride(vehicle, noise, outliers, fixesPerSecond, startSeconds, seed);
    CLLocationCoordinate2D previous{};
    for (long i = 0; i < static_cast<long>(kRideSeconds * fixesPerSecond); ++i) {
      const bench::KnownFix known = ride.next();
      const auto record = manager.smoothLocationsWithLocations({known.fix}).front();
      const CLLocationCoordinate2D before = std::exchange(previous, record->coordinate());
      if (static_cast<double>(i) < 10.0 * fixesPerSecond) continue;  // the filter leaves the ride before behind
      const bool isMarked = record->exceedsMovementLimit();
      if (known.isAtTunnel) {
        (known.isOutlier ? result.outliersAtTunnels : result.goodAtTunnels).count(isMarked);
        continue;
      }
      (known.isOutlier ? result.outliers : result.good).count(isMarked);
      if (known.isOutlier) continue;
      result.speed.raw.push_back(static_cast<float>(std::fabs(record->speed() - known.speed)));
      result.speed.smoothed.push_back(static_cast<float>(std::fabs(record->smoothSpeed() - known.speed)));
      if (known.speed <= kMoving) continue;
      const double bearing = ZRCoordinateUtils::bearingFromTo(before, record->coordinate());
      result.course.raw.push_back(static_cast<float>(angleBetween(bearing, known.courseDegrees)));
      result.course.smoothed.push_back(static_cast<float>(angleBetween(record->smoothCourse(), known.courseDegrees)));
    }
  }
  return result;
}

void print(const Share& share) {
  std::printf(" %6ld of %6ld (%7.3f %%)", share.marked, share.all,
              100.0 * static_cast<double>(share.marked) / static_cast<double>(std::max(share.all, 1L)));
}

}  // namespace

int main(int argc, char** argv) {
  const long wantedOutliers = argc > 1 ? std::max(1L, std::atol(argv[1])) : 20'000;
  ZRLocationManager::setFiltersMeasuredValues(true);
  const auto manager = ZRLocationManager::init();

  std::printf(
      "Outliers of 200 m to 2 km that last one or two fixes. Errors: median and 90 %%, raw (courses: from place "
      "to place), then smoothed.\n%-8s %5s %-24s %32s %30s  %29s %30s\n",
      "ride", "rate", "noise", "outliers marked", "good fixes marked", "course error, degrees", "speed error, m/s");
  Share outliersAt1Hz, goodAt1Hz;
  for (const double rate : {1.0, 10.0}) {
    for (const Vehicle& vehicle : kVehicles) {
      for (const PlaceNoise& noise : kNoises) {
        Judgement judgement = judge(*manager, vehicle, noise, {}, rate, wantedOutliers);
        std::printf("%-8s %2.0f Hz %-24s", vehicle.name, rate, noise.name);
        print(judgement.outliers);
        print(judgement.good);
        judgement.course.print(1);
        judgement.speed.print(2);
        std::printf("\n%40s", "at tunnels:");
        print(judgement.outliersAtTunnels);
        print(judgement.goodAtTunnels);
        std::printf("\n");
        if (rate > 1.0) continue;
        outliersAt1Hz.add(judgement.outliers);
        goodAt1Hz.add(judgement.good);
      }
    }
  }
  std::printf("\nAt 1 Hz, but for tunnels: outliers marked");
  print(outliersAt1Hz);
  std::printf(", wanted at least 99.9 %%; good fixes marked");
  print(goodAt1Hz);
  std::printf(", wanted at most 0.0001 %%\n");
  std::printf(
      "\nOutliers of one size, car, 1 Hz, open sky: an outlier shorter than 54 m times the seconds since the last "
      "good place cannot be seen.\n");
  for (const double meters : {20.0, 40.0, 60.0, 80.0, 100.0, 150.0, 200.0}) {
    std::printf("%5.0f m", meters);
    print(judge(*manager, kVehicles[0], kNoises[0], {.leastMeters = meters, .mostMeters = meters}, 1.0,
                wantedOutliers / 10)
              .outliers);
    std::printf("\n");
  }
}
