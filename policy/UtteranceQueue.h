// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_POLICY_UTTERANCEQUEUE_H
#define ZRCORE_POLICY_UTTERANCEQUEUE_H

#include <cstddef>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace policy {

/// Which utterance is being spoken, which wait, and what is to be told of each: every one ends once, in order, and a
/// pause is reported once however often the source signals it.
template <class Utterance>
class UtteranceQueue {
 public:
  enum class Told { finished, paused, cancelled };
  struct Event {
    Told told;
    Utterance utterance;
  };
  /// What is to be done now: tell these, in order, then start that one.
  struct Step {
    std::vector<Event> events;
    std::optional<Utterance> start;
  };

  bool isEmpty() const { return waiting_.empty(); }

  Step add(Utterance utterance) {
    waiting_.push_back(std::move(utterance));
    return waiting_.size() == 1 ? Step{{}, waiting_.front()} : Step{};
  }

  /// The one being spoken was heard to its end, or cannot be.
  Step end(bool wasHeard) {
    if (waiting_.empty()) return {};
    Step step;
    step.events.push_back({wasHeard ? Told::finished : Told::cancelled, std::move(waiting_.front())});
    waiting_.pop_front();
    isPaused_ = false;
    if (!waiting_.empty()) step.start = waiting_.front();
    return step;
  }

  /// The one being spoken was silenced for a while, or goes on.
  Step setPaused(bool isPaused) {
    if (waiting_.empty() || std::exchange(isPaused_, isPaused) == isPaused || !isPaused) return {};
    return {{{Told::paused, waiting_.front()}}, std::nullopt};
  }

  /// All are given up.
  Step stop() {
    Step step;
    for (auto& utterance : std::exchange(waiting_, {})) step.events.push_back({Told::cancelled, std::move(utterance)});
    isPaused_ = false;
    return step;
  }

 private:
  std::deque<Utterance> waiting_;  ///< the first is being spoken
  bool isPaused_ = false;
};

}  // namespace policy

#endif
