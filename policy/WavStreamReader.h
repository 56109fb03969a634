// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_WAVSTREAMREADER_H
#define ZRCORE_POLICY_WAVSTREAMREADER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace policy {

/// How samples of 16 bits follow one another; those of one moment stand together.
struct SampleFormat {
  unsigned samplesPerSecond = 0;
  unsigned channels = 0;
  friend bool operator==(const SampleFormat&, const SampleFormat&) = default;
};

/// Reads WAV as an engine writes it into a pipe: the lengths in its header are guesses, so the sound ends where the
/// stream does. Any split of the bytes gives the same samples. Takes one or two channels of 16-bit PCM.
class WavStreamReader {
 public:
  /// Reads on. The samples of the moments that are complete are appended to `samples`; what is left at the stream's end
  /// of one that is not, is lost.
  /// @return false when the stream is not such a WAV (then and ever after)
  bool feed(std::string_view bytes, std::vector<std::int16_t>& samples);

  /// Present from the first sample on, and before.
  const std::optional<SampleFormat>& format() const { return format_; }
  /// Whether the stream has come to its samples: one that ends earlier was no sound.
  bool hasReachedSamples() const { return state_ == State::samples; }
  /// What is wrong with it, in words; empty while nothing is.
  const std::string& fault() const { return fault_; }

 private:
  enum class State { header, samples, failed };

  bool readHeader();
  bool readFormat(std::string_view chunk);
  bool fail(const char* fault);
  void takeSamples(std::string_view bytes, std::vector<std::int16_t>& samples);

  State state_ = State::header;
  std::string pending_;  ///< of the header, or the first part of a moment
  std::optional<SampleFormat> format_;
  std::string fault_;
};

}  // namespace policy

#endif
