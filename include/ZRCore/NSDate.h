// SPDX-License-Identifier: Apache-2.0
/// @file
/// A point in time.
#ifndef ZRCORE_NSDATE_H
#define ZRCORE_NSDATE_H

#include <compare>

/// Seconds since 1970-01-01 00:00:00 UTC, without leap seconds. A double, so that fractions survive and far dates do
/// not overflow.
struct NSDate {
  double secondsSince1970 = 0.0;

  friend constexpr auto operator<=>(const NSDate&, const NSDate&) = default;
};

#endif
