// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_LINEREADER_H
#define ZRCORE_READERS_LINEREADER_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "FixFields.h"
#include "FixReader.h"
#include "LineSplitter.h"
#include "TextDecoder.h"
#include "UbxFrames.h"

namespace readers {

/// A reader of a format in which a line, taken alone, says something.
class LineReader : public FixReader {
 public:
  void feed(std::string_view bytes, Listener& listener) final;
  void finish(Listener& listener) final;

 protected:
  enum class Binary {
    isText,       ///< whatever the bytes are, they are the lines'
    hasItsFrames  ///< a receiver's binary frames between the lines are stepped over
  };
  explicit LineReader(Binary binary = Binary::isText);

  /// A line within the limit.
  virtual void readLine(std::string_view text, const Reporter& reporter) = 0;
  /// The end of the input, at its last line.
  virtual void readEnd(const Reporter& reporter);

 private:
  void takeText(std::string_view text, Listener& listener);
  void takeLine(const Line& line, Listener& listener);

  TextDecoder decoder_;
  std::optional<UbxFrames> frames_;
  LineSplitter splitter_;
  std::uint64_t lastLine_ = 0;
};

}  // namespace readers

#endif
