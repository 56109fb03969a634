// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_PICTUREOUTPUT_H
#define ZRCORE_HOSTS_TRIP_PICTUREOUTPUT_H

#include "OutputFile.h"
#include "TripPicture.h"
#include "TripRow.h"

namespace trip {

/// The picture of a trip, as PNG and as SVG.
class PictureOutput : public TripOutput {
 public:
  PictureOutput(const std::filesystem::path& png, const std::filesystem::path& svg, bool force,
                std::vector<PlaceMark> places = {});
  void row(const TripRow& row) override;
  void finish(const TripSummary& summary) override;

  const TripPicture& picture() const { return picture_; }

 private:
  OutputFile png_;
  OutputFile svg_;
  TripPicture picture_;
};

}  // namespace trip

#endif
