// SPDX-License-Identifier: Apache-2.0
/// @file
/// What the sentences of NMEA 0183 say of their instants.
#ifndef ZRCORE_READERS_NMEAPARTS_H
#define ZRCORE_READERS_NMEAPARTS_H

#include <string_view>

#include "FixFields.h"
#include "Instants.h"
#include "NmeaSentence.h"

namespace readers {

/// What is read of sentences of one kind.
struct NmeaKind {
  std::string_view name;
  std::size_t fewestFields;  ///< old versions of the standard included
  Severity severity;         ///< of damage to one
  /// @return false when the sentence had to be skipped, which has been reported
  bool (*read)(const NmeaSentence& sentence, const NmeaFields& fields, const Reporter& reporter, Instants& instants);
};

/// Null for a kind that is not read.
const NmeaKind* findNmeaKind(std::string_view name);

/// A sentence of another kind. It may tell that a new instant has begun.
void readOtherNmea(const NmeaSentence& sentence, Instants& instants);

}  // namespace readers

#endif
