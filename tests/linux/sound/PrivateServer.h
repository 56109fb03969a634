// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_LINUX_SOUND_PRIVATESERVER_H
#define ZRCORE_TESTS_LINUX_SOUND_PRIVATESERVER_H

#include <ZRCore/ZRLinuxPlatform.h>
#include <pulse/glib-mainloop.h>
#include <pulse/pulseaudio.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ChildProcess.h"

/// Iterates the default context until `holds`, half a minute at the most. @return whether it came to hold
bool eventually(const std::function<bool()>& holds);

/// Records what a private server's only sink plays, 8000 samples a second, from the moment of its making.
class Monitor {
 public:
  static constexpr std::size_t kSamplesPerSecond = 8000;
  static constexpr std::size_t kBlock = 400;  ///< samples of one level: a twentieth of a second

  Monitor();
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;
  ~Monitor();

  bool isRecording() const { return !samples.empty(); }
  /// The amplitude of the test's tone (Goertzel), and of everything, in the latest whole block.
  double tone() const { return toneAt(samples.size() / kBlock * kBlock); }
  double toneAt(std::size_t end) const;
  double loudness() const;
  /// Forgets what was recorded; what is on its way comes later.
  void forget() { samples.clear(); }
  /// The stretches of sound, in seconds from the beginning, that stand further apart than `gapSeconds`.
  std::vector<std::pair<double, double>> stretches(double gapSeconds) const;

  std::vector<std::int16_t> samples;

 private:
  void stateChanged();
  void read();

  pa_glib_mainloop* mainloop_;
  pa_context* context_;
  pa_stream* stream_ = nullptr;
};

/// A sound server of the test's own, in a temporary folder that also takes the place of the user's session.
class PrivateServer {
 public:
  static constexpr double kToneAmplitude = 8000.0;

  PrivateServer();
  PrivateServer(const PrivateServer&) = delete;
  PrivateServer& operator=(const PrivateServer&) = delete;
  ~PrivateServer();

  static bool isInstalled();
  /// @return whether it answers
  bool start(const std::vector<std::string>& modules = {});
  /// It ends at once.
  void stop();
  /// It neither answers nor ends.
  void freeze() const;
  /// Another program that plays the tone, for a minute.
  /// @param properties  of its stream: "NAME=VALUE"
  std::unique_ptr<ChildProcess> music(const std::string& role = "music",
                                      const std::vector<std::string>& properties = {}) const;
  const std::filesystem::path& folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
  std::unique_ptr<ChildProcess> server_;
};

#endif
