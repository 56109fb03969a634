// SPDX-License-Identifier: Apache-2.0
#include "CsvReader.h"

#include "Text.h"

namespace readers {

void CsvReader::readLine(std::string_view text, const Reporter& reporter) {
  if (state_ == State::headerUnusable) return;
  if (record_.isEmpty()) {
    if (trimmed(text).empty() || text.front() == '#') return;
    recordLine_ = reporter.line;
  }
  const bool complete = record_.append(text);
  const Reporter recordReporter{reporter.listener, recordLine_, reporter.cut};
  if (record_.bytes() > kLongestText + 1) {
    recordReporter.fault("the row is longer than 64 KiB and is skipped; a quotation mark in it is not closed");
    record_.clear();
    return;
  }
  if (!complete) return;
  if (state_ == State::beforeHeader) {
    readHeader(recordReporter);
  } else {
    readRow(recordReporter);
  }
  record_.clear();
}

void CsvReader::readEnd(const Reporter& reporter) {
  if (record_.isEmpty()) return;
  Reporter{reporter.listener, recordLine_, true}.fault(
      "a quotation mark is not closed; the row from here on is dropped");
}

void CsvReader::readHeader(const Reporter& reporter) {
  columnCount_ = record_.cells().size();
  for (std::size_t i = 0; i < columnCount_; ++i) columns_.emplace(lowerCase(trimmed(record_.cells()[i])), i);
  if (columns_.contains("lat") && columns_.contains("lon")) {
    state_ = State::inRows;
    return;
  }
  state_ = State::headerUnusable;
  reporter.fault(
      "the first row names no columns lat and lon, so nothing can be read; begin the file with a row like "
      "time,lat,lon,altitude,accuracy,speed,course");
}

void CsvReader::readRow(const Reporter& reporter) {
  if (record_.cells().size() != columnCount_) {
    reporter.fault("the row is dropped: it has " + std::to_string(record_.cells().size()) + " cells, the header " +
                   std::to_string(columnCount_) + "; numbers take a decimal point, not a comma");
    return;
  }
  SourceFix fix;
  fix.line = reporter.line;
  if (!readCoordinate(fix, cell("lat"), cell("lon"), reporter)) return;
  readTime(fix, cell("time"), reporter);
  readQuantity(fix, Quantity::altitude, cell("altitude"), reporter);
  readQuantity(fix, Quantity::accuracy, cell("accuracy"), reporter);
  readQuantity(fix, Quantity::speed, cell("speed"), reporter);
  readQuantity(fix, Quantity::course, cell("course"), reporter);
  emitter_.emit(fix, reporter.listener);
}

std::string_view CsvReader::cell(const char* column) const {
  const auto found = columns_.find(column);
  return found == columns_.end() ? std::string_view{} : std::string_view{record_.cells()[found->second]};
}

}  // namespace readers
