// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_LOADEDRECORDING_H
#define ZRCORE_HOSTS_DEMO_LOADEDRECORDING_H

#include <ZRCore/CLLocation.h>
#include <trip/drawing/Envelope.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Timeline.h"
#include "TrackPoint.h"

namespace demo {

/// A recording in memory, ready to be played from any place.
struct LoadedRecording {
  /// The rest of a longer recording is left out: a window is not the place for a month at ten fixes a second.
  static constexpr std::size_t kMostFixes = 1'000'000;

  std::string name;    ///< of the file, without folders, UTF-8
  std::string format;  ///< "GPX", "NMEA 0183" …
  std::vector<ZRPositionFix> fixes;
  Timeline timeline;              ///< of the same fixes
  std::vector<TrackPoint> route;  ///< of the same fixes, in the map plane
  trip::Envelope envelope;        ///< of the whole trip in the map plane
  std::size_t faults = 0;         ///< places where something was dropped
  bool isCutShort = false;        ///< longer than kMostFixes

  /// "CSV · 656 fixes · 12 min", and what could not be read.
  std::string summary() const;
};

/// Reads the recording at `path`.
/// @throws trip::RecordingError when there is no fix to be had
LoadedRecording loadRecording(const std::string& path);

}  // namespace demo

#endif
