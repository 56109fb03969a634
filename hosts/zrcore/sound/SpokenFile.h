// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_ZRCORE_SOUND_SPOKENFILE_H
#define ZRCORE_HOSTS_ZRCORE_SOUND_SPOKENFILE_H

#include <ZRCore/ZRLinuxSound.h>
#include <trip/outputs/OutputFile.h>

#include <filesystem>
#include <memory>

/// A WAV file of what is spoken, which appears under its name when it is complete.
class SpokenFile {
 public:
  /// @param force  whether a file of that name may be replaced
  /// @throws trip::OutputError
  SpokenFile(const std::filesystem::path& target, bool force);

  /// For the platform's options.
  const std::shared_ptr<ZRSoundFile>& sound() const { return sound_; }

  /// Puts the file under its name. After a signal it holds what could be written until then.
  /// @throws trip::OutputError  it could not be written
  void complete();
  /// The same, if there is any sound in it.
  void completeUnlessSilent();

 private:
  trip::OutputFile file_;
  std::shared_ptr<ZRSoundFile> sound_;
};

#endif
