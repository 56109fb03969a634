// SPDX-License-Identifier: Apache-2.0
#include "Kernels.h"

namespace geometry {

namespace common {
extern const Kernels kKernels;
}
#ifdef ZR_EXACT_HAS_BUILDS
namespace fused {
extern const Kernels kKernels;
}
namespace wide {
extern const Kernels kKernels;
}
#endif

const Kernels& kernelsOf([[maybe_unused]] exact::Build build) noexcept {
#ifdef ZR_EXACT_HAS_BUILDS
  if (build == exact::Build::kFused) return fused::kKernels;
  if (build == exact::Build::kWide) return wide::kKernels;
#endif
  return common::kKernels;
}

constinit const Kernels* bestKernels = &common::kKernels;

namespace {
[[maybe_unused]] const bool isChosen = (bestKernels = &kernelsOf(exact::bestBuild()), true);
}

}  // namespace geometry
