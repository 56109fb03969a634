// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_CSVHEADER_H
#define ZRCORE_READERS_CSVHEADER_H

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace readers {

/// What the first row of a CSV file says of the others.
struct CsvHeader {
  char separator = ',';  ///< a semicolon or a tab, too
  /// By their names, in small letters, the place of each column; of two equal names the first counts. The position's
  /// columns stand under "lat" and "lon", whichever of their names they have.
  std::map<std::string, std::size_t, std::less<>> columns;
  std::size_t columnCount = 0;

  /// @return nothing when no separator makes columns of a position of it: latitude is lat or latitude, longitude is
  ///         lon, lng or longitude; and when a quotation mark is still open at the text's end.
  static std::optional<CsvHeader> read(std::string_view text);
};

/// The columns that a file must have, for messages.
inline constexpr const char* kWantedColumns = "lat and lon (or latitude, and lng or longitude)";

}  // namespace readers

#endif
