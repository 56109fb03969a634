// SPDX-License-Identifier: Apache-2.0
#include "http/CurlTask.h"

#include <policy/http/TransferFault.h>

#include <utility>

#include "http/CurlSession.h"

using State = NSURLSessionTaskState;

CurlTask::CurlTask(std::weak_ptr<CurlSession> session, std::weak_ptr<Loop> loop, NSMutableURLRequest request,
                   NSURLSession::CompletionHandler completion)
    : session_(std::move(session)),
      loop_(std::move(loop)),
      request_(std::move(request)),
      completion_(std::move(completion)) {}

CurlTask::~CurlTask() = default;

State CurlTask::state() const {
  const std::lock_guard lock(mutex_);
  return state_;
}

bool CurlTask::change(State from, State to) {
  const std::lock_guard lock(mutex_);
  if (state_ != from) return false;
  state_ = to;
  return true;
}

void CurlTask::resume() {
  if (!change(State::suspended, State::running)) return;
  const auto loop = loop_.lock();
  if (!loop) return;
  loop->post([self = shared_from_this()] {
    if (self->state() != State::running) return;  // cancelled since
    if (const auto session = self->session_.lock()) {
      session->start(self);
    } else if (self->change(State::running, State::canceling)) {
      self->completeAsCancelled();
    }
  });
}

void CurlTask::cancel() {
  if (!change(State::suspended, State::canceling) && !change(State::running, State::canceling)) return;
  const auto loop = loop_.lock();
  if (!loop) return;
  loop->post([self = shared_from_this()] {
    if (const auto session = self->session_.lock()) session->stop(*self);
    self->completeAsCancelled();
  });
}

void CurlTask::complete(TransferResult result) { finish(State::running, std::move(result)); }

void CurlTask::completeAsCancelled() { finish(State::canceling, {.error = policy::cancellationFault()}); }

void CurlTask::finish(State from, TransferResult result) {
  NSURLSession::CompletionHandler completion;
  {
    const std::lock_guard lock(mutex_);
    if (state_ != from) return;
    state_ = State::completed;
    completion = std::move(completion_);
  }
  if (completion) completion(std::move(result.data), std::move(result.response), std::move(result.error));
}
