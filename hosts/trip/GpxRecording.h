// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_GPXRECORDING_H
#define ZRCORE_HOSTS_TRIP_GPXRECORDING_H

#include <filesystem>

#include "GpxJournal.h"
#include "OutputFile.h"
#include "TripRow.h"

namespace trip {

/// The fixes, as they were received, in a GPX file that is whole at any moment. Every failure is an OutputError.
class GpxRecording final : public TripOutput {
 public:
  /// @param force  whether a file of that name may be replaced
  GpxRecording(std::filesystem::path target, bool force);
  void row(const TripRow& row) override;
  void finish(const TripSummary& /*summary*/) override {}

 private:
  std::filesystem::path target_;
  GpxJournal journal_;
  FileHandle file_;
};

}  // namespace trip

#endif
