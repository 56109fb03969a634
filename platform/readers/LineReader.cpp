#include "LineReader.h"

namespace readers {

void LineSplitter::hold(std::string_view piece) {
  // Room for a byte order mark and a CR, which do not count, so that the verdict doesn't depend on how the line
  // arrives.
  constexpr std::size_t kMostHeld = kLongestText + 4;
  if (tooLong_ || held_.size() + piece.size() > kMostHeld) {
    tooLong_ = true;
    held_.clear();
  } else {
    held_ += piece;
  }
}

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
