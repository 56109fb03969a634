// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_READERS_CSVREADER_H
#define ZRCORE_PLATFORM_READERS_CSVREADER_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "CsvRecord.h"
#include "LineReader.h"

namespace readers {

/// Reads comma-separated values. The first record names the columns, in any order and case: `lat` and `lon` (decimal
/// degrees) must be among them; `time` (ISO 8601 or seconds since 1970), `altitude`, `accuracy` (metres), `speed`
/// (metres per second) and `course` (degrees) may; others are passed over. Lines that begin with # are comments.
class CsvReader final : public LineReader {
 protected:
  void readLine(std::string_view text, const Reporter& reporter) override;
  void readEnd(const Reporter& reporter) override;

 private:
  enum class State { beforeHeader, inRows, headerUnusable };

  void readHeader(const Reporter& reporter);
  void readRow(const Reporter& reporter);
  std::string_view cell(const char* column) const;

  CsvRecord record_;
  std::uint64_t recordLine_ = 0;
  State state_ = State::beforeHeader;
  std::map<std::string, std::size_t, std::less<>> columns_;  // name to index; of two equal names the first counts
  std::size_t columnCount_ = 0;
};

}  // namespace readers

#endif
