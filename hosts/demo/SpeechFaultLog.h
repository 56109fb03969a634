// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_SPEECHFAULTLOG_H
#define ZRCORE_HOSTS_DEMO_SPEECHFAULTLOG_H

#include <ZRCore/ZRPlatform.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace demo {

/// A log that also remembers why speech was not heard: the system's speech reports that to the log alone, and the same
/// cause only once.
class SpeechFaultLog final : public ZRLog {
 public:
  explicit SpeechFaultLog(std::shared_ptr<ZRLog> log) : log_(std::move(log)) {}

  void writeLine(std::string_view line) override {
    constexpr std::string_view kBegin = "An utterance is not spoken: ";
    if (line.starts_with(kBegin)) {
      const std::lock_guard guard(mutex_);
      fault_ = line.substr(kBegin.size());
    }
    log_->writeLine(line);
  }

  /// "no sound server: Connection refused"; empty when nothing was reported.
  std::string lastFault() const {
    const std::lock_guard guard(mutex_);
    return fault_;
  }

 private:
  const std::shared_ptr<ZRLog> log_;
  mutable std::mutex mutex_;
  std::string fault_;
};

}  // namespace demo

#endif
