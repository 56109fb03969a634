// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_GEOMETRY_EXACT_FUNCTIONSOFBUILD_H
#define ZRCORE_GEOMETRY_EXACT_FUNCTIONSOFBUILD_H

// Included by one source a build.
#include "Exact.h"
#include "Functions.h"

namespace exact::ZR_EXACT_BUILD {

namespace {

Doubt<double> none;  // single numbers leave no doubt

constexpr Functions kOwn = {
    .sin = [](double x) noexcept { return sin<double>(x, none); },
    .cos = [](double x) noexcept { return cos<double>(x, none); },
    .tan = [](double x) noexcept { return tan<double>(x, none); },
    .asin = [](double x) noexcept { return asin<double>(x, none); },
    .acos = [](double x) noexcept { return acos<double>(x, none); },
    .atan = [](double x) noexcept { return atan<double>(x, none); },
    .exp = [](double x) noexcept { return exp<double>(x, none); },
    .log = [](double x) noexcept { return log<double>(x, none); },
    .atan2 = [](double y, double x) noexcept { return atan2<double>(y, x, none); },
    .hypot = [](double x, double y) noexcept { return hypot<double>(x, y, none); },
    .sincos =
        [](double x) noexcept {
          const CirclePoint<double> point = sincos<double>(x, none);
          return SineCosine{point.sine, point.cosine};
        },
};

}  // namespace

extern const Functions kFunctions;
const Functions kFunctions = kOwn;

}  // namespace exact::ZR_EXACT_BUILD

#endif
