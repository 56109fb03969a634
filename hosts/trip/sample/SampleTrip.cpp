// SPDX-License-Identifier: Apache-2.0
#include "SampleTrip.h"

#include <ZRCore/ZRGeometry.h>
#include <trip/OutputText.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "SampleNoise.h"
#include "SampleRoad.h"

namespace trip {

namespace {

constexpr double kStartSecondsSince1970 = 1778319000.0;  // 2026-05-09T09:30:00Z
constexpr CLLocationCoordinate2D kStart{46.8123, 7.4217};
constexpr double kRedLightSeconds = 30.0;
constexpr double kTunnelSeconds = 45.0;
constexpr std::array<double, 10> kSettlingAccuracyMeters{300, 215, 150, 110, 82, 60, 38, 22, 12, 7};
constexpr std::array<double, 6> kAfterTunnelAccuracyMeters{165, 140, 118, 74, 36, 15};
constexpr double kDriftKept = 0.96;  // a second later; a correlation time of about 25 s
constexpr std::array<double, 2> kJumpSeconds{238.0, 452.0};

double rounded(double value, double stepsPerUnit) { return std::round(value * stepsPerUnit) / stepsPerUnit; }

/// [0, 360) in tenths of a degree.
double roundedCourse(double degrees) {
  const double tenths = std::round(degrees * 10.0);
  return (tenths - 3600.0 * std::floor(tenths / 3600.0)) / 10.0;
}

/// The car on its road, advanced second by second.
class Car {
 public:
  explicit Car(const SampleRoad& road) : road_(road) {}

  void drive() {
    constexpr double kSpeedUp = 1.6, kBrake = 2.0;  // metres per second squared
    if (waitsAtRedLight()) {
      ++waitedSeconds_;
      speed_ = 0.0;
      return;
    }
    double allowed = speed_ + kSpeedUp;
    for (double ahead = 0.0; ahead < 120.0; ahead += 5.0) {  // slow down early enough for what comes
      allowed = std::min(allowed, std::sqrt(square(limitAt(meters_ + ahead)) + 2.0 * kBrake * ahead));
    }
    speed_ = std::max(allowed, 0.8);  // creeps the last metre to the line
    meters_ = std::min(meters_ + speed_, road_.lengthMeters());
  }

  bool stands() const { return waitsAtRedLight(); }
  bool arrived() const { return meters_ >= road_.lengthMeters(); }
  double meters() const { return meters_; }
  double speedMetersPerSecond() const { return speed_; }

 private:
  static double square(double value) { return value * value; }
  bool waitsAtRedLight() const { return waitedSeconds_ < kRedLightSeconds && meters_ >= road_.redLightMeters(); }

  double limitAt(double meters) const {
    const bool mustStop = waitedSeconds_ < kRedLightSeconds && meters >= road_.redLightMeters();
    return mustStop || meters >= road_.lengthMeters() ? 0.0 : road_.speedLimitAt(meters);
  }

  const SampleRoad& road_;
  double meters_ = 0.0;
  double speed_ = 0.0;
  double waitedSeconds_ = 0.0;
};

/// What the receiver makes of the car's place.
class Receiver {
 public:
  Receiver(const SampleRoad& road, std::uint64_t seed) : road_(road), random_(seed) {}

  TripRow fix(const Car& car, double accuracyMeters, bool jumps) {
    const double eastDrift = east_.next(random_), northDrift = north_.next(random_);
    const double errorMeters = car.stands() ? 5.0 : std::max(2.4, accuracyMeters / 4.0);
    RoadPosition place = road_.at(car.meters());
    place.eastMeters += errorMeters * eastDrift + 0.4 * random_.normal();
    place.northMeters += errorMeters * northDrift + 0.4 * random_.normal();
    double speed = std::max(0.0, car.speedMetersPerSecond() + 0.25 * random_.normal());
    double course = place.courseDegrees + 18.0 * random_.normal() / (1.0 + speed);
    if (car.stands()) {
      speed = 0.5 * random_.uniform();
      course = 360.0 * random_.uniform();
    }
    if (jumps) {
      course = place.courseDegrees + 100.0;
      place.eastMeters += 240.0 * std::sin(course * std::numbers::pi / 180.0);
      place.northMeters += 240.0 * std::cos(course * std::numbers::pi / 180.0);
      speed = 61.0 + 10.0 * random_.uniform();
    }
    return asRow(place, accuracyMeters, speed, course, car.meters());
  }

  double accuracyInTheOpen() { return 3.5 + 2.5 * random_.uniform(); }

 private:
  TripRow asRow(const RoadPosition& place, double accuracyMeters, double speed, double course, double roadMeters) {
    const double degreesPerMeter = 180.0 / (std::numbers::pi * EarthRadius);
    const double latitude = kStart.latitude + place.northMeters * degreesPerMeter;
    const double longitude =
        kStart.longitude + place.eastMeters * degreesPerMeter / std::cos(kStart.latitude * std::numbers::pi / 180.0);
    TripRow row;
    row.coordinate = {rounded(latitude, 1e7), rounded(longitude, 1e7)};
    row.altitudeMeters = rounded(548.0 + 22.0 * std::sin(roadMeters / 900.0) + 0.3 * random_.normal(), 10.0);
    row.accuracyMeters = rounded(accuracyMeters, 10.0);
    row.speedMetersPerSecond = rounded(speed, 100.0);
    row.courseDegrees = roundedCourse(course);
    return row;
  }

  const SampleRoad& road_;
  Random random_;
  DriftingError east_{random_, kDriftKept}, north_{random_, kDriftKept};
};

}  // namespace

std::vector<TripRow> sampleTrip(std::uint64_t seed) {
  const SampleRoad road = SampleRoad::drive();
  Car car(road);
  Receiver receiver(road, seed);
  std::vector<TripRow> fixes;
  double tunnelSeconds = 0.0;
  std::size_t fixesAfterTunnel = 0;
  for (double second = 0.0; !car.arrived(); ++second) {
    car.drive();
    if (car.meters() >= road.tunnelEntranceMeters() && tunnelSeconds < kTunnelSeconds) {
      ++tunnelSeconds;
      continue;
    }
    double accuracy = receiver.accuracyInTheOpen();
    if (fixes.size() < kSettlingAccuracyMeters.size()) {
      accuracy = kSettlingAccuracyMeters[fixes.size()];
    } else if (tunnelSeconds > 0.0 && fixesAfterTunnel < kAfterTunnelAccuracyMeters.size()) {
      accuracy = kAfterTunnelAccuracyMeters[fixesAfterTunnel++];
    }
    const bool jumps = std::find(kJumpSeconds.begin(), kJumpSeconds.end(), second) != kJumpSeconds.end();
    fixes.push_back(receiver.fix(car, accuracy, jumps));
    fixes.back().index = fixes.size() - 1;
    fixes.back().secondsSince1970 = kStartSecondsSince1970 + second;
  }
  return fixes;
}

std::string sampleTripCsv(std::uint64_t seed) {
  std::string text = std::string(kRecordingHeader) + "\n";
  for (const TripRow& fix : sampleTrip(seed)) {
    appendRecordingCells(text, fix);
    text += '\n';
  }
  return text;
}

}  // namespace trip
