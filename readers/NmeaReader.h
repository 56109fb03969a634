// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_NMEAREADER_H
#define ZRCORE_READERS_NMEAREADER_H

#include <cstdint>
#include <string_view>

#include "FixFields.h"
#include "Instants.h"
#include "NmeaSentence.h"

namespace readers {

/// Reads the lines of NMEA 0183: RMC, GGA, GNS, GLL (position), VTG (speed and course), ZDA (time and date) and GSA
/// (dilution of precision) of any talker.
///
/// A sentence begins at a `$`; what stands before the last one of a line (the rest of a binary message, a logger's
/// time, a tag block, another `$`, a sentence that broke off) does not matter to it. Where damage may have cost a
/// position, a time, a speed or a course, it is a fault, else a warning: sentences of other kinds and texts are no
/// loss.
class NmeaReader {
 public:
  void readLine(std::string_view text, const Reporter& reporter, Instants& instants);
  void readEnd(const Reporter& reporter);

 private:
  void readText(std::string_view text, bool isBeforeSentence, const Reporter& reporter, Instants& instants);
  void readSentence(std::string_view text, bool isLast, const Reporter& reporter, Instants& instants);

  bool sawChecksum_ = false;
  bool toldBytesBefore_ = false;
  std::uint64_t withoutChecksum_ = 0;
};

}  // namespace readers

#endif
