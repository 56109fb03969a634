// SPDX-License-Identifier: Apache-2.0
#include "InstanceList.h"

#include <algorithm>
#include <utility>

void InstanceList::append(std::shared_ptr<Node> node) {
  const std::lock_guard guard(lock_);
  changeable().push_back(std::move(node));
}

void InstanceList::remove(const Node* node) {
  const std::lock_guard guard(lock_);
  const auto isNode = [node](const auto& candidate) { return candidate.get() == node; };
  if (std::none_of(nodes_->begin(), nodes_->end(), isNode)) return;
  std::erase_if(changeable(), isNode);
}

int InstanceList::count() const {
  const std::lock_guard guard(lock_);
  return static_cast<int>(nodes_->size());
}

InstanceList::Nodes& InstanceList::changeable() {
  if (nodes_.use_count() > 1) nodes_ = std::make_shared<Nodes>(*nodes_);
  return *nodes_;
}
