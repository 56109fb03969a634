// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/NSNotificationCenter.h>

#include <algorithm>
#include <optional>
#include <utility>

struct NSNotificationCenter::Observation {
  std::weak_ptr<const void> observer;
  std::string name;
  std::optional<std::weak_ptr<const void>> object;  ///< nullopt: whoever posts
  NotificationHandler handler;

  bool hears(const NSNotification& notification) const {
    if (name != notification.name) return false;
    return !object || (!object->owner_before(notification.object) && !notification.object.owner_before(*object));
  }
};

NSNotificationCenter::NSNotificationCenter() = default;
NSNotificationCenter::~NSNotificationCenter() = default;

void NSNotificationCenter::add(Observation observation) {
  if (!observation.handler) return;
  std::vector<std::shared_ptr<const Observation>> dropped;  // goes after the lock: what a handler held may post, too
  const std::lock_guard lock(mutex_);
  const auto gone = std::stable_partition(observations_.begin(), observations_.end(),
                                          [](const auto& present) { return !present->observer.expired(); });
  dropped.assign(gone, observations_.end());
  observations_.erase(gone, observations_.end());
  observations_.push_back(std::make_shared<const Observation>(std::move(observation)));
}

void NSNotificationCenter::addObserver(std::weak_ptr<const void> observer, std::string name, Handler handler) {
  if (!handler) return;
  add({std::move(observer), std::move(name), std::nullopt,
       [handler = std::move(handler)](const NSNotification& notification) { handler(notification.name); }});
}

void NSNotificationCenter::addObserver(std::weak_ptr<const void> observer, std::string name,
                                       NotificationHandler handler) {
  add({std::move(observer), std::move(name), std::nullopt, std::move(handler)});
}

void NSNotificationCenter::addObserver(std::weak_ptr<const void> observer, std::string name,
                                       std::weak_ptr<const void> object, NotificationHandler handler) {
  add({std::move(observer), std::move(name), std::move(object), std::move(handler)});
}

void NSNotificationCenter::postNotification(const NSNotification& notification) {
  // The handlers run without the mutex, so that they may post and observe themselves.
  std::vector<std::shared_ptr<const Observation>> hearing;
  {
    const std::lock_guard lock(mutex_);
    for (const auto& observation : observations_) {
      if (observation->hears(notification)) hearing.push_back(observation);
    }
  }
  for (const auto& observation : hearing) {
    if (const auto observer = observation->observer.lock()) observation->handler(notification);
  }
}

void NSNotificationCenter::postNotificationName(const std::string& name) {
  postNotification({.name = name, .object = nullptr, .userInfo = {}});
}
