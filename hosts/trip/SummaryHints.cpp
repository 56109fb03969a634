// SPDX-License-Identifier: Apache-2.0
#include "SummaryHints.h"

namespace trip {

std::string missingSpeedHint(const TripSummary& summary) {
  if (summary.fixes == 0 || summary.fixesWithSpeed > 0) return {};
  const std::string fact = "no speeds were told";
  if (!summary.couldDeriveSpeed) return fact;
  const bool hasTimes = summary.firstSecondsSince1970 != summary.lastSecondsSince1970;
  return fact +
         (hasTimes ? "; --derive-speed works them out from places and times" : ", and no times to work them out from");
}

std::string missingAccuracyHint(const TripSummary& summary) {
  if (summary.fixes == 0 || summary.fixesWithAccuracy > 0 || summary.filter != "measured") return {};
  const std::string fact = "no accuracies were told, so the receiver never settles and no jump is marked";
  return summary.couldAssumeAccuracy ? fact + "; --assume-accuracy METRES helps" : fact;
}

}  // namespace trip
