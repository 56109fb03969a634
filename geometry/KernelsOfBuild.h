// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_KERNELSOFBUILD_H
#define ZRCORE_GEOMETRY_KERNELSOFBUILD_H

// Included by one source a build.
#include "Batch.h"
#include "Bearing.h"
#include "FastProjection.h"
#include "Kernels.h"
#include "RectBatches.h"
#include "SphereFormulas.h"

namespace geometry::ZR_EXACT_BUILD {

namespace {

using Coordinate = CLLocationCoordinate2D;
using One = Two<double>;

exact::Doubt<double> none;  // single numbers leave no doubt

ZR_INLINE One twoOf(Coordinate coordinate) { return {coordinate.latitude, coordinate.longitude}; }
ZR_INLINE One twoOf(ZRMapPoint point) { return {point.x, point.y}; }

ZRMapPoint mapPointOf(Coordinate of) noexcept {
  const One point = mapPoint<double>(twoOf(of), none);
  return {point.first, point.second};
}

Coordinate coordinateOf(ZRMapPoint of) noexcept {
  const One place = coordinate<double>(twoOf(of), none);
  return {place.first, place.second};
}

double distanceOf(Coordinate from, Coordinate to) noexcept {
  return greatCircleDistance<double>(twoOf(from), twoOf(to), none);
}

double bearingOf(Coordinate from, Coordinate to) noexcept {
  return initialBearing<double>(twoOf(from), twoOf(to), none);
}

// Lambdas that take part in loops, in all lanes at once.
#define ZR_LANES(...) (__VA_ARGS__, [[maybe_unused]] exact::Doubt<Lanes> & doubt) __attribute__((always_inline))

void mapPointsOf(const Coordinate* from, ZRMapPoint* to, std::uint64_t count) noexcept {
  overEach(
      from, to, count, [] ZR_LANES(const Coordinate* in) { return mapPoint<Lanes>(loaded(in), doubt); },
      [](const Coordinate* in) { return mapPointOf(*in); });
}

void coordinatesOf(const ZRMapPoint* from, Coordinate* to, std::uint64_t count) noexcept {
  overEach(
      from, to, count, [] ZR_LANES(const ZRMapPoint* in) { return coordinate<Lanes>(loaded(in), doubt); },
      [](const ZRMapPoint* in) { return coordinateOf(*in); });
}

void mapPointsFastOf(const Coordinate* from, ZRMapPoint* to, std::uint64_t count) noexcept {
  overEach(
      from, to, count, [] ZR_LANES(const Coordinate* in) { return fastMapPoint<Lanes>(loaded(in)); },
      [](const Coordinate* in) {
        const One point = fastMapPoint<double>(twoOf(*in));
        return ZRMapPoint{point.first, point.second};
      });
}

void coordinatesFastOf(const ZRMapPoint* from, Coordinate* to, std::uint64_t count) noexcept {
  overEach(
      from, to, count, [] ZR_LANES(const ZRMapPoint* in) { return fastCoordinate<Lanes>(loaded(in)); },
      [](const ZRMapPoint* in) {
        const One place = fastCoordinate<double>(twoOf(*in));
        return Coordinate{place.first, place.second};
      });
}

void distancesFromOf(Coordinate from, const Coordinate* to, double* meters, std::uint64_t count) noexcept {
  const Two<Lanes> start = {exact::all<Lanes>(from.latitude), exact::all<Lanes>(from.longitude)};
  overEach(
      to, meters, count,
      [&start] ZR_LANES(const Coordinate* in) { return greatCircleDistance<Lanes>(start, loaded(in), doubt); },
      [from](const Coordinate* in) { return distanceOf(from, *in); });
}

void distancesAlongOf(const Coordinate* line, double* meters, std::uint64_t count) noexcept {
  overEach(
      line, meters, count,
      [] ZR_LANES(const Coordinate* in) { return greatCircleDistance<Lanes>(loaded(in), loaded(in + 1), doubt); },
      [](const Coordinate* in) { return distanceOf(in[0], in[1]); });
}

void bearingsAlongOf(const Coordinate* line, float* degrees, std::uint64_t count) noexcept {
  // In portions of doubles, which are rounded and turned afterwards.
  constexpr std::uint64_t kPortion = 32;
  double bearings[kPortion];
  for (std::uint64_t start = 0; start < count; start += kPortion) {
    const std::uint64_t size = count - start < kPortion ? count - start : kPortion;
    const Coordinate* const from = line + start;
    overEach(
        from, bearings, size,
        [] ZR_LANES(const Coordinate* in) { return initialBearing<Lanes>(loaded(in), loaded(in + 1), doubt); },
        [](const Coordinate* in) { return bearingOf(in[0], in[1]); });
    for (std::uint64_t i = 0; i < size; ++i) {
      degrees[start + i] = isSamePlace(from[i], from[i + 1]) ? 0.0F : compassBearing(bearings[i]);
    }
  }
}
#undef ZR_LANES

}  // namespace

extern const Kernels kKernels;
const Kernels kKernels = {
    .mercator =
        [](double latitude, double longitude) noexcept {
          const One meters = mercator<double>(latitude, longitude, none);
          return ZRDoublePoint{meters.first, meters.second};
        },
    .inverseMercator =
        [](double x, double y) noexcept {
          const One place = inverseMercator<double>(x, y, none);
          return Coordinate{place.first, place.second};
        },
    .mapPoint = mapPointOf,
    .coordinate = coordinateOf,
    .greatCircleDistance = distanceOf,
    .metersBetween = [](ZRMapPoint a, ZRMapPoint b) noexcept { return distanceOf(coordinateOf(a), coordinateOf(b)); },
    .initialBearing = bearingOf,
    .bearingBetween =
        [](const KnownPlace& from, const KnownPlace& to) noexcept {
          return initialBearing<double>({from.sine, from.cosine}, {to.sine, to.cosine},
                                        to.coordinate.longitude - from.coordinate.longitude, none);
        },
    .mapPoints = mapPointsOf,
    .coordinates = coordinatesOf,
    .mapPointsFast = mapPointsFastOf,
    .coordinatesFast = coordinatesFastOf,
    .distancesFrom = distancesFromOf,
    .distancesAlong = distancesAlongOf,
    .intersects = intersectsOf,
    .unionOf = unionOf,
    .bounds = boundsOf,
    .bearingsAlong = bearingsAlongOf,
};

}  // namespace geometry::ZR_EXACT_BUILD

#endif
