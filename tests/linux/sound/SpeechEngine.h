// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_LINUX_SOUND_SPEECHENGINE_H
#define ZRCORE_TESTS_LINUX_SOUND_SPEECHENGINE_H

#include <ZRCore/ZRLinuxPlatform.h>
#include <ZRCore/ZRPlatformFake.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Ends.h"
#include "PlatformTestPeer.h"
#include "TemporaryFolder.h"

/// So many milliseconds of a square wave as a WAV.
inline std::string squareWav(int milliseconds, unsigned rate = 22050) {
  const auto number = [](std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i);
    return text;
  };
  std::string wav = "RIFF" + number(0x7ffff024, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) +
                    number(rate, 4) + number(2 * rate, 4) + number(2, 2) + number(16, 2) + "data" +
                    number(0x7ffff000, 4);
  for (unsigned i = 0; i < rate * static_cast<unsigned>(milliseconds) / 1000; ++i) {
    wav += number(i / 50 % 2 ? 5000 : 60536, 2);
  }
  return wav;
}

/// Speech by an engine of the test's own, into a file.
class SpeechEngine : public testing::Test {
 protected:
  SpeechEngine() { sound.speechPatienceSeconds = 0.3; }
  ~SpeechEngine() override { PlatformTestPeer::forget(); }

  std::string file(const char* name, const std::string& content) const { return temporary.write(name, content); }

  void install(std::vector<std::string> engine) {
    PlatformTestPeer::forget();
    std::string fault;
    sound.soundFile = soundFile = ZRSoundFile::create(folder / "out.wav", fault);
    ASSERT_NE(soundFile, nullptr) << fault;
    sound.speechCommand = std::move(engine);
    ZRLinuxOptions options;
    options.sound = std::make_shared<ZRLinuxSoundOptions>(sound);
    ZRPlatform platform = makeLinuxPlatform(options);
    log->lines.clear();
    platform.log = log;
    ASSERT_TRUE(ZRPlatformInstall(platform));
    synthesizer = ZRPlatformInUse().speech->makeSynthesizer();
    synthesizer->setDelegate(hearing);
  }

  void speak(const std::string& text) { synthesizer->speakUtterance(std::make_shared<AVSpeechUtterance>(text)); }
  bool ended(std::size_t count) {
    return ZRRunLinuxLoopFor(30.0, [&] { return ends.size() >= count; });
  }

  TemporaryFolder temporary;
  const std::filesystem::path& folder = temporary.path;
  ZRLinuxSoundOptions sound;
  std::shared_ptr<ZRSoundFile> soundFile;
  std::shared_ptr<AVSpeechSynthesizer> synthesizer;
  std::shared_ptr<ZRFakeLog> log = std::make_shared<ZRFakeLog>();
  std::shared_ptr<Ends> hearing = std::make_shared<Ends>();
  std::vector<std::string>& ends = hearing->ends;
};

#endif
