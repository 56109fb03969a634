// SPDX-License-Identifier: Apache-2.0
#include "LineReader.h"

namespace readers {

LineReader::LineReader(Binary binary) {
  if (binary == Binary::hasItsFrames) frames_.emplace();
}

void LineReader::feed(std::string_view bytes, Listener& listener) {
  const auto split = [&](std::string_view text) { takeText(text, listener); };
  decoder_.feed(bytes, [&](std::string_view text) {
    if (frames_) return frames_->feed(text, split);
    split(text);
  });
}

void LineReader::finish(Listener& listener) {
  const auto split = [&](std::string_view text) { takeText(text, listener); };
  decoder_.finish([&](std::string_view text) {
    if (frames_) return frames_->feed(text, split);
    split(text);
  });
  if (frames_) frames_->finish(split);
  splitter_.finish([&](const Line& line) { takeLine(line, listener); });
  readEnd({listener, lastLine_});
}

void LineReader::readEnd(const Reporter& /*reporter*/) {}

void LineReader::takeText(std::string_view text, Listener& listener) {
  splitter_.feed(text, [&](const Line& line) { takeLine(line, listener); });
}

void LineReader::takeLine(const Line& line, Listener& listener) {
  lastLine_ = line.number;
  const Reporter reporter{listener, line.number, line.cut};
  if (line.tooLong) {
    reporter.fault("the line is longer than 64 KiB and is skipped; check that these are positions at all");
  } else {
    readLine(line.text, reporter);
  }
}

}  // namespace readers
