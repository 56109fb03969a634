// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_LINEREADER_H
#define ZRCORE_READERS_LINEREADER_H

#include <cstdint>
#include <string_view>

#include "FixEmitter.h"
#include "FixFields.h"
#include "FixReader.h"
#include "LineSplitter.h"

namespace readers {

/// A reader of a format in which a line, taken alone, says something.
class LineReader : public FixReader {
 public:
  void feed(std::string_view bytes, Listener& listener) final;
  void finish(Listener& listener) final;

 protected:
  /// A line within the limit. Its remarks go to the reporter, its fixes to `emitter_`.
  virtual void readLine(std::string_view text, const Reporter& reporter) = 0;
  /// The end of the input, at its last line.
  virtual void readEnd(const Reporter& reporter);

  FixEmitter emitter_;

 private:
  void take(const Line& line, Listener& listener);

  LineSplitter splitter_;
  std::uint64_t lastLine_ = 0;
};

}  // namespace readers

#endif
