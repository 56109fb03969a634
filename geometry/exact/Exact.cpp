// SPDX-License-Identifier: Apache-2.0
#include "Exact.h"

namespace exact {

namespace common {
extern const Functions kFunctions;
}
#ifdef ZR_EXACT_HAS_BUILDS
namespace fused {
extern const Functions kFunctions;
}
#endif

Build bestBuild() noexcept {
#ifdef ZR_EXACT_HAS_BUILDS
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) {
    const bool isWide =
        __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
    return isWide ? Build::kWide : Build::kFused;
  }
#endif
  return Build::kCommon;
}

const Functions& functionsOf([[maybe_unused]] Build build) noexcept {
#ifdef ZR_EXACT_HAS_BUILDS
  if (build != Build::kCommon) return fused::kFunctions;
#endif
  return common::kFunctions;
}

namespace {

/// The common build's until this file's variables are initialised, for callers that are quicker than that.
constinit const Functions* best = &common::kFunctions;
[[maybe_unused]] const bool isChosen = (best = &functionsOf(bestBuild()), true);

}  // namespace

double sin(double angle) noexcept { return best->sin(angle); }
double cos(double angle) noexcept { return best->cos(angle); }
double tan(double angle) noexcept { return best->tan(angle); }
double asin(double sine) noexcept { return best->asin(sine); }
double acos(double cosine) noexcept { return best->acos(cosine); }
double atan(double tangent) noexcept { return best->atan(tangent); }
double atan2(double y, double x) noexcept { return best->atan2(y, x); }
double exp(double exponent) noexcept { return best->exp(exponent); }
double log(double value) noexcept { return best->log(value); }
double hypot(double x, double y) noexcept { return best->hypot(x, y); }
SineCosine sincos(double angle) noexcept { return best->sincos(angle); }

}  // namespace exact
