// SPDX-License-Identifier: Apache-2.0
#include "PlaceFaults.h"

bool tellFaults(Messages& messages, const std::string& name, const place::Document& document) {
  for (const place::Fault& fault : document.faults) {
    const std::string subject = fault.number > 0 ? name + ": result " + std::to_string(fault.number) : name;
    messages.oneOfMany(subject, fault.text);
  }
  messages.endRemarks(name);
  return !document.faults.empty();
}
