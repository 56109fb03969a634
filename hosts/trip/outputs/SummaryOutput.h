// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_SUMMARYOUTPUT_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_SUMMARYOUTPUT_H

#include "FileOutput.h"

namespace trip {

/// The summary as a JSON object: all its fields, the times in ISO 8601 (null when unknown) and the duration.
/// @param indent blanks per level; -1: everything in one line.
std::string summaryJson(const TripSummary& summary, int indent);

/// The summary as a file.
class SummaryOutput final : public FileOutput {
 public:
  SummaryOutput(const std::filesystem::path& target, bool force);
  void row(const TripRow& row) override;
  void finish(const TripSummary& summary) override;
  void commit() override { file_.commit(); }

 private:
  OutputFile file_;
};

}  // namespace trip

#endif
