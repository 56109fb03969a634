// SPDX-License-Identifier: Apache-2.0
#include "GpxRecording.h"

#include <unistd.h>

#include <cerrno>

#include "OutputError.h"

namespace trip {

void GpxRecording::row(const TripRow& row) {
  if (!isBegun_) write({0, journal_.begin()});
  for (const GpxJournal::Write& part : journal_.append(row)) write(part);
  if (!isBegun_) file_.commit();
  isBegun_ = true;
}

void GpxRecording::write(const GpxJournal::Write& write) {
  const auto written =
      ::pwrite(file_.descriptor(), write.bytes.data(), write.bytes.size(), static_cast<off_t>(write.offset));
  if (written < 0) throw OutputError::ofSystem(file_.target(), errno);
  if (static_cast<std::size_t>(written) != write.bytes.size()) throw OutputError::ofSystem(file_.target(), ENOSPC);
}

void GpxRecording::finish(const TripSummary&) {
  if (isBegun_) file_.store();
}

}  // namespace trip
