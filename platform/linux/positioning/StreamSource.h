// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_STREAMSOURCE_H
#define ZRCORE_LINUX_STREAMSOURCE_H

#include <policy/BackOff.h>
#include <readers/LiveReader.h>

#include <memory>
#include <string>
#include <string_view>

#include "loop/Loop.h"
#include "positioning/Connector.h"
#include "positioning/PositionSource.h"

/// A source that is a stream of bytes: gpsd, or a receiver itself. It connects, asks for reports, reads until the
/// connection ends, and connects again.
class StreamSource final : public PositionSource, public std::enable_shared_from_this<StreamSource> {
 public:
  struct Options {
    std::string name = {};
    readers::Format format = readers::Format::gpsdJson;
    std::string request = {};  ///< sent once connected
    bool greets = false;       ///< a daemon, which sends a greeting before any report
    bool hasHeading = false;
    /// With `greets`: the time limit for connecting and for the greeting. gpsd needs up to 3 s to open a receiver and
    /// greet. Without, there is none.
    double greetingSeconds = 6;
    /// The source reports that there is no fix after a silence of this length; after up to twice this length if the
    /// last fix came just after a check.
    double silenceSeconds = 10;
    double quietSeconds = readers::LiveReader::kQuietSeconds;
    readers::FixIntake::Options intake = {};
  };

  StreamSource(Loop& loop, std::unique_ptr<Connector> connector, Options options);
  ~StreamSource() override;

  std::string name() const override { return options_.name; }
  bool hasHeading() const override { return options_.hasHeading; }
  void start(PositionSourceListener& listener) override;
  void stop() override;

 private:
  void connect();
  void connected(FileDescriptor descriptor, const std::string& failure);
  void answers();
  void read();
  void deliver(const readers::LiveEvents& events);
  void disconnected(policy::PositioningFault fault, const std::string& detail);
  void hangUp();
  void watchSilence();

  Loop& loop_;
  std::unique_ptr<Connector> connector_;
  Options options_;
  readers::LiveReader reader_;
  policy::BackOff backOff_;
  RunListener listener_;

  FileDescriptor descriptor_;
  bool hasGreeted_ = false;
  bool hasHeardFix_ = false;  ///< since the silence was last looked at
  std::unique_ptr<Loop::Wait> readable_, retry_, greeting_, quiet_, silence_;
};

#endif
