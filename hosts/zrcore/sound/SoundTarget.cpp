// SPDX-License-Identifier: Apache-2.0
#include "SoundTarget.h"

#include <zrcore/CommandLine.h>

SoundTarget SoundTarget::parse(const std::string& option, const std::string& text) {
  const std::string prefix = "wav:";
  if (text == "sound") return {};
  if (text.size() > prefix.size() && text.starts_with(prefix)) return {text.substr(prefix.size())};
  throw UsageFault(option, inQuotes(text) + " is neither 'sound' nor 'wav:FILE'");
}

SpeakingPlatform speakingPlatform(const std::optional<SoundTarget>& target, bool force, Messages& messages,
                                  ZRLinuxOptions options) {
  SpeakingPlatform speaking;
  if (target) {
    const auto sound = std::make_shared<ZRLinuxSoundOptions>();
    if (target->wavFile) {
      speaking.file = std::make_shared<SpokenFile>(*target->wavFile, force);
      sound->soundFile = speaking.file->sound();
    }
    options.sound = sound;
  }
  speaking.platform = makeLinuxPlatform(options);
  speaking.platform.log = std::make_shared<MessageLog>(messages);
  return speaking;
}

void endSound(ZRAudio& audio) {
  constexpr double kPatienceSeconds = 2.0;
  audio.stopAudioAndSpeechPlayback();
  bool isTold = false;
  const auto& platform = ZRPlatformInUse();
  platform.mainQueue->post([&isTold] { isTold = true; });  // behind what the synthesizer has to tell
  ZRRunLinuxLoopUntil([&isTold] { return isTold; });
  audio.forceStopSession();  // nothing follows for which others were to stay lowered
  ZRRunLinuxLoopFor(kPatienceSeconds, [&platform] { return ZRLinuxSoundIsSettled(platform); });
}
