// SPDX-License-Identifier: Apache-2.0
#include "InstanceList.h"

#include <algorithm>
#include <utility>

void InstanceList::append(std::shared_ptr<Node> node) {
  const std::lock_guard guard(lock_);
  nodes_.push_back(std::move(node));
}

void InstanceList::remove(const Node* node) {
  const std::lock_guard guard(lock_);
  const auto found =
      std::find_if(nodes_.begin(), nodes_.end(), [node](const auto& each) { return each.get() == node; });
  if (found == nodes_.end()) return;
  removed_.push_back(std::move(*found));
  if (depth_ == 0) closeGaps();
}

int InstanceList::count() const {
  const std::lock_guard guard(lock_);
  return static_cast<int>(nodes_.size() - removed_.size());
}

void InstanceList::end(std::unique_ptr<CLLocationManagerDelegate> client) {
  const std::lock_guard guard(lock_);
  for (const auto& node : nodes_) {
    if (node && node->waitingDelegate == client.get()) node->waitingDelegate = nullptr;
  }
  if (depth_ > 0) ended_.push_back(std::move(client));
}

void InstanceList::endClients() {
  while (depth_ == 1 && !ended_.empty()) {
    const auto ending = std::exchange(ended_, {});  // whose ends may leave others
  }
}

void InstanceList::closeGaps() {
  if (removed_.empty()) return;
  std::erase(nodes_, nullptr);
  removed_.clear();
}
