// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRAudio.h>
#include <trip/outputs/OutputError.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/InterruptibleLoop.h>
#include <zrcore/Interruption.h>
#include <zrcore/sound/Hearer.h>
#include <zrcore/sound/SoundTarget.h>

#include <csignal>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr const char* kSayDescription = "Speaks texts, one after the other, as guidance speaks its prompts.";

constexpr const char* kSayFooter = R"(
While it speaks, other applications' sound is lowered. Messages go to the standard error stream.

Exit codes:
  0  every text was heard to its end (with --interrupt: the last)
  2  the command line must be changed; a file would be overwritten without --force
  3  the system does not give what is needed: no speech engine (espeak-ng), no such voice, no sound server, no room
     or no right to write; then there is no file
  129 to 153  128 and the number of the signal that ended it early

Examples:
  zrcore say "Turn left" "Turn right"
  zrcore say "Links abbiegen" --voice de --rate 0.6
  zrcore say "Turn left" --to wav:prompt.wav)";

struct SayOptions : Options {
  using Options::Options;
  Option<std::vector<std::string>> texts{*this, "TEXT", "What to say; each is a prompt of its own", {rule::required()}};
  Option<std::optional<std::string>> voice{
      *this, "--voice TAG", "A language tag, such as en-US or de [en-US]", {rule::offers(offer::kVoice)}};
  Option<std::optional<float>> rate{*this, "--rate R", "From 0, slow, to 1, fast [0.5]", {rule::from0To1()}};
  Option<float> volume{*this, "--volume V", "From 0, silent, to 1 [1]", {rule::from0To1()}, 1.0F};
  Option<bool> interrupt{*this, "--interrupt", "Let each text silence the one before it"};
  Option<SoundTarget> target{*this,
                             "--to TARGET",
                             "sound: the sound server; wav:FILE: a WAV file [sound]",
                             SoundTarget::parse,
                             {rule::offers(offer::kSoundTarget)}};
  Option<bool> force{*this, "--force", "Let --to overwrite a file"};
};

/// Speaks all texts and waits for their end. @return whether what should be heard was
bool speak(const SayOptions& options, ZRAudio& audio) {
  const auto hearer = std::make_shared<Hearer>();
  audio.setDelegate(hearer);
  for (const std::string& text : *options.texts) {
    audio.speakTextInterruptVolume(text, *options.interrupt, *options.volume);
  }
  const auto last = audio.utterance();
  runLoopUntil([&] { return !audio.isSpeaking(); });
  endSound(audio);
  return *options.interrupt ? hearer->last == last : hearer->heard == options.texts->size();
}

int run(const SayOptions& options, Messages& messages) {
  const SpeakingPlatform speaking = speakingPlatform(*options.target, *options.force, messages);
  if (!ZRPlatformInstall(speaking.platform)) {
    messages.say("the platform is in use already");
    return kExitServiceMissing;
  }
  const auto& audio = ZRAudio::sharedInstance();
  if (const auto& language = *options.voice) {
    const auto voice = ZRPlatformInUse().speech->voiceWithLanguage(*language);
    if (!voice) {
      messages.about("--voice", inQuotes(*language) + " is no language tag; give it as in en-US");
      return kExitUsage;
    }
    audio->setVoice(voice);
  }
  if (const auto& rate = *options.rate) audio->setSpeechUtteranceRate(*rate);
  const bool isHeard = speak(options, *audio);
  const bool isInterrupted = interruption::signal() != 0;
  if (speaking.file && isHeard) speaking.file->complete();
  if (speaking.file && !isHeard && isInterrupted) speaking.file->completeUnlessSilent();
  if (interruption::signal() == SIGXFSZ) messages.say(kFileLimitReached);
  if (isInterrupted) return interruption::exitCode();
  if (!isHeard) messages.say(std::string("not all was heard; ") + kSeeDoctor);
  return isHeard ? kExitDone : kExitServiceMissing;
}

int runSay(const SayOptions& options) {
  Messages messages;
  interruption::listen();
  try {
    return run(options, messages);
  } catch (const trip::OutputError& error) {
    messages.say(error.what());
    return exitCodeOf(error);
  }
}

}  // namespace

void addSayCommand(CommandLine& tool) { tool.add<SayOptions>("say", kSayDescription, kSayFooter, runSay); }
