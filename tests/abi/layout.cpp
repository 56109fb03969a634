// SPDX-License-Identifier: Apache-2.0
// The records of the C surface keep their layout: programs in other languages hard-code it.

#include <ZRCore/ZRGeometry.h>

#include <cstddef>
#include <type_traits>

#define EXPECT_RECORD(record, doubles, lastField)                                                    \
  static_assert(std::is_trivially_copyable_v<record> && std::is_standard_layout_v<record>);          \
  static_assert(sizeof(record) == (doubles) * sizeof(double) && alignof(record) == alignof(double)); \
  static_assert(offsetof(record, lastField) + sizeof(record::lastField) == sizeof(record))

EXPECT_RECORD(CLLocationCoordinate2D, 2, longitude);
EXPECT_RECORD(ZRCoordinateSpan, 2, longitudeDelta);
EXPECT_RECORD(ZRCoordinateRegion, 4, span);
EXPECT_RECORD(ZRMapPoint, 2, y);
EXPECT_RECORD(ZRMapSize, 2, height);
EXPECT_RECORD(ZRMapRect, 4, size);
EXPECT_RECORD(ZRDoublePoint, 2, y);
EXPECT_RECORD(ZRBoundingBox, 4, d);
static_assert(offsetof(ZRBoundingBox, b) == 8 && offsetof(ZRBoundingBox, c) == 16);
static_assert(std::is_same_v<CGRectEdge, uint32_t>);
static_assert(CGRectMinXEdge == 0 && CGRectMinYEdge == 1 && CGRectMaxXEdge == 2 && CGRectMaxYEdge == 3);
