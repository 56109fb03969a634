// SPDX-License-Identifier: Apache-2.0
/// @file
/// A reader for streams that are read as they come.
#ifndef ZRCORE_READERS_LIVEREADER_H
#define ZRCORE_READERS_LIVEREADER_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/CLLocationManager.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FixCompletion.h"
#include "FixIntake.h"
#include "FixReader.h"

namespace readers {

/// What some bytes of a live stream brought.
struct LiveEvents {
  std::vector<ZRPositionFix> fixes;  ///< oldest first
  std::vector<CLHeading> headings;
  std::optional<std::string> daemonRelease;  ///< the daemon has greeted
  std::optional<std::size_t> receivers;      ///< how many the daemon has from now on
  std::vector<std::string> remarks;          ///< for the log: what was dropped, and why
  std::optional<std::string> oldDate = {};   ///< once: what is odd about the receiver's date
};

/// Turns the bytes of one source, over any number of connections, into the platform's fixes.
///
/// Reports of one instant are merged as in a recording, but a fix is told as soon as its instant has as many of them as
/// those before, or when the stream has been quiet for `kQuietSeconds`: whoever feeds it calls `tellHeld` then. An
/// instant is told once, also when a new connection begins with it.
class LiveReader final : private Listener {
 public:
  /// The sentences of one instant follow each other closely, instants do not.
  static constexpr double kQuietSeconds = 0.1;

  /// After so many of one connection remarks are dropped, so that a stream of rubbish does not fill the log.
  static constexpr int kMostRemarks = 5;

  struct Options {
    FixIntake::Options intake = {};
    bool isRecording = false;  ///< its dates are those of another time, and what has none has come at no time
  };

  explicit LiveReader(Format format) : LiveReader(format, Options()) {}
  LiveReader(Format format, Options options);

  /// A new connection, which begins in the middle of whatever the source is saying.
  void beginConnection();

  LiveEvents feed(std::string_view bytes);
  /// The stream went quiet, or the connection ended. A line that was cut off by that is not a fault.
  LiveEvents tellHeld();
  /// The recording ended.
  LiveEvents finish();

  /// Whether there is something for `tellHeld`.
  bool isHolding() const;

 private:
  void fix(const SourceFix& fix) override;
  void remark(const Remark& remark) override;
  void status(const SourceStatus& status) override;
  LiveEvents take();

  Format format_;
  Options options_;
  FixIntake intake_;
  std::unique_ptr<FixReader> reader_;
  FixCompletion completion_{{}};
  std::optional<SourceFix> last_;  ///< of all connections
  bool hasToldFix_ = false;        ///< of this one
  int remarks_ = 0;
  LiveEvents events_;
};

}  // namespace readers

#endif
