// SPDX-License-Identifier: Apache-2.0
#include "UbxFrames.h"

#include <variant>

#include "NmeaSentence.h"

namespace readers {
namespace {

constexpr std::size_t kHeaderBytes = 6, kChecksumBytes = 2;

/// The longest that receivers send are raw measurements: 255 of them have 8176 bytes.
constexpr std::size_t kLongestPayload = 8192;

unsigned byteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

bool endsWithSoundSentence(std::string_view text) {
  const auto start = text.rfind('$');
  if (start == std::string_view::npos) return false;
  const auto parsed = parseSentence(text.substr(start));
  const auto* const sentence = std::get_if<NmeaSentence>(&parsed);
  return sentence && sentence->hasChecksum;
}

bool holdsSoundSentence(std::string_view bytes) {
  constexpr std::string_view kLineEnds = "\r\n";
  std::size_t begin = 0;
  for (auto end = bytes.find_first_of(kLineEnds); end != std::string_view::npos;
       end = bytes.find_first_of(kLineEnds, begin)) {
    if (endsWithSoundSentence(bytes.substr(begin, end - begin))) return true;
    begin = end + 1;
  }
  return false;
}

/// Fletcher's, over class, identifier, length and payload.
bool isChecksumRight(std::string_view frame) {
  unsigned a = 0, b = 0;
  const std::size_t end = frame.size() - kChecksumBytes;
  for (std::size_t at = 2; at < end; ++at) b += a += byteAt(frame, at);
  return (a & 0xFFU) == byteAt(frame, end) && (b & 0xFFU) == byteAt(frame, end + 1);
}

}  // namespace

/// @param bytes  begin with the first byte of a frame
UbxFrames::Judgement UbxFrames::judge(std::string_view bytes) {
  if (bytes.size() > 1 && bytes[1] != '\x62') return {Verdict::text, 0};
  if (bytes.size() < kHeaderBytes) return {Verdict::undecided, 0};
  const std::size_t payload = byteAt(bytes, 4) + 256 * byteAt(bytes, 5);
  if (payload > kLongestPayload) return {Verdict::text, 0};
  const std::size_t length = kHeaderBytes + payload + kChecksumBytes;
  const std::string_view frame = bytes.substr(0, length);
  if (holdsSoundSentence(frame)) return {Verdict::text, 0};
  if (frame.size() < length) return {Verdict::undecided, 0};
  return {isChecksumRight(frame) ? Verdict::frame : Verdict::text, length};
}

}  // namespace readers
