// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LOCATION_INSTANCELIST_H
#define ZRCORE_LOCATION_INSTANCELIST_H

#include <ZRCore/ZRLocationManager.h>

#include <memory>
#include <mutex>
#include <vector>

/// The managers alive, in the order of their creation. Any thread.
class InstanceList {
 public:
  using Node = ZRLocationManagerInstanceNode;

  void append(std::shared_ptr<Node> node);
  /// Takes the node out; one that is not in the list changes nothing.
  void remove(const Node* node);
  int count() const;

  /// The list's lock. Recursive, because a delegate that is called during a walk may create and release managers, which
  /// changes the list on the same thread.
  std::recursive_mutex& lock() const { return lock_; }

  /// Calls `visit(node)` for each node that was in the list when the walk began, holding the lock. The node of a
  /// manager that a visit released stays in the walk; it wants nothing any more.
  template <class Visit>
  void forEach(Visit&& visit) const {
    const std::lock_guard guard(lock_);
    const std::shared_ptr<const Nodes> walked = nodes_;
    for (const auto& node : *walked) visit(*node);
  }

 private:
  using Nodes = std::vector<std::shared_ptr<Node>>;

  /// The nodes, for a change. A walk shares them, so that it goes over the list as it was without copying it each time;
  /// what is being walked is copied here, by the rare change during a walk.
  Nodes& changeable();

  mutable std::recursive_mutex lock_;
  std::shared_ptr<Nodes> nodes_ = std::make_shared<Nodes>();
};

#endif
