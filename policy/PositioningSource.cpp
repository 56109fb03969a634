// SPDX-License-Identifier: Apache-2.0
#include "PositioningSource.h"

#include <ZRCore/ZRPrintableText.h>
#include <text/Numbers.h>

#include <optional>

namespace policy {
namespace {

using Kind = PositioningSource::Kind;

std::optional<std::uint16_t> parsePort(std::string_view text) {
  const auto port = text::numberIn<std::uint16_t>(text);
  return port != 0 ? port : std::nullopt;
}

/// Reads HOST, HOST:PORT, [IPV6] or [IPV6]:PORT.
bool parseAddress(std::string_view text, PositioningSource& source) {
  std::size_t hostEnd = text.find(':');
  if (text.starts_with('[')) {
    const auto bracket = text.find(']');
    if (bracket == std::string_view::npos) return false;
    source.host = text.substr(1, bracket - 1);
    hostEnd = bracket + 1;
  } else {
    source.host = text.substr(0, hostEnd);
  }
  if (source.host.empty()) return false;
  if (hostEnd >= text.size()) return true;
  if (text[hostEnd] != ':') return false;
  const auto port = parsePort(text.substr(hostEnd + 1));
  source.port = port.value_or(0);
  return port.has_value();
}

}  // namespace

std::string PositioningSource::name() const {
  switch (kind) {
    case Kind::automatic:
      return kNameOfAutomatic;
    case Kind::gpsd: {
      std::string name = "gpsd at ";
      if (!path.empty()) return name += path;
      const bool isIPv6 = host.find(':') != std::string::npos;
      if (isIPv6) name += '[';
      name += host;
      if (isIPv6) name += ']';
      return (name += ':') += std::to_string(port);
    }
    case Kind::geoclue:
      return "GeoClue";
    case Kind::nmea:
      return "the receiver " + path;
    case Kind::file:
      break;
  }
  return "the recording " + path;
}

std::variant<PositioningSource, std::string> parsePositioningSource(std::string_view text) {
  const auto colon = text.find(':');
  const std::string_view scheme = text.substr(0, colon);
  const std::string_view rest = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  const auto refuse = [&](const char* why) { return '\'' + ZRPrintableText(text, ZRLongestExcerpt) + "' " + why; };

  PositioningSource source;
  if (scheme == "auto" || scheme == "geoclue") {
    if (colon != std::string_view::npos) return refuse("takes nothing after the name");
    source.kind = scheme == "auto" ? Kind::automatic : Kind::geoclue;
    return source;
  }
  if (scheme == "nmea" || scheme == "file") {
    if (rest.empty()) return refuse("lacks a path; write it like nmea:/dev/ttyUSB0 or file:drive.gpx");
    source.kind = scheme == "nmea" ? Kind::nmea : Kind::file;
    source.path = rest;
    return source;
  }
  if (scheme != "gpsd") return refuse("is no source; sources are auto, gpsd, geoclue, nmea:PATH and file:PATH");
  source.kind = Kind::gpsd;
  if (colon == std::string_view::npos) return source;
  if (rest.starts_with('/')) {
    source.path = rest;
    source.host.clear();
    return source;
  }
  if (!parseAddress(rest, source)) {
    return refuse("has no usable address; write gpsd:HOST:PORT, with a port up to 65535");
  }
  return source;
}

}  // namespace policy
