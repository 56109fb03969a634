// SPDX-License-Identifier: Apache-2.0
#include "HeadlessSession.h"

#include <ZRCore/ZRPlatform.h>

#include <mutex>

namespace {

NSError failure(long code, const char* description) {
  return {NSURLErrorDomain, code, {{NSLocalizedDescriptionKey, description}}};
}

class HeadlessTask final : public NSURLSessionDataTask, public std::enable_shared_from_this<HeadlessTask> {
 public:
  HeadlessTask(bool hasURL, NSURLSession::CompletionHandler completion)
      : hasURL_(hasURL), completion_(std::move(completion)) {}

  void resume() override {
    end(NSURLSessionTaskState::running,
        hasURL_ ? failure(NSURLErrorNotConnectedToInternet,
                          "No network: install a platform with its `httpSession` member filled.")
                : failure(NSURLErrorBadURL, "The request has no address."));
  }

  void cancel() override { end(NSURLSessionTaskState::canceling, failure(NSURLErrorCancelled, "cancelled")); }

  NSURLSessionTaskState state() const override {
    const std::lock_guard lock(mutex_);
    return state_;
  }

 private:
  /// Reports `error` later. The first call decides, but that a cancellation overtakes a report on its way.
  void end(NSURLSessionTaskState state, NSError error) {
    {
      const std::lock_guard lock(mutex_);
      const bool isFirst = state_ == NSURLSessionTaskState::suspended;
      const bool overtakes = state == NSURLSessionTaskState::canceling && state_ == NSURLSessionTaskState::running;
      if (!isFirst && !overtakes) return;
      state_ = state;
    }
    ZRPlatformInUse().mainQueue->post([self = shared_from_this(), state, error = std::move(error)] {
      NSURLSession::CompletionHandler completion;
      {
        const std::lock_guard lock(self->mutex_);
        if (self->state_ != state) return;
        self->state_ = NSURLSessionTaskState::completed;
        completion = std::move(self->completion_);
      }
      if (completion) completion(std::nullopt, nullptr, error);
    });
  }

  const bool hasURL_;
  mutable std::mutex mutex_;
  NSURLSessionTaskState state_ = NSURLSessionTaskState::suspended;
  NSURLSession::CompletionHandler completion_;
};

}  // namespace

std::shared_ptr<NSURLSessionDataTask> HeadlessSession::dataTaskWithRequest(NSMutableURLRequest request,
                                                                           CompletionHandler completion) {
  return std::make_shared<HeadlessTask>(request.URL.has_value(), std::move(completion));
}
