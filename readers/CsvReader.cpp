// SPDX-License-Identifier: Apache-2.0
#include "CsvReader.h"

#include <utility>

#include "Text.h"

namespace readers {

void CsvReader::readLine(std::string_view text, const Reporter& reporter) {
  if (state_ == State::headerUnusable) return;
  if (record_.isEmpty()) {
    if (trimmed(text).empty() || text.front() == '#') return;
    recordLine_ = reporter.line;
  }
  const bool complete = record_.append(text);
  if (state_ == State::beforeHeader) (headerText_ += headerText_.empty() ? "" : "\n") += text;
  const Reporter recordReporter{reporter.listener, recordLine_, reporter.cut};
  if (record_.bytes() > kLongestText + 1) {
    recordReporter.fault("the row is longer than 64 KiB and is skipped; a quotation mark in it is not closed");
    record_.clear();
    headerText_.clear();
    return;
  }
  if (!complete) return;
  if (state_ == State::beforeHeader) {
    readHeader(std::exchange(headerText_, {}), recordReporter);
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

/// @param text  the lines of the record that names the columns
void CsvReader::readHeader(std::string_view text, const Reporter& reporter) {
  if (const auto header = CsvHeader::read(text)) {
    header_ = *header;
    record_ = CsvRecord(header_.separator);
    state_ = State::inRows;
    return;
  }
  state_ = State::headerUnusable;
  reporter.fault(std::string("the first row names no columns ") + kWantedColumns +
                 ", so nothing can be read; begin the file with a row like "
                 "time,lat,lon,altitude,accuracy,speed,course");
}

void CsvReader::readRow(const Reporter& reporter) {
  if (record_.cells().size() != header_.columnCount) {
    const bool isComma = header_.separator == ',';
    reporter.fault("the row is dropped: it has " + std::to_string(record_.cells().size()) + " cells, the header " +
                   std::to_string(header_.columnCount) +
                   (isComma ? "; numbers take a decimal point, not a comma" : ""));
    return;
  }
  SourceFix fix;
  fix.line = reporter.line;
  if (!readCoordinate(fix, number("lat"), number("lon"), reporter)) return;
  readTime(fix, number("time"), reporter);
  readQuantity(fix, Quantity::altitude, number("altitude"), reporter);
  readQuantity(fix, Quantity::accuracy, number("accuracy"), reporter);
  readQuantity(fix, Quantity::speed, number("speed"), reporter);
  readQuantity(fix, Quantity::course, number("course"), reporter);
  emitter_.emit(fix, reporter.listener);
}

std::string_view CsvReader::cell(const char* column) const {
  const auto found = header_.columns.find(column);
  return found == header_.columns.end() ? std::string_view{} : std::string_view{record_.cells()[found->second]};
}

/// Where the comma does not separate cells, it may be a decimal one.
std::string CsvReader::number(const char* column) const {
  std::string text(cell(column));
  const auto comma = text.find(',');
  if (header_.separator != ',' && comma != std::string::npos && text.find('.') == std::string::npos) text[comma] = '.';
  return text;
}

}  // namespace readers
