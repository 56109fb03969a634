// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_FILESOURCE_H
#define ZRCORE_LINUX_FILESOURCE_H

#include <packed/MaybeGzip.h>
#include <policy/ReplayPace.h>
#include <readers/LiveReader.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "loop/Loop.h"
#include "positioning/Connector.h"
#include "positioning/PositionSource.h"

/// A source that replays a recording, packed by gzip or not, at the pace at which it was recorded.
class FileSource final : public PositionSource, public std::enable_shared_from_this<FileSource> {
 public:
  /// @param monotonicSeconds  a clock that never goes back
  FileSource(Loop& loop, std::string path, std::function<double()> monotonicSeconds,
             readers::FixIntake::Options intake = {});
  ~FileSource() override;

  std::string name() const override;
  void start(PositionSourceListener& listener) override;
  void stop() override;

 private:
  void open();
  bool readMore();
  bool makeReader(bool isLast);
  void tell(const readers::LiveEvents& events);
  void next();
  void fail(policy::PositioningFault fault, const std::string& detail);

  Loop& loop_;
  std::string path_;
  std::function<double()> monotonicSeconds_;
  readers::FixIntake::Options intake_;
  RunListener listener_;
  FileDescriptor file_;
  std::optional<packed::MaybeGzip> unpacking_;
  std::string piece_;                            ///< unpacked, and not yet read
  std::unique_ptr<readers::LiveReader> reader_;  ///< null until the format is told
  policy::ReplayPace pace_{1.0};
  std::optional<double> startSeconds_;  ///< when the first fix was reported
  std::deque<ZRPositionFix> waiting_;   ///< read, and not due yet
  std::unique_ptr<Loop::Wait> due_;
};

#endif
