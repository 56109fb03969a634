// SPDX-License-Identifier: Apache-2.0
#include "SampleRoad.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace trip {

namespace {
constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
}

SampleRoad SampleRoad::drive() {
  constexpr double kTown = 12.5, kTurn = 4.5, kRoundabout = 6.5, kCountry = 19.0, kWinding = 14.0, kTunnel = 16.5;
  SampleRoad road(164.0);
  road.straight(260, kTown);
  road.bend(11, 90, kTurn);
  road.straight(180, kTown);
  road.bend(11, -90, kTurn);
  road.straight(330, kTown);
  road.redLightMeters_ = road.lengthMeters_;
  road.straight(30, kTown);
  road.bend(14, -86, kTurn);
  road.straight(300, kTown);

  road.bend(16, 40, kRoundabout);  // into the roundabout, three quarters around it, and out to the left
  road.bend(22, -172, kRoundabout);
  road.bend(16, 42, kRoundabout);
  road.straight(170, kTown);

  road.bend(130, 88, kWinding);
  road.straight(120, kCountry);
  road.bend(150, -70, kWinding);
  road.bend(120, 84, kWinding);
  road.straight(340, kCountry);
  road.bend(420, 52, kCountry);

  road.tunnelEntranceMeters_ = road.lengthMeters_ + 60;
  road.straight(900, kTunnel);

  road.bend(260, 118, kCountry);
  road.straight(380, kCountry);
  road.bend(90, -46, kWinding);
  road.straight(360, kCountry);
  road.bend(140, 62, kWinding);
  road.straight(520, kCountry);
  road.bend(200, 40, kWinding);
  road.bend(170, -64, kWinding);
  road.straight(260, kCountry);
  road.bend(120, 70, kWinding);
  road.straight(240, kTown);
  road.bend(12, 90, kTurn);
  road.straight(190, kTown);
  road.bend(12, -90, kTurn);
  road.straight(330, kTown);
  road.bend(12, -90, kTurn);
  road.straight(250, kTown);
  road.bend(12, 90, kTurn);
  road.straight(230, kTown);
  road.bend(12, 90, kTurn);
  road.straight(430, kTown);
  road.bend(70, -34, kWinding);
  road.straight(260, kTown);
  road.bend(80, 52, kWinding);
  road.straight(420, kTown);
  return road;
}

RoadPosition SampleRoad::at(double meters) const {
  const Piece& piece = pieceAt(meters);
  return along(piece, std::clamp(meters - piece.startMeters, 0.0, piece.lengthMeters));
}

double SampleRoad::speedLimitAt(double meters) const { return pieceAt(meters).metersPerSecond; }

void SampleRoad::bend(double radiusMeters, double degrees, double metersPerSecond) {
  const double meters = radiusMeters * std::fabs(degrees) * kRadiansPerDegree;
  append(meters, degrees / meters, metersPerSecond);
}

void SampleRoad::append(double meters, double degreesPerMeter, double metersPerSecond) {
  pieces_.push_back({lengthMeters_, meters, degreesPerMeter, metersPerSecond, end_});
  end_ = along(pieces_.back(), meters);
  lengthMeters_ += meters;
}

const SampleRoad::Piece& SampleRoad::pieceAt(double meters) const {
  const auto next = std::upper_bound(pieces_.begin() + 1, pieces_.end(), meters,
                                     [](double value, const Piece& piece) { return value < piece.startMeters; });
  return *(next - 1);
}

RoadPosition SampleRoad::along(const Piece& piece, double meters) {
  // The chord of an arc points midway between the courses at its ends.
  const double turnedDegrees = piece.degreesPerMeter * meters;
  const double halfRadians = turnedDegrees * 0.5 * kRadiansPerDegree;
  const double chordMeters = halfRadians == 0.0 ? meters : meters * std::sin(halfRadians) / halfRadians;
  const double chordRadians = piece.start.courseDegrees * kRadiansPerDegree + halfRadians;
  return {piece.start.eastMeters + chordMeters * std::sin(chordRadians),
          piece.start.northMeters + chordMeters * std::cos(chordRadians), piece.start.courseDegrees + turnedDegrees};
}

}  // namespace trip
