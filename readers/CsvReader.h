// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_CSVREADER_H
#define ZRCORE_READERS_CSVREADER_H

#include <cstdint>
#include <string>
#include <string_view>

#include "CsvHeader.h"
#include "CsvRecord.h"
#include "FixEmitter.h"
#include "LineReader.h"

namespace readers {

/// Reads values separated by commas, semicolons or tabs. The first record names the columns, in any order and case:
/// `lat` and `lon` (decimal degrees; CsvHeader has their other names) must be among them; `time` (ISO 8601 or seconds
/// since 1970), `altitude`, `accuracy` (metres), `speed` (metres per second) and `course` (degrees) may; others are
/// passed over. Numbers have a decimal point, or, where the comma separates nothing, a decimal comma. Lines that begin
/// with # are comments.
class CsvReader final : public LineReader {
 protected:
  void readLine(std::string_view text, const Reporter& reporter) override;
  void readEnd(const Reporter& reporter) override;

 private:
  enum class State { beforeHeader, inRows, headerUnusable };

  void readHeader(std::string_view text, const Reporter& reporter);
  void readRow(const Reporter& reporter);
  std::string_view cell(const char* column) const;
  std::string number(const char* column) const;

  FixEmitter emitter_;
  CsvRecord record_;
  std::uint64_t recordLine_ = 0;
  State state_ = State::beforeHeader;
  std::string headerText_;  ///< of the record that names the columns, until it is complete
  CsvHeader header_;
};

}  // namespace readers

#endif
