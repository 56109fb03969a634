// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/ZRLocationManager.h>
#include <ZRCore/ZRPlatform.h>

#include <mutex>
#include <utility>

#include "LocationStatics.h"

const char* const ZRLocationLocationFailedNotification = "ZRLocationLocationFailedNotification";

namespace {

constexpr const char* kWhenInUseKey = "NSLocationWhenInUseUsageDescription";
constexpr const char* kAlwaysKey = "NSLocationAlwaysUsageDescription";
constexpr const char* kNoUsageDescriptionLine =
    "VELMARIS ERROR:you must have a NSLocationWhenInUseUsageDescription or NSLocationAlwaysUsageDescription to request "
    "when location authorization";
constexpr const char* kWrongCallbacksLine =
    "The delegate of a ZRLocationManager answers callbacks of the platform's manager (CLDidUpdateLocations and so on), "
    "which it will never get. Derive it from ZRDidUpdateLocations, ZRDidUpdateHeading or ZRDidFailWithError.";

template <class... Callbacks>
bool answersAny(const CLLocationManagerDelegate* delegate) {
  return (... || (dynamic_cast<const Callbacks*>(delegate) != nullptr));
}

int locationTakers(const ZRLocationManager& manager) {
  return locationStatics().__isInBackground ? manager.countInstancesGettingLocationUpdatesInBackground()
                                            : manager.countInstancesGettingLocationUpdates();
}

int headingTakers(const ZRLocationManager& manager) {
  return locationStatics().__isInBackground ? manager.countInstancesGettingHeadingUpdatesInBackground()
                                            : manager.countInstancesGettingHeadingUpdates();
}

// The four changes of what the shared platform manager does. Each is made with its flag.

void startLocations(LocationStatics& shared) {
  ZRLocationManager::requestLocationWithManager(*shared.__locationManager);
  shared.__isUpdatingLocation = true;
}

void stopLocations(LocationStatics& shared) {
  shared.__locationManager->stopUpdatingLocation();
  shared.__isUpdatingLocation = false;
}

void startHeadings(LocationStatics& shared) {
  shared.__locationManager->startUpdatingHeading();
  shared.__isUpdatingHeading = true;
}

void stopHeadings(LocationStatics& shared) {
  shared.__locationManager->stopUpdatingHeading();
  shared.__isUpdatingHeading = false;
}

/// Makes `first` the permanent manager: the platform manager's delegate and the one that hears of the application's
/// life.
void becomeFirst(LocationStatics& shared, const std::shared_ptr<ZRLocationManager>& first) {
  shared.__singletonInstance = first;
  shared.__locationManager = shared.__tripSimulator ? shared.__tripSimulator : CLLocationManager::init();
  shared.__locationManager->setDelegate(first);
  NSNotificationCenter& center = *ZRPlatformInUse().notificationCenter;
  ZRLocationManager* const manager = first.get();
  center.addObserver(first, UIApplicationWillEnterForegroundNotification,
                     [manager](const NSNotification& post) { manager->applicationWillEnterForeground(post); });
  center.addObserver(first, UIApplicationDidEnterBackgroundNotification,
                     [manager](const NSNotification& post) { manager->applicationDidEnterBackground(post); });
}

}  // namespace

ZRDidUpdateLocations::~ZRDidUpdateLocations() = default;
ZRDidUpdateHeading::~ZRDidUpdateHeading() = default;
ZRDidFailWithError::~ZRDidFailWithError() = default;

void ZRLocationClientEnd::operator()(CLLocationManagerDelegate* client) const noexcept {
  locationStatics().__instanceList.end(std::unique_ptr<CLLocationManagerDelegate>(client));
}

void ZRLocationManagerInstanceNode::setInstance(std::weak_ptr<ZRLocationManager> instance) {
  instance_ = std::move(instance);
}

std::shared_ptr<ZRLocationManager> ZRLocationManager::init() {
  struct Constructible : ZRLocationManager {};  // opens the protected constructor to make_shared
  const auto manager = std::make_shared<Constructible>();
  enlist(manager);
  return manager;
}

ZRLocationManager::ZRLocationManager() : instanceNode_(std::make_shared<ClientNode>()) {}

void ZRLocationManager::enlist(const std::shared_ptr<ZRLocationManager>& manager) {
  LocationStatics& shared = locationStatics();
  const std::lock_guard guard(shared.__instanceList.lock());
  if (!shared.__singletonInstance) becomeFirst(shared, manager);
  manager->instanceNode_->setInstance(manager);
  shared.__instanceList.append(std::static_pointer_cast<ClientNode>(manager->instanceNode_));
}

// The shared manager runs on even if this was the last client that wanted updates; a later stop, or the move to the
// background, finds that out.
ZRLocationManager::~ZRLocationManager() {
  InstanceList& list = locationStatics().__instanceList;
  const std::lock_guard guard(list.lock());
  auto& node = static_cast<ClientNode&>(*instanceNode_);
  node = {};  // a walk that is under way still has it
  list.remove(&node);
}

void ZRLocationManager::setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate) {
  const auto asked = delegate.lock();
  const auto updates = std::dynamic_pointer_cast<ZRDidUpdateLocations>(asked);
  const auto* const end = std::get_deleter<ZRLocationClientEnd>(asked);
  const bool waits = end != nullptr && end->made == asked.get();  // a part of such a client does not
  {
    const std::lock_guard guard(locationStatics().__instanceList.lock());  // a client's end looks at the nodes
    static_cast<ClientNode&>(*instanceNode_).waitingDelegate = waits ? updates.get() : nullptr;
  }
  instanceNode_->didUpdateLocations_ = updates;
  instanceNode_->didUpdateHeading_ = std::dynamic_pointer_cast<ZRDidUpdateHeading>(asked);
  instanceNode_->didFailWithError_ = std::dynamic_pointer_cast<ZRDidFailWithError>(asked);
  CLLocationManager::setDelegate(std::move(delegate));
  if (answersAny<CLDidUpdateLocations, CLDidUpdateHeading, CLDidFailWithError, CLDidChangeAuthorizationStatus>(
          asked.get()) &&
      !answersAny<ZRDidUpdateLocations, ZRDidUpdateHeading, ZRDidFailWithError>(asked.get())) {
    ZRPlatformInUse().log->writeLine(kWrongCallbacksLine);
  }
}

void ZRLocationManager::startUpdatingLocation() {
  if (delegate().expired()) return;
  setShouldUpdateLocation(true);
  LocationStatics& shared = locationStatics();
  if (locationTakers(*this) <= 0 || shared.__isUpdatingLocation) return;
  const std::lock_guard guard(shared.locationManagerLock);
  startLocations(shared);
}

void ZRLocationManager::stopUpdatingLocation() {
  setShouldUpdateLocation(false);
  LocationStatics& shared = locationStatics();
  if (locationTakers(*this) != 0 || !shared.__isUpdatingLocation) return;
  const std::lock_guard guard(shared.locationManagerLock);
  stopLocations(shared);
}

void ZRLocationManager::startUpdatingHeading() {
  setShouldUpdateHeading(true);
  LocationStatics& shared = locationStatics();
  if (headingTakers(*this) < 1 || shared.__isUpdatingHeading) return;
  const std::lock_guard guard(shared.locationManagerLock);
  startHeadings(shared);
}

void ZRLocationManager::stopUpdatingHeading() {
  setShouldUpdateHeading(false);
  LocationStatics& shared = locationStatics();
  if (headingTakers(*this) != 0 || !shared.__isUpdatingHeading) return;
  const std::lock_guard guard(shared.locationManagerLock);
  stopHeadings(shared);
}

void ZRLocationManager::setSnapFilter(SnapFilter filter) {
  snapFilter_ = std::move(filter);
  instanceNode_->snaps_ = static_cast<bool>(snapFilter_);
}

void ZRLocationManager::setUseAutomotiveNavigationMode(bool use) {
  useAutomotiveNavigationMode_ = use;
  locationStatics().__locationManager->setActivityType(use ? CLActivityType::automotiveNavigation
                                                           : CLActivityType::other);
}

int ZRLocationManager::countInstances(bool ZRLocationManagerInstanceNode::*wanting) {
  int count = 0;
  locationStatics().__instanceList.forEach([&](const auto& client) { count += client.*wanting ? 1 : 0; });
  return count;
}

int ZRLocationManager::countInstancesGettingLocationUpdates() const {
  return countInstances(&ZRLocationManagerInstanceNode::shouldUpdateLocation_);
}

int ZRLocationManager::countInstancesGettingLocationUpdatesInBackground() const {
  return CLLocationManager_ZR::shouldUpdateInBackground() ? countInstancesGettingLocationUpdates() : 0;
}

int ZRLocationManager::countInstancesGettingHeadingUpdates() const {
  return countInstances(&ZRLocationManagerInstanceNode::shouldUpdateHeading_);
}

int ZRLocationManager::countInstancesGettingHeadingUpdatesInBackground() const {
  return CLLocationManager_ZR::shouldUpdateInBackground() ? countInstancesGettingHeadingUpdates() : 0;
}

void ZRLocationManager::requestLocationWithManager(CLLocationManager& manager) {
  ios8Authorization(manager);
  manager.startUpdatingLocation();
}

void ZRLocationManager::ios8Authorization(CLLocationManager& manager) {
  auto* const requests = dynamic_cast<CLAuthorizationRequests*>(&manager);
  if (requests == nullptr) return;
  if (hasWhenInUseUsageDescription()) {
    requests->requestWhenInUseAuthorization();
  } else if (hasAlwaysDescription()) {
    requests->requestAlwaysAuthorization();
  } else {
    ZRPlatformInUse().log->writeLine(kNoUsageDescriptionLine);
  }
}

bool ZRLocationManager::hasWhenInUseUsageDescription() {
  return ZRPlatformInUse().bundle->hasInfoValueForKey(kWhenInUseKey);
}

bool ZRLocationManager::hasAlwaysDescription() { return ZRPlatformInUse().bundle->hasInfoValueForKey(kAlwaysKey); }

int ZRLocationManager::instanceCount() { return locationStatics().__instanceList.count(); }

std::shared_ptr<ZRLocationManager> ZRLocationManager::firstInstance() { return locationStatics().__singletonInstance; }

void ZRLocationManager::setTripSimulator(const std::shared_ptr<CLLocationManager>& simulator) {
  LocationStatics& shared = locationStatics();
  if (!simulator || simulator == shared.__tripSimulator) return;
  shared.__tripSimulator = simulator;
  if (const auto former = std::exchange(shared.__locationManager, simulator)) {
    former->stopUpdatingLocation();
    former->setDelegate({});
  }
  simulator->setDelegate(shared.__singletonInstance);
  if (shared.__isUpdatingLocation) requestLocationWithManager(*simulator);
}

// These two do not take the shared manager's lock: the application's life is reported on the thread that starts and
// stops.

void ZRLocationManager::applicationWillEnterForeground(const NSNotification&) {
  LocationStatics& shared = locationStatics();
  shared.__isInBackground = false;
  if (countInstancesGettingLocationUpdates() != 0 && !shared.__isUpdatingLocation) startLocations(shared);
  if (countInstancesGettingHeadingUpdates() != 0 && !shared.__isUpdatingHeading) startHeadings(shared);
}

void ZRLocationManager::applicationDidEnterBackground(const NSNotification&) {
  LocationStatics& shared = locationStatics();
  shared.__isInBackground = true;
  if (countInstancesGettingLocationUpdatesInBackground() == 0 && shared.__isUpdatingLocation) stopLocations(shared);
  if (countInstancesGettingHeadingUpdatesInBackground() == 0 && shared.__isUpdatingHeading) stopHeadings(shared);
}
