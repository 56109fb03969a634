// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_PLATFORMTESTPEER_H
#define ZRCORE_PLATFORM_PLATFORMTESTPEER_H

/// Lets a test start over in the same process. Not exported.
struct PlatformTestPeer {
  static void forget();
};

#endif
