// SPDX-License-Identifier: Apache-2.0
#include "sound/LinuxSound.h"

#include "sound/ClipPlayer.h"
#include "sound/LinuxSpeech.h"
#include "sound/PulseSound.h"
#include "sound/SoundFile.h"

LinuxSound makeLinuxSound(const std::shared_ptr<GLibLoop>& loop, const ZRLinuxSoundOptions& options) {
  LinuxSound sound;
  std::shared_ptr<SoundOutput> output;
  if (const auto file = std::dynamic_pointer_cast<SoundFile>(options.soundFile)) {
    file->attach(loop);
    output = file;
  } else {
    const auto server = std::make_shared<PulseSound>(loop, options.stateFolder);
    sound.audioSession = server;
    output = server;
  }
  sound.speech = std::make_shared<LinuxSpeech>(
      loop, output,
      LinuxSpeech::Options{.command = options.speechCommand, .patienceSeconds = options.speechPatienceSeconds});
  sound.audioPlayers = std::make_shared<ClipPlayers>(loop, output);
  return sound;
}

bool ZRLinuxSoundIsSettled(const ZRPlatform& platform) {
  const auto* const server = dynamic_cast<const PulseSound*>(platform.audioSession.get());
  return server == nullptr || server->isSettled();
}
