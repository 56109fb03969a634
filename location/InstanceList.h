// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LOCATION_INSTANCELIST_H
#define ZRCORE_LOCATION_INSTANCELIST_H

#include <ZRCore/ZRLocationManager.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

/// The delegate, if it is one whose end waits for the walks: it can be called without a reference to it.
struct WaitingDelegate {
  ZRDidUpdateLocations* waitingDelegate = nullptr;
};

/// A manager's node, as the list has them. What a walk reads of it comes first, so that it lies together.
struct ClientNode : WaitingDelegate, ZRLocationManagerInstanceNode {};

/// The managers alive, in the order of their creation. Any thread.
class InstanceList {
 public:
  using Node = ClientNode;

  void append(std::shared_ptr<Node> node);
  /// Takes the node out; one that is not in the list changes nothing.
  void remove(const Node* node);
  int count() const;

  /// The list's lock. Recursive, because a delegate that is called during a walk may create and release managers, which
  /// changes the list on the same thread.
  std::recursive_mutex& lock() const { return lock_; }

  /// Calls `visit(node)` for each node that was in the list when the walk began and still is, holding the lock.
  template <class Visit>
  void forEach(Visit&& visit) {
    const std::lock_guard guard(lock_);
    const Walk walk(*this);
    const std::size_t count = nodes_.size();
    for (std::size_t i = 0; i < count; ++i) {
      if (Node* const node = nodes_[i].get()) visit(*node);
      if (!ended_.empty()) [[unlikely]]
        endClients();
    }
  }

  /// Ends a client that may be a waiting delegate, or keeps it until the visit that is under way returns.
  void end(std::unique_ptr<CLLocationManagerDelegate> client);

 private:
  struct Walk {
    explicit Walk(InstanceList& walked) : list(walked) { ++list.depth_; }
    ~Walk() {
      list.endClients();  // what a visit left that threw
      if (--list.depth_ == 0) list.closeGaps();
    }
    Walk(const Walk&) = delete;
    InstanceList& list;
  };

  /// Ends what visits have left to end, if no visit is under way any more.
  void endClients();
  void closeGaps();

  mutable std::recursive_mutex lock_;
  int depth_ = 0;  // of walks within visits of walks
  /// What is removed during walks leaves a gap until they have ended, and what is added goes behind what is walked.
  std::vector<std::shared_ptr<Node>> nodes_;
  std::vector<std::shared_ptr<Node>> removed_;
  std::vector<std::unique_ptr<CLLocationManagerDelegate>> ended_;
};

#endif
