// SPDX-License-Identifier: Apache-2.0
/// @file
/// Test doubles of the services for sound. Link ZRCore::Fake. One thread.
#ifndef ZRCORE_ZRAUDIOFAKE_H
#define ZRCORE_ZRAUDIOFAKE_H

#include <ZRCore/AVAudioPlayer.h>
#include <ZRCore/AVAudioSession.h>
#include <ZRCore/AVSpeechSynthesis.h>
#include <ZRCore/ZRMainQueue.h>

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// What was asked of a session, its synthesizers and its players, in order.
using ZRFakeAudioCalls = std::shared_ptr<std::vector<std::string>>;

/// A session that answers what the test sets. Writes "category NAME OPTIONS", "activate" and "deactivate OPTIONS".
class ZRFakeAudioSession : public AVAudioSession {
 public:
  explicit ZRFakeAudioSession(ZRFakeAudioCalls calls) : calls_(std::move(calls)) {}
  ~ZRFakeAudioSession() override;
  bool isOtherAudioPlaying() const override { return otherAudioIsPlaying; }
  AVAudioSessionResult setCategoryWithOptions(const std::string& category,
                                              AVAudioSessionCategoryOptions options) override;
  AVAudioSessionResult setActiveWithOptions(bool active, AVAudioSessionSetActiveOptions options) override;

  bool otherAudioIsPlaying = false;
  bool isActive = false;
  AVAudioSessionResult categoryResult, activationResult, deactivationResult;

 private:
  ZRFakeAudioCalls calls_;
};

/// A synthesizer that speaks until the test says otherwise. Writes "speak TEXT" and "stop speech".
class ZRFakeSpeechSynthesizer : public AVSpeechSynthesizer {
 public:
  ZRFakeSpeechSynthesizer(ZRFakeAudioCalls calls, std::weak_ptr<ZRMainQueue> queue)
      : calls_(std::move(calls)), queue_(std::move(queue)) {}
  ~ZRFakeSpeechSynthesizer() override;
  void speakUtterance(std::shared_ptr<AVSpeechUtterance> utterance) override;
  void stopSpeakingImmediately() override;
  bool isSpeaking() const override { return !utterances.empty(); }

  /// Ends the utterance that is being spoken, inside this call; with none nothing happens.
  void finish();
  /// Tells that the utterance being spoken pauses; it goes on being spoken.
  void pause();

  std::deque<std::shared_ptr<AVSpeechUtterance>> utterances;  ///< the first is being spoken, the others wait
  bool cancelsInsideStop = false;                             ///< as some systems do; otherwise through the main queue

 private:
  ZRFakeAudioCalls calls_;
  std::weak_ptr<ZRMainQueue> queue_;  // which holds the synthesizer until it has told
};

/// Makes fake synthesizers and remembers them.
class ZRFakeSpeech : public ZRSpeech {
 public:
  ZRFakeSpeech(ZRFakeAudioCalls calls, std::shared_ptr<ZRMainQueue> queue)
      : calls_(std::move(calls)), queue_(std::move(queue)) {}
  ~ZRFakeSpeech() override;
  std::shared_ptr<AVSpeechSynthesisVoice> voiceWithLanguage(const std::string& language) override;
  std::shared_ptr<AVSpeechSynthesizer> makeSynthesizer() override;

  enum class Voices { made, absent, throwing };
  Voices voices = Voices::made;
  std::vector<std::shared_ptr<ZRFakeSpeechSynthesizer>> made;

 private:
  ZRFakeAudioCalls calls_;
  std::shared_ptr<ZRMainQueue> queue_;
};

/// A player that plays until the test says otherwise. Writes "play" and "stop player".
class ZRFakeAudioPlayer : public AVAudioPlayer {
 public:
  explicit ZRFakeAudioPlayer(ZRFakeAudioCalls calls) : calls_(std::move(calls)) {}
  ~ZRFakeAudioPlayer() override;
  void play() override;
  void stop() override;
  bool isPlaying() const override { return isPlaying_; }
  void setVolume(float newVolume) override { volume = newVolume; }

  /// @name What happens to the clip
  /// The delegate is called inside these calls.
  /// @{
  void finish(bool successfully);
  void failToDecode();
  void interrupt();
  /// @}

  std::string data;
  float volume = 1.0F;

 private:
  ZRFakeAudioCalls calls_;
  bool isPlaying_ = false;
};

/// Makes fake players of all bytes but none, and remembers them.
class ZRFakeAudioPlayers : public ZRAudioPlayers {
 public:
  explicit ZRFakeAudioPlayers(ZRFakeAudioCalls calls) : calls_(std::move(calls)) {}
  ~ZRFakeAudioPlayers() override;
  std::variant<std::shared_ptr<AVAudioPlayer>, NSError> playerWithData(std::string_view data) override;

  bool readsClips = true;  ///< false: all bytes are refused
  std::vector<std::shared_ptr<ZRFakeAudioPlayer>> made;

 private:
  ZRFakeAudioCalls calls_;
};

#endif
