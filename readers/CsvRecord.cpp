// SPDX-License-Identifier: Apache-2.0
#include "CsvRecord.h"

namespace readers {

bool CsvRecord::append(std::string_view line) {
  bytes_ += line.size() + 1;
  bool atCellStart = true;
  if (quoted_) {
    cells_.back() += '\n';
  } else {
    cells_.emplace_back();
  }
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (quoted_ && c == '"' && i + 1 < line.size() && line[i + 1] == '"') {
      cells_.back() += c;
      ++i;
    } else if (c == '"' && (quoted_ || atCellStart)) {
      quoted_ = !quoted_;
    } else if (c == separator_ && !quoted_) {
      cells_.emplace_back();
      atCellStart = true;
      continue;
    } else {
      cells_.back() += c;
    }
    atCellStart = false;
  }
  return !quoted_;
}

void CsvRecord::clear() {
  cells_.clear();
  bytes_ = 0;
  quoted_ = false;
}

}  // namespace readers
