// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_NUMBERS_H
#define ZRCORE_GEOMETRY_NUMBERS_H

/// The numbers that the formulas are written with, digit for digit, and the clamp. Results are promised to the last
/// bit, so a number that could be computed from another one (and would then differ in the last digit) stands here by
/// itself.
namespace geometry {

constexpr double kEarthRadius = 6378137.0;

constexpr double kPi = 3.141592653589793;
constexpr double kHalfPi = 1.5707963267948966;
constexpr double kTwoPi = 6.283185307179586;
constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;

constexpr double kLatitudeLimit = 85.05112878;
constexpr double kLongitudeLimit = 180.0;

constexpr double kWorldWidth = 67108864.0;                 // map points, 2^26
constexpr double kPerWorldWidth = 1.4901161193847656e-08;  // 2^-26
constexpr double kGreatestMapX = 67108863.0;               // one short: the eastern edge stays below 180 degrees

constexpr double kEquator = 40075016.68557848;       // metres
constexpr double kHalfEquator = 20037508.342789244;  // metres

// Twins that differ in their last digit. Each formula has its own, so that results have the same bits as in the kit's
// other libraries.
constexpr double kProjectionMetersPerDegree = 111319.49079327357;
constexpr double kMetersPerDegreeOfLatitude = 111319.49079327355;
constexpr double kProjectionDegreesPerMeter = 8.983152841195214e-06;
constexpr double kDegreesPerMeterOfLatitude = 8.983152841195216e-06;
constexpr double kProjectionMetersPerMapPoint = 0.5971642834779395;
constexpr double kScaleMetersPerMapPoint = 0.5971642834779394;

/// fmin(fmax(value, low), high) without the calls: a NaN gives the lower bound.
constexpr double clamped(double value, double low, double high) {
  const double raised = value > low ? value : low;
  return raised < high ? raised : high;
}

constexpr double clampedLatitude(double degrees) { return clamped(degrees, -kLatitudeLimit, kLatitudeLimit); }
constexpr double clampedLongitude(double degrees) { return clamped(degrees, -kLongitudeLimit, kLongitudeLimit); }

/// Rounds differently from a multiplication by `kRadiansPerDegree`: each formula keeps the one whose bits are
/// documented.
constexpr double radians(double degrees) { return degrees * kPi / 180.0; }

}  // namespace geometry

#endif
