// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_LINUX_SOUND_SOUNDSERVER_H
#define ZRCORE_TESTS_LINUX_SOUND_SOUNDSERVER_H

#include <ZRCore/ZRAudio.h>
#include <gtest/gtest.h>

#include "PrivateServer.h"

/// A machine with a sound server of its own, on which this process speaks; other programs play the tone.
class WithSoundServer : public testing::Test {
 protected:
  static constexpr double kToneAmplitude = PrivateServer::kToneAmplitude;
  static constexpr double kLowered = kToneAmplitude * 0.12589254;  ///< by 18 dB

  ~WithSoundServer() override;
  void SetUp() override;

  void startServer(const std::vector<std::string>& modules = {});
  void install();

  bool toneBecomes(double amplitude);
  void say(const std::string& text, float volume = 1.0F, bool interrupt = false);

  PrivateServer server;
  std::shared_ptr<ZRAudio> audio;
  std::unique_ptr<Monitor> monitor;
};

#endif
