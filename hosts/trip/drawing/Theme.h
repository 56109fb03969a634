// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_THEME_H
#define ZRCORE_HOSTS_TRIP_DRAWING_THEME_H

#include "Canvas.h"

/// The looks of a trip's picture. Raw and smoothed differ in lightness as well as in hue, and the jumps' orange stands
/// apart from both for every kind of colour vision.
namespace trip::theme {

constexpr Color rgb(unsigned hex) {
  return {((hex >> 16) & 0xff) / 255.0, ((hex >> 8) & 0xff) / 255.0, (hex & 0xff) / 255.0};
}

inline constexpr Color kPaper = rgb(0xffffff);
inline constexpr Color kPanel = rgb(0xf7f9fb);
inline constexpr Color kPanelEdge = rgb(0xd8e0e8);
inline constexpr Color kGrid = rgb(0xe6ebf0);
inline constexpr Color kInk = rgb(0x17212b);
inline constexpr Color kQuiet = rgb(0x5a6b7b);  ///< labels
inline constexpr Color kRaw = rgb(0xa3bcd2);
inline constexpr Color kSmoothed = rgb(0x0a5fd1);
inline constexpr Color kJump = rgb(0xd9580d);
inline constexpr Color kPlace = rgb(0x1a6b3c);

inline constexpr double kWidth = 1600.0, kHeight = 1200.0;
inline constexpr double kMargin = 56.0;
inline constexpr double kCorner = 10.0;

inline constexpr double kTitleSize = 34.0, kHeadingSize = 18.0, kLabelSize = 15.0, kCoordinateSize = 13.0;
inline constexpr double kRawTrackWidth = 5.5, kSmoothedTrackWidth = 2.4;
inline constexpr double kRawSeriesWidth = 2.2, kSmoothedSeriesWidth = 2.0;
inline constexpr double kMarkRadius = 7.0;

}  // namespace trip::theme

#endif
