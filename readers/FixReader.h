// SPDX-License-Identifier: Apache-2.0
/// @file
/// Readers of recorded and live position streams: bytes in, fixes out.
#ifndef ZRCORE_READERS_FIXREADER_H
#define ZRCORE_READERS_FIXREADER_H

#include <ZRCore/ZRGeometry.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace readers {

enum class Format { gpx, nmea, gpsdJson, csv };

/// For messages: "GPX", "NMEA 0183", "gpsd JSON", "CSV".
std::string_view formatName(Format format);

/// One position as a source reports it; what it does not report is empty. No value is NaN or infinite.
struct SourceFix {
  CLLocationCoordinate2D coordinate{};           ///< degrees, always a place on the Earth
  std::optional<double> secondsSince1970;        ///< UTC, without leap seconds
  std::optional<double> altitudeMeters;          ///< above the sea
  std::optional<double> accuracyMeters;          ///< the receiver's own horizontal estimate, >= 0
  std::optional<double> verticalAccuracyMeters;  ///< >= 0
  std::optional<double> hdop;                    ///< horizontal dilution of precision, > 0
  std::optional<double> speedMetersPerSecond;    ///< >= 0
  std::optional<double> courseDegrees;           ///< clockwise from true north, [0, 360)
  std::optional<int> satellites;                 ///< used for it, >= 0
  bool isEstimated = false;                      ///< by dead reckoning or a simulator, not measured
  std::uint64_t line = 0;                        ///< 1-based, where it stands (GPX: the line of its `trkpt`)
};

enum class Severity {
  warning,  ///< something was odd, or dropped that is none of these
  fault,    ///< a position, time, altitude, speed or course was dropped
};

/// What a live source says beside its fixes; recordings of one may hold it, too.
struct SourceStatus {
  std::optional<std::string> daemonRelease = {};       ///< the daemon's greeting
  std::optional<std::size_t> receivers = {};           ///< how many the daemon has from now on
  std::optional<double> trueHeadingDegrees = {};       ///< of a compass, clockwise from true north, [0, 360)
  std::optional<double> magneticHeadingDegrees = {};   ///< clockwise from magnetic north, [0, 360)
  std::optional<double> headingSecondsSince1970 = {};  ///< UTC
};

/// What a reader has to say about its input.
struct Remark {
  Severity severity = Severity::warning;
  std::uint64_t line = 0;  ///< 1-based
  std::string text;        ///< what, why and what to do; names neither the file nor the line
};

/// Hears what a reader found: the fixes in the input's order, and the remarks in theirs. A fix that later lines may add
/// to comes after the remarks about these. Must not throw: some readers call it from within a C library.
class Listener {
 public:
  virtual ~Listener();
  virtual void fix(const SourceFix& fix) = 0;
  virtual void remark(const Remark& remark) = 0;
  virtual void status(const SourceStatus& status);  ///< passed over by default
};

/// A push parser of one input, from its first byte to its end. It holds a bounded part of the input, however long that
/// is, and takes any bytes: what it cannot use becomes a remark. One thread at a time; it calls the listener only from
/// within `feed` and `finish`, and no listener may call back into it.
class FixReader {
 public:
  virtual ~FixReader();

  /// The next bytes of the input. The fixes and remarks do not depend on where the input is split.
  virtual void feed(std::string_view bytes, Listener& listener) = 0;

  /// The end of the input: what was held back is reported, and an input that breaks off in the middle is a fault.
  /// Called once, after the last `feed`.
  virtual void finish(Listener& listener) = 0;

  // For live streams, whose reader cannot wait for the next instant to know that one is over. Files need none of it.

  enum class Held {
    nothing,
    growing,   ///< a fix that later input may add to
    complete,  ///< a fix to which, going by the instants before, nothing will be added any more
  };
  virtual Held held() const;

  /// Tells the fix that is held. What the input says of that instant afterwards is dropped.
  virtual void tellHeld(Listener& listener);
};

/// Tells the format by the content: a byte order mark (of UTF-16, too), leading blanks, comment lines and, for NMEA, a
/// few damaged lines before the first sound one, and bytes before its `$`, do not matter.
/// @param head  the first bytes of the input, unpacked; 64 KiB are plenty. The last line may be cut.
/// @return      nullopt when it is none of the formats, or when the bytes do not suffice to tell.
std::optional<Format> detectFormat(std::string_view head);

/// Says of an input that `detectFormat` cannot tell what it seems to be and what to do, as in "is KML, which ...".
std::string whyUnreadable(std::string_view head);

/// A reader at the start of an input. Never null.
std::unique_ptr<FixReader> makeReader(Format format);

}  // namespace readers

#endif
