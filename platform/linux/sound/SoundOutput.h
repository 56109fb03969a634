// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDOUTPUT_H
#define ZRCORE_LINUX_SOUND_SOUNDOUTPUT_H

#include <platform/Callback.h>
#include <policy/WavStreamReader.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

/// The events of a stream. They are called on the loop, never inside a call of the stream's owner, and the owner may
/// drop the stream in each of them.
struct SoundEvents {
  Callback<> wantsMore;               ///< there is room for samples
  Callback<> heard;                   ///< the last sample before `end` has been heard
  Callback<const std::string&> lost;  ///< nothing more will be heard; the last event
  Callback<bool> silenced;            ///< the sound server pauses or resumes it
};

/// One stream of samples. Dropping it silences it at once.
class SoundStream {
 public:
  SoundStream() = default;
  SoundStream(const SoundStream&) = delete;
  SoundStream& operator=(const SoundStream&) = delete;
  virtual ~SoundStream();

  /// Sets the samples' format. Called once, before the first samples.
  virtual void start(policy::SampleFormat format) = 0;
  /// How many samples there is room for now.
  virtual std::size_t room() const = 0;
  /// @param samples  at most as many as there is room for
  virtual void write(std::span<const std::int16_t> samples) = 0;
  /// Ends the stream after the samples that were written. Called once, after `start`.
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
