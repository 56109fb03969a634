// SPDX-License-Identifier: Apache-2.0
/// @file
/// What a host may ask of a source's fixes before anything else sees them.
#ifndef ZRCORE_READERS_FIXINTAKE_H
#define ZRCORE_READERS_FIXINTAKE_H

#include <ZRCore/NSDate.h>

#include <functional>
#include <optional>
#include <string>

#include "FixReader.h"

namespace readers {

/// Receivers count weeks in ten bits: 1024 of them after it should, a counter begins anew, and all dates lie so far
/// back.
class FixIntake {
 public:
  struct Options {
    bool leavesOutEstimates = false;   ///< by dead reckoning or a simulator
    bool repairsWeekRollover = false;  ///< adds 1024 weeks as often as the date then still lies before `now`
    std::function<NSDate()> now = {};  ///< empty: nothing is known about the present, and no date is judged
  };

  explicit FixIntake(Options options) : options_(std::move(options)) {}

  /// Repairs what is asked for. False: the fix is left out.
  bool takes(SourceFix& fix) const;

  /// What to say about the date of a live source, once: a date that lies more than ten years back is none of today's.
  std::optional<std::string> remarkOnDate(const SourceFix& fix);

 private:
  Options options_;
  bool hasRemarked_ = false;
};

}  // namespace readers

#endif
