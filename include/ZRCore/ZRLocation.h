// SPDX-License-Identifier: Apache-2.0
/// @file
/// The framework's position fix.
#ifndef ZRCORE_ZRLOCATION_H
#define ZRCORE_ZRLOCATION_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/ZRExport.h>

#include <memory>

/// A position fix with writable measurements and the location filter's results.
///
/// The record keeps the fix it was made from (its base part, immutable: `coordinate`, `timestamp`, `fix`) and, beside
/// it, measurements of its own under the base's names. Construction does not fill these: they read 0.0 until they are
/// set. One thread at a time.
///
/// A subclass overrides `classInfo`, so that equality and archives know the type, with a descriptor whose superclass is
/// `ZRLocation::staticClassInfo()`; and `copyObject`, or `copy` makes a plain ZRLocation of it. A subclass that is read
/// from archives gives its descriptor a `coderFactory` as well.
class ZR_EXPORT ZRLocation : public CLLocation {
 public:
  /// A record whose base part holds the values that `source` was constructed with. Nothing else is copied: the own
  /// fields of a `source` that is itself a ZRLocation are not read.
  static std::shared_ptr<ZRLocation> initWithCLLocation(const CLLocation& source);

  /// A record from an archive. Beside what `encodeWithCoder` writes, it reads "lat" and "lng" where they are present,
  /// which `encodeWithCoder` never writes: archives of other producers carry them.
  static std::shared_ptr<ZRLocation> initWithCoder(const NSCoder& coder);

  ~ZRLocation() override;

  /// Metres above the sea.
  double altitude() const override;
  void setAltitude(double meters) { altitude_ = meters; }
  /// Metres, radius; the filter takes only values above 0 as valid.
  double horizontalAccuracy() const override;
  void setHorizontalAccuracy(double meters) { horizontalAccuracy_ = meters; }
  /// Metres.
  double verticalAccuracy() const override;
  void setVerticalAccuracy(double meters) { verticalAccuracy_ = meters; }
  /// Metres per second; negative or NaN: unknown.
  double speed() const override;
  void setSpeed(double metersPerSecond) { speed_ = metersPerSecond; }
  /// Degrees clockwise from north.
  double course() const override;
  void setCourse(double degrees) { course_ = degrees; }

  /// Metres per second: the mean of the last accepted speeds.
  double smoothSpeed() const { return smoothSpeed_; }
  void setSmoothSpeed(double metersPerSecond) { smoothSpeed_ = metersPerSecond; }
  /// Degrees clockwise from north, [0, 360]: the direction from the oldest remembered significant place, or the locked
  /// course.
  double smoothCourse() const { return smoothCourse_; }
  void setSmoothCourse(double degrees) { smoothCourse_ = degrees; }
  /// Whether the fix is an implausible jump.
  bool exceedsMovementLimit() const { return exceedsMovementLimit_; }
  void setExceedsMovementLimit(bool exceeds) { exceedsMovementLimit_ = exceeds; }
  /// Whether the fix lies far enough from the last such one to count as movement.
  bool significantChange() const { return significantChange_; }
  void setSignificantChange(bool significant) { significantChange_ = significant; }

  /// Degrees. A slot of its own, independent of `coordinate`.
  double lat() const { return lat_; }
  void setLat(double degrees) { lat_ = degrees; }
  /// Degrees. A slot of its own, independent of `coordinate`.
  double lng() const { return lng_; }
  void setLng(double degrees) { lng_ = degrees; }

  /// True for a record of this one's class, or of a subclass of it by its descriptor, at exactly the same coordinate;
  /// everything else may differ.
  bool isEqual(const NSObject* other) const override;
  std::size_t hash() const override;
  /// Whether latitudes and longitudes compare equal. A null argument counts as the coordinate (0, 0).
  bool isEqualToLocation(const ZRLocation* other) const;
  /// Whether latitudes and longitudes each differ by at most `deltaDegrees`, inclusive.
  bool isEqualToLocationWithDelta(const ZRLocation& other, double deltaDegrees) const;

  /// A record with the same base part and the same four filter results; its own measurements, `lat` and `lng` start
  /// anew.
  std::shared_ptr<ZRLocation> copy() const;

  /// Writes the base part, "smoothSpeed" and "smoothCourse"; no other field.
  void encodeWithCoder(NSCoder& coder) const override;

  /// The record's descriptor: its name in archives, and how one is read. No properties.
  static ZROHMClassInfo& staticClassInfo();
  ZROHMClassInfo& classInfo() const override;

 protected:
  explicit ZRLocation(const ZRPositionFix& fix);
  explicit ZRLocation(const NSCoder& coder);
  /// What `copy` returns. A subclass makes an object of its own type from `fix()`, sets the four filter results and its
  /// own fields on it, and declares a `copy()` of its own that returns its own type.
  virtual std::shared_ptr<ZRLocation> copyObject() const;

 private:
  double altitude_ = 0.0;
  double horizontalAccuracy_ = 0.0;
  double verticalAccuracy_ = 0.0;
  double speed_ = 0.0;
  double course_ = 0.0;
  double smoothSpeed_ = 0.0;
  double smoothCourse_ = 0.0;
  double lat_ = 0.0;
  double lng_ = 0.0;
  bool exceedsMovementLimit_ = false;
  bool significantChange_ = false;
};

#endif
