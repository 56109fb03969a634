// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_GPXRECORDING_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_GPXRECORDING_H

#include <trip/TripRow.h>

#include <filesystem>

#include "GpxJournal.h"
#include "OutputFile.h"

namespace trip {

/// The fixes, as they were received, in a GPX file that appears with the first of them and is whole at any moment from
/// then on. Every failure is an OutputError.
class GpxRecording final : public TripOutput {
 public:
  /// @param force  whether a file of that name may be replaced
  GpxRecording(std::filesystem::path target, bool force) : file_(std::move(target), force) {}
  void row(const TripRow& row) override;
  void finish(const TripSummary& summary) override;
  bool hasRoom() const override { return hasRoomForRow(journal_.size()); }

 private:
  void write(const GpxJournal::Write& write);

  GpxJournal journal_;
  OutputFile file_;
  bool isBegun_ = false;
};

}  // namespace trip

#endif
