// SPDX-License-Identifier: Apache-2.0
/// @file
/// The playing of audio clips.
#ifndef ZRCORE_AVAUDIOPLAYER_H
#define ZRCORE_AVAUDIOPLAYER_H

#include <ZRCore/NSError.h>
#include <ZRCore/ZRExport.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

class AVAudioPlayer;

/// The domain of the errors of players.
inline constexpr const char* AVFoundationErrorDomain = "AVFoundationErrorDomain";
/// The bytes are not audio that can be read.
inline constexpr long AVErrorFileFormatNotRecognized = -11828;
/// The bytes are damaged.
inline constexpr long AVErrorDecodeFailed = -11821;

/// Hears of a clip. The player is handed over by value, so that a delegate may drop its own hold on it.
class ZR_EXPORT AVAudioPlayerDelegate {
 public:
  virtual ~AVAudioPlayerDelegate();
  /// The clip has been heard to its end; `successfully` is false when it could not be.
  virtual void audioPlayerDidFinishPlayingSuccessfully(std::shared_ptr<AVAudioPlayer> player, bool successfully);
  /// The rest of the clip cannot be read.
  virtual void audioPlayerDecodeErrorDidOccur(std::shared_ptr<AVAudioPlayer> player, const NSError& error);
  /// The system takes the sound away.
  virtual void audioPlayerBeginInterruption(std::shared_ptr<AVAudioPlayer> player);
};

/// Plays one clip. What it has to tell is told after the call that leads to it, and not after its delegate was cleared.
/// A player that is dropped stops. Main thread only.
class ZR_EXPORT AVAudioPlayer : public std::enable_shared_from_this<AVAudioPlayer> {
 public:
  AVAudioPlayer();
  AVAudioPlayer(const AVAudioPlayer&) = delete;
  AVAudioPlayer& operator=(const AVAudioPlayer&) = delete;
  virtual ~AVAudioPlayer();

  std::weak_ptr<AVAudioPlayerDelegate> delegate() const { return delegate_; }
  void setDelegate(std::weak_ptr<AVAudioPlayerDelegate> delegate) { delegate_ = std::move(delegate); }

  virtual void play() = 0;
  /// Silences the clip at once. Nothing is reported.
  virtual void stop() = 0;
  virtual bool isPlaying() const = 0;
  /// @param volume  0 (silent) to 1; 1 at first. Heard at once.
  virtual void setVolume(float volume) = 0;

 private:
  std::weak_ptr<AVAudioPlayerDelegate> delegate_;
};

/// Makes players. Main thread only.
class ZR_EXPORT ZRAudioPlayers {
 public:
  virtual ~ZRAudioPlayers();
  /// A player of the clip whose file's bytes are `data` (never null), or why there can be none.
  virtual std::variant<std::shared_ptr<AVAudioPlayer>, NSError> playerWithData(std::string_view data) = 0;
};

#endif
