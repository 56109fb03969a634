// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <ZRCore/ZRGeometry.hpp>

#include "GeometryValues.h"

namespace {

TEST(OddValues, ComeOutToTheBit) {
  const ZRMapRect minusZero = {{-0.0, -0.0}, {0.0, 0.0}}, zero = {{0.0, 0.0}, {0.0, 0.0}};
  struct {
    const char* what;
    double result, expected;
  } const rows[] = {
      {"the sign of a zero longitude goes through", mercatorTransform(0.0, -0.0).x, -0.0},
      {"the western edge has no sign to lose", ZRCoordinateForMapPoint({-0.0, 0.0}).longitude, -180.0},
      {"no distance is a positive zero", distanceBetweenPoints(ZRMapPoint{-0.0, -1.0}, ZRMapPoint{0.0, -1.0}), 0.0},
      {"of equal edges the first rectangle's stays", ZRMapRectUnion(minusZero, zero).origin.x, -0.0},
      {"of equal edges the first rectangle's stays", ZRMapRectUnion(zero, minusZero).origin.x, 0.0},
      {"of equal edges the first rectangle's stays", ZRMapRectIntersection(minusZero, zero).origin.y, -0.0},
      {"a size has no sign to lose", ZRMapRectIntersection({{0.0, 0.0}, {-0.0, 0.0}}, zero).size.width, 0.0},
      {"minus zero is not west of north", ZRCoordinateUtils::bearingFromTo({0.0, 0.0}, {1.0, -0.0}), -0.0},
      {"south has one bearing from either side", ZRCoordinateUtils::bearingFromTo({1.0, 0.0}, {0.0, -0.0}), 180.0},
      {"a NaN edge of the first rectangle carries over", ZRMapRectUnion({{kNaN, 0}, {1, 1}}, zero).origin.x, kNaN},
      {"one of the second is passed over", ZRMapRectUnion(zero, {{kNaN, 0}, {1, 1}}).origin.x, 0.0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(bits(row.result), bits(row.expected)) << row.result;
  }
}

}  // namespace
