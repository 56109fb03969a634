// SPDX-License-Identifier: Apache-2.0
#include "Outputs.h"

#include <unistd.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

#include "FileOutput.h"
#include "FolderLock.h"
#include "OutputError.h"
#include "OutputFile.h"

namespace trip {

namespace {

class FolderOutput final : public TripOutput {
 public:
  FolderOutput(const std::filesystem::path& dir, bool force, std::vector<PlaceMark> places)
      : lock_(dir), summaryPath_(dir / "summary.json"), isForced_(force) {
    const auto csv = dir / "trip.csv", geoJson = dir / "trip.geojson", png = dir / "trip.png", svg = dir / "trip.svg";
    for (const auto& target : {csv, geoJson, summaryPath_, png, svg}) requireFree(target, force);
    outputs_.push_back(makeCsvOutput(csv, force));
    outputs_.push_back(makeGeoJsonOutput(geoJson, force));
    outputs_.push_back(makePictureOutput(png, svg, force, std::move(places)));
    summary_ = makeSummaryOutput(summaryPath_, force);
  }

  void row(const TripRow& row) override {
    for (const auto& output : outputs_) output->row(row);
  }

  bool hasRoom() const override {
    return std::all_of(outputs_.begin(), outputs_.end(), [](const auto& output) { return output->hasRoom(); });
  }

  void finish(const TripSummary& summary) override {
    std::vector<FileOutput*> whole;
    for (const auto& output : outputs_) {
      if (tried([&] { output->finish(summary); })) whole.push_back(output.get());
    }
    if (isForced_) ::unlink(summaryPath_.c_str());  // an earlier run's would vouch for this one's files
    for (FileOutput* const output : whole) tried([output] { output->commit(); });
    if (failure_) std::rethrow_exception(failure_);
    summary_->finish(summary);
    summary_->commit();
  }

 private:
  /// Does a step. Of those that fail, the first is kept.
  bool tried(const std::function<void()>& step) {
    try {
      step();
      return true;
    } catch (const std::exception&) {  // of a picture, too: no memory
      if (!failure_) failure_ = std::current_exception();
      return false;
    }
  }

  FolderLock lock_;
  std::filesystem::path summaryPath_;
  bool isForced_;
  std::vector<std::unique_ptr<FileOutput>> outputs_;
  std::unique_ptr<FileOutput> summary_;
  std::exception_ptr failure_;
};

}  // namespace

std::unique_ptr<TripOutput> makeOutputs(const std::filesystem::path& dir, bool force, std::vector<PlaceMark> places) {
  std::error_code error;
  std::filesystem::create_directories(dir, error);
  if (error) throw OutputError::ofSystem(dir, error.value());
  return std::make_unique<FolderOutput>(dir, force, std::move(places));
}

}  // namespace trip
