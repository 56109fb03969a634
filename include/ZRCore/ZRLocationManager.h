// SPDX-License-Identifier: Apache-2.0
/// @file
/// The shared location service: any number of clients, one receiver.
#ifndef ZRCORE_ZRLOCATIONMANAGER_H
#define ZRCORE_ZRLOCATIONMANAGER_H

#include <ZRCore/CLLocationManager.h>
#include <ZRCore/ZRExport.h>
#include <ZRCore/ZRLocation.h>

#include <concepts>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class ZRLocationManager;
struct NSNotification;

/// The name of a notification that clients may post to tell each other of a failed fix; the framework never posts it.
ZR_EXPORT extern const char* const ZRLocationLocationFailedNotification;

/// A batch of filtered fixes, oldest first. No entry is null.
///
/// Every client without a snap filter gets the same record objects, and each can write to them: what one client sets,
/// the others read. A client that changes a record, or keeps it while others may change it, takes `ZRLocation::copy()`.
using ZRLocations = std::vector<std::shared_ptr<ZRLocation>>;

/// Answers `locationManager:didUpdateLocations:` of a ZRLocationManager. All callbacks come on the thread on which the
/// receiver reports, while the list of managers is locked; they may create, start, stop and release managers. `manager`
/// is always the first manager of the process, whichever manager the delegate belongs to.
class ZR_EXPORT ZRDidUpdateLocations : public virtual CLLocationManagerDelegate {
 public:
  ~ZRDidUpdateLocations() override;
  virtual void locationManagerDidUpdateLocations(ZRLocationManager& manager, const ZRLocations& locations) = 0;
};

/// Answers `locationManager:didUpdateHeading:` of a ZRLocationManager.
class ZR_EXPORT ZRDidUpdateHeading : public virtual CLLocationManagerDelegate {
 public:
  ~ZRDidUpdateHeading() override;
  virtual void locationManagerDidUpdateHeading(ZRLocationManager& manager, const CLHeading& heading) = 0;
};

/// Answers `locationManager:didFailWithError:` of a ZRLocationManager.
class ZR_EXPORT ZRDidFailWithError : public virtual CLLocationManagerDelegate {
 public:
  ~ZRDidFailWithError() override;
  virtual void locationManagerDidFailWithError(ZRLocationManager& manager, const NSError& error) = 0;
};

/// How a client that `ZRMakeLocationClient` made ends: at once, unless clients are just being told of something. Then
/// its end waits: on the thread that tells them until the client that is being told has returned, on any other until
/// all have been told (as a manager's does).
struct ZR_EXPORT ZRLocationClientEnd {
  void operator()(CLLocationManagerDelegate* client) const noexcept;
  const CLLocationManagerDelegate* made = nullptr;  ///< the client; parts of it that are delegates have no such end
};

/// A client whose end waits while clients are told of fixes, so that telling it needs no reference to it. An addition,
/// for processes with very many clients. Everything else is as with a client made otherwise: managers hold it weakly,
/// and whoever has the result owns it. One exception: a client whose last reference goes while clients are told, given
/// up by itself while it is told or by another thread, may still be told, or be in the middle of it, without a
/// reference: `shared_from_this` throws then. A client that one thread may end uses `weak_from_this().lock()`.
template <std::derived_from<ZRDidUpdateLocations> Client, class... Arguments>
std::shared_ptr<Client> ZRMakeLocationClient(Arguments&&... arguments) {
  auto* const made = new Client(std::forward<Arguments>(arguments)...);
  return std::shared_ptr<Client>(made, ZRLocationClientEnd{made});
}

/// One manager's place in the list of managers. The list holds nodes, so that it keeps no manager alive.
class ZR_EXPORT ZRLocationManagerInstanceNode {
 public:
  /// The manager, held weakly; null when it has gone.
  std::shared_ptr<ZRLocationManager> instance() const { return instance_.lock(); }
  void setInstance(std::weak_ptr<ZRLocationManager> instance);

 private:
  friend class ZRLocationManager;

  std::weak_ptr<ZRLocationManager> instance_;

  /// What the client wants, and the callbacks that its delegate answers. They are kept in the node, so that a walk over
  /// a thousand clients need not hold each manager to ask it.
  bool shouldUpdateLocation_ = false;
  bool shouldUpdateHeading_ = false;
  bool snaps_ = false;
  std::weak_ptr<ZRDidUpdateLocations> didUpdateLocations_;
  std::weak_ptr<ZRDidUpdateHeading> didUpdateHeading_;
  std::weak_ptr<ZRDidFailWithError> didFailWithError_;
};

/// One client's hold on the shared receiver.
///
/// The platform part of a manager is never started: a manager records what its client wants, and the class keeps one
/// platform manager running while anybody wants updates. The first manager of a process becomes that platform manager's
/// delegate and lives as long as the process.
///
/// Threads: managers may be made and released on any thread. Everything else belongs on the thread on which the
/// receiver reports (the main thread, as a rule).
///
/// A subclass has a factory of its own, which makes the object, calls `enlist` and returns it. Overrides of the
/// platform callbacks are called on the first manager of the process alone; they call the overridden one, which feeds
/// all clients.
class ZR_EXPORT ZRLocationManager : public CLLocationManager,
                                    public CLDidUpdateLocations,
                                    public CLDidUpdateHeading,
                                    public CLDidFailWithError,
                                    public CLDidChangeAuthorizationStatus {
 public:
  /// Takes a filtered location and returns the one to deliver in its place; null: nothing is delivered this time.
  using SnapFilter = std::function<std::shared_ptr<ZRLocation>(const std::shared_ptr<ZRLocation>&)>;

  /// A new manager without a delegate, wanting nothing.
  static std::shared_ptr<ZRLocationManager> init();
  ~ZRLocationManager() override;

  /// Asks `delegate` once which of the callbacks above (`ZRDidUpdateLocations`, `ZRDidUpdateHeading`,
  /// `ZRDidFailWithError`) it answers. It is held weakly: keep it alive yourself. Set it before
  /// `startUpdatingLocation`, which does nothing without one. An object that answers callbacks of the platform's
  /// manager (`CLDidUpdateLocations` and so on) and none of these will never be called: one line in the log says so.
  void setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate) override;
  using CLLocationManager::setDelegate;

  // What this client wants.

  /// Asks for fixes. Without a delegate nothing happens, and nothing is remembered.
  void startUpdatingLocation() override;
  void stopUpdatingLocation() override;
  /// Asks for headings, also without a delegate.
  void startUpdatingHeading() override;
  void stopUpdatingHeading() override;

  bool shouldUpdateLocation() const { return instanceNode_->shouldUpdateLocation_; }
  /// Sets whether this client is counted and called. Neither starts nor stops the shared receiver, and does not ask for
  /// a delegate or for permission: `startUpdatingLocation` and `stopUpdatingLocation` do.
  void setShouldUpdateLocation(bool should) { instanceNode_->shouldUpdateLocation_ = should; }
  bool shouldUpdateHeading() const { return instanceNode_->shouldUpdateHeading_; }
  /// As `setShouldUpdateLocation`, for headings.
  void setShouldUpdateHeading(bool should) { instanceNode_->shouldUpdateHeading_ = should; }

  /// With a snap filter this client gets, for each batch, one location: what the filter makes of the last one. It
  /// starts from the base part of the fix; the filter results are not carried over.
  const SnapFilter& snapFilter() const { return snapFilter_; }
  /// @param filter  null (an empty function) takes the filter away: the client then gets whole batches again.
  void setSnapFilter(SnapFilter filter);

  bool useAutomotiveNavigationMode() const { return useAutomotiveNavigationMode_; }
  /// Tells the shared receiver what the positions are used for: automotive navigation, or other.
  void setUseAutomotiveNavigationMode(bool use);

  // How many clients want what. In the background only those count that may update there.

  int countInstancesGettingLocationUpdates() const;
  int countInstancesGettingLocationUpdatesInBackground() const;
  int countInstancesGettingHeadingUpdates() const;
  int countInstancesGettingHeadingUpdatesInBackground() const;

  // The class.

  /// Asks for permission where the system has such a notion, then starts `manager`, whatever the answer.
  static void requestLocationWithManager(CLLocationManager& manager);
  /// Asks for permission by the usage description that the host's information dictionary has; "when in use" before
  /// "always". With neither, one line goes to the log.
  static void ios8Authorization(CLLocationManager& manager);
  static bool hasWhenInUseUsageDescription();
  static bool hasAlwaysDescription();
  /// The number of managers alive, the permanent first one included.
  static int instanceCount();
  /// The first manager of the process; null before it was made.
  static std::shared_ptr<ZRLocationManager> firstInstance();

  /// Makes the filter report `courseDegrees` as the smoothed course until a fix lies `distanceMeters` or more from the
  /// last accepted one. Without an accepted one there is no lock.
  static void lockSmoothCourseToCourseUntilMoved(double courseDegrees, double distanceMeters);

  /// Replaces the receiver by `simulator` for the rest of the process. Null, or the simulator that is in place already,
  /// changes nothing. If locations are being updated the simulator is started; headings are not started on it.
  static void setTripSimulator(const std::shared_ptr<CLLocationManager>& simulator);

  // Additions.

  /// Whether records made from platform fixes start with their own measurements filled from the fix, so that stability,
  /// jumps and smoothed speed work on live fixes. Default false: the records' own measurements start at 0.0, and the
  /// filter, which reads only these, never finds the receiver stable and smooths every speed to 0.0.
  ///
  /// With it, and while the receiver is stable, a fix is a jump, too, when its distance from the last guidance location
  /// over the time between them reaches the limit of 54 m/s, whatever speed it reports: reflected signals move the
  /// place, and not the speed. Where no time is between them only the speed decides. The speed stays as reported.
  static bool filtersMeasuredValues();
  static void setFiltersMeasuredValues(bool filters);
  /// Whether the filter finds the receiver settled.
  static bool receiverIsStable();
  /// Lets the filter forget all that it has seen, a locked course included, so that the next fix is its first, as in a
  /// new process. Nothing else does so: a stop, another receiver, the background leave it as it is. For hosts that
  /// replay one trip after another. On the thread that delivers the fixes; within a callback it holds from the next
  /// batch on.
  static void resetFilter();

  // The pipeline, step by step. The first manager runs it for all.

  /// Makes one filtered record of each fix; the filter's state, one for the whole process, advances with each.
  ZRLocations smoothLocationsWithLocations(const CLLocations& locations);
  /// One record, made from the last location's base part and passed through the snap filter; none when there is no last
  /// location or the filter returns nothing.
  ZRLocations snapLocationsWithLocations(const ZRLocations& locations);
  /// What the snap filter makes of `location`; `location` itself when there is no filter.
  std::shared_ptr<ZRLocation> snapToRoute(const std::shared_ptr<ZRLocation>& location);
  void updateStability(ZRLocation& location);
  void updateDynamicProperties(const std::shared_ptr<ZRLocation>& location);

  // From the platform manager to the first manager.

  void locationManagerDidUpdateLocations(CLLocationManager& manager, const CLLocations& locations) override;
  void locationManagerDidUpdateHeading(CLLocationManager& manager, const CLHeading& heading) override;
  void locationManagerDidFailWithError(CLLocationManager& manager, const NSError& error) override;
  void locationManagerDidChangeAuthorizationStatus(CLLocationManager& manager, CLAuthorizationStatus status) override;
  void applicationWillEnterForeground(const NSNotification& notification);
  void applicationDidEnterBackground(const NSNotification& notification);

 protected:
  ZRLocationManager();
  /// The second half of construction, which needs the object to be shared already. Every factory of a subclass calls it
  /// exactly once, before it returns the object: a manager that is not enlisted is never called.
  static void enlist(const std::shared_ptr<ZRLocationManager>& manager);

 private:
  static int countInstances(bool ZRLocationManagerInstanceNode::*wanting);

  std::shared_ptr<ZRLocationManagerInstanceNode> instanceNode_;
  bool useAutomotiveNavigationMode_ = false;
  SnapFilter snapFilter_;
};

/// Operations on platform managers, for code that needs no filtering.
namespace CLLocationManager_ZR {

/// The first call makes the one shared manager by `make`; later calls return it, whatever they pass. Any thread.
ZR_EXPORT std::shared_ptr<CLLocationManager> sharedInstanceMadeBy(
    const std::function<std::shared_ptr<CLLocationManager>()>& make);

/// The process-wide platform manager: one object, of the class of the first asker. Never released.
template <std::derived_from<CLLocationManager> Class = CLLocationManager>
std::shared_ptr<CLLocationManager> sharedInstance() {
  return sharedInstanceMadeBy([] { return std::shared_ptr<CLLocationManager>(Class::init()); });
}

/// The most recent fix of the shared instance; null when there is none.
ZR_EXPORT std::shared_ptr<const CLLocation> lastLocation();

/// Whether positions may be used, always or while the application is in use.
ZR_EXPORT bool locationIsAuthorized();

/// Whether updates go on while the application is in the background. One flag for the process, default false.
ZR_EXPORT bool shouldUpdateInBackground();
ZR_EXPORT void setShouldUpdateInBackground(bool should);

}  // namespace CLLocationManager_ZR

#endif
