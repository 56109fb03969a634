// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_BUFFEREDSTREAM_H
#define ZRCORE_LINUX_SOUND_BUFFEREDSTREAM_H

#include <vector>

#include "sound/SoundOutput.h"

/// A buffer between a source, which writes samples as it produces them, and a stream, which takes them as it has room.
class BufferedStream {
 public:
  /// @param events  as for a stream; `wantsMore` is called when the buffer is nearly empty
  BufferedStream(SoundOutput& output, SoundEvents events);

  void start(policy::SampleFormat format);
  void push(std::span<const std::int16_t> samples);
  void end();

  /// Whether the source should pause: the buffer holds half a second or more.
  bool isFull() const { return buffered() > format_.samplesPerSecond * format_.channels / 2; }
  /// @param volume  0 to 1, for the samples that the stream has not taken yet
  void setVolume(float volume) { volume_ = volume; }
  /// The length of all samples that were pushed.
  double pushedSeconds() const;

 private:
  std::size_t buffered() const { return samples_.size() - passedOn_; }
  void passOn();

  policy::SampleFormat format_{1, 1};
  std::vector<std::int16_t> samples_;
  std::size_t passedOn_ = 0;  ///< of `samples_`
  std::size_t pushed_ = 0;
  float volume_ = 1.0F;
  enum class End { open, asked, passedOn };
  End end_ = End::open;
  bool isStarted_ = false;
  Callback<> wantsMore_;
  std::unique_ptr<SoundStream> stream_;  // last: its events reach the others
};

#endif
