// SPDX-License-Identifier: Apache-2.0
/// @file
/// The probes. Each takes what it looks at, so that tests can show it something else than this machine.
#ifndef ZRCORE_HOSTS_DOCTOR_PROBES_H
#define ZRCORE_HOSTS_DOCTOR_PROBES_H

#include <ZRCore/ZRPlatform.h>
#include <policy/PositioningSource.h>

#include <filesystem>
#include <string>
#include <utility>

#include "Finding.h"

namespace doctor {

/// Answers that take longer are none.
inline constexpr double kAnswerSeconds = 3.0;

/// Which services of the platform this build fills, and whether those that read documents read a small one. Services of
/// the screen belong to hosts that have one.
class AdaptersProbe final : public Probe {
 public:
  explicit AdaptersProbe(ZRPlatform platform) : platform_(std::move(platform)) {}
  Finding look() override;

 private:
  ZRPlatform platform_;
};

/// A daemon that greets as gpsd does, and has a receiver.
class GpsdProbe final : public Probe {
 public:
  /// A daemon that is started by the connection takes three seconds to open its receiver, and only then greets.
  static constexpr double kGreetingSeconds = 6.0;

  explicit GpsdProbe(policy::PositioningSource source, double answerSeconds = kGreetingSeconds)
      : source_(std::move(source)), answerSeconds_(answerSeconds) {}
  Finding look() override;

 private:
  policy::PositioningSource source_;
  double answerSeconds_;
};

/// Serial devices that may be receivers, and whether they may be read.
class ReceiversProbe final : public Probe {
 public:
  explicit ReceiversProbe(std::filesystem::path folder = "/dev") : folder_(std::move(folder)) {}
  Finding look() override;

 private:
  std::filesystem::path folder_;
};

/// The location service on a message bus.
class GeoClueProbe final : public Probe {
 public:
  /// @param busAddress  empty: the system bus
  explicit GeoClueProbe(std::string busAddress = {}, double answerSeconds = kAnswerSeconds)
      : busAddress_(std::move(busAddress)), answerSeconds_(answerSeconds) {}
  Finding look() override;

 private:
  std::string busAddress_;
  double answerSeconds_;
};

/// The certificates by which servers are trusted over https.
class CertificatesProbe final : public Probe {
 public:
  explicit CertificatesProbe(std::filesystem::path file) : file_(std::move(file)) {}
  Finding look() override;

 private:
  std::filesystem::path file_;
};

/// Where libcurl looks for them.
std::filesystem::path certificatesOfThisSystem();

/// A program that speaks, and its voices.
class VoicesProbe final : public Probe {
 public:
  /// @param program  a path, or a name to be looked up
  explicit VoicesProbe(std::string program = "espeak-ng", double answerSeconds = kAnswerSeconds)
      : program_(std::move(program)), answerSeconds_(answerSeconds) {}
  Finding look() override;

 private:
  std::string program_;
  double answerSeconds_;
};

/// A sound server that speaks PulseAudio's protocol.
class SoundProbe final : public Probe {
 public:
  /// @param server  as PULSE_SERVER says it: the path of a socket, perhaps after "unix:", or "tcp:HOST[:PORT]"
  explicit SoundProbe(std::string server, double answerSeconds = kAnswerSeconds)
      : server_(std::move(server)), answerSeconds_(answerSeconds) {}
  Finding look() override;

 private:
  std::string server_;
  double answerSeconds_;
};

/// Where the user's sound server listens.
std::string soundServerOfThisUser();

/// Other applications' sound that a program of ours lowered before it was killed: restores it.
class VolumesProbe final : public Probe {
 public:
  explicit VolumesProbe(double answerSeconds = kAnswerSeconds) : answerSeconds_(answerSeconds) {}
  Finding look() override;

 private:
  double answerSeconds_;
};

/// The application that opens addresses of a kind.
class HandlerProbe final : public Probe {
 public:
  /// @param scheme   of the addresses: "https", "mailto"
  /// @param subject  what such an application is: "browser", "mail"
  /// @param example  one of them, by the name of its package and its .desktop file, for the remedy
  HandlerProbe(std::string scheme, std::string subject, std::string example)
      : scheme_(std::move(scheme)), subject_(std::move(subject)), example_(std::move(example)) {}
  Finding look() override;

 private:
  std::string scheme_, subject_, example_;
};

}  // namespace doctor

#endif
