// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_PULSESOUND_H
#define ZRCORE_LINUX_SOUND_PULSESOUND_H

#include <ZRCore/AVAudioSession.h>

#include "sound/OtherStreams.h"
#include "sound/PulseConnection.h"
#include "sound/SoundOutput.h"

/// The sound server, as the audio session and as the output of this process's sound. Deactivation always succeeds, also
/// without a server.
class PulseSound final : public AVAudioSession, public SoundOutput, public std::enable_shared_from_this<PulseSound> {
 public:
  static constexpr unsigned kLatencyMilliseconds = 75;  ///< the length of a stream's buffer on the server

  PulseSound(std::shared_ptr<GLibLoop> loop, std::string stateFolder);
  ~PulseSound() override;

  bool isOtherAudioPlaying() const override;
  AVAudioSessionResult setCategoryWithOptions(const std::string& category,
                                              AVAudioSessionCategoryOptions options) override;
  AVAudioSessionResult setActiveWithOptions(bool active, AVAudioSessionSetActiveOptions options) override;

  std::unique_ptr<SoundStream> open(SoundEvents events) override;

  /// Whether no stream of this process is audible and every lowered stream has been restored.
  bool isSettled() const { return others_.isSettled(); }

 private:
  class Stream;

  void postHint(std::map<std::string, std::int64_t> information);

  PulseConnection connection_;
  OtherStreams others_;
  AVAudioSessionCategoryOptions options_ = 0;
  bool isActive_ = false;
};

#endif
