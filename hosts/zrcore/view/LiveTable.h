// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_LIVETABLE_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_LIVETABLE_H

#include <trip/replay/Pacer.h>
#include <zrcore/StandardOutput.h>

#include <cstddef>
#include <functional>

#include "TripTable.h"

/// Shows a TripTable on the terminal and draws it again in place, at a bounded rate.
class LiveTable {
 public:
  static constexpr double kSecondsBetweenDrawings = 0.05;

  /// @param terminal  tells the terminal as it is now
  LiveTable(StandardOutput& output, trip::Waiter& clock, std::function<Terminal()> terminal)
      : output_(output), clock_(clock), terminal_(std::move(terminal)) {}

  /// For whoever changes the table: it will be drawn again.
  TripTable& changing();
  /// Time went by: draws the table if it changed and the last drawing is old enough.
  void refresh();
  /// Draws it as it is, without asking for the time.
  void draw();
  /// Takes the drawing away, so that another text can take its place; the next refresh draws it below.
  void erase();

 private:
  StandardOutput& output_;
  trip::Waiter& clock_;
  std::function<Terminal()> terminal_;
  TripTable table_;
  std::size_t linesDrawn_ = 0;
  double drawnAtSeconds_ = 0.0;
  bool isStale_ = false;
};

#endif
