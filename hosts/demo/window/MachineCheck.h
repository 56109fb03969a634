// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_DEMO_WINDOW_MACHINECHECK_H
#define ZRCORE_HOSTS_DEMO_WINDOW_MACHINECHECK_H

#include <demo/MissingServices.h>

#include <functional>
#include <memory>

namespace demo {

/// Looks once, beside the main thread, at what this machine has: daemons may take seconds to answer.
class MachineCheck {
 public:
  using Tell = std::function<void(const Services&)>;

  /// @param tell  called on the main thread with the receiver and the sound; not after the check is gone
  explicit MachineCheck(Tell tell);

 private:
  std::shared_ptr<Tell> tell_;
};

}  // namespace demo

#endif
