// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_MANUALLOOP_H
#define ZRCORE_TESTS_SUPPORT_MANUALLOOP_H

#include <ZRCore/ZRPlatformFake.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

#include "loop/Loop.h"

/// A loop whose time, like that of its clock, moves when the test says so. Descriptors are watched for real. One
/// thread, but for `post`, which takes one at a time.
class ManualLoop final : public Loop {
 public:
  explicit ManualLoop(std::shared_ptr<ZRFakeClock> clock) : clock_(std::move(clock)) {}

  void post(std::function<void()> work) override { posted_.push_back(std::move(work)); }

  std::unique_ptr<Wait> after(double seconds, Callback<> fire) override {
    longestWait = std::max(longestWait, seconds);
    return wait({.isTimer = true, .due = now_ + seconds, .fire = [fire = std::move(fire)](Readiness) { fire(); }});
  }

  std::unique_ptr<Wait> watch(int fileDescriptor, Readiness interest, Callback<Readiness> fire) override {
    return wait({.descriptor = fileDescriptor, .interest = interest, .fire = std::move(fire)});
  }

  /// Moves the time, from one timer that is due to the next, and does what there is to do.
  void advance(double seconds) {
    const double end = now_ + seconds;
    for (;;) {
      while (turn(0)) {
      }
      double next = end;
      for (const auto& entry : entries_) {
        if (entry->isTimer && !entry->isOver) next = std::min(next, entry->due);
      }
      if (now_ >= end) return;
      clock_->advance(next - now_);
      now_ = next;
    }
  }

  /// Turns until `holds`, or for 20 seconds of real time. @return whether it holds
  bool runUntil(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!holds() && std::chrono::steady_clock::now() < deadline) turn(10);
    return holds();
  }

  /// How often a descriptor was ready.
  int readiness = 0;
  /// Seconds that were asked for.
  double longestWait = 0.0;

 private:
  struct Entry {
    bool isTimer = false;
    double due = 0.0;
    int descriptor = -1;
    Readiness interest = {};
    Callback<Readiness> fire = {};
    bool isOver = false;
  };

  struct Ended final : Wait {
    explicit Ended(std::shared_ptr<Entry> e) : entry(std::move(e)) {}
    ~Ended() override { entry->isOver = true; }
    std::shared_ptr<Entry> entry;
  };

  std::unique_ptr<Wait> wait(Entry entry) {
    entries_.push_back(std::make_shared<Entry>(std::move(entry)));
    return std::make_unique<Ended>(entries_.back());
  }

  /// One round. @return whether anything was done
  bool turn(int milliseconds) {
    bool hasDone = !posted_.empty();
    for (auto works = std::exchange(posted_, {}); !works.empty(); works.pop_front()) works.front()();

    std::erase_if(entries_, [](const auto& entry) { return entry->isOver; });
    const auto entries = entries_;
    std::vector<pollfd> polled;
    for (const auto& entry : entries) {
      const int events = (entry->interest.canRead ? POLLIN : 0) | (entry->interest.canWrite ? POLLOUT : 0);
      polled.push_back({entry->descriptor, static_cast<short>(events), 0});  // -1: passed over
    }
    ::poll(polled.data(), polled.size(), hasDone ? 0 : milliseconds);
    for (std::size_t i = 0; i < entries.size(); ++i) {
      Entry& entry = *entries[i];
      const int events = polled[i].revents;
      const bool isDue = entry.isTimer && entry.due <= now_;
      if (entry.isOver || (!isDue && events == 0)) continue;
      hasDone = true;
      if (isDue) entry.isOver = true;
      if (events != 0) ++readiness;
      entry.fire({(events & POLLIN) != 0, (events & POLLOUT) != 0, (events & (POLLERR | POLLHUP)) != 0});
    }
    return hasDone;
  }

  std::shared_ptr<ZRFakeClock> clock_;
  double now_ = 0.0;
  std::deque<std::function<void()>> posted_;
  std::vector<std::shared_ptr<Entry>> entries_;
};

#endif
