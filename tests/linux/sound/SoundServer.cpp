// SPDX-License-Identifier: Apache-2.0
#include "SoundServer.h"

#include <cmath>

#include "PlatformTestPeer.h"

WithSoundServer::~WithSoundServer() {
  monitor.reset();
  audio.reset();
  PlatformTestPeer::forget();
}

void WithSoundServer::SetUp() {
  if (!PrivateServer::isInstalled()) {
    GTEST_SKIP() << "pulseaudio, pulseaudio-utils or espeak-ng is not installed: run scripts/setup";
  }
}

void WithSoundServer::startServer(const std::vector<std::string>& modules) {
  ASSERT_TRUE(server.start(modules));
  monitor = std::make_unique<Monitor>();
  ASSERT_TRUE(eventually([this] { return monitor->isRecording(); }));
}

void WithSoundServer::install() {
  ASSERT_TRUE(ZRPlatformInstall(makeLinuxPlatform()));
  audio = ZRAudio::init();
}

bool WithSoundServer::toneBecomes(double amplitude) {
  return eventually([&] { return std::fabs(monitor->tone() - amplitude) <= 0.1 * amplitude + 20.0; });
}

void WithSoundServer::say(const std::string& text, float volume, bool interrupt) {
  audio->speakTextInterruptVolume(text, interrupt, volume);
}
