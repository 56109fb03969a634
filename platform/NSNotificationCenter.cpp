#include <ZRCore/NSNotificationCenter.h>

#include <utility>

struct NSNotificationCenter::Observation {
  std::weak_ptr<const void> observer;
  std::string name;
  Handler handler;
};

NSNotificationCenter::NSNotificationCenter() = default;
NSNotificationCenter::~NSNotificationCenter() = default;

void NSNotificationCenter::addObserver(std::weak_ptr<const void> observer, std::string name, Handler handler) {
  if (!handler) return;
  const std::lock_guard lock(mutex_);
  std::erase_if(observations_, [](const auto& observation) { return observation->observer.expired(); });
  observations_.push_back(
      std::make_shared<const Observation>(Observation{std::move(observer), std::move(name), std::move(handler)}));
}

void NSNotificationCenter::postNotificationName(const std::string& name) {
  // The handlers run without the mutex, so that they may post and observe themselves.
  std::vector<std::shared_ptr<const Observation>> hearing;
  {
    const std::lock_guard lock(mutex_);
    for (const auto& observation : observations_) {
      if (observation->name == name) hearing.push_back(observation);
    }
  }
  for (const auto& observation : hearing) {
    if (const auto observer = observation->observer.lock()) observation->handler(name);
  }
}
