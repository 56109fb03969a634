// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_SOUND_LINUXSOUND_H
#define ZRCORE_LINUX_SOUND_LINUXSOUND_H

#include <ZRCore/AVAudioPlayer.h>
#include <ZRCore/AVAudioSession.h>
#include <ZRCore/AVSpeechSynthesis.h>
#include <ZRCore/ZRLinuxSound.h>

#include "loop/GLibLoop.h"

/// The services for sound, all on one output.
struct LinuxSound {
  std::shared_ptr<AVAudioSession> audioSession;  ///< null with a file: what is headless suits it
  std::shared_ptr<ZRSpeech> speech;
  std::shared_ptr<ZRAudioPlayers> audioPlayers;
};

LinuxSound makeLinuxSound(const std::shared_ptr<GLibLoop>& loop, const ZRLinuxSoundOptions& options);

#endif
