// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_LINESPLITTER_H
#define ZRCORE_READERS_LINESPLITTER_H

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

/// Cuts pushed bytes into lines. A line ends with LF or CR LF; a UTF-8 byte order mark before the first does not count.
class LineSplitter {
 public:
  /// @param sink  called with each Line as it is completed; its text lives for the call.
  template <class Sink>
  void feed(std::string_view bytes, Sink&& sink) {
    for (auto end = bytes.find('\n'); end != std::string_view::npos; end = bytes.find('\n')) {
      const std::string_view piece = bytes.substr(0, end);
      bytes.remove_prefix(end + 1);
      if (held_.empty() && !tooLong_) {
        deliver(piece, false, sink);
      } else {
        hold(piece);
        deliver(held_, false, sink);
      }
    }
    hold(bytes);
  }

  /// Hands over a last line without an end.
  template <class Sink>
  void finish(Sink&& sink) {
    if (!held_.empty() || tooLong_) deliver(held_, true, sink);
  }

 private:
  void hold(std::string_view piece);

  template <class Sink>
  void deliver(std::string_view text, bool cut, Sink&& sink) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    ++number_;
    if (number_ == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    if (text.ends_with('\r')) text.remove_suffix(1);
    const bool tooLong = tooLong_ || text.size() > kLongestText;
    sink(Line{tooLong ? std::string_view{} : text, number_, tooLong, cut});
    held_.clear();
    tooLong_ = false;
  }

  std::string held_;  // the line that has begun and not ended
  std::uint64_t number_ = 0;
  bool tooLong_ = false;
};

}  // namespace readers

#endif
