// SPDX-License-Identifier: Apache-2.0
// ZRAudio's handling of the audio session, and the events that lead to it.
#include <ZRCore/ZRAudio.h>
#include <ZRCore/ZRPlatform.h>

namespace {

// What is spoken, practically in silence, so that its end brings another attempt at deactivation. Fixed values.
constexpr const char* kSilentText = "no worky";
constexpr float kSilentVolume = 0.001F;

std::string errorText(const std::optional<NSError>& error) {
  if (!error) return "(null)";
  return "Error Domain=" + error->domain + " Code=" + std::to_string(error->code) + " \"" +
         error->localizedDescription() + '"';
}

AVAudioSession& session() { return *ZRPlatformInUse().audioSession; }

}  // namespace

std::string ZRAudio::audioCategoryForNavigation() const {
  return useHFP_ ? AVAudioSessionCategoryPlayAndRecord : AVAudioSessionCategoryPlayback;
}

AVAudioSessionCategoryOptions ZRAudio::audioOptionsForNavigation() const {
  return useHFP_ ? AVAudioSessionCategoryOptionDuckOthers | AVAudioSessionCategoryOptionAllowBluetooth
                 : AVAudioSessionCategoryOptionInterruptSpokenAudioAndMixWithOthers |
                       AVAudioSessionCategoryOptionDuckOthers;
}

void ZRAudio::startAudioSesssionForNavigation() {
  startAudioSessionWithCategoryOptions(audioCategoryForNavigation(), audioOptionsForNavigation());
}

void ZRAudio::startAudioSessionForMovie() { startAudioSessionWithCategoryOptions(AVAudioSessionCategoryAmbient, 0); }

void ZRAudio::startAudioSessionWithCategoryOptions(const std::string& category, AVAudioSessionCategoryOptions options) {
  // Both are tried, whatever becomes of the first.
  const AVAudioSessionResult set = session().setCategoryWithOptions(category, options);
  const AVAudioSessionResult activated = session().setActiveWithOptions(true, 0);
  const bool success = set.success && activated.success;
  if (success && !set.error && !activated.error) return;
  ZRPlatformInUse().log->writeLine(std::string("ERROR STARTING AUDIO SESSION. SUCCESSFUL: ") +
                                   (success ? "YES" : "NO") + " ||| SESSION ERROR: " + errorText(set.error) +
                                   " ||| ACTIVE ERROR: " + errorText(activated.error));
}

bool ZRAudio::stopAudioSession() {
  return session().setActiveWithOptions(false, AVAudioSessionSetActiveOptionNotifyOthersOnDeactivation).success;
}

void ZRAudio::forceStopSession() { stopAudioSession(); }

void ZRAudio::stopSessionRequested() {
  if (otherAudioWasPlayingWhenSpeechStarted_) stopSessionWhenAudioHasFinished();
}

void ZRAudio::stopSessionWhenAudioHasFinished() {
  if (isSpeaking() || (audioPlayer_ && audioPlayer_->isPlaying())) return;
  if (!stopAudioSession()) speakTextInterruptVolume(kSilentText, true, kSilentVolume);
}

void ZRAudio::enableVolumeRockerControl() {
  if (!session().isOtherAudioPlaying()) startAudioSesssionForNavigation();
}

void ZRAudio::speechSynthesizerDidFinishSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                        std::shared_ptr<AVSpeechUtterance> utterance) {
  stopSessionRequested();
  if (const auto delegate = didFinishSpeechUtterance_.lock()) {
    delegate->speechSynthesizerDidFinishSpeechUtterance(synthesizer, utterance);
  }
}

void ZRAudio::speechSynthesizerDidPauseSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer>,
                                                       std::shared_ptr<AVSpeechUtterance>) {
  stopSessionRequested();
}

void ZRAudio::speechSynthesizerDidCancelSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer>,
                                                        std::shared_ptr<AVSpeechUtterance>) {
  stopSessionRequested();
}

void ZRAudio::audioPlayerDidFinishPlayingSuccessfully(std::shared_ptr<AVAudioPlayer> player, bool successfully) {
  stopAudioPlayer();
  stopSessionRequested();
  if (const auto delegate = audioPlayerDidFinishPlaying_.lock()) {
    delegate->audioPlayerDidFinishPlayingSuccessfully(player, successfully);
  }
}

void ZRAudio::audioPlayerDecodeErrorDidOccur(std::shared_ptr<AVAudioPlayer>, const NSError&) {
  stopAudioPlayer();
  stopSessionRequested();
}

void ZRAudio::audioPlayerBeginInterruption(std::shared_ptr<AVAudioPlayer>) {
  stopAudioPlayer();
  stopSessionRequested();
}

void ZRAudio::handleInterruption(const NSNotification& notification) {
  // Reads the interruption's key, which a hint lacks: a hint is judged by whether other audio plays.
  const bool isInterrupted = notification.integerForKey(AVAudioSessionInterruptionTypeKey) == 1;
  if (isInterrupted || session().isOtherAudioPlaying()) stopSessionRequested();
}

void ZRAudio::handleBackground(const NSNotification& notification) {
  if (session().isOtherAudioPlaying()) return;
  if (notification.name == UIApplicationDidEnterBackgroundNotification) {
    stopSessionWhenAudioHasFinished();
  } else {
    startAudioSesssionForNavigation();
  }
}
