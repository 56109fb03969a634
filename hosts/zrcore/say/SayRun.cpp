// SPDX-License-Identifier: Apache-2.0
#include "SayRun.h"

#include <ZRCore/ZRAudio.h>
#include <trip/outputs/OutputError.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/InterruptibleLoop.h>
#include <zrcore/Interruption.h>
#include <zrcore/sound/Hearer.h>

#include <csignal>
#include <cstdio>

namespace {

/// Speaks all texts and waits for their end. @return whether what should be heard was
bool speak(const SayArguments& arguments, ZRAudio& audio) {
  const auto hearer = std::make_shared<Hearer>();
  audio.setDelegate(hearer);
  for (const std::string& text : arguments.texts) {
    audio.speakTextInterruptVolume(text, arguments.interrupt, arguments.volume);
  }
  const auto last = audio.utterance();
  runLoopUntil([&] { return !audio.isSpeaking(); });
  endSound(audio);
  return arguments.interrupt ? hearer->last == last : hearer->heard == arguments.texts.size();
}

int run(const SayArguments& arguments, Messages& messages) {
  const SpeakingPlatform speaking = speakingPlatform(arguments.target, arguments.force, messages);
  if (!ZRPlatformInstall(speaking.platform)) {
    messages.say("the platform is in use already");
    return kExitServiceMissing;
  }
  const auto& audio = ZRAudio::sharedInstance();
  if (arguments.voice) {
    const auto voice = ZRPlatformInUse().speech->voiceWithLanguage(*arguments.voice);
    if (!voice) {
      messages.about("--voice", inQuotes(*arguments.voice) + " is no language tag; give it as in en-US");
      return kExitUsage;
    }
    audio->setVoice(voice);
  }
  if (arguments.rate) audio->setSpeechUtteranceRate(*arguments.rate);
  const bool isHeard = speak(arguments, *audio);
  const bool isInterrupted = interruption::signal() != 0;
  if (speaking.file && isHeard) speaking.file->complete();
  if (speaking.file && !isHeard && isInterrupted) speaking.file->completeUnlessSilent();
  if (interruption::signal() == SIGXFSZ) messages.say(kFileLimitReached);
  if (isInterrupted) return interruption::exitCode();
  if (!isHeard) messages.say(std::string("not all was heard; ") + kSeeDoctor);
  return isHeard ? kExitDone : kExitServiceMissing;
}

}  // namespace

int runSay(const SayArguments& arguments) {
  Messages messages(
      [](std::string_view line) { std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data()); });
  interruption::listen();
  try {
    return run(arguments, messages);
  } catch (const trip::OutputError& error) {
    messages.say(error.what());
    return exitCodeOf(error);
  }
}
