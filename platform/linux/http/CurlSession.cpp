// SPDX-License-Identifier: Apache-2.0
#include "http/CurlSession.h"

#include <new>
#include <utility>
#include <vector>

#include "http/CurlWords.h"
#include "loop/FromC.h"

CurlSession::CurlSession(std::shared_ptr<Loop> loop, std::shared_ptr<const ZRClock> clock, TransferOptions options)
    : loop_(std::move(loop)),
      clock_(std::move(clock)),
      options_(std::move(options)),
      multi_(*loop_, *this, options_.mostConnectionsPerHost) {}

CurlSession::~CurlSession() {
  while (!running_.empty()) takeOut(running_.begin())->task()->cancel();
}

std::shared_ptr<NSURLSessionDataTask> CurlSession::dataTaskWithRequest(NSMutableURLRequest request,
                                                                       CompletionHandler completion) {
  return std::make_shared<CurlTask>(weak_from_this(), loop_, std::move(request), std::move(completion));
}

void CurlSession::start(const std::shared_ptr<CurlTask>& task) {
  const auto& url = task->request().URL;
  policy::Destination destination = url ? destinationOf(url->absoluteString()) : policy::Destination();
  if (auto fault = policy::requestFault(task->request(), destination)) {
    task->complete({.error = std::move(fault)});
    return;
  }
  std::unique_ptr<CurlTransfer> transfer;
  try {
    transfer = std::make_unique<CurlTransfer>(task, destination, *clock_, options_, std::move(spare_));
  } catch (const std::bad_alloc&) {
    policy::TransferEnd end{.failure = policy::TransferFailure::memory};
    end.destination = std::move(destination);
    task->complete({.error = policy::transferFault(end)});
    return;
  }
  Running& running = running_[task.get()];
  running.transfer = std::move(transfer);
  waitForSilence(running, running.transfer->silenceLimitSeconds());
  if (options_.longestRequestSeconds > 0) {
    running.end = loop_->after(options_.longestRequestSeconds, [this, asked = task.get()] { endForTime(asked); });
  }
  if (multi_.add(running.transfer->handle())) return;
  transfer = takeOut(running_.find(task.get()));
  task->complete(transfer->result(CURLE_FAILED_INIT));
}

void CurlSession::stop(const CurlTask& task) {
  const auto found = running_.find(&task);
  if (found != running_.end()) takeOut(found);
}

std::unique_ptr<CurlTransfer> CurlSession::takeOut(Transfers::iterator place) {
  auto transfer = std::move(place->second.transfer);
  running_.erase(place);
  multi_.remove(transfer->handle());
  return transfer;
}

void CurlSession::transfersEnded(const CurlMulti::Ended& ended) {
  const auto self = shared_from_this();  // a completion handler may release the session
  std::vector<std::pair<std::shared_ptr<CurlTask>, TransferResult>> results;
  for (const auto& [handle, code] : ended) {
    CurlTransfer* transfer = nullptr;
    curl_easy_getinfo(handle, CURLINFO_PRIVATE, &transfer);
    const auto taken = takeOut(running_.find(transfer->task().get()));
    results.emplace_back(taken->task(), taken->result(code));
    spare_ = taken->takeHandle();
  }
  for (auto& each : results) {
    from_c::guarded([&each] { each.first->complete(std::move(each.second)); });  // one that throws keeps no other back
  }
}

void CurlSession::waitForSilence(Running& running, double seconds) {
  running.silence =
      loop_->after(seconds, {this, [this, task = running.transfer->task().get()] { judgeSilence(task); }});
}

void CurlSession::judgeSilence(const CurlTask* task) {
  const auto found = running_.find(task);
  if (const auto seconds = found->second.transfer->secondsToWait()) {
    waitForSilence(found->second, *seconds);
    return;
  }
  const auto transfer = takeOut(found);
  transfer->task()->complete(transfer->resultOf(policy::TransferFailure::silence));
}

void CurlSession::endForTime(const CurlTask* task) {
  const auto transfer = takeOut(running_.find(task));
  transfer->task()->complete(transfer->resultOf(policy::TransferFailure::tooLong));
}
