// SPDX-License-Identifier: Apache-2.0
/// @file
/// The application's claim on the device's sound, beside other applications.
#ifndef ZRCORE_AVAUDIOSESSION_H
#define ZRCORE_AVAUDIOSESSION_H

#include <ZRCore/NSError.h>
#include <ZRCore/ZRExport.h>

#include <optional>
#include <string>

/// What the application's sound is for. Each constant's value is its own name.
inline constexpr const char* AVAudioSessionCategoryAmbient = "AVAudioSessionCategoryAmbient";
inline constexpr const char* AVAudioSessionCategoryPlayback = "AVAudioSessionCategoryPlayback";
inline constexpr const char* AVAudioSessionCategoryPlayAndRecord = "AVAudioSessionCategoryPlayAndRecord";

/// How the application's sound goes together with that of others: a sum of these.
using AVAudioSessionCategoryOptions = unsigned;
inline constexpr AVAudioSessionCategoryOptions AVAudioSessionCategoryOptionMixWithOthers = 1;
inline constexpr AVAudioSessionCategoryOptions AVAudioSessionCategoryOptionDuckOthers = 2;
inline constexpr AVAudioSessionCategoryOptions AVAudioSessionCategoryOptionAllowBluetooth = 4;
/// 16 and the mixing without which it has no meaning.
inline constexpr AVAudioSessionCategoryOptions AVAudioSessionCategoryOptionInterruptSpokenAudioAndMixWithOthers = 17;

using AVAudioSessionSetActiveOptions = unsigned;
/// Tells other applications that they have the device's sound to themselves again.
inline constexpr AVAudioSessionSetActiveOptions AVAudioSessionSetActiveOptionNotifyOthersOnDeactivation = 1;

/// Posted by the session, which is the notification's object, when another application's main audio starts or ends.
inline constexpr const char* AVAudioSessionSilenceSecondaryAudioHintNotification =
    "AVAudioSessionSilenceSecondaryAudioHintNotification";
/// In its information: 1 when the other audio starts, 0 when it ends.
inline constexpr const char* AVAudioSessionSilenceSecondaryAudioHintTypeKey =
    "AVAudioSessionSilenceSecondaryAudioHintTypeKey";
/// In its information, where the system also interrupts this application's audio: 1 when that begins, 0 when it ends.
inline constexpr const char* AVAudioSessionInterruptionTypeKey = "AVAudioSessionInterruptionTypeKey";

/// What became of a request: a system may report an error beside a success, and a failure without one.
struct AVAudioSessionResult {
  bool success = true;
  std::optional<NSError> error = std::nullopt;
};

/// Main thread only.
class ZR_EXPORT AVAudioSession {
 public:
  virtual ~AVAudioSession();

  /// Whether another application's audio is playing now.
  virtual bool isOtherAudioPlaying() const = 0;
  /// @param category  one of the constants above
  virtual AVAudioSessionResult setCategoryWithOptions(const std::string& category,
                                                      AVAudioSessionCategoryOptions options) = 0;
  /// Claims the device's sound, or gives it up.
  /// @param options  0, or when it is given up the one above
  virtual AVAudioSessionResult setActiveWithOptions(bool active, AVAudioSessionSetActiveOptions options) = 0;
};

#endif
