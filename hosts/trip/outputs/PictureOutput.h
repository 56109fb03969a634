// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_PICTUREOUTPUT_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_PICTUREOUTPUT_H

#include <trip/drawing/TripPicture.h>

#include "FileOutput.h"

namespace trip {

/// The picture of a trip, as PNG and as SVG.
class PictureOutput final : public FileOutput {
 public:
  PictureOutput(const std::filesystem::path& png, const std::filesystem::path& svg, bool force,
                std::vector<PlaceMark> places = {});
  void row(const TripRow& row) override;
  void finish(const TripSummary& summary) override;
  void commit() override;

 private:
  OutputFile png_;
  OutputFile svg_;
  TripPicture picture_;
};

}  // namespace trip

#endif
