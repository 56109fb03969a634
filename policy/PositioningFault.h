// SPDX-License-Identifier: Apache-2.0
/// @file
/// What can be wrong with a source of positions, and when clients are told.
#ifndef ZRCORE_POLICY_POSITIONINGFAULT_H
#define ZRCORE_POLICY_POSITIONINGFAULT_H

#include <ZRCore/NSError.h>

#include <optional>
#include <string>
#include <string_view>

namespace policy {

enum class PositioningFault {
  badSource,  ///< the source's description cannot be used
  noDaemon,   ///< nothing answers where the source should be
  noDevice,   ///< the daemon has no receiver
  lost,       ///< the source was there and went
  noFix,      ///< the source is there and gives no positions
  noAgent,    ///< the location service waits for somebody who may give permission
  denied,     ///< this application may not know the position
};

/// The fault as clients get it, in `kCLErrorDomain`. `userInfo` has the fault's name under `ZRPositioningFaultKey`, the
/// source's under `ZRPositioningSourceKey`, and a sentence: the source, what is wrong, what to do.
/// @param detail  what the system says about it; may be empty
NSError errorOf(PositioningFault fault, std::string_view source, std::string_view detail);

/// Tells each change for the worse once, however often it is found again.
class FaultLatch {
 public:
  /// @return whether clients must be told. A source that was lost and is not there when it is looked for again has
  ///         not changed; nor has one without a fix, for whatever reason reported before.
  bool fails(PositioningFault fault);

  /// @return whether a fault has just ended.
  bool works();

  std::optional<PositioningFault> fault() const { return fault_; }

 private:
  std::optional<PositioningFault> fault_;
};

}  // namespace policy

#endif
