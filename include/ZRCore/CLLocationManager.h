// SPDX-License-Identifier: Apache-2.0
/// @file
/// The platform's location manager: what the shared location service asks of a receiver, and what it hears from it.
#ifndef ZRCORE_CLLOCATIONMANAGER_H
#define ZRCORE_CLLOCATIONMANAGER_H

#include <ZRCore/CLLocation.h>
#include <ZRCore/NSError.h>
#include <ZRCore/ZRExport.h>

#include <cstddef>
#include <memory>
#include <vector>

class CLLocationManager;

/// Root of everything that may stand as a location manager's delegate; managers hold it weakly. Deriving from one of
/// the interfaces below (or of those that a subclass of the manager declares) is how a delegate answers that callback.
class ZR_EXPORT CLLocationManagerDelegate {
 public:
  virtual ~CLLocationManagerDelegate();
};

/// A batch of fixes, oldest first. No entry is null.
using CLLocations = std::vector<std::shared_ptr<const CLLocation>>;

/// Answers `locationManager:didUpdateLocations:` of a platform manager.
class ZR_EXPORT CLDidUpdateLocations : public virtual CLLocationManagerDelegate {
 public:
  ~CLDidUpdateLocations() override;
  virtual void locationManagerDidUpdateLocations(CLLocationManager& manager, const CLLocations& locations) = 0;
};

/// Answers `locationManager:didUpdateHeading:` of a platform manager.
class ZR_EXPORT CLDidUpdateHeading : public virtual CLLocationManagerDelegate {
 public:
  ~CLDidUpdateHeading() override;
  virtual void locationManagerDidUpdateHeading(CLLocationManager& manager, const CLHeading& heading) = 0;
};

/// The domain of a receiver's failures, whose codes are `CLErrorCode`.
inline constexpr const char* kCLErrorDomain = "kCLErrorDomain";

/// What failed, in errors of `kCLErrorDomain`.
enum class CLErrorCode : long {
  locationUnknown = 0,  ///< no position for now; the manager goes on looking
  denied = 1,           ///< the user does not allow it
};

/// The keys in `userInfo` under which an error of the Linux receivers keeps what is wrong, for programs ("noDaemon",
/// "noDevice", "lost", "noFix", "noAgent", "denied", "badSource"), and the name of the source that it is wrong with.
inline constexpr const char* ZRPositioningFaultKey = "ZRPositioningFault";
inline constexpr const char* ZRPositioningSourceKey = "ZRPositioningSource";

/// Answers `locationManager:didFailWithError:` of a platform manager.
class ZR_EXPORT CLDidFailWithError : public virtual CLLocationManagerDelegate {
 public:
  ~CLDidFailWithError() override;
  virtual void locationManagerDidFailWithError(CLLocationManager& manager, const NSError& error) = 0;
};

/// Whether the user allows this application to use positions.
enum class CLAuthorizationStatus : int {
  notDetermined = 0,
  restricted = 1,
  denied = 2,
  authorizedAlways = 3,
  authorizedWhenInUse = 4,
};

/// Answers `locationManager:didChangeAuthorizationStatus:` of a platform manager.
class ZR_EXPORT CLDidChangeAuthorizationStatus : public virtual CLLocationManagerDelegate {
 public:
  ~CLDidChangeAuthorizationStatus() override;
  virtual void locationManagerDidChangeAuthorizationStatus(CLLocationManager& manager,
                                                           CLAuthorizationStatus status) = 0;
};

/// What the positions are used for; receivers may save power by it.
enum class CLActivityType : int { other = 1, automotiveNavigation = 2, fitness = 3, otherNavigation = 4 };

/// One client's hold on a receiver. A system's adapter, a test double and a trip simulator each derive from it.
///
/// All calls come from one thread, and the manager calls its delegate on that thread. It never calls the delegate
/// inside `startUpdatingLocation` or `startUpdatingHeading`. A delegate may stop the manager and release its last
/// reference during a callback (`ZRLocationManager::setTripSimulator` does): a manager that uses its members after a
/// callback keeps a reference to itself for the duration.
///
/// Each coordinate that it delivers is valid (`CLLocationCoordinate2DIsValid`); what its receiver reports beside that,
/// it drops. The filter relies on it: its documented comparisons never hold for NaN, so that a first fix without a
/// place would end its use for the life of the process.
class ZR_EXPORT CLLocationManager {
 public:
  /// A new manager of the installed platform's receiver, stopped and without a delegate.
  static std::shared_ptr<CLLocationManager> init();

  /// Whether this application may use positions, by the installed platform.
  static CLAuthorizationStatus authorizationStatus();

  CLLocationManager();
  CLLocationManager(const CLLocationManager&) = delete;
  CLLocationManager& operator=(const CLLocationManager&) = delete;
  virtual ~CLLocationManager();

  std::weak_ptr<CLLocationManagerDelegate> delegate() const { return delegate_; }
  /// The delegate is held weakly: keep it alive yourself, and set it before you start updates.
  virtual void setDelegate(std::weak_ptr<CLLocationManagerDelegate> delegate);
  /// Takes the delegate away.
  void setDelegate(std::nullptr_t) { setDelegate(std::weak_ptr<CLLocationManagerDelegate>()); }

  virtual void startUpdatingLocation() = 0;
  virtual void stopUpdatingLocation() = 0;
  virtual void startUpdatingHeading() = 0;
  virtual void stopUpdatingHeading() = 0;

  /// The receiver's most recent fix; null when there is none.
  virtual std::shared_ptr<const CLLocation> location() const;

  CLActivityType activityType() const { return activityType_; }
  virtual void setActivityType(CLActivityType type);

 private:
  std::weak_ptr<CLLocationManagerDelegate> delegate_;
  CLActivityType activityType_ = CLActivityType::other;
};

/// Derived from, beside CLLocationManager, by managers of systems on which the user is asked for permission.
class ZR_EXPORT CLAuthorizationRequests {
 public:
  virtual ~CLAuthorizationRequests();
  virtual void requestWhenInUseAuthorization() = 0;
  virtual void requestAlwaysAuthorization() = 0;
};

#endif
