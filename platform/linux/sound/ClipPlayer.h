// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_CLIPPLAYER_H
#define ZRCORE_LINUX_SOUND_CLIPPLAYER_H

#include <ZRCore/AVAudioPlayer.h>

#include "loop/Loop.h"
#include "sound/SoundOutput.h"

/// Players of clips of one or two channels: WAV, Ogg, FLAC, MP3 and others.
class ClipPlayers final : public ZRAudioPlayers {
 public:
  ClipPlayers(std::shared_ptr<Loop> loop, std::shared_ptr<SoundOutput> output);
  ~ClipPlayers() override;
  std::variant<std::shared_ptr<AVAudioPlayer>, NSError> playerWithData(std::string_view data) override;

 private:
  std::shared_ptr<Loop> loop_;
  std::shared_ptr<SoundOutput> output_;
};

#endif
