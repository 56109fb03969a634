// SPDX-License-Identifier: Apache-2.0
#include "AgoCommand.h"

#include <ZRCore/NSDate_ZR.h>
#include <ZRCore/ZRPlatform.h>
#include <zrcore/CommandLine.h>
#include <zrcore/ExitCodes.h>
#include <zrcore/Messages.h>
#include <zrcore/StandardOutput.h>

#include <cstdio>
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

struct AgoArguments {
  std::string date;
  std::optional<std::string> now;
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
  if (!date) std::fprintf(stderr, "zrcore: %s: is no date: write it as 2016-03-01T12:00:00Z\n", excerpt(text).c_str());
  return date;
}

int runAgo(const AgoArguments& arguments) {
  const auto date = dateOf(arguments.date);
  if (!date) return kExitUsage;
  if (arguments.now) {
    const auto now = dateOf(*arguments.now);
    if (!now) return kExitUsage;
    ZRPlatform platform;
    platform.clock = std::make_shared<StandingClock>(*now);
    if (!ZRPlatformInstall(platform)) return kExitServiceMissing;
  }
  const auto words = NSDate_ZR::informalIntervalSinceDate(*date);
  if (!words) {
    std::fprintf(stderr, "zrcore: %s: lies in the future\n", excerpt(arguments.date).c_str());
    return kExitDataFault;
  }
  StandardOutput output;
  output.write(*words + "\n");
  output.flush();
  return kExitDone;
}

}  // namespace

void addAgoCommand(CommandLine& tool) {
  const auto arguments = std::make_shared<AgoArguments>();
  Command command = tool.add("ago", kAgoDescription, kAgoFooter, [arguments] { return runAgo(*arguments); });
  command.option("ISO-DATE", arguments->date, "The date").required();
  command.option("--now", arguments->now, "Count from here instead of the present").valueName("ISO-DATE");
}
