// SPDX-License-Identifier: Apache-2.0
#include "PlaceFaults.h"

bool tellFaults(Messages& messages, const std::string& name, const place::Account& account) {
  for (const place::Fault& fault : account.faults) {
    const std::string subject = fault.number > 0 ? name + ": result " + std::to_string(fault.number) : name;
    messages.about(subject, fault.text);
  }
  const std::uint64_t untold = account.faultCount - account.faults.size();
  if (untold > 0) messages.about(name, "… and " + std::to_string(untold) + " more");
  return account.faultCount > 0;
}
