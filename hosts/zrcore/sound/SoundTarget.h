// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_SOUND_SOUNDTARGET_H
#define ZRCORE_HOSTS_ZRCORE_SOUND_SOUNDTARGET_H

#include <ZRCore/ZRAudio.h>
#include <ZRCore/ZRLinuxPlatform.h>
#include <zrcore/Messages.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "SpokenFile.h"

/// Where spoken sound goes: to the sound server, or into a file.
struct SoundTarget {
  std::optional<std::string> wavFile;

  /// @throws UsageFault for anything but "sound" and "wav:FILE"
  static SoundTarget parse(const std::string& option, const std::string& text);
  static std::optional<SoundTarget> parseOptional(const std::string& option, const std::string& text) {
    return parse(option, text);
  }
};

/// A log whose lines are messages of the tool.
class MessageLog final : public ZRLog {
 public:
  explicit MessageLog(Messages& messages) : messages_(messages) {}
  void writeLine(std::string_view line) override { messages_.say(line); }

 private:
  Messages& messages_;
};

/// The platform of a run that logs by messages, and may speak.
struct SpeakingPlatform {
  ZRPlatform platform;
  std::shared_ptr<SpokenFile> file;  ///< null with the sound server, and where nothing is to be spoken
};

/// @param target   nothing: nothing is to be spoken
/// @param force    whether a file that is there already may be replaced
/// @param options  of the platform, but for its sound
/// @throws trip::OutputError  the file may not or cannot be written
SpeakingPlatform speakingPlatform(const std::optional<SoundTarget>& target, bool force, Messages& messages,
                                  ZRLinuxOptions options = {});

/// Ends what still sounds, and lets all events be reported and other applications' streams be restored.
void endSound(ZRAudio& audio);

#endif
