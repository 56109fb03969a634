// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LOCATION_LOCATIONSTATICS_H
#define ZRCORE_LOCATION_LOCATIONSTATICS_H

#include <ZRCore/ZRLocationManager.h>

#include <memory>
#include <mutex>

#include "InstanceList.h"
#include "LocationFilter.h"

/// The state of the location service, one for the process. The names are the documented ones of class-level state.
struct LocationStatics {
  std::shared_ptr<ZRLocationManager> __singletonInstance;
  InstanceList __instanceList;
  std::shared_ptr<CLLocationManager> __locationManager;
  std::shared_ptr<CLLocationManager> __tripSimulator;
  bool __isInBackground = false;
  bool __isUpdatingLocation = false;
  bool __isUpdatingHeading = false;
  bool __shouldUpdateInBackground = false;

  /// The lock of the shared platform manager, held around its starting and stopping and the change of the flags.
  /// Recursive, because a receiver may report from inside these calls, and a delegate may start and stop managers.
  std::recursive_mutex locationManagerLock;

  LocationFilter filter;
  bool filtersMeasuredValues = false;

  std::once_flag sharedInstanceOnce;
  std::shared_ptr<CLLocationManager> sharedInstance;
};

/// Never torn down.
LocationStatics& locationStatics();

/// Lets a test start over in the same process. Not exported.
struct LocationTestPeer {
  static void forget();
};

#endif
