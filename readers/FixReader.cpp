// SPDX-License-Identifier: Apache-2.0
#include "FixReader.h"

#include <array>

#include "CsvReader.h"
#include "GpxReader.h"
#include "ReceiverReader.h"

namespace readers {

Listener::~Listener() = default;
void Listener::news(const SourceNews& /*news*/) {}
FixReader::~FixReader() = default;
FixReader::Held FixReader::held() const { return Held::nothing; }
void FixReader::tellHeld(Listener& /*listener*/) {}

std::string_view formatName(Format format) {
  constexpr std::array<std::string_view, 4> kNames{"GPX", "NMEA 0183", "gpsd JSON", "CSV"};
  return kNames.at(static_cast<std::size_t>(format));
}

std::unique_ptr<FixReader> makeReader(Format format) {
  switch (format) {
    case Format::gpx:
      return std::make_unique<GpxReader>();
    case Format::nmea:
    case Format::gpsdJson:
      return std::make_unique<ReceiverReader>();
    case Format::csv:
      break;
  }
  return std::make_unique<CsvReader>();
}

}  // namespace readers
