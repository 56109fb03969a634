// SPDX-License-Identifier: Apache-2.0
#include "Exact.h"

#include "Functions.h"

namespace exact {
namespace {
ZR_EXACT_BUILD::Doubt<double> none;
}
double sin(double x) noexcept { return ZR_EXACT_BUILD::sin<double>(x, none); }
double cos(double x) noexcept { return ZR_EXACT_BUILD::cos<double>(x, none); }
double tan(double x) noexcept { return ZR_EXACT_BUILD::tan<double>(x, none); }
double asin(double x) noexcept { return ZR_EXACT_BUILD::asin<double>(x, none); }
double acos(double x) noexcept { return ZR_EXACT_BUILD::acos<double>(x, none); }
double atan(double x) noexcept { return ZR_EXACT_BUILD::atan<double>(x, none); }
double exp(double x) noexcept { return ZR_EXACT_BUILD::exp<double>(x, none); }
double log(double x) noexcept { return ZR_EXACT_BUILD::log<double>(x, none); }
double atan2(double y, double x) noexcept { return ZR_EXACT_BUILD::atan2<double>(y, x, none); }
double hypot(double y, double x) noexcept { return ZR_EXACT_BUILD::hypot<double>(y, x, none); }
SineCosine sincos(double x) noexcept {auto r=ZR_EXACT_BUILD::sincos<double>(x, none); return {r.sine,r.cosine}; }
}  // namespace exact
