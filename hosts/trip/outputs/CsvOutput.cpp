// SPDX-License-Identifier: Apache-2.0
#include <trip/OutputText.h>

#include "FileOutput.h"
#include "OutputFile.h"

namespace trip {

namespace {

class CsvOutput final : public FileOutput {
 public:
  CsvOutput(const std::filesystem::path& target, bool force) : file_(target, force) {
    file_.write(kRecordingHeader);
    file_.write(",smooth_speed,smooth_course,significant,jump,stable,snapped_lat,snapped_lon\n");
  }

  void row(const TripRow& row) override {
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
  void finish(const TripSummary&) override { file_.store(); }
  void commit() override { file_.commit(); }
  bool hasRoom() const override { return hasRoomForRow(file_.bytesWritten()); }

 private:
  OutputFile file_;
  std::string line_;
};

}  // namespace

std::unique_ptr<FileOutput> makeCsvOutput(const std::filesystem::path& target, bool force) {
  return std::make_unique<CsvOutput>(target, force);
}

}  // namespace trip
