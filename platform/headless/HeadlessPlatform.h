// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_HEADLESS_HEADLESSPLATFORM_H
#define ZRCORE_PLATFORM_HEADLESS_HEADLESSPLATFORM_H

#include <ZRCore/ZRPlatform.h>

/// Every service present, each answering "absent" where a system would be needed.
ZRPlatform headlessPlatform();

#endif
