// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_RECEIVERREADER_H
#define ZRCORE_READERS_RECEIVERREADER_H

#include <string_view>

#include "GpsdReader.h"
#include "Instants.h"
#include "LineReader.h"
#include "NmeaReader.h"

namespace readers {

/// Reads what receivers say, as NMEA 0183, and what gpsd says of them, as JSON. Both may stand in one input, line by
/// line, as gpsd passes sentences on: an instant of which both tell is one fix.
class ReceiverReader final : public LineReader {
 public:
  ReceiverReader() : LineReader(Binary::hasItsFrames) {}

  Held held() const override { return instants_.held(); }
  void tellHeld(Listener& listener) override { instants_.tellHeld(listener); }

 protected:
  void readLine(std::string_view text, const Reporter& reporter) override;
  void readEnd(const Reporter& reporter) override;

 private:
  NmeaReader sentences_;
  GpsdReader reports_;
  Instants instants_;
};

}  // namespace readers

#endif
