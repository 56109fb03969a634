// SPDX-License-Identifier: Apache-2.0
#include "LiveTable.h"

#include <string>

namespace {

std::string upwards(std::size_t lines) { return lines == 0 ? "" : "\r\x1b[" + std::to_string(lines) + "A"; }
constexpr const char* kClearRestOfLine = "\x1b[K";
constexpr const char* kClearBelow = "\x1b[J";

}  // namespace

TripTable& LiveTable::changing() {
  isStale_ = true;
  return table_;
}

void LiveTable::refresh() {
  if (isStale_ && clock_.nowSeconds() - drawnAtSeconds_ >= kSecondsBetweenDrawings) draw();
}

void LiveTable::draw() {
  const auto lines = table_.lines(terminal_());
  std::string frame = upwards(linesDrawn_);
  for (const std::string& line : lines) ((frame += line) += kClearRestOfLine) += '\n';
  output_.write(frame += kClearBelow);
  output_.flush();
  linesDrawn_ = lines.size();
  drawnAtSeconds_ = clock_.nowSeconds();
  isStale_ = false;
}

void LiveTable::erase() {
  if (linesDrawn_ == 0) return;
  output_.write(upwards(linesDrawn_) + kClearBelow);
  output_.flush();
  linesDrawn_ = 0;
  isStale_ = true;
}
