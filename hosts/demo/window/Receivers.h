// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_RECEIVERS_H
#define ZRCORE_HOSTS_DEMO_WINDOW_RECEIVERS_H

#include <ZRCore/CLLocationManager.h>

#include <array>
#include <memory>

namespace demo {

/// A source of live positions that a person may choose.
struct ReceiverChoice {
  const char* name;
  const char* positioning;  ///< as ZRLinuxOptions takes it
};
inline constexpr std::array<ReceiverChoice, 3> kReceivers{
    {{"Receiver", "auto"}, {"Receiver by gpsd", "gpsd"}, {"Receiver by GeoClue", "geoclue"}}};

/// A new manager of the chosen source, stopped.
std::shared_ptr<CLLocationManager> makeReceiver(const ReceiverChoice& choice);

}  // namespace demo

#endif
