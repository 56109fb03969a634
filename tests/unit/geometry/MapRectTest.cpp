// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometryAdditions.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <span>

#include "GeometryValues.h"

namespace {

constexpr ZRMapRect kNull = {{kInf, kInf}, {kInf, kInf}};
constexpr ZRMapRect kTen = {{0.0, 0.0}, {10.0, 10.0}};

/// Whole numbers, some of the sizes negative or zero, so that every result is exact.
ZRMapRect randomRect(Dice& dice) {
  const auto whole = [&dice] { return std::floor(dice.between(-20.0, 21.0)); };
  const double x = whole(), y = whole(), width = whole(), height = whole();
  return {{x, y}, {width, height}};
}

TEST(MapRectUnion, TestsTheOriginOnlyAndPassesTheOtherRectangleOnAsItIs) {
  const ZRMapRect unstandardised = {{5.0, 5.0}, {-10.0, -10.0}};
  struct {
    ZRMapRect a, b, result;
  } const rows[] = {
      {kNull, unstandardised, unstandardised},
      {unstandardised, kNull, unstandardised},
      {kNull, kNull, kNull},
      {{{0.0, -kInf}, {1.0, 1.0}}, unstandardised, unstandardised},
      {unstandardised, {{0.0, -kInf}, {1.0, 1.0}}, unstandardised},
      {{{-kInf, 0.0}, {1.0, 1.0}}, {{0.0, kInf}, {1.0, 1.0}}, kNull},
      {kTen, unstandardised, {{-5.0, -5.0}, {15.0, 15.0}}},
      {kTen, {{20.0, 30.0}, {kInf, 1.0}}, {{0.0, 0.0}, {kInf, 31.0}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.a)) + testing::PrintToString(values(row.b)));
    EXPECT_EQ(values(ZRMapRectUnion(row.a, row.b)), values(row.result));
  }
}

TEST(MapRectPairs, MeetAtTouchingEdgesAndContainWhatDoesNotReachOut) {
  struct {
    ZRMapRect a, b, intersection;  // kNull: they are apart
    bool contains;
  } const rows[] = {
      {kTen, {{5, 5}, {10, 10}}, {{5, 5}, {5, 5}}, false},
      {kTen, {{10, 0}, {5, 10}}, {{10, 0}, {0, 10}}, false},
      {kTen, {{10, 10}, {5, 5}}, {{10, 10}, {0, 0}}, false},
      {kTen, {{11, 0}, {5, 5}}, kNull, false},
      {kTen, {{2, 2}, {3, 3}}, {{2, 2}, {3, 3}}, true},
      {kTen, {{10, 10}, {-10, -10}}, kTen, true},
      {{{10, 10}, {-10, -10}}, {{5, 5}, {10, 10}}, {{5, 5}, {5, 5}}, false},
      {kTen, {{10, 10}, {0, 0}}, {{10, 10}, {0, 0}}, true},
      {kTen, kNull, kNull, true},
      {kTen, {{0, kInf}, {1, 1}}, kNull, true},
      {{{0, 0}, {kInf, kInf}}, {{kInf, 0}, {1, 1}}, kNull, true},
      {kNull, kTen, kNull, false},
      {kNull, kNull, kNull, true},
      {{{-5, -5}, {kInf, kInf}}, {{0, 0}, {kInf, kInf}}, {{0, 0}, {kInf, kInf}}, true},
      {{{-kInf, 0}, {10, 10}}, kTen, kNull, false},
      {{{-kInf, 0}, {kInf, 10}}, kTen, kNull, false},
      {kTen, {{kNaN, 0}, {5, 5}}, kNull, false},
      {{{0, 0}, {kNaN, 10}}, kTen, kNull, false},
      // 0.1 + 0.2 - 0.1 is not 0.2: the size must come through unrounded
      {{{0.1, 0}, {0.2, 1}}, {{0.1, 0}, {0.2, 1}}, {{0.1, 0}, {0.2, 1}}, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.a)) + testing::PrintToString(values(row.b)));
    EXPECT_EQ(values(ZRMapRectIntersection(row.a, row.b)), values(row.intersection));
    EXPECT_EQ(ZRMapRectIntersectsRect(row.a, row.b), values(row.intersection) != values(kNull));
    EXPECT_EQ(ZRMapRectContainsRect(row.a, row.b), row.contains);
  }
}

TEST(MapRectPairs, KeepTheLawsOfUnionIntersectionAndContainment) {
  Dice dice;
  for (int i = 0; i < 2000; ++i) {
    const ZRMapRect a = randomRect(dice), b = randomRect(dice);
    SCOPED_TRACE(testing::PrintToString(values(a)) + testing::PrintToString(values(b)));
    const ZRMapRect both = ZRMapRectUnion(a, b);
    EXPECT_TRUE(ZRMapRectContainsRect(both, a) && ZRMapRectContainsRect(both, b));
    EXPECT_EQ(values(both), values(ZRMapRectUnion(b, a)));
    const ZRMapRect common = ZRMapRectIntersection(a, b);
    EXPECT_TRUE(ZRMapRectContainsRect(a, common) && ZRMapRectContainsRect(b, common));
    EXPECT_EQ(values(common), values(ZRMapRectIntersection(b, a)));
    EXPECT_EQ(ZRMapRectContainsRect(a, b), values(both) == values(ZRMapRectUnion(a, a)));
    EXPECT_EQ(ZRMapRectContainsPoint(a, b.origin), ZRMapRectIntersectsRect(a, {b.origin, {0.0, 0.0}}));
  }
}

TEST(MapRectMoving, InsetsByHalfOnEachSideAndKeepsNegativeSizes) {
  EXPECT_EQ(values(ZRMapRectInset(kTen, 30, -2)), values(ZRMapRect{{15, -1}, {-20, 12}}));
  EXPECT_EQ(values(ZRMapRectOffset({{1, 2}, {-3, 4}}, 10, 20)), values(ZRMapRect{{11, 22}, {-3, 4}}));
  const ZRMapRect nowhere = {{0.0, -kInf}, {1.0, 1.0}};
  EXPECT_EQ(values(ZRMapRectInset(nowhere, 1, 1)), values(kNull));
  EXPECT_EQ(values(ZRMapRectOffset(nowhere, 1, 1)), values(kNull));
}

TEST(MapRectDivide, CutsAStripOffTheStandardisedRectangle) {
  const ZRMapRect rect = {{10, 20}, {30, 40}}, reversed = {{-10, -20}, {-30, -40}};
  struct {
    ZRMapRect rect;
    double amount;
    CGRectEdge edge;
    ZRMapRect part, remainder;
  } const rows[] = {
      {rect, 10, CGRectMinXEdge, {{10, 20}, {10, 40}}, {{20, 20}, {20, 40}}},
      {rect, 10, CGRectMaxXEdge, {{30, 20}, {10, 40}}, {{10, 20}, {20, 40}}},
      {rect, 10, CGRectMinYEdge, {{10, 20}, {30, 10}}, {{10, 30}, {30, 30}}},
      {rect, 10, CGRectMaxYEdge, {{10, 50}, {30, 10}}, {{10, 20}, {30, 30}}},
      {rect, 31, CGRectMinXEdge, {{10, 20}, {30, 40}}, {{40, 20}, {0, 40}}},
      {rect, 41, CGRectMaxYEdge, {{10, 20}, {30, 40}}, {{10, 20}, {30, 0}}},
      {rect, -5, CGRectMaxXEdge, {{40, 20}, {0, 40}}, {{10, 20}, {30, 40}}},
      {rect, kNaN, CGRectMinXEdge, {{10, 20}, {0, 40}}, {{10, 20}, {30, 40}}},
      {reversed, 10, CGRectMinXEdge, {{-40, -60}, {10, 40}}, {{-30, -60}, {20, 40}}},
      {reversed, 10, CGRectMaxYEdge, {{-40, -30}, {30, 10}}, {{-40, -60}, {30, 30}}},
      {{{0, 0}, {kInf, 10}}, 5, CGRectMinXEdge, {{0, 0}, {5, 10}}, {{5, 0}, {kInf, 10}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.rect)) + testing::PrintToString(row.amount));
    ZRMapRect part{}, remainder{};
    ZRMapRectDivide(row.rect, &part, &remainder, row.amount, row.edge);
    EXPECT_EQ(values(part), values(row.part));
    EXPECT_EQ(values(remainder), values(row.remainder));
  }
}

TEST(MapRectDivide, WritesNothingForANullOrigin) {
  for (const ZRMapRect& nowhere : {kNull, ZRMapRect{{0.0, -kInf}, {1.0, 1.0}}}) {
    ZRMapRect part = {{1, 2}, {3, 4}}, remainder = {{5, 6}, {7, 8}};
    ZRMapRectDivide(nowhere, &part, &remainder, 1.0, CGRectMinXEdge);
    EXPECT_EQ(values(part), values(ZRMapRect{{1, 2}, {3, 4}}));
    EXPECT_EQ(values(remainder), values(ZRMapRect{{5, 6}, {7, 8}}));
  }
}

TEST(MapRectSeam, IsSpannedAndLeavesARemainderAtTheOtherEndOfTheWorld) {
  struct {
    ZRMapRect rect;
    bool spans;
    ZRMapRect remainder;
  } const rows[] = {
      {{{kWorld - 10, 1}, {20, 5}}, true, {{0, 1}, {10, 5}}},
      {{{-10, 1}, {20, 5}}, true, {{kWorld - 10, 1}, {10, 5}}},
      {{{10, 1}, {-30, 5}}, true, {{kWorld - 20, 1}, {20, 5}}},
      {{{10, 1}, {20, 5}}, false, kNull},
      {{{kWorld - 10, 1}, {10, 5}}, false, kNull},   // only touches the seam
      {{{-10, 1}, {10, 5}}, false, kNull},           // likewise
      {{{kWorld + 10, 1}, {20, 5}}, true, kNull},    // wrapped on the left side, but raw in the remainder
      {{{kWorld + 10, 1}, {-20, -5}}, true, kNull},  // standardised it would cross; its raw left side does not
      {{{-10, 1}, {kWorld + 20, 5}}, true, {{0, 1}, {10, 5}}},  // over both ends: the eastern one comes first
      {kNull, false, kNull},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.rect)));
    EXPECT_EQ(ZRMapRectSpans180thMeridian(row.rect), row.spans);
    EXPECT_EQ(values(ZRMapRectRemainder(row.rect)), values(row.remainder));
  }
}

TEST(MapPointNormalized, WrapsBothAxesIntoTheWorld) {
  struct {
    double value, wrapped;
  } const rows[] = {
      {-1.5, kWorld - 1.5},
      {-kWorld, 0.0},
      {-3 * kWorld - 7.0, kWorld - 7.0},
      {5 * kWorld + 0.5, 0.5},
      {-1e-20, kWorld},
      {-0.0, 0.0},
      {kInf, kNaN},
      {kNaN, kNaN},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.value);
    EXPECT_EQ(bits(ZRMapPointNormalized({row.value, 3.0})), bits(ZRMapPoint{row.wrapped, 3.0}));
    EXPECT_EQ(bits(ZRMapPointNormalized({3.0, row.value})), bits(ZRMapPoint{3.0, row.wrapped}));
  }
}

TEST(MapRectRegions, HaveASpanOfAbsoluteValues) {
  const ZRCoordinateRegion world = ZRCoordinateRegionForMapRect(ZRMapRectWorld);
  EXPECT_NEAR(world.span.latitudeDelta, 0.0, 1e-9);   // the corners are mirror images
  EXPECT_NEAR(world.span.longitudeDelta, 0.0, 1e-5);  // the eastern one is a map point short of 180
  // A north-east quarter is not folded, and comes back as it went.
  const ZRCoordinateRegion quarter = {{40.0, 90.0}, {20.0, 60.0}};
  const ZRMapRect rect = ZRMapRectForZRCoordinateRegion(quarter);
  EXPECT_NEAR(ZRCoordinateRegionForMapRect(rect).span.latitudeDelta, 20.0, 1e-9);
  EXPECT_NEAR(ZRCoordinateRegionForMapRect(rect).span.longitudeDelta, 60.0, 1e-9);
  EXPECT_EQ(values(ZRCoordinateRegionForMapRect({{0.0, -kInf}, {1.0, 1.0}})), values(ZRCoordinateRegionNull));
}

TEST(MapRectRegions, AreCutOffAtTheWorldsEdgeAndNullOnlyWhenCenterAndSpanAreInfinite) {
  const ZRMapRect everything = ZRMapRectForZRCoordinateRegion({{0.0, 0.0}, {400.0, 800.0}});
  EXPECT_NEAR(everything.origin.x, 0.0, 1e-6);
  EXPECT_NEAR(everything.size.width, kWorld, 1e-6);
  EXPECT_NEAR(everything.size.height, kWorld, 0.01);
  EXPECT_EQ(values(ZRMapRectForZRCoordinateRegion({{0.0, -kInf}, {-kInf, 1.0}})), values(kNull));
  EXPECT_EQ(values(ZRMapRectForZRCoordinateRegion({{0.0, kInf}, {1.0, 1.0}})).at(2), 0.0);  // both corners in the east
  EXPECT_NEAR(ZRMapRectForZRCoordinateRegion({{0.0, 0.0}, {1.0, kInf}}).size.width, kWorld, 1e-6);
}

TEST(RegionBetweenCoords, PairsEachLatitudeWithTheOtherOnesLongitude) {
  struct {
    CLLocationCoordinate2D a, b, first, second;
  } const rows[] = {
      {{10, 1}, {20, 2}, {20, 1}, {10, 2}},
      {{20, 1}, {10, 2}, {20, 2}, {10, 1}},
      {{10, 1}, {10, 5}, {10, 5}, {10, 1}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(values(row.a)) + testing::PrintToString(values(row.b)));
    EXPECT_EQ(values(ZRCoordinateRegionBetweenCoords(row.a, row.b)),
              values(ZRCoordinateRegionMakeWithCoordinates(row.first, row.second)));
  }
}

TEST(Equality, ComparesEachFieldAndTakesInfinityForItself) {
  const std::array<double, 4> fields = {1.0, 2.0, 3.0, -0.0};
  const auto rect = std::bit_cast<ZRMapRect>(fields);
  const auto region = std::bit_cast<ZRCoordinateRegion>(fields);
  EXPECT_TRUE(rect == (ZRMapRect{{1.0, 2.0}, {3.0, 0.0}}));
  EXPECT_TRUE(region == (ZRCoordinateRegion{{1.0, 2.0}, {3.0, 0.0}}));
  EXPECT_TRUE(rect.origin == (ZRMapPoint{1.0, 2.0}));
  EXPECT_TRUE(kNull == ZRMapRectNull && ZRCoordinateRegionNull == ZRCoordinateRegionForMapRect(kNull));
  for (std::size_t i = 0; i < fields.size(); ++i) {
    for (const double other : {fields[i] + 0x1p-40, kNaN}) {
      auto changed = fields;
      changed[i] = other;
      EXPECT_FALSE(rect == std::bit_cast<ZRMapRect>(changed)) << i;
      EXPECT_FALSE(region == std::bit_cast<ZRCoordinateRegion>(changed)) << i;
      EXPECT_EQ(rect.origin == std::bit_cast<ZRMapRect>(changed).origin, i > 1) << i;
    }
  }
}

TEST(MapRectIsNull, AsksTheOriginAlone) {
  EXPECT_TRUE(ZRMapRectIsNull(kNull));
  EXPECT_TRUE(ZRMapRectIsNull({{0.0, -kInf}, {1.0, 1.0}}));
  EXPECT_FALSE(ZRMapRectIsNull({{0.0, kNaN}, {kInf, kInf}}));
}

TEST(MBR, HoldsEveryPointAndPassesOverNaN) {
  EXPECT_EQ(values(ZRMBR(nullptr, 0)), values(kNull));
  const ZRMapPoint points[] = {{5000, 5000}, {-3, kNaN}, {7, 9000}, {kNaN, 1}, {6000, 2}};
  EXPECT_EQ(values(ZRMBR(points, 1)), values(ZRMapRect{{4000, 4000}, {2000, 2000}}));
  EXPECT_EQ(values(ZRMBR(points, 2)), values(ZRMapRect{{-3, 5000}, {5003, 0}}));
  EXPECT_EQ(values(ZRMBR(points, 5)), values(ZRMapRect{{-3, 1}, {6003, 8999}}));
  EXPECT_EQ(ZRMBR(std::span(points).first(2)), ZRMBR(points, 2));
  const ZRMapPoint farOut[] = {{1e19, -1e19}, {2e19, -2e19}};
  EXPECT_EQ(values(ZRMBR(farOut, 2)), values(ZRMapRect{{0x1p63, -2e19}, {2e19 - 0x1p63, -0x1p63 + 2e19}}));
}

}  // namespace
