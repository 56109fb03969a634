// SPDX-License-Identifier: Apache-2.0
#include "LocalAnswer.h"

#include <utility>

namespace demo {

using State = NSURLSessionTaskState;

LocalAnswer::LocalAnswer(std::shared_ptr<ZRMainQueue> queue, NSURLSession::CompletionHandler completion,
                         std::optional<NSData> data, std::shared_ptr<const NSURLResponse> response,
                         std::optional<NSError> error)
    : queue_(std::move(queue)),
      completion_(std::move(completion)),
      data_(std::move(data)),
      response_(std::move(response)),
      error_(std::move(error)) {}

void LocalAnswer::resume() {
  if (state_ != State::suspended) return;
  state_ = State::running;
  completeLater();
}

void LocalAnswer::cancel() {
  if (state_ == State::canceling || state_ == State::completed) return;
  const bool isPosted = std::exchange(state_, State::canceling) == State::running;
  data_.reset();
  response_.reset();
  error_ = NSError{NSURLErrorDomain, NSURLErrorCancelled, {}};
  if (!isPosted) completeLater();
}

void LocalAnswer::completeLater() {
  queue_->post([self = shared_from_this()] {
    self->state_ = State::completed;
    const auto completion = std::exchange(self->completion_, nullptr);
    if (completion) completion(std::move(self->data_), std::move(self->response_), std::move(self->error_));
  });
}

std::shared_ptr<const NSURLResponse> localResponse(const NSMutableURLRequest& request, int statusCode) {
  return std::make_shared<NSURLResponse>(NSURLResponse{request.URL, statusCode, {}});
}

}  // namespace demo
