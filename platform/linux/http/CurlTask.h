// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_CURLTASK_H
#define ZRCORE_LINUX_HTTP_CURLTASK_H

#include <ZRCore/NSURLSession.h>

#include <memory>
#include <mutex>
#include <optional>

class CurlSession;
class Loop;

/// What a transfer came to.
struct TransferResult {
  std::optional<NSData> data = {};
  std::shared_ptr<const NSURLResponse> response = {};
  std::optional<NSError> error = {};
};

/// A request and its state. What is asked of it on any thread is done in the loop's; a session that is gone by then
/// cancels it, a loop that is gone leaves nobody to tell.
class CurlTask final : public NSURLSessionDataTask, public std::enable_shared_from_this<CurlTask> {
 public:
  CurlTask(std::weak_ptr<CurlSession> session, std::weak_ptr<Loop> loop, NSMutableURLRequest request,
           NSURLSession::CompletionHandler completion);
  ~CurlTask() override;

  void resume() override;
  void cancel() override;
  NSURLSessionTaskState state() const override;

  const NSMutableURLRequest& request() const { return request_; }

  /// Calls the completion handler, unless the task was cancelled: then it completes as that, and later. Loop's thread.
  void complete(TransferResult result);
  /// Calls the completion handler, now, as cancelled. Loop's thread.
  void completeAsCancelled();

 private:
  bool change(NSURLSessionTaskState from, NSURLSessionTaskState to);
  void finish(NSURLSessionTaskState from, TransferResult result);

  const std::weak_ptr<CurlSession> session_;
  const std::weak_ptr<Loop> loop_;
  const NSMutableURLRequest request_;
  mutable std::mutex mutex_;  ///< guards the two below; nothing is called under it
  NSURLSessionTaskState state_ = NSURLSessionTaskState::suspended;
  NSURLSession::CompletionHandler completion_;
};

#endif
