// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_VIEW_TRIPTABLE_H
#define ZRCORE_HOSTS_ZRCORE_VIEW_TRIPTABLE_H

#include <trip/TripRow.h>
#include <zrcore/Terminal.h>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The picture of a running replay in text: the last fixes, and how far it has come. Bounded memory.
class TripTable {
 public:
  /// What stands above the columns; empty: nothing.
  void setHeading(std::string heading) { heading_ = std::move(heading); }
  void row(const trip::TripRow& row);
  void fault() { ++faults_; }

  /// @param fraction  0 to 1; nullopt for a stream
  void setProgress(std::optional<double> fraction) { fraction_ = fraction; }

  /// The table's lines from top to bottom, for a terminal of that size: columns that do not fit are left out from the
  /// right, rows from the top. Always one line less than the terminal has, at the most.
  std::vector<std::string> lines(const Terminal& terminal) const;

  /// What the table says of the columns that do not fit; empty when all do.
  static std::string leftOut(int columns);

 private:
  std::string statusLine(const Terminal& terminal) const;

  std::string heading_;
  std::deque<trip::TripRow> rows_;
  std::uint64_t fixes_ = 0;
  std::uint64_t faults_ = 0;
  std::optional<double> fraction_;
};

#endif
