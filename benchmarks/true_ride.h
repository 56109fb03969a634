// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_BENCHMARKS_TRUE_RIDE_H
#define ZRCORE_BENCHMARKS_TRUE_RIDE_H

#include <ZRCore/CLLocation.h>
#include <trip/sample/SampleNoise.h>

#include <optional>

namespace bench {

/// How something moves.
struct Vehicle {
  const char* name;
  double slowest, fastest;  ///< metres per second, of the stretches between bends
  double acceleration;      ///< metres per second squared, also of braking
  double sharpestBend;      ///< metres, radius
};

/// How well a receiver knows its place in the open.
struct PlaceNoise {
  const char* name;
  double driftMeters;         ///< deviation each way of an error that forgets itself slowly
  double correlationSeconds;  ///< of that error
  double whiteMeters;         ///< deviation each way of an error that is new with every fix
};

/// Places that are wrong by far, as reflected signals make them. The receiver's own speed does not notice.
struct Outliers {
  double oneInFixes = 100.0;  ///< on the average
  double leastMeters = 200.0, mostMeters = 2000.0;
  std::uint64_t apartFixes = 10;  ///< at least, from the end of one to the beginning of the next
};

/// A fix and what it should have been.
struct KnownFix {
  std::shared_ptr<CLLocation> fix;
  double speed, courseDegrees;  ///< the truth
  bool isOutlier;
  bool isAtTunnel;  ///< in one, or in the ten seconds behind it
};

/// A ride through bends and stops and tunnels, as a receiver reports it.
///
/// In a tunnel, of 10 to 60 seconds in every ten minutes or so, the receiver goes on by reckoning, a metre each second
/// (one deviation) off, and the accuracy that it reports grows by three metres a second; behind it the place is right
/// at once, and the accuracy within four seconds. The same seed gives the same ride everywhere.
class TrueRide {
 public:
  /// @param secondsSince1970  when it begins
  TrueRide(const Vehicle& vehicle, const PlaceNoise& noise, const Outliers& outliers, double fixesPerSecond,
           double secondsSince1970, std::uint64_t seed);

  KnownFix next();

 private:
  void beginStretch();
  void move();
  void enterOrLeaveTunnel();
  double accuracyMeters();
  CLLocationCoordinate2D measuredPlace();
  double between(double least, double most) { return least + (most - least) * random_.uniform(); }
  bool happensOncePer(double seconds) { return random_.uniform() < step_ / seconds; }

  Vehicle vehicle_;
  PlaceNoise noise_;
  Outliers outliers_;
  double step_;  ///< seconds
  double seconds_;
  trip::Random random_;
  trip::DriftingError east_, north_;

  CLLocationCoordinate2D place_{47.0, 8.0};
  double courseDegrees_ = 0.0;
  double speed_ = 0.0;
  double allowedSpeed_ = 0.0;
  double degreesPerMeter_ = 0.0;  ///< of the bend; 0: straight
  double stretchMeters_ = 0.0;    ///< left of it
  double standsSeconds_ = 0.0;

  double tunnelSeconds_ = 0.0;  ///< left of it
  double inTunnelSeconds_ = 0.0;
  double sinceTunnelSeconds_ = 1e9;
  double reckonedEast_ = 0.0, reckonedNorth_ = 0.0;     ///< metres beside the truth
  double reckoningEast_ = 0.0, reckoningNorth_ = 0.0;   ///< metres per second
  std::uint64_t fixesUntilOutlier_, outlierFixes_ = 0;  ///< `outlierFixes_`: left of the one that lasts
  double outlierDegrees_ = 0.0, outlierMeters_ = 0.0;
};

}  // namespace bench

#endif
