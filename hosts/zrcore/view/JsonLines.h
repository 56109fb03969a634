// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_JSONLINES_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_JSONLINES_H

#include <trip/TripRow.h>
#include <zrcore/StandardOutput.h>

/// One JSON object per fix, each on a line of its own, and as the last line an object whose only key is "summary".
class JsonLines final : public trip::TripOutput {
 public:
  explicit JsonLines(StandardOutput& output) : output_(output) {}
  void row(const trip::TripRow& row) override;
  void finish(const trip::TripSummary& summary) override;

 private:
  StandardOutput& output_;
};

#endif
