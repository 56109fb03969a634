// SPDX-License-Identifier: Apache-2.0
#include "CsvOutput.h"

#include <trip/OutputText.h>

namespace trip {

CsvOutput::CsvOutput(const std::filesystem::path& target, bool force) : file_(target, force) {
  file_.write(kRecordingHeader);
  file_.write(",smooth_speed,smooth_course,significant,jump,stable,snapped_lat,snapped_lon\n");
}

void CsvOutput::row(const TripRow& row) {
  line_.clear();
  appendRecordingCells(line_, row);
  appendCell(line_, knownSmoothSpeed(row));
  appendCell(line_, std::optional(row.smoothCourseDegrees));
  appendMark(line_, row.significant);
  appendMark(line_, row.jump);
  appendMark(line_, row.stable);
  appendCell(line_, row.snapped ? std::optional(row.snapped->latitude) : std::nullopt);
  appendCell(line_, row.snapped ? std::optional(row.snapped->longitude) : std::nullopt);
  line_ += '\n';
  file_.write(line_);
}

void CsvOutput::finish(const TripSummary&) { file_.store(); }

bool CsvOutput::hasRoom() const { return hasRoomForRow(file_.bytesWritten()); }

}  // namespace trip
