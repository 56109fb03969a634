// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_CLIP_H
#define ZRCORE_LINUX_SOUND_CLIP_H

#include <ZRCore/AVAudioPlayer.h>
#include <policy/WavStreamReader.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// A clip's bytes, decoded piece by piece.
class Clip {
 public:
  /// Opens MP3 with libmpg123 and everything else with libsndfile, because libsndfile lets libmpg123 write its messages
  /// about damaged clips to the standard error stream.
  /// @return the clip, or why it cannot be played
  static std::variant<std::unique_ptr<Clip>, NSError> open(std::string_view bytes);
  Clip(const Clip&) = delete;
  Clip& operator=(const Clip&) = delete;
  virtual ~Clip();

  policy::SampleFormat format() const { return format_; }
  /// The next quarter of a second; empty at the end, and where the rest is damaged.
  std::vector<std::int16_t> next();
  /// What is damaged; absent at the clip's end.
  virtual std::optional<NSError> damage() const = 0;

 protected:
  explicit Clip(std::string_view bytes) : bytes_(bytes) {}
  void setFormat(long samplesPerSecond, int channels);

  /// Fills `samples`, full scale being 1. @return how many there are
  virtual std::size_t decode(std::span<float> samples) = 0;

  /// As `lseek`. @return the new offset
  off_t seek(off_t offset, int whence);
  std::size_t read(void* into, std::size_t count);
  off_t size() const { return static_cast<off_t>(bytes_.size()); }
  off_t at() const { return static_cast<off_t>(at_); }

 private:
  std::string bytes_;
  std::size_t at_ = 0;
  policy::SampleFormat format_{};
};

/// @return null, with the reason in `fault`, when the decoder does not recognise the bytes.
std::unique_ptr<Clip> makeMp3Clip(std::string_view bytes, std::string& fault);
std::unique_ptr<Clip> makeSndfileClip(std::string_view bytes, std::string& fault);

NSError clipError(long code, const std::string& sentence);

#endif
