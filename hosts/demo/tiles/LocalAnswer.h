// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_TILES_LOCALANSWER_H
#define ZRCORE_HOSTS_DEMO_TILES_LOCALANSWER_H

#include <ZRCore/NSURLSession.h>
#include <ZRCore/ZRMainQueue.h>

#include <memory>
#include <optional>

namespace demo {

/// A task whose answer is there already. It completes on the main queue. Main thread.
class LocalAnswer final : public NSURLSessionDataTask, public std::enable_shared_from_this<LocalAnswer> {
 public:
  LocalAnswer(std::shared_ptr<ZRMainQueue> queue, NSURLSession::CompletionHandler completion,
              std::optional<NSData> data, std::shared_ptr<const NSURLResponse> response,
              std::optional<NSError> error = std::nullopt);

  void resume() override;
  void cancel() override;
  NSURLSessionTaskState state() const override { return state_; }

 private:
  void completeLater();

  std::shared_ptr<ZRMainQueue> queue_;
  NSURLSession::CompletionHandler completion_;
  std::optional<NSData> data_;
  std::shared_ptr<const NSURLResponse> response_;
  std::optional<NSError> error_;
  NSURLSessionTaskState state_ = NSURLSessionTaskState::suspended;
};

/// The head of an answer with that status.
std::shared_ptr<const NSURLResponse> localResponse(const NSMutableURLRequest& request, int statusCode);

}  // namespace demo

#endif
