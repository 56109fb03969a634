// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_CSVRECORD_H
#define ZRCORE_READERS_CSVRECORD_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace readers {

/// One record of comma-separated values (RFC 4180), put together from one or more lines: a cell in quotation marks may
/// hold line ends.
class CsvRecord {
 public:
  /// @param separator  what stands in the comma's place
  explicit CsvRecord(char separator = ',') : separator_(separator) {}

  /// Adds a line.
  /// @return  whether the record is complete; if not, a quotation mark is still open and the next line belongs to it.
  bool append(std::string_view line);

  /// Begins anew.
  void clear();

  bool isEmpty() const { return bytes_ == 0; }
  std::size_t bytes() const { return bytes_; }
  const std::vector<std::string>& cells() const { return cells_; }

 private:
  char separator_;
  std::vector<std::string> cells_;
  std::size_t bytes_ = 0;
  bool quoted_ = false;
};

}  // namespace readers

#endif
