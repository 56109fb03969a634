// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_WEB_WEBLOADREPORTS_H
#define ZRCORE_POLICY_WEB_WEBLOADREPORTS_H

#include <functional>
#include <utility>

namespace policy {

/// Turns an engine's events into a delegate's. The engine says "finished" after a failed load too, and a page's title
/// can only be asked for and comes later; the delegate hears of each load that it started and then either that it
/// finished, with its title known, or that it failed. A move within a page, which the engine calls no load, is one that
/// ends as it starts, when the title is known: what leads back and forward has changed.
class WebLoadReports {
 public:
  struct Delegate {
    std::function<void()> start;
    std::function<void()> finish;
    std::function<void()> askForTitle;  ///< to be answered by `titleIsKnown` with the load's number
  };

  explicit WebLoadReports(Delegate delegate) : delegate_(std::move(delegate)) {}

  void started();
  /// @param report  tells the delegate of the failure; called at once, or not at all when the load has ended already.
  void failed(const std::function<void()>& report);
  void finished();
  /// @param load  the number that the load had when its title was asked for: a later load's title is not this one's.
  void titleIsKnown(unsigned load);
  /// The history has changed without a load: a jump within the page, a page within a frame of it. Told of a page that
  /// has finished only: the end of a load tells of it too, and a failed one changes nothing until the next.
  void movedWithinPage();
  /// The engine has died, whatever it was doing.
  void died(const std::function<void()>& report);

  unsigned load() const { return load_; }
  bool isLoading() const { return state_ == State::loading; }

 private:
  enum class State { idle, loading, awaitingTitle, finished, moved };

  Delegate delegate_;
  State state_ = State::idle;  ///< so too after a failure
  unsigned load_ = 0;
};

}  // namespace policy

#endif
