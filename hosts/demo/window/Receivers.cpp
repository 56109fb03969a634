// SPDX-License-Identifier: Apache-2.0
#include "Receivers.h"

#include <ZRCore/ZRLinuxPlatform.h>

namespace demo {

std::shared_ptr<CLLocationManager> makeReceiver(const ReceiverChoice& choice) {
  ZRLinuxOptions options;
  options.positioning = choice.positioning;
  options.desktopId = "org.zrcore.Demo";
  return ZRMakeLinuxPositioning(options)->makeLocationManager();
}

}  // namespace demo
