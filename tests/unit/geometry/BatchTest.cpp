// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>
#include <gtest/gtest.h>

#include <ZRCore/ZRGeometry.hpp>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "GeometryValues.h"
#include "Kernels.h"

namespace {

using Coordinate = CLLocationCoordinate2D;
using geometry::Kernels;

/// Places of which one in eight has a special number.
std::vector<Coordinate> places(std::size_t count) {
  constexpr double kSpecial[] = {0.0, -0.0, kInf, -kInf, kNaN, 90.0, -90.0, 180.0, 1e300, 1e-20, 85.05112878, 1e-3};
  Dice dice;
  const auto spiced = [&](double value) {
    return dice.roll() < 0.06 ? kSpecial[static_cast<int>(dice.roll() * std::size(kSpecial))] : value;
  };
  std::vector<Coordinate> result(count);
  for (Coordinate& place : result) {
    place.latitude = spiced(dice.between(-91.0, 91.0));
    place.longitude = spiced(dice.between(-181.0, 181.0));
  }
  return result;
}

/// `ZRMBR` of two or more, as it is documented.
ZRMapRect plainBounds(const std::vector<ZRMapPoint>& points) {
  double left = 0x1p63, top = 0x1p63, right = -0x1p63, bottom = -0x1p63;
  for (const auto& [x, y] : points) {
    left = x < left ? x : left;
    top = y < top ? y : top;
    right = x > right ? x : right;
    bottom = y > bottom ? y : bottom;
  }
  return {{left, top}, {right - left, bottom - top}};
}

class EveryBuild : public testing::TestWithParam<exact::Build> {
 protected:
  void SetUp() override {
    if (GetParam() > exact::bestBuild()) GTEST_SKIP() << "this processor cannot run it";
  }
  const Kernels& kernels() const { return geometry::kernelsOf(GetParam()); }
  static const Kernels& common() { return geometry::kernelsOf(exact::Build::kCommon); }
};

// With each number of elements that can be left over by any number of lanes, and with each kind of doubt in some lane.
TEST_P(EveryBuild, GivesEachElementOfABatchTheBitsOfTheSingleCall) {
  const std::vector<Coordinate> line = places(20'001);
  for (const std::uint64_t count : {0U, 1U, 2U, 3U, 7U, 8U, 13U, 31U, 33U, 20'000U}) {
    std::vector<ZRMapPoint> points(count);
    std::vector<Coordinate> back(count);
    std::vector<double> from(count), along(count);
    std::vector<float> bearings(count);
    kernels().mapPoints(line.data(), points.data(), count);
    kernels().coordinates(points.data(), back.data(), count);
    kernels().distancesFrom(line[0], line.data(), from.data(), count);
    kernels().distancesAlong(line.data(), along.data(), count);
    kernels().bearingsAlong(line.data(), bearings.data(), count);
    for (std::uint64_t i = 0; i < count; ++i) {
      ASSERT_EQ(bits(points[i]), bits(common().mapPoint(line[i]))) << i;
      ASSERT_EQ(bits(back[i]), bits(common().coordinate(points[i]))) << i;
      ASSERT_EQ(bits(from[i]), bits(common().greatCircleDistance(line[0], line[i]))) << i;
      ASSERT_EQ(bits(along[i]), bits(common().greatCircleDistance(line[i], line[i + 1]))) << i;
      ASSERT_EQ(bits(static_cast<double>(bearings[i])),
                bits(static_cast<double>(ZRCoordinateUtils::bearingFromTo(line[i], line[i + 1]))))
          << i;
    }
  }
}

TEST_P(EveryBuild, GivesRectanglesAndBoundsTheResultsOfTheSingleCalls) {
  const double special[] = {kInf, -kInf, kNaN, 0.0, -0.0};
  Dice dice;
  const auto number = [&](double low, double high) {
    return dice.roll() < 0.02 ? special[static_cast<int>(dice.roll() * std::size(special))] : dice.between(low, high);
  };
  for (const std::uint64_t count : {0U, 1U, 2U, 3U, 9U, 63U, 64U, 65U, 1000U}) {
    for (int round = 0; round < 20; ++round) {
      std::vector<ZRMapRect> rects(count);
      std::vector<ZRMapPoint> points;
      for (ZRMapRect& rect : rects) {
        rect = {{number(-9.0, 9.0), number(-9.0, 9.0)}, {number(-9.0, 9.0), number(-9.0, 9.0)}};
        points.push_back(round % 4 == 0 ? ZRMapPoint{rect.origin.x > 0.0 ? 0.0 : -0.0, rect.origin.y} : rect.origin);
      }
      const ZRMapRect one = {{number(-9.0, 9.0), number(-9.0, 9.0)}, {number(-9.0, 9.0), number(-9.0, 9.0)}};
      std::vector<std::uint64_t> found((count + 63) / 64, ~std::uint64_t{0});
      kernels().intersects(one, rects.data(), count, found.data());
      double left = kInf, top = kInf, right = -kInf, bottom = -kInf;
      for (std::uint64_t i = 0; i < (count + 63) / 64 * 64; ++i) {
        ASSERT_EQ(found[i / 64] >> (i % 64) & 1U, i < count && ZRMapRectIntersectsRect(one, rects[i]) ? 1U : 0U) << i;
        if (i >= count || ZRMapRectIsNull(rects[i])) continue;
        const auto [origin, size] = rects[i];
        left = std::min(left, size.width < 0.0 ? origin.x + size.width : origin.x);
        right = std::max(right, size.width < 0.0 ? origin.x : origin.x + size.width);
        top = std::min(top, size.height < 0.0 ? origin.y + size.height : origin.y);
        bottom = std::max(bottom, size.height < 0.0 ? origin.y : origin.y + size.height);
      }
      const bool isNone = left > right || top > bottom;
      const ZRMapRect all = {{left + 0.0, top + 0.0}, {right + 0.0 - left, bottom + 0.0 - top}};
      ASSERT_EQ(bits(kernels().unionOf(rects.data(), count)), bits(isNone ? ZRMapRectNull : all)) << count;
      if (count > 1) {
        ASSERT_EQ(bits(kernels().bounds(points.data(), count)), bits(plainBounds(points))) << count;
      }
    }
  }
}

TEST_P(EveryBuild, GivesSingleCallsTheSameBits) {
  const std::vector<Coordinate> line = places(20'001);
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const ZRMapPoint point = common().mapPoint(line[i]);
    ASSERT_EQ(bits(kernels().mapPoint(line[i])), bits(point));
    ASSERT_EQ(bits(kernels().coordinate(point)), bits(common().coordinate(point)));
    ASSERT_EQ(bits(kernels().initialBearing(line[i], line[i + 1])),
              bits(common().initialBearing(line[i], line[i + 1])));
    ASSERT_EQ(bits(kernels().greatCircleDistance(line[i], line[i + 1])),
              bits(common().greatCircleDistance(line[i], line[i + 1])));
    const auto [x, y] = common().mercator(line[i].latitude, line[i].longitude);
    ASSERT_EQ(bits(kernels().mercator(line[i].latitude, line[i].longitude)), bits(ZRDoublePoint{x, y}));
    ASSERT_EQ(bits(kernels().inverseMercator(x, y)), bits(common().inverseMercator(x, y)));
  }
}

// The exact values, in long double: its 64 bits leave a thousandth of the bounds.
TEST_P(EveryBuild, KeepsTheFastFormsWithinTheirBounds) {
  constexpr std::uint64_t kCount = 200'000;
  Dice dice;
  std::vector<Coordinate> line(kCount), back(kCount);
  std::vector<ZRMapPoint> points(kCount), world(kCount);
  for (std::uint64_t i = 0; i < kCount; ++i) {
    line[i] = {dice.between(-86.0, 86.0), dice.between(-181.0, 181.0)};
    world[i] = {dice.between(-1.0, kWorld), dice.between(-0.01 * kWorld, 1.01 * kWorld)};
  }
  kernels().mapPointsFast(line.data(), points.data(), kCount);
  kernels().coordinatesFast(world.data(), back.data(), kCount);
  long double worstPoint = 0.0L, worstDegree = 0.0L;
  for (std::uint64_t i = 0; i < kCount; ++i) {
    const long double perDegree = 3.14159265358979323846264338327950288L / 180.0L;
    const long double latitude = std::clamp(line[i].latitude, -85.05112878, 85.05112878);
    const long double longitude = std::clamp(line[i].longitude, -180.0, 180.0);
    const long double y = std::log(std::tan((latitude + 90.0L) * 0.5L * perDegree)) * 6378137.0L;
    const long double x = longitude * 111319.49079327357L;
    worstPoint = std::max(worstPoint, std::abs((20037508.342789244L - y) / 0.5971642834779395L - points[i].y));
    worstPoint = std::max(worstPoint, std::abs((20037508.342789244L + x) / 0.5971642834779395L - points[i].x));
    const long double t = 3.14159265358979323846264338327950288L * (1.0L - world[i].y * 0x1p-25L);
    const long double there = std::clamp(std::atan(std::sinh(t)) / perDegree, -85.05112878L, 85.05112878L);
    worstDegree = std::max(worstDegree, std::abs(there - back[i].latitude));
    const long double turns = std::clamp(world[i].x, 0.0, 67108863.0) * 0x1p-26L - 0.5L;
    worstDegree = std::max(worstDegree, std::abs(turns * 360.0L - back[i].longitude));
  }
  RecordProperty("units of 2^-27 map points", std::to_string(worstPoint * 0x1p27L));
  RecordProperty("degrees times 1e14", std::to_string(worstDegree * 1e14L));
  EXPECT_LE(worstPoint * 0x1p27L, 1.2L);
  EXPECT_LE(worstDegree, 4e-14L);
}

std::string nameOf(const testing::TestParamInfo<exact::Build>& build) {
  constexpr const char* kNames[] = {"common", "fused", "wide"};
  return kNames[static_cast<int>(build.param)];
}
INSTANTIATE_TEST_SUITE_P(, EveryBuild,
                         testing::Values(exact::Build::kCommon, exact::Build::kFused, exact::Build::kWide), nameOf);

TEST(Spans, ComputeWhatBothHaveRoomFor) {
  const std::vector<Coordinate> line = places(9);
  std::vector<ZRMapPoint> points(5);
  ZRMapPointsForCoordinates(line, points);
  EXPECT_EQ(bits(points[4]), bits(ZRMapPointForCoordinate(line[4])));
  std::vector<double> meters(8, -1.0);
  ZRGreatCircleDistancesAlong(std::span(line).first(3), meters);
  EXPECT_EQ(bits(meters[1]), bits(ZRGreatCircleDistance(line[1], line[2])));
  EXPECT_EQ(meters[2], -1.0);
}

}  // namespace
