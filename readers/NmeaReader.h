// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_READERS_NMEAREADER_H
#define ZRCORE_READERS_NMEAREADER_H

#include <optional>
#include <string_view>

#include "LineReader.h"
#include "NmeaSentence.h"

namespace readers {

/// Reads RMC, GGA, GLL, VTG and GSA sentences of any talker; the sentences of one instant make one fix.
///
/// A fix is complete when a sentence of another instant, or the end, follows. VTG and GSA carry no time and belong to
/// the instant before them. A sentence that says "no fix" (status V, quality 0) voids its instant. Only RMC tells the
/// date: it is carried on, over midnights too, and fixes before the first one have no time.
class NmeaReader final : public LineReader {
 public:
  Held held() const override;
  void tellHeld(Listener& listener) override;

 protected:
  void readLine(std::string_view text, const Reporter& reporter) override;
  void readEnd(const Reporter& reporter) override;

 private:
  /// What is known of one instant.
  struct Instant {
    unsigned kinds = 0;  ///< bits, one for each kind of sentence that told of it
    std::optional<double> secondsOfDay;
    std::optional<double> midnight;  ///< seconds since 1970 at which its day begins
    bool hasPlace = false;
    bool noFix = false;
    SourceFix fix;
  };

  std::optional<Instant> readRmc(const NmeaSentence& sentence, const Reporter& reporter) const;
  std::optional<Instant> readGga(const NmeaSentence& sentence, const Reporter& reporter) const;
  std::optional<Instant> readGll(const NmeaSentence& sentence, const Reporter& reporter) const;
  void addVtg(const NmeaSentence& sentence, const Reporter& reporter);
  void addGsa(const NmeaSentence& sentence, const Reporter& reporter);

  static bool sameInstant(const Instant& a, const Instant& b);
  void add(const std::optional<Instant>& part, Listener& listener);
  void emitCurrent(Listener& listener);
  void dateCurrent();

  std::optional<Instant> current_;
  bool isTold_ = false;  // current_ has been told
  std::optional<double> lastSecondsSince1970_;
  bool sawChecksum_ = false;
  bool toldMissingChecksum_ = false;
};

}  // namespace readers

#endif
