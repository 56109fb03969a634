// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_TEXTDECODER_H
#define ZRCORE_READERS_TEXTDECODER_H

#include <string>
#include <string_view>

namespace readers {

/// Turns pushed UTF-16 with a byte order mark into ASCII, a question mark for each character beyond: all that is read
/// of a recording is ASCII. Any other input is passed on as it is.
class TextDecoder {
 public:
  /// @param sink  called with pieces of text, which live for the call.
  template <class Sink>
  void feed(std::string_view bytes, Sink&& sink) {
    if (encoding_ == Encoding::asItIs) return sink(bytes);
    held_ += bytes;
    if (encoding_ == Encoding::unknown && held_.size() >= kBytesToTellBy) tell();
    if (encoding_ != Encoding::unknown) sink(taken());
  }

  template <class Sink>
  void finish(Sink&& sink) {
    if (!held_.empty()) sink(held_);
  }

 private:
  enum class Encoding { unknown, asItIs, utf16BigEnd, utf16LittleEnd };

  /// The mark and a character: what only happens to begin with the mark's two bytes has hardly a zero in the right
  /// place.
  static constexpr std::size_t kBytesToTellBy = 4;

  void tell();
  std::string taken();

  Encoding encoding_ = Encoding::unknown;
  std::string held_;  // not yet told, or the first half of a character
};

}  // namespace readers

#endif
