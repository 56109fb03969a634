// SPDX-License-Identifier: Apache-2.0
/// @file
/// Spoken guidance: prompts, clips, and the audio session around them.
#ifndef ZRCORE_ZRAUDIO_H
#define ZRCORE_ZRAUDIO_H

#include <ZRCore/AVAudioPlayer.h>
#include <ZRCore/AVAudioSession.h>
#include <ZRCore/AVSpeechSynthesis.h>
#include <ZRCore/NSObject.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <string>
#include <string_view>

struct NSNotification;

/// Posted when an utterance is handed to the synthesizer, the silent one of the session's retry included. Its object is
/// the utterance (an AVSpeechUtterance).
ZR_EXPORT extern const char* const ZRNavRecordingUtteranceNotification;

/// Root of everything that may stand as ZRAudio's delegate; it is held weakly. Deriving from one of the interfaces
/// below is how a delegate answers that callback.
class ZR_EXPORT ZRAudioDelegate {
 public:
  virtual ~ZRAudioDelegate();
};

/// Answers `didFailInitialization`: the voice could not be made; speech goes on with the system's default voice.
class ZR_EXPORT ZRDidFailInitialization : public virtual ZRAudioDelegate {
 public:
  ~ZRDidFailInitialization() override;
  virtual void didFailInitialization() = 0;
};

/// Answers `speechSynthesizer:didFinishSpeechUtterance:`.
class ZR_EXPORT ZRDidFinishSpeechUtterance : public virtual ZRAudioDelegate {
 public:
  ~ZRDidFinishSpeechUtterance() override;
  virtual void speechSynthesizerDidFinishSpeechUtterance(const std::shared_ptr<AVSpeechSynthesizer>& synthesizer,
                                                         const std::shared_ptr<AVSpeechUtterance>& utterance) = 0;
};

/// Answers `audioPlayerDidFinishPlaying:successfully:`.
class ZR_EXPORT ZRAudioPlayerDidFinishPlaying : public virtual ZRAudioDelegate {
 public:
  ~ZRAudioPlayerDidFinishPlaying() override;
  virtual void audioPlayerDidFinishPlayingSuccessfully(const std::shared_ptr<AVAudioPlayer>& player,
                                                       bool successfully) = 0;
};

/// The one owner of spoken output in a process. It speaks texts and plays clips, activates the audio session before,
/// and deactivates it afterwards only if another application's audio had been playing when the output began: that audio
/// then comes back at full volume, and otherwise the volume buttons stay bound to this application between prompts.
///
/// Everything happens on the main thread; no locks are taken. The services are those of the platform in use. The
/// last owner may let go of the object from inside a callback or a notification.
class ZR_EXPORT ZRAudio : public NSObject,
                          public AVSpeechSynthesizerDelegate,
                          public AVAudioPlayerDelegate,
                          public std::enable_shared_from_this<ZRAudio> {
 public:
  /// The one of the process, made at the first call. Any thread may be the first.
  static const std::shared_ptr<ZRAudio>& sharedInstance();
  /// Another one, with the observations of the session's and the application's notifications that end with it.
  static std::shared_ptr<ZRAudio> init();

  ZRAudio(const ZRAudio&) = delete;
  ZRAudio& operator=(const ZRAudio&) = delete;
  ~ZRAudio() override;

  std::weak_ptr<ZRAudioDelegate> delegate() const { return delegate_; }
  /// Holds `delegate` weakly and asks it once which of the callbacks above it answers.
  void setDelegate(std::weak_ptr<ZRAudioDelegate> delegate);

  /// The synthesizer, which is made, with this object as its delegate, when there is none.
  const std::shared_ptr<AVSpeechSynthesizer>& speechSynth();
  /// Null: the next reading makes one. One that is set here keeps the delegate it has.
  void setSpeechSynth(std::shared_ptr<AVSpeechSynthesizer> synthesizer);

  /// The clip's player while it is in use; null otherwise.
  const std::shared_ptr<AVAudioPlayer>& audioPlayer() const { return audioPlayer_; }
  void setAudioPlayer(std::shared_ptr<AVAudioPlayer> player);

  /// The "en-US" voice. Null when the platform cannot make it: that is logged and reported to the delegate, and the
  /// next call tries again.
  std::shared_ptr<AVSpeechSynthesisVoice> voice();
  /// Another voice for every utterance; null: the "en-US" one again.
  void setVoice(std::shared_ptr<AVSpeechSynthesisVoice> voice);

  /// The utterance that was handed to the synthesizer last; null before the first.
  const std::shared_ptr<AVSpeechUtterance>& utterance() const { return utterance_; }
  void setUtterance(std::shared_ptr<AVSpeechUtterance> utterance);

  /// The rate of every utterance, at first what suits the version of the operating system: 0.25 below 8.0, 0.12 below
  /// 9.0, 0.5 from then on and where the version is not known.
  float speechUtteranceRate() const { return speechUtteranceRate_; }
  void setSpeechUtteranceRate(float rate) { speechUtteranceRate_ = rate; }

  /// Whether sound goes through the hands-free profile; false at first.
  bool useHFP() const { return useHFP_; }
  void setUseHFP(bool use) { useHFP_ = use; }

  /// Whether another application's audio was playing when the current output began.
  bool otherAudioWasPlayingWhenSpeechStarted() const { return otherAudioWasPlayingWhenSpeechStarted_; }
  void setOtherAudioWasPlayingWhenSpeechStarted(bool was) { otherAudioWasPlayingWhenSpeechStarted_ = was; }

  // Output.

  /// Speaks `text` (UTF-8), after what is being spoken or, with `interrupt`, in its place. A clip stops either way.
  /// @param volume  0 to 1.
  void speakTextInterruptVolume(const std::string& text, bool interrupt, float volume);
  /// Speaks an utterance of the caller's (not null) after what is being spoken. Clips, and the knowledge of other
  /// audio, stay.
  void speakUtterance(const std::shared_ptr<AVSpeechUtterance>& utterance);
  /// Stops all output and plays a clip. Bytes that are not a clip play nothing, and nothing is reported.
  void playAudioData(std::string_view data);
  /// The volume of the current utterance (as far as the platform still heeds it) and of the current clip, 0 to 1.
  void setVolume(float volume);
  /// Whether something is being spoken or waits to be.
  bool isSpeaking() const;
  /// Silences speech at once.
  void stopSpeechPlayback();
  /// Silences the clip and lets its player go.
  void stopAudioPlayer();
  void stopAudioAndSpeechPlayback();

  // The audio session.

  /// AVAudioSessionCategoryPlayAndRecord with the hands-free profile, else AVAudioSessionCategoryPlayback.
  std::string audioCategoryForNavigation() const;
  /// 6 (duck others, allow Bluetooth) with the hands-free profile, else 19 (mix with others, duck others, interrupt
  /// spoken audio).
  AVAudioSessionCategoryOptions audioOptionsForNavigation() const;
  /// The spelling is part of the interface.
  void startAudioSesssionForNavigation();
  /// Ambient, with no options.
  void startAudioSessionForMovie();
  /// Sets the category and activates the session. What fails is logged, and nothing else is done about it.
  void startAudioSessionWithCategoryOptions(const std::string& category, AVAudioSessionCategoryOptions options);
  /// Deactivates the session and lets other applications know. @return whether that succeeded.
  bool stopAudioSession();
  void forceStopSession();
  /// `stopSessionWhenAudioHasFinished`, if other audio was playing when the output began.
  void stopSessionRequested();
  /// Deactivates the session, unless something is being spoken or played. A session that refuses is asked again after a
  /// practically silent utterance; there is no bound to that.
  void stopSessionWhenAudioHasFinished();
  /// Binds the volume buttons to this application (by an active session), unless another one's audio is playing.
  void enableVolumeRockerControl();

  // From the platform.

  void speechSynthesizerDidFinishSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                 std::shared_ptr<AVSpeechUtterance> utterance) override;
  void speechSynthesizerDidPauseSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                std::shared_ptr<AVSpeechUtterance> utterance) override;
  void speechSynthesizerDidCancelSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer> synthesizer,
                                                 std::shared_ptr<AVSpeechUtterance> utterance) override;
  void audioPlayerDidFinishPlayingSuccessfully(std::shared_ptr<AVAudioPlayer> player, bool successfully) override;
  void audioPlayerDecodeErrorDidOccur(std::shared_ptr<AVAudioPlayer> player, const NSError& error) override;
  void audioPlayerBeginInterruption(std::shared_ptr<AVAudioPlayer> player) override;
  void handleInterruption(const NSNotification& notification);
  void handleBackground(const NSNotification& notification);

 private:
  ZRAudio();
  void observe();

  std::weak_ptr<ZRAudioDelegate> delegate_;
  std::weak_ptr<ZRDidFailInitialization> didFailInitialization_;
  std::weak_ptr<ZRDidFinishSpeechUtterance> didFinishSpeechUtterance_;
  std::weak_ptr<ZRAudioPlayerDidFinishPlaying> audioPlayerDidFinishPlaying_;
  std::shared_ptr<AVSpeechSynthesizer> speechSynth_;
  std::shared_ptr<AVAudioPlayer> audioPlayer_;
  std::shared_ptr<AVSpeechSynthesisVoice> voice_;
  std::shared_ptr<AVSpeechUtterance> utterance_;
  float speechUtteranceRate_;
  bool useHFP_ = false;
  bool otherAudioWasPlayingWhenSpeechStarted_ = false;
};

#endif
