// SPDX-License-Identifier: Apache-2.0
#include "sound/BufferedStream.h"

#include <algorithm>
#include <cmath>
#include <utility>

SoundStream::~SoundStream() = default;
SoundOutput::~SoundOutput() = default;

BufferedStream::BufferedStream(SoundOutput& output, SoundEvents events) : wantsMore_(std::move(events.wantsMore)) {
  events.wantsMore = [this] {
    passOn();
    if (end_ == End::open && !isFull()) wantsMore_();
  };
  stream_ = output.open(std::move(events));
}

void BufferedStream::start(policy::SampleFormat format) {
  format_ = format;
  isStarted_ = true;
  stream_->start(format);
}

void BufferedStream::push(std::span<const std::int16_t> samples) {
  samples_.erase(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(std::exchange(passedOn_, 0)));
  samples_.insert(samples_.end(), samples.begin(), samples.end());
  pushed_ += samples.size();
  passOn();
}

void BufferedStream::end() {
  end_ = End::asked;
  passOn();
}

double BufferedStream::pushedSeconds() const {
  return static_cast<double>(pushed_) / format_.samplesPerSecond / format_.channels;
}

void BufferedStream::passOn() {
  if (!isStarted_) return;
  const std::size_t count = std::min(buffered(), stream_->room());
  if (count > 0) {
    const std::span<std::int16_t> next(samples_.data() + passedOn_, count);
    if (volume_ != 1.0F) {
      for (std::int16_t& sample : next) {
        sample = static_cast<std::int16_t>(std::lround(volume_ * static_cast<float>(sample)));
      }
    }
    stream_->write(next);
    passedOn_ += count;
  }
  if (end_ == End::asked && buffered() == 0) {
    end_ = End::passedOn;
    stream_->end();
  }
}
