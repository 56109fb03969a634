// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSDate_ZR.h>
#include <ZRCore/ZRPlatform.h>
#include <zrcore/CommandLine.h>
#include <zrcore/Commands.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

#include <memory>
#include <optional>
#include <string>

namespace {

constexpr const char* kAgoDescription = "Says how long ago a date was, in the words that the kit shows.";

constexpr const char* kAgoFooter = R"(
Dates are written as 2016-03-01T12:00:00Z.

Exit codes:
  0  done
  1  the date lies in the future
  2  the command line must be changed
  3  the result could not be written

Example:
  zrcore ago 2016-03-01T12:00:00Z)";

struct AgoOptions : Options {
  using Options::Options;
  Option<std::string> date{*this, "ISO-DATE", "The date", {rule::required()}};
  Option<std::optional<std::string>> now{*this, "--now ISO-DATE", "Count from here instead of the present"};
};

class StandingClock final : public ZRClock {
 public:
  explicit StandingClock(NSDate now) : now_(now) {}
  NSDate now() const override { return now_; }

 private:
  NSDate now_;
};

std::optional<NSDate> dateOf(const std::string& text) {
  const auto date = NSDate_ZR::dateWithISO8601String(text);
  if (!date) Messages().about(excerpt(text), "is no date: write it as 2016-03-01T12:00:00Z");
  return date;
}

int runAgo(const AgoOptions& options) {
  const auto date = dateOf(*options.date);
  if (!date) return kExitUsage;
  if (const auto& present = *options.now) {
    const auto now = dateOf(*present);
    if (!now) return kExitUsage;
    ZRPlatform platform;
    platform.clock = std::make_shared<StandingClock>(*now);
    if (!ZRPlatformInstall(platform)) return kExitServiceMissing;
  }
  const auto words = NSDate_ZR::informalIntervalSinceDate(*date);
  if (!words) {
    Messages().about(excerpt(*options.date), "lies in the future");
    return kExitDataFault;
  }
  StandardOutput output;
  output.write(*words + "\n");
  output.flush();
  return kExitDone;
}

}  // namespace

void addAgoCommand(CommandLine& tool) { tool.add<AgoOptions>("ago", kAgoDescription, kAgoFooter, runAgo); }
