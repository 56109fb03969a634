// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_SERVICES_SERVICESSTATICS_H
#define ZRCORE_SERVICES_SERVICESSTATICS_H

#include "ConfigurationStore.h"
#include "TrackingIdentity.h"

/// The state of the services, one for the process.
struct ServicesStatics {
  ConfigurationStore configurationStore;
  TrackingIdentity trackingIdentity;
};

/// Never torn down.
ServicesStatics& servicesStatics();

#endif
