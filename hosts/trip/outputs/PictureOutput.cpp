// SPDX-License-Identifier: Apache-2.0
#include "PictureOutput.h"

#include <trip/drawing/TripDrawing.h>

#include <utility>

namespace trip {

PictureOutput::PictureOutput(const std::filesystem::path& png, const std::filesystem::path& svg, bool force,
                             std::vector<PlaceMark> places)
    : png_(png, force), svg_(svg, force) {
  picture_.setPlaces(std::move(places));
}

void PictureOutput::row(const TripRow& row) { picture_.add(row); }

void PictureOutput::finish(const TripSummary& summary) {
  png_.write(drawPng(picture_, summary));
  svg_.write(drawSvg(picture_, summary));
  png_.store();
  svg_.store();
}

void PictureOutput::commit() {
  png_.commit();
  svg_.commit();
}

}  // namespace trip
