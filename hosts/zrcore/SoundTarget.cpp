// SPDX-License-Identifier: Apache-2.0
#include "SoundTarget.h"

#include <filesystem>

#include "CommandLine.h"
#include "ExitCodes.h"

SoundTarget SoundTarget::parse(const std::string& option, const std::string& text) {
  const std::string prefix = "wav:";
  if (text == "sound") return {};
  if (text.size() > prefix.size() && text.starts_with(prefix)) return {text.substr(prefix.size())};
  throw UsageFault(option, "'" + text + "' is neither 'sound' nor 'wav:FILE'");
}

std::optional<SpeakingPlatform> speakingPlatform(const SoundTarget& target, bool mayOverwrite, Messages& messages,
                                                 int& exitCode, ZRLinuxOptions options) {
  SpeakingPlatform speaking;
  const auto sound = std::make_shared<ZRLinuxSoundOptions>();
  if (target.wavFile) {
    const std::string name = harmless(*target.wavFile);
    std::error_code error;
    if (!mayOverwrite && std::filesystem::exists(std::filesystem::symlink_status(*target.wavFile, error))) {
      messages.about(name, "is there already; --force overwrites it");
      exitCode = kExitUsage;
      return std::nullopt;
    }
    std::string fault;
    sound->soundFile = speaking.soundFile = ZRSoundFile::create(*target.wavFile, fault);
    if (!speaking.soundFile) {
      messages.about(name, fault);
      exitCode = kExitServiceMissing;
      return std::nullopt;
    }
  }
  options.sound = sound;
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
