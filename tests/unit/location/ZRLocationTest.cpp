// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/CLLocation_Utils.h>
#include <ZRCore/NSCoder.h>
#include <ZRCore/ZRLocation.h>
#include <ZRCore/ZROHMClassInfo.h>

#include <cmath>

#include "LocationSupport.h"
#include "WithFakePlatform.h"

namespace {

std::shared_ptr<CLLocation> wholeFix() {
  return CLLocation::initWithCoordinateAltitudeHorizontalAccuracyVerticalAccuracyCourseSpeedTimestamp(
      {52.5, 13.4}, 34.0, 5.0, 7.0, 90.0, 12.0, {1456833600.25});
}

/// A host's own kind of record.
class HostRecord : public ZRLocation {
 public:
  explicit HostRecord(const CLLocation& at) : ZRLocation(at.fix()) {}
  ZROHMClassInfo& classInfo() const override {
    static ZROHMClassInfo info({.name = "HostRecord", .superclass = &ZRLocation::staticClassInfo()});
    return info;
  }

 protected:
  std::shared_ptr<ZRLocation> copyObject() const override { return std::make_shared<HostRecord>(*this); }
};

TEST(ZRLocationTest, ARecordKeepsTheFixBesideMeasurementsOfItsOwnThatStartAtZero) {
  const auto record = ZRLocation::initWithCLLocation(*wholeFix());
  EXPECT_EQ(record->coordinate().latitude, 52.5);
  EXPECT_EQ(record->timestamp().secondsSince1970, 1456833600.25);
  EXPECT_EQ(record->fix().speed, 12.0);
  const CLLocation& asPlatformLocation = *record;
  EXPECT_EQ(asPlatformLocation.speed(), 0.0) << "also when it is seen as a platform location";
  EXPECT_EQ(record->course(), 0.0);
  EXPECT_EQ(record->altitude(), 0.0);
  EXPECT_EQ(record->horizontalAccuracy(), 0.0);
  EXPECT_EQ(record->verticalAccuracy(), 0.0);
  record->setSpeed(3.0);
  EXPECT_EQ(asPlatformLocation.speed(), 3.0);
  EXPECT_EQ(record->fix().speed, 12.0);
}

TEST(ZRLocationTest, ARecordOfARecordStartsFromTheSameFix) {
  const auto source = ZRLocation::initWithCLLocation(*wholeFix());
  source->setSpeed(99.0);
  source->setSmoothSpeed(98.0);
  source->setSignificantChange(true);
  const auto record = ZRLocation::initWithCLLocation(*source);
  EXPECT_EQ(record->fix().speed, 12.0);
  EXPECT_EQ(record->speed(), 0.0);
  EXPECT_EQ(record->smoothSpeed(), 0.0);
  EXPECT_FALSE(record->significantChange());
}

TEST(ZRLocationTest, EqualityLooksAtTheCoordinateAlone) {
  const auto here = ZRLocation::initWithCLLocation(*fixAt(0.0, 13.0, 5.0, 1.0));
  const auto hereAgain = ZRLocation::initWithCLLocation(*fixAt(-0.0, 13.0, 50.0, 2.0));
  const auto there = ZRLocation::initWithCLLocation(*fixAt(0.0, 13.5));
  EXPECT_TRUE(here->isEqual(hereAgain.get()));
  EXPECT_EQ(here->hash(), hereAgain->hash());
  EXPECT_FALSE(here->isEqual(there.get()));
  EXPECT_FALSE(here->isEqual(nullptr));
  EXPECT_FALSE(here->isEqual(fixAt(0.0, 13.0).get())) << "a platform location is no record";
  const HostRecord special(*here);
  EXPECT_TRUE(here->isEqual(&special)) << "of a subclass";
  EXPECT_FALSE(special.isEqual(here.get())) << "not of its class";

  const auto nowhere = ZRLocation::initWithCLLocation(*fixAt(0.0, 0.0));
  EXPECT_TRUE(nowhere->isEqualToLocation(nullptr)) << "none counts as the coordinate (0, 0)";
  EXPECT_FALSE(here->isEqualToLocation(nullptr));

  const auto nan = ZRLocation::initWithCLLocation(*fixAt(std::nan(""), 0.0));
  EXPECT_TRUE(nan->isEqual(nan.get())) << "the same object";
  EXPECT_FALSE(nan->isEqualToLocation(nan.get()));
}

TEST(ZRLocationTest, ToleratedDifferencesIncludeTheBound) {
  const auto a = ZRLocation::initWithCLLocation(*fixAt(10.0, 20.0));
  const auto b = ZRLocation::initWithCLLocation(*fixAt(10.5, 19.75));
  EXPECT_TRUE(a->isEqualToLocationWithDelta(*b, 0.5));
  EXPECT_FALSE(a->isEqualToLocationWithDelta(*b, 0.49));
  EXPECT_FALSE(a->isEqualToLocationWithDelta(*ZRLocation::initWithCLLocation(*fixAt(10.0, 20.5)), 0.25));
  EXPECT_TRUE(a->isEqualToLocationWithDelta(*a, 0.0));
}

TEST(ZRLocationTest, ACopyHasTheFixAndTheFilterResults) {
  const auto record = ZRLocation::initWithCLLocation(*wholeFix());
  record->setSmoothSpeed(1.0);
  record->setSmoothCourse(2.0);
  record->setExceedsMovementLimit(true);
  record->setSignificantChange(true);
  record->setSpeed(3.0);
  record->setLat(4.0);
  const auto copy = record->copy();
  EXPECT_NE(copy, record);
  EXPECT_TRUE(copy->isEqual(record.get()));
  EXPECT_EQ(copy->fix().speed, 12.0);
  EXPECT_EQ(copy->smoothSpeed(), 1.0);
  EXPECT_EQ(copy->smoothCourse(), 2.0);
  EXPECT_TRUE(copy->exceedsMovementLimit());
  EXPECT_TRUE(copy->significantChange());
  EXPECT_EQ(copy->speed(), 0.0);
  EXPECT_EQ(copy->lat(), 0.0);
  const HostRecord special(*wholeFix());
  EXPECT_NE(dynamic_cast<const HostRecord*>(special.copy().get()), nullptr) << "a host's record copies itself";
}

TEST(ZRLocationTest, AnArchiveHoldsTheFixAndTheSmoothedValues) {
  const auto record = ZRLocation::initWithCLLocation(*wholeFix());
  record->setSmoothSpeed(1.5);
  record->setSmoothCourse(2.5);
  record->setSignificantChange(true);
  record->setLat(4.0);
  record->setSpeed(3.0);
  ZRMemoryCoder archive;
  record->encodeWithCoder(archive);
  EXPECT_FALSE(archive.containsValueForKey("lat"));
  EXPECT_FALSE(archive.containsValueForKey("lng"));
  EXPECT_TRUE(archive.containsValueForKey("smoothSpeed") && archive.containsValueForKey("smoothCourse"));

  auto read = ZRLocation::initWithCoder(archive);
  EXPECT_EQ(read->coordinate().longitude, 13.4);
  EXPECT_EQ(read->fix().altitude, 34.0);
  EXPECT_EQ(read->fix().horizontalAccuracy, 5.0);
  EXPECT_EQ(read->fix().verticalAccuracy, 7.0);
  EXPECT_EQ(read->fix().course, 90.0);
  EXPECT_EQ(read->fix().speed, 12.0);
  EXPECT_EQ(read->timestamp().secondsSince1970, 1456833600.25);
  EXPECT_EQ(read->smoothSpeed(), 1.5);
  EXPECT_EQ(read->smoothCourse(), 2.5);
  EXPECT_FALSE(read->significantChange());
  EXPECT_EQ(read->lat(), 0.0);

  archive.encodeDoubleForKey(47.5, "lat");  // as other producers do
  archive.encodeDoubleForKey(8.5, "lng");
  read = ZRLocation::initWithCoder(archive);
  EXPECT_EQ(read->lat(), 47.5);
  EXPECT_EQ(read->lng(), 8.5);
  EXPECT_EQ(read->coordinate().latitude, 52.5);
}

class CLLocation_UtilsTest : public WithFakePlatform {};

TEST_F(CLLocation_UtilsTest, DirectionsCarryAFullTurnTooMuch) {
  using CLLocation_Utils::directionToLocation;
  const auto origin = fixAt(0.0, 0.0);
  EXPECT_EQ(directionToLocation(*origin, *fixAt(1.0, 0.0)), 360.0);
  EXPECT_EQ(directionToLocation(*origin, *fixAt(0.0, 1.0)), 450.0);
  EXPECT_EQ(directionToLocation(*origin, *fixAt(-1.0, 0.0)), 540.0);
  EXPECT_EQ(directionToLocation(*origin, *fixAt(0.0, -1.0)), 270.0);
  EXPECT_EQ(directionToLocation(*origin, *origin), 360.0);
}

TEST_F(CLLocation_UtilsTest, ALocationAtADistanceHardlyMovesAndKnowsOnlyItsPlace) {
  const auto origin = fixAt(50.0, 8.0);
  const auto made = CLLocation_Utils::newLocationAtDistanceToLocation(*origin, 1000.0, *fixAt(51.0, 9.0));
  EXPECT_GT(made->distanceFromLocation(*origin), 0.0);
  EXPECT_LT(made->distanceFromLocation(*origin), 0.002) << "metres, for a kilometre asked for";
  EXPECT_TRUE(std::isnan(made->distanceFromLocation(*fixAt(std::nan(""), 0.0))));
  EXPECT_EQ(made->speed(), -1.0);
  EXPECT_EQ(made->timestamp().secondsSince1970, fake.clock->time.secondsSince1970);
}

}  // namespace
