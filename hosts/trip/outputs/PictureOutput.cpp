// SPDX-License-Identifier: Apache-2.0
#include <trip/drawing/TripDrawing.h>
#include <trip/drawing/TripPicture.h>

#include <utility>

#include "FileOutput.h"
#include "OutputFile.h"

namespace trip {

namespace {

class PictureOutput final : public FileOutput {
 public:
  PictureOutput(const std::filesystem::path& png, const std::filesystem::path& svg, bool force,
                std::vector<PlaceMark> places)
      : png_(png, force), svg_(svg, force) {
    picture_.setPlaces(std::move(places));
  }

  void row(const TripRow& row) override { picture_.add(row); }
  void finish(const TripSummary& summary) override {
    png_.write(drawPng(picture_, summary));
    svg_.write(drawSvg(picture_, summary));
    png_.store();
    svg_.store();
  }
  void commit() override {
    png_.commit();
    svg_.commit();
  }

 private:
  OutputFile png_, svg_;
  TripPicture picture_;
};

}  // namespace

std::unique_ptr<FileOutput> makePictureOutput(const std::filesystem::path& png, const std::filesystem::path& svg,
                                              bool force, std::vector<PlaceMark> places) {
  return std::make_unique<PictureOutput>(png, svg, force, std::move(places));
}

}  // namespace trip
