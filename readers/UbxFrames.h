// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_UBXFRAMES_H
#define ZRCORE_READERS_UBXFRAMES_H

#include <string>
#include <string_view>

namespace readers {

/// Steps over the binary frames that u-blox receivers send between their sentences: B5 62, class, identifier, two bytes
/// of length, so many bytes, and two of checksum. Their bytes may look like line ends and like sentences.
///
/// What begins like a frame is held until it is one, which its checksum proves, or until it can be none: a wrong
/// checksum, a longer payload than receivers send, or a sound sentence within it, so that a broken frame holds back no
/// sentence. Then it is text like the rest. At most 8 KiB are held.
class UbxFrames {
 public:
  /// @param sink  called with the text between the frames, in pieces, which live for the call.
  template <class Sink>
  void feed(std::string_view bytes, Sink&& sink) {
    if (held_.empty()) {
      const auto start = bytes.find(kFirstByte);
      if (start == std::string_view::npos) return sink(bytes);
      if (start > 0) sink(bytes.substr(0, start));
      bytes.remove_prefix(start);
    }
    held_ += bytes;
    release(false, sink);
  }

  /// A frame that the end cuts off is text.
  template <class Sink>
  void finish(Sink&& sink) {
    release(true, sink);
  }

 private:
  static constexpr char kFirstByte = '\xB5';

  enum class Verdict { undecided, frame, text };
  struct Judgement {
    Verdict verdict;
    std::size_t length;  ///< of the frame
  };
  static Judgement judge(std::string_view bytes);

  template <class Sink>
  void release(bool isEnd, Sink&& sink) {
    std::string_view rest = held_;
    while (!rest.empty()) {
      const auto [verdict, length] = judge(rest);
      if (verdict == Verdict::undecided && !isEnd) break;
      if (verdict == Verdict::frame) {
        rest.remove_prefix(length);
      } else {
        sink(rest.substr(0, 1));
        rest.remove_prefix(1);
      }
      const std::string_view text = rest.substr(0, rest.find(kFirstByte));
      if (!text.empty()) sink(text);
      rest.remove_prefix(text.size());
    }
    held_.erase(0, held_.size() - rest.size());
  }

  std::string held_;  // empty, or what may be a frame
};

}  // namespace readers

#endif
