// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_SOUNDFILE_H
#define ZRCORE_LINUX_SOUND_SOUNDFILE_H

#include <ZRCore/ZRLinuxSound.h>
#include <sndfile.h>

#include <list>
#include <optional>

#include "loop/Loop.h"
#include "sound/SoundOutput.h"

/// The WAV file as an output. A stream's samples are written when it ends; what is silenced before it was heard is cut.
class SoundFile final : public ZRSoundFile, public SoundOutput {
 public:
  static constexpr unsigned kSamplesPerSecond = 22050;
  static constexpr double kLongestSeconds = 90000.0;  ///< a WAV holds little more

  explicit SoundFile(SNDFILE* file) : file_(file) {}
  ~SoundFile() override;

  /// Where events are reported. Before that, no stream can be opened.
  void attach(std::shared_ptr<Loop> loop) { loop_ = std::move(loop); }

  void setTimeSeconds(double seconds) override;
  void letTimePass() override;
  bool isSettled() const override { return unended_ == 0 && *untold_ == 0; }
  double lengthSeconds() const override { return static_cast<double>(end_) / kSamplesPerSecond; }
  std::string close() override;

  std::unique_ptr<SoundStream> open(SoundEvents events) override;

 private:
  class Stream;

  bool write(std::span<const std::int16_t> samples);
  bool writeSilenceUntil(sf_count_t position);
  void cutAt(sf_count_t position);
  sf_count_t now() const;
  void post(std::weak_ptr<Stream*> stream, void (Stream::*tell)());

  SNDFILE* file_;
  std::shared_ptr<Loop> loop_;
  std::optional<double> seconds_;  ///< nullopt: time passes as sound comes
  sf_count_t end_ = 0;             ///< of what has been written, in samples
  std::string fault_;
  int unended_ = 0;                                         ///< streams whose sound has not come to its end
  std::shared_ptr<int> untold_ = std::make_shared<int>(0);  ///< events on their way, which may outlive the file
  std::list<Stream*> unheard_;
};

/// Samples as the file has them: one channel, its rate. Between samples lies a straight line.
std::vector<std::int16_t> convertedForFile(std::span<const std::int16_t> samples, policy::SampleFormat format);

#endif
