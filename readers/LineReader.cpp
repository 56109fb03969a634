// SPDX-License-Identifier: Apache-2.0
#include "LineReader.h"

namespace readers {

void LineReader::feed(std::string_view bytes, Listener& listener) {
  splitter_.feed(bytes, [&](const Line& line) { take(line, listener); });
}

void LineReader::finish(Listener& listener) {
  splitter_.finish([&](const Line& line) { take(line, listener); });
  readEnd({listener, lastLine_});
}

void LineReader::readEnd(const Reporter& /*reporter*/) {}

void LineReader::take(const Line& line, Listener& listener) {
  lastLine_ = line.number;
  const Reporter reporter{listener, line.number, line.cut};
  if (line.tooLong) {
    reporter.fault("the line is longer than 64 KiB and is skipped; check that the file is what it seems to be");
  } else {
    readLine(line.text, reporter);
  }
}

}  // namespace readers
