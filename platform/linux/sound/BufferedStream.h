// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_BUFFEREDSTREAM_H
#define ZRCORE_LINUX_SOUND_BUFFEREDSTREAM_H

#include <vector>

#include "sound/SoundOutput.h"

/// Takes samples as a source has them and passes them on as the stream has room for them.
class BufferedStream {
 public:
  /// As those of a stream; `wantsMore` comes when little is left in the buffer.
  BufferedStream(SoundOutput& output, SoundEvents events);

  void start(policy::SampleFormat format);
  void push(std::span<const std::int16_t> samples);
  void end();

  /// Whether the source does well to wait: half a second is there.
  bool isFull() const { return buffered() > format_.samplesPerSecond * format_.channels / 2; }
  /// 0 to 1, of samples that have not been passed on.
  void setVolume(float volume) { volume_ = volume; }
  /// Of all that was pushed.
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
  std::function<void()> wantsMore_;
  std::unique_ptr<SoundStream> stream_;  // last: its events reach the others
};

#endif
