// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_SERVICESSTATICS_H
#define ZRCORE_SERVICES_SERVICESSTATICS_H

#include <ZRCore/ZRConfigurationBase.h>

#include <memory>
#include <mutex>

#include "ConfigurationStore.h"
#include "TrackingIdentity.h"

/// The last configuration that was handed out, and what it was made of.
struct ConfigurationFace {
  std::mutex mutex;
  std::shared_ptr<const ConfigurationAddresses> addresses;
  std::shared_ptr<ZRConfigurationBase> face;
};

/// The state of the services, one for the process.
struct ServicesStatics {
  ConfigurationStore configurationStore;
  ConfigurationFace configurationFace;
  TrackingIdentity trackingIdentity;
};

/// Never torn down.
ServicesStatics& servicesStatics();

#endif
