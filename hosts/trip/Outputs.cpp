// SPDX-License-Identifier: Apache-2.0
#include "Outputs.h"

#include <utility>

#include "CsvOutput.h"
#include "GeoJsonOutput.h"
#include "OutputError.h"
#include "OutputFile.h"
#include "PictureOutput.h"
#include "SummaryOutput.h"

namespace trip {

std::vector<std::unique_ptr<TripOutput>> makeOutputs(const std::filesystem::path& dir, bool force,
                                                     std::vector<PlaceMark> places) {
  const auto csv = dir / "trip.csv", geoJson = dir / "trip.geojson", summary = dir / "summary.json",
             png = dir / "trip.png", svg = dir / "trip.svg";
  for (const auto& target : {csv, geoJson, summary, png, svg}) requireFree(target, force);

  std::error_code error;
  std::filesystem::create_directories(dir, error);
  if (error) throw OutputError::ofSystem(dir, error.value());

  std::vector<std::unique_ptr<TripOutput>> outputs;
  outputs.push_back(std::make_unique<CsvOutput>(csv, force));
  outputs.push_back(std::make_unique<GeoJsonOutput>(geoJson, force));
  outputs.push_back(std::make_unique<SummaryOutput>(summary, force));
  outputs.push_back(std::make_unique<PictureOutput>(png, svg, force, std::move(places)));
  return outputs;
}

}  // namespace trip
