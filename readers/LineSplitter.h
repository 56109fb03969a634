// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_LINESPLITTER_H
#define ZRCORE_READERS_LINESPLITTER_H

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "Text.h"

namespace readers {

/// One line of an input, as LineSplitter finds it.
struct Line {
  std::string_view text;     ///< without its end; empty when too long
  std::uint64_t number = 0;  ///< 1-based
  bool tooLong = false;      ///< longer than kLongestText
  bool cut = false;          ///< the input ended before the line did
};

/// Cuts pushed bytes into lines. A line ends with LF, with CR LF, or with CR alone, however many of these there are; a
/// UTF-8 byte order mark before the first does not count.
class LineSplitter {
 public:
  /// @param sink  called with each Line as it is completed; its text lives for the call.
  template <class Sink>
  void feed(std::string_view bytes, Sink&& sink) {
    bytes = withoutRestOfEnd(bytes);
    auto lineFeed = std::min(bytes.find('\n'), bytes.size());
    while (!bytes.empty()) {
      const auto end = std::min(bytes.substr(0, lineFeed).find('\r'), lineFeed);
      if (end == bytes.size()) return hold(bytes);
      complete(bytes.substr(0, end), sink);
      const std::size_t before = bytes.size();
      isAfterReturn_ = bytes[end] == '\r';
      bytes = withoutRestOfEnd(bytes.substr(end + 1));
      const std::size_t taken = before - bytes.size();
      // Looked for once a line feed, not once a line: lines may end without one.
      lineFeed = taken > lineFeed ? std::min(bytes.find('\n'), bytes.size()) : lineFeed - taken;
    }
  }

  /// Hands over a last line without an end.
  template <class Sink>
  void finish(Sink&& sink) {
    if (!held_.empty() || tooLong_) deliver(held_, true, sink);
  }

 private:
  void hold(std::string_view piece);
  std::string_view withoutRestOfEnd(std::string_view bytes);

  template <class Sink>
  void complete(std::string_view piece, Sink&& sink) {
    if (held_.empty() && !tooLong_) return deliver(piece, false, sink);
    hold(piece);
    deliver(held_, false, sink);
  }

  template <class Sink>
  void deliver(std::string_view text, bool cut, Sink&& sink) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    ++number_;
    if (number_ == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    const bool tooLong = tooLong_ || text.size() > kLongestText;
    sink(Line{tooLong ? std::string_view{} : text, number_, tooLong, cut});
    held_.clear();
    tooLong_ = false;
  }

  std::string held_;  // the line that has begun and not ended
  std::uint64_t number_ = 0;
  bool tooLong_ = false;
  bool isAfterReturn_ = false;  // what comes next may belong to the end of the line before
};

}  // namespace readers

#endif
