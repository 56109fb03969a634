// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZRLocation.h>
#include <ZRCore/ZROHMClassInfo.h>

#include <cmath>
#include <functional>

namespace {
constexpr const char* kSmoothSpeedKey = "smoothSpeed";
constexpr const char* kSmoothCourseKey = "smoothCourse";
constexpr const char* kLatKey = "lat";
constexpr const char* kLngKey = "lng";
}  // namespace

std::shared_ptr<ZRLocation> ZRLocation::initWithCLLocation(const CLLocation& source) {
  struct Constructible : ZRLocation {  // opens the protected constructor to make_shared: record and count in one piece
    explicit Constructible(const ZRPositionFix& fix) : ZRLocation(fix) {}
  };
  return std::make_shared<Constructible>(source.fix());
}

std::shared_ptr<ZRLocation> ZRLocation::initWithCoder(const NSCoder& coder) {
  return std::shared_ptr<ZRLocation>(new ZRLocation(coder));
}

ZRLocation::ZRLocation(const ZRPositionFix& fix) : CLLocation(fix) {}

ZRLocation::ZRLocation(const NSCoder& coder) : CLLocation(coder) {
  smoothSpeed_ = coder.decodeDoubleForKey(kSmoothSpeedKey);
  smoothCourse_ = coder.decodeDoubleForKey(kSmoothCourseKey);
  if (coder.containsValueForKey(kLatKey)) lat_ = coder.decodeDoubleForKey(kLatKey);
  if (coder.containsValueForKey(kLngKey)) lng_ = coder.decodeDoubleForKey(kLngKey);
}

ZRLocation::~ZRLocation() = default;

double ZRLocation::altitude() const { return altitude_; }
double ZRLocation::horizontalAccuracy() const { return horizontalAccuracy_; }
double ZRLocation::verticalAccuracy() const { return verticalAccuracy_; }
double ZRLocation::speed() const { return speed_; }
double ZRLocation::course() const { return course_; }

bool ZRLocation::isEqual(const NSObject* other) const {
  if (this == other) return true;
  const auto* const location = dynamic_cast<const ZRLocation*>(other);
  return location != nullptr && location->classInfo().isSubtypeOf(classInfo()) && isEqualToLocation(location);
}

std::size_t ZRLocation::hash() const {
  const std::hash<double> hashOf;  // the same for 0.0 and -0.0, which compare equal
  return hashOf(coordinate().latitude) * 31 + hashOf(coordinate().longitude);
}

bool ZRLocation::isEqualToLocation(const ZRLocation* other) const {
  const CLLocationCoordinate2D theirs = other != nullptr ? other->coordinate() : CLLocationCoordinate2D{0.0, 0.0};
  return coordinate().latitude == theirs.latitude && coordinate().longitude == theirs.longitude;
}

bool ZRLocation::isEqualToLocationWithDelta(const ZRLocation& other, double deltaDegrees) const {
  return std::fabs(coordinate().latitude - other.coordinate().latitude) <= deltaDegrees &&
         std::fabs(coordinate().longitude - other.coordinate().longitude) <= deltaDegrees;
}

std::shared_ptr<ZRLocation> ZRLocation::copy() const {
  auto made = copyObject();
  made->smoothSpeed_ = smoothSpeed_;
  made->smoothCourse_ = smoothCourse_;
  made->exceedsMovementLimit_ = exceedsMovementLimit_;
  made->significantChange_ = significantChange_;
  return made;
}

std::shared_ptr<ZRLocation> ZRLocation::copyObject() const { return initWithCLLocation(*this); }

ZROHMClassInfo& ZRLocation::staticClassInfo() {
  static auto* const info = ZROHMClassBuilder<ZRLocation>("ZRLocation", NSObject::staticClassInfo()).build().release();
  return *info;
}

ZROHMClassInfo& ZRLocation::classInfo() const { return staticClassInfo(); }

void ZRLocation::encodeWithCoder(NSCoder& coder) const {
  CLLocation::encodeWithCoder(coder);
  coder.encodeDoubleForKey(smoothSpeed_, kSmoothSpeedKey);
  coder.encodeDoubleForKey(smoothCourse_, kSmoothCourseKey);
}
