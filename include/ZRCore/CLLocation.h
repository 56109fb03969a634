// SPDX-License-Identifier: Apache-2.0
/// @file
/// A position fix and a compass heading, as the platform's receivers report them.
#ifndef ZRCORE_CLLOCATION_H
#define ZRCORE_CLLOCATION_H

#include <ZRCore/NSCoder.h>
#include <ZRCore/NSDate.h>
#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRGeometry.h>

#include <memory>

/// What a receiver measured at one instant. A negative value of the fields below altitude means "unknown".
struct ZRPositionFix {
  CLLocationCoordinate2D coordinate{};  ///< degrees
  double altitude = 0.0;                ///< metres above the sea; meaningless when `verticalAccuracy` is negative
  double horizontalAccuracy = 0.0;      ///< metres, radius; negative: the coordinate is invalid
  double verticalAccuracy = -1.0;       ///< metres; negative: the altitude is invalid
  double course = -1.0;                 ///< degrees clockwise from north, [0, 360); negative: unknown
  double speed = -1.0;                  ///< metres per second; negative: unknown
  NSDate timestamp{};                   ///< when it was measured
};

/// An immutable position fix. Any thread.
class ZR_EXPORT CLLocation : public NSObject, public NSCoding {
 public:
  /// A fix with every field given, in the units of ZRPositionFix.
  static std::shared_ptr<CLLocation> initWithCoordinateAltitudeHorizontalAccuracyVerticalAccuracyCourseSpeedTimestamp(
      CLLocationCoordinate2D coordinate, double altitude, double horizontalAccuracy, double verticalAccuracy,
      double course, double speed, NSDate timestamp);

  /// The same from a record, whose fields have names and, where they are left out, say "unknown".
  static std::shared_ptr<CLLocation> initWithFix(const ZRPositionFix& fix);

  /// A fix of which only the place is known: altitude 0, horizontal accuracy 0, the rest unknown, measured now by the
  /// platform's clock.
  static std::shared_ptr<CLLocation> initWithLatitudeLongitude(double latitude, double longitude);

  ~CLLocation() override;

  CLLocationCoordinate2D coordinate() const { return fix_.coordinate; }
  NSDate timestamp() const { return fix_.timestamp; }

  /// @name Measurements
  /// A subclass may keep values of its own under these names; `fix()` always returns what was given at construction.
  /// @{
  virtual double altitude() const;
  virtual double horizontalAccuracy() const;
  virtual double verticalAccuracy() const;
  virtual double course() const;
  virtual double speed() const;
  /// @}

  /// The values given at construction, whatever a subclass reports under the names above.
  const ZRPositionFix& fix() const { return fix_; }

  /// Great-circle distance to another location.
  /// @return metres, >= 0, on the sphere of radius `EarthRadius`; altitude is ignored. NaN when a coordinate of either
  ///         location is NaN or infinite.
  double distanceFromLocation(const CLLocation& other) const;

  /// Writes the values given at construction.
  void encodeWithCoder(NSCoder& coder) const override;

  std::string description() const override;

 protected:
  explicit CLLocation(const ZRPositionFix& fix);
  explicit CLLocation(const NSCoder& coder);

 private:
  ZRPositionFix fix_;
};

/// A compass reading. A plain value, passed on as it was received.
struct CLHeading {
  double magneticHeading = -1.0;  ///< degrees clockwise from magnetic north, [0, 360)
  double trueHeading = -1.0;      ///< degrees clockwise from true north, [0, 360); negative: unknown
  double headingAccuracy = -1.0;  ///< degrees; negative: the reading is invalid
  NSDate timestamp{};
};

#endif
