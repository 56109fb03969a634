// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_MISSINGSERVICES_H
#define ZRCORE_HOSTS_DEMO_MISSINGSERVICES_H

#include <string>

namespace demo {

/// What this machine has of what the demonstration can show.
struct Services {
  bool hasReceiver = false;
  bool hasSound = false;
  bool hasSpeech = false;
  bool hasNetwork = false;
};

/// One quiet line for people, short enough for a phone: what is missing. Empty when nothing is.
std::string missingServicesText(const Services& services);

}  // namespace demo

#endif
