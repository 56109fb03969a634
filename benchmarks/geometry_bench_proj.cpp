// SPDX-License-Identifier: Apache-2.0
#include <benchmark/benchmark.h>
#include <proj.h>

#include <cmath>
#include <memory>

#include "geometry_places.h"

namespace {

void projectProj(benchmark::State& state) {
  const std::unique_ptr<PJ_CONTEXT, decltype(&proj_context_destroy)> context(proj_context_create(),
                                                                             proj_context_destroy);
  const std::unique_ptr<PJ, decltype(&proj_destroy)> webMercator(
      proj_create(context.get(), "+proj=webmerc +ellps=WGS84"), proj_destroy);
  if (!webMercator) {
    state.SkipWithError("PROJ does not know webmerc");
    return;
  }
  std::vector<PJ_COORD> radians;
  for (const CLLocationCoordinate2D& place : places()) {
    radians.push_back(proj_coord(proj_torad(place.longitude), proj_torad(place.latitude), 0.0, 0.0));
  }
  timeEach(state, [&](std::size_t i) { return proj_trans(webMercator.get(), PJ_FWD, radians[i]); });
}
BENCHMARK(projectProj)->Name("project/PROJ");

}  // namespace
