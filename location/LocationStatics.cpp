// SPDX-License-Identifier: Apache-2.0
#include "LocationStatics.h"

#include <utility>

namespace {
std::unique_ptr<LocationStatics>& holder() {
  static auto* const instance = new std::unique_ptr<LocationStatics>(new LocationStatics);
  return *instance;
}
}  // namespace

LocationStatics& locationStatics() { return *holder(); }

void LocationTestPeer::forget() {
  // The old state goes last: the managers in it look for their nodes in the new one.
  const auto old = std::exchange(holder(), std::make_unique<LocationStatics>());
}
