// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDOUTPUT_H
#define ZRCORE_LINUX_SOUND_SOUNDOUTPUT_H

#include <policy/WavStreamReader.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

/// What a stream has to tell. Called on the loop, never inside a call of the stream's owner, who may drop the stream
/// there.
struct SoundEvents {
  std::function<void()> wantsMore;                   ///< there is room for samples
  std::function<void()> heard;                       ///< the last sample before `end` has been heard
  std::function<void(const std::string& why)> lost;  ///< nothing more will be heard; the last event
  std::function<void(bool isSilenced)> silenced;     ///< the sound server makes it wait, or lets it go on
};

/// One way of samples to the ear. Dropping it silences it at once.
class SoundStream {
 public:
  SoundStream() = default;
  SoundStream(const SoundStream&) = delete;
  SoundStream& operator=(const SoundStream&) = delete;
  virtual ~SoundStream();

  /// Tells what the samples are; once, before the first.
  virtual void start(policy::SampleFormat format) = 0;
  /// How many samples there is room for now.
  virtual std::size_t room() const = 0;
  /// At most as many samples as there is room for.
  virtual void write(std::span<const std::int16_t> samples) = 0;
  /// No more samples will come. Once, after `start`.
  virtual void end() = 0;
};

/// Where sound goes.
class SoundOutput {
 public:
  SoundOutput() = default;
  SoundOutput(const SoundOutput&) = delete;
  SoundOutput& operator=(const SoundOutput&) = delete;
  virtual ~SoundOutput();
  virtual std::unique_ptr<SoundStream> open(SoundEvents events) = 0;
};

#endif
