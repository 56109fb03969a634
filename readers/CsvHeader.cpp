// SPDX-License-Identifier: Apache-2.0
#include "CsvHeader.h"

#include "CsvRecord.h"
#include "Text.h"

namespace readers {

std::optional<CsvHeader> CsvHeader::read(std::string_view text) {
  for (const char separator : {',', ';', '\t'}) {
    CsvRecord record(separator);
    if (!record.append(text)) continue;
    CsvHeader header{separator, {}, record.cells().size()};
    for (std::size_t i = 0; i < header.columnCount; ++i) {
      std::string name = lowerCase(std::string(trimmed(record.cells()[i])));
      if (name == "latitude") name = "lat";
      if (name == "longitude" || name == "lng") name = "lon";
      header.columns.emplace(std::move(name), i);
    }
    if (header.columns.contains("lat") && header.columns.contains("lon")) return header;
  }
  return std::nullopt;
}

}  // namespace readers
