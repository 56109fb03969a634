// SPDX-License-Identifier: Apache-2.0
/// @file
/// Where positions come from, as people write it.
#ifndef ZRCORE_POLICY_POSITIONINGSOURCE_H
#define ZRCORE_POLICY_POSITIONINGSOURCE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace policy {

/// In messages, of the source that is still to be found.
inline constexpr const char* kNameOfAutomatic = "auto";

struct PositioningSource {
  enum class Kind { automatic, gpsd, geoclue, nmea, file };

  static constexpr std::uint16_t kGpsdPort = 2947;

  Kind kind = Kind::automatic;
  std::string host = "localhost";  ///< of gpsd; empty when `path` says where it listens
  std::uint16_t port = kGpsdPort;
  std::string path;  ///< of gpsd's socket, a device, a socket or a recording

  /// The name in messages and in the log, such as "gpsd at localhost:2947".
  std::string name() const;
};

/// Reads `auto`, `gpsd`, `gpsd:HOST`, `gpsd:HOST:PORT`, `gpsd:[IPV6]:PORT`, `gpsd:/PATH`, `geoclue`, `nmea:PATH` or
/// `file:PATH`.
/// @return the source, or what is wrong with the text.
std::variant<PositioningSource, std::string> parsePositioningSource(std::string_view text);

}  // namespace policy

#endif
