// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_HEADLESS_HEADLESSSCREEN_H
#define ZRCORE_PLATFORM_HEADLESS_HEADLESSSCREEN_H

#include <ZRCore/ZRPlatform.h>

/// Fills in a screen that nobody sees, with web views that load nothing, a clipboard that keeps nothing, no mail and
/// no other program.
void fillHeadlessScreen(ZRPlatform& platform);

#endif
