// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_FIXLINES_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_FIXLINES_H

#include <trip/TripRow.h>
#include <zrcore/StandardOutput.h>

/// Writes one line per fix for other programs. Tabs separate the columns, the first line names them, and "-" stands for
/// an unknown value. No value contains a space.
class FixLines final : public trip::TripOutput {
 public:
  explicit FixLines(StandardOutput& output) : output_(output) {}
  void row(const trip::TripRow& row) override;
  void finish(const trip::TripSummary&) override {}

 private:
  StandardOutput& output_;
};

#endif
