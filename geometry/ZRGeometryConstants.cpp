// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRGeometry.h>

#include <limits>

#include "Numbers.h"

namespace {
constexpr double kInfinity = std::numeric_limits<double>::infinity();
}

const double EarthRadius = geometry::kEarthRadius;

const double minLat = -geometry::kLatitudeLimit;
const double maxLat = geometry::kLatitudeLimit;
const double minLon = -geometry::kLongitudeLimit;
const double maxLon = geometry::kLongitudeLimit;

const ZRMapSize ZRMapSizeWorld = {geometry::kWorldWidth, geometry::kWorldWidth};
const ZRMapRect ZRMapRectWorld = {{0.0, 0.0}, {geometry::kWorldWidth, geometry::kWorldWidth}};
const ZRMapRect ZRMapRectNull = {{kInfinity, kInfinity}, {kInfinity, kInfinity}};
const ZRCoordinateRegion ZRCoordinateRegionNull = {{kInfinity, kInfinity}, {kInfinity, kInfinity}};
const ZRCoordinateSpan ZRCoordinateSpanNull = {kInfinity, kInfinity};
const CLLocationCoordinate2D ZRCoordinateNull = {kInfinity, kInfinity};
const CLLocationCoordinate2D kCLLocationCoordinate2DInvalid = {-180.0, -180.0};

const double ZRMetersToMileRatio = 0.0006213711922373339;
const int32_t maxZoom = 18;
const int32_t tileSize = 256;

const double ZRCoreVersionNumber = 1.0;
// Two blanks before "PROJECT", as tools that search binaries for this mark expect it.
const unsigned char ZRCoreVersionString[] = "@(#)PROGRAM:ZRCore  PROJECT:ZRCore-1\n";

double metersPerDegreeLat = 111181.91;

// Ten latitudes a row. The pole has 1.0 and not 0.0, so that one can divide by it.
double metersPerDegreeLng[91] = {
    111181.91, 111164.97, 111114.18, 111029.53, 110911.07, 110758.82, 110572.83, 110353.15, 110099.86, 109813.04,  // 0
    109492.76, 109139.13, 108752.26, 108332.25, 107879.25, 107393.38, 106874.8,  106323.67, 105740.15, 105124.42,  // 10
    104476.66, 103797.08, 103085.89, 102343.29, 101569.51, 100764.8,  99929.39,  99063.54,  98167.52,  97241.6,    // 20
    96286.05,  95301.17,  94287.27,  93244.64,  92173.61,  91074.51,  89947.66,  88793.41,  87612.12,  86404.14,   // 30
    85169.83,  83909.59,  82623.79,  81312.82,  79977.08,  78616.98,  77232.93,  75825.36,  74394.7,   72941.37,   // 40
    71465.82,  69968.5,   68449.88,  66910.4,   65350.54,  63770.78,  62171.59,  60553.47,  58916.9,   57262.38,   // 50
    55590.42,  53901.53,  52196.23,  50475.02,  48738.44,  46987.01,  45221.28,  43441.76,  41649.02,  39843.59,   // 60
    38026.03,  36196.88,  34356.7,   32506.07,  30645.53,  28775.65,  26897.02,  25010.19,  23115.74,  21214.25,   // 70
    19306.3,   17392.47,  15473.34,  13549.5,   11621.53,  9690.02,   7755.56,   5818.74,   3880.14,   1940.37,    // 80
    1.0,                                                                                                           // 90
};
