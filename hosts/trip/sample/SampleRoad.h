// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_SAMPLE_SAMPLEROAD_H
#define ZRCORE_HOSTS_TRIP_SAMPLE_SAMPLEROAD_H

#include <vector>

namespace trip {

/// A place and direction on the sample road, in a flat plane.
struct RoadPosition {
  double eastMeters = 0.0;
  double northMeters = 0.0;
  double courseDegrees = 0.0;  ///< clockwise from north, any multiple of a turn
};

/// A road of straight stretches and circular bends, each with the speed at which it is driven.
class SampleRoad {
 public:
  /// The road of the sample recording: streets with turns, a red light, a roundabout, a winding country road, a tunnel,
  /// a long bend back.
  static SampleRoad drive();

  /// The place after `meters` of road; the ends for values outside.
  RoadPosition at(double meters) const;
  /// Metres per second, the limit at that place.
  double speedLimitAt(double meters) const;

  double lengthMeters() const { return lengthMeters_; }
  double redLightMeters() const { return redLightMeters_; }
  double tunnelEntranceMeters() const { return tunnelEntranceMeters_; }

 private:
  struct Piece {
    double startMeters;
    double lengthMeters;
    double degreesPerMeter;  ///< 0: straight; positive: to the right
    double metersPerSecond;
    RoadPosition start;
  };

  explicit SampleRoad(double courseDegrees) { end_.courseDegrees = courseDegrees; }
  void straight(double meters, double metersPerSecond) { append(meters, 0.0, metersPerSecond); }
  void bend(double radiusMeters, double degrees, double metersPerSecond);
  void append(double meters, double degreesPerMeter, double metersPerSecond);
  const Piece& pieceAt(double meters) const;
  static RoadPosition along(const Piece& piece, double meters);

  std::vector<Piece> pieces_;
  RoadPosition end_;
  double lengthMeters_ = 0.0;
  double redLightMeters_ = 0.0;
  double tunnelEntranceMeters_ = 0.0;
};

}  // namespace trip

#endif
