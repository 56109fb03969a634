// SPDX-License-Identifier: Apache-2.0
#include "FixReader.h"

#include "CsvReader.h"
#include "GpxReader.h"
#include "ReceiverReader.h"

namespace readers {

Listener::~Listener() = default;
void Listener::status(const SourceStatus& /*status*/) {}
FixReader::~FixReader() = default;
FixReader::Held FixReader::held() const { return Held::nothing; }
void FixReader::tellHeld(Listener& /*listener*/) {}

namespace {

/// All that there is to know of a format.
struct Row {
  std::string_view name;
  std::unique_ptr<FixReader> (*make)();
};

template <class Reader>
std::unique_ptr<FixReader> make() {
  return std::make_unique<Reader>();
}

/// Without a default: a format that is forgotten here does not compile.
Row rowOf(Format format) {
  switch (format) {
    case Format::gpx:
      return {"GPX", make<GpxReader>};
    case Format::nmea:
      return {"NMEA 0183", make<ReceiverReader>};
    case Format::gpsdJson:
      return {"gpsd JSON", make<ReceiverReader>};
    case Format::csv:
      return {"CSV", make<CsvReader>};
  }
  return {};
}

}  // namespace

std::string_view formatName(Format format) { return rowOf(format).name; }
std::unique_ptr<FixReader> makeReader(Format format) { return rowOf(format).make(); }

}  // namespace readers
