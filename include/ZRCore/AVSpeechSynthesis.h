// SPDX-License-Identifier: Apache-2.0
/// @file
/// Speech from text.
#ifndef ZRCORE_AVSPEECHSYNTHESIS_H
#define ZRCORE_AVSPEECHSYNTHESIS_H

#include <ZRCore/ZRExport.h>

#include <memory>
#include <string>
#include <utility>

/// A voice, known by its language.
class ZR_EXPORT AVSpeechSynthesisVoice {
 public:
  /// @param language  a language tag, such as "en-US".
  explicit AVSpeechSynthesisVoice(std::string language) : language_(std::move(language)) {}
  virtual ~AVSpeechSynthesisVoice();
  const std::string& language() const { return language_; }

 private:
  std::string language_;
};

/// The slowest, the fastest and the usual rate of an utterance.
inline constexpr float AVSpeechUtteranceMinimumSpeechRate = 0.0F;
inline constexpr float AVSpeechUtteranceMaximumSpeechRate = 1.0F;
inline constexpr float AVSpeechUtteranceDefaultSpeechRate = 0.5F;

/// A text to speak and how. A synthesizer reads voice, rate and volume when it is handed the utterance; later changes
/// are not heard.
class ZR_EXPORT AVSpeechUtterance {
 public:
  explicit AVSpeechUtterance(std::string speechString) : speechString_(std::move(speechString)) {}
  AVSpeechUtterance(const AVSpeechUtterance&) = delete;
  AVSpeechUtterance& operator=(const AVSpeechUtterance&) = delete;
  virtual ~AVSpeechUtterance();

  const std::string& speechString() const { return speechString_; }  ///< UTF-8

  /// Null: the synthesizer's default voice.
  const std::shared_ptr<AVSpeechSynthesisVoice>& voice() const { return voice_; }
  void setVoice(std::shared_ptr<AVSpeechSynthesisVoice> voice) { voice_ = std::move(voice); }
  /// 0 to 1; 0.5 is usual.
  float rate() const { return rate_; }
  void setRate(float rate) { rate_ = rate; }
  /// 0 (silent) to 1.
  float volume() const { return volume_; }
  void setVolume(float volume) { volume_ = volume; }

 private:
  std::string speechString_;
  std::shared_ptr<AVSpeechSynthesisVoice> voice_;
  float rate_ = AVSpeechUtteranceDefaultSpeechRate;
  float volume_ = 1.0F;
};

class AVSpeechSynthesizer;

/// Hears of utterances. Arguments are handed over by value, so that a delegate may drop its own hold on them.
class ZR_EXPORT AVSpeechSynthesizerDelegate {
 public:
  virtual ~AVSpeechSynthesizerDelegate();
  /// The utterance has been heard to its end.
  virtual void speechSynthesizerDidFinishSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                         std::shared_ptr<AVSpeechUtterance> utterance);
  virtual void speechSynthesizerDidPauseSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                        std::shared_ptr<AVSpeechUtterance> utterance);
  /// The utterance was stopped, or could not be spoken.
  virtual void speechSynthesizerDidCancelSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                         std::shared_ptr<AVSpeechUtterance> utterance);
};

/// Speaks utterances one after the other. Each ends once, as finished or as cancelled, in the order in which they were
/// handed over, and never inside the call that hands it over; a synthesizer that still has some to tell of lives until
/// it has told. When it tells of the last one, it no longer speaks. Main thread only.
class ZR_EXPORT AVSpeechSynthesizer : public std::enable_shared_from_this<AVSpeechSynthesizer> {
 public:
  AVSpeechSynthesizer();
  AVSpeechSynthesizer(const AVSpeechSynthesizer&) = delete;
  AVSpeechSynthesizer& operator=(const AVSpeechSynthesizer&) = delete;
  virtual ~AVSpeechSynthesizer();

  std::weak_ptr<AVSpeechSynthesizerDelegate> delegate() const { return delegate_; }
  void setDelegate(std::weak_ptr<AVSpeechSynthesizerDelegate> delegate) { delegate_ = std::move(delegate); }

  /// Speaks `utterance` when those before it have ended.
  virtual void speakUtterance(std::shared_ptr<AVSpeechUtterance> utterance) = 0;
  /// Silences the utterance that is being spoken at once, not at the end of a word, and drops those that wait. All are
  /// told of as cancelled; a system may do so inside this call.
  virtual void stopSpeakingImmediately() = 0;
  /// Whether an utterance is being spoken or waits to be.
  virtual bool isSpeaking() const = 0;

 private:
  std::weak_ptr<AVSpeechSynthesizerDelegate> delegate_;
};

/// Makes voices and synthesizers. Main thread only.
class ZR_EXPORT ZRSpeech {
 public:
  virtual ~ZRSpeech();
  /// Null, or an exception, when the voice cannot be made.
  virtual std::shared_ptr<AVSpeechSynthesisVoice> voiceWithLanguage(const std::string& language) = 0;
  /// Never null.
  virtual std::shared_ptr<AVSpeechSynthesizer> makeSynthesizer() = 0;
};

#endif
