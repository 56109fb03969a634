// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_FIXLINES_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_FIXLINES_H

#include <trip/TripRow.h>
#include <zrcore/StandardOutput.h>

/// One line per fix for other programs: columns separated by tabs, named by the line before the
/// first fix, "-" for what is unknown. No
/// value holds a blank.
class FixLines final : public trip::TripOutput {
 public:
  explicit FixLines(StandardOutput& output) : output_(output) {}
  void row(const trip::TripRow& row) override;
  void finish(const trip::TripSummary&) override {}

 private:
  StandardOutput& output_;
};

#endif
