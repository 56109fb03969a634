// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_OUTPUTS_GPXJOURNAL_H
#define ZRCORE_HOSTS_TRIP_OUTPUTS_GPXJOURNAL_H

#include <trip/TripRow.h>

#include <cstdint>
#include <string>
#include <vector>

namespace trip {

/// Says what to write where, so that a GPX file is whole after each write: the process may be killed at any moment.
///
/// A system completes a write within one page of a file once it has begun, whatever becomes of the process; at a page's
/// end it may break off. So no write crosses the end of a page. Before the points reach it, the file's end is written
/// at the beginning of the next page, hidden in a processing instruction; then one write opens a comment that swallows
/// the instruction's start, and the end behind it becomes the one that counts.
class GpxJournal {
 public:
  static constexpr std::uint64_t kPageBytes = 4096;

  struct Write {
    std::uint64_t offset = 0;
    std::string bytes;
  };

  /// A file without points. Fits a page.
  std::string begin();

  /// The writes, in their order, that add a point.
  std::vector<Write> append(const TripRow& row);

  /// Of the file so far, bytes.
  std::uint64_t size() const { return size_; }

 private:
  void moveEndToNextPage(std::vector<Write>& writes);

  std::uint64_t end_ = 0;  ///< where the closing tags begin
  std::uint64_t size_ = 0;
};

}  // namespace trip

#endif
