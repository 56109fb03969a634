// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_CSVOUTPUT_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_CSVOUTPUT_H

#include "FileOutput.h"

namespace trip {

/// A table with a line per fix. Its first columns are those of a recording, so that it can be replayed in turn.
/// Units: metres, metres per second, degrees; marks are 1 or 0; what is missing is an empty cell.
class CsvOutput final : public FileOutput {
 public:
  CsvOutput(const std::filesystem::path& target, bool force);
  void row(const TripRow& row) override;
  void finish(const TripSummary& summary) override;
  void commit() override { file_.commit(); }
  bool hasRoom() const override;

 private:
  OutputFile file_;
  std::string line_;
};

}  // namespace trip

#endif
