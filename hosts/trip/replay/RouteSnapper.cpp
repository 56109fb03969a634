// SPDX-License-Identifier: Apache-2.0
#include "RouteSnapper.h"

#include <algorithm>
#include <cstddef>

#include "NearestOnLine.h"

namespace trip {

namespace {

constexpr std::size_t kSegmentsPerBounds = 64;

}  // namespace

void RouteSnapper::Bounds::include(CLLocationCoordinate2D vertex) {
  southWest = {std::min(southWest.latitude, vertex.latitude), std::min(southWest.longitude, vertex.longitude)};
  northEast = {std::max(northEast.latitude, vertex.latitude), std::max(northEast.longitude, vertex.longitude)};
}

void RouteSnapper::append(CLLocationCoordinate2D vertex) {
  if (!vertices_.empty()) {
    const CLLocationCoordinate2D start = vertices_.back();
    vertex.longitude = longitudeNear(vertex.longitude, start.longitude);
    if ((vertices_.size() - 1) % kSegmentsPerBounds == 0) bounds_.push_back({start, start});
    bounds_.back().include(vertex);
  }
  vertices_.push_back(vertex);
}

std::optional<CLLocationCoordinate2D> RouteSnapper::snap(CLLocationCoordinate2D place) const {
  NearestOnLine nearest(place);
  if (vertices_.size() == 1) nearest.consider(vertices_.front(), vertices_.front());
  for (std::size_t i = 0; i < bounds_.size(); ++i) {
    if (!nearest.mayImproveWithin(bounds_[i].southWest, bounds_[i].northEast)) continue;
    const std::size_t begin = i * kSegmentsPerBounds;
    const std::size_t end = std::min(begin + kSegmentsPerBounds, vertices_.size() - 1);
    for (std::size_t segment = begin; segment < end; ++segment) {
      nearest.consider(vertices_[segment], vertices_[segment + 1]);
    }
  }
  return nearest.place();
}

}  // namespace trip
