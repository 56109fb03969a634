// SPDX-License-Identifier: Apache-2.0
/// @file
/// The load hook.
#ifndef ZRCORE_ZRCORELOAD_H
#define ZRCORE_ZRCORELOAD_H

#include <ZRCore/ZRExport.h>

ZR_EXTERN_C_BEGIN
/// Makes the descriptors of the framework's own types, with their mapping tables, as their first use does otherwise.
/// Never necessary, harmless when called again; for hosts that want start-up work done at start-up. Any thread.
ZR_EXPORT void ZRCoreLoad(void);
ZR_EXTERN_C_END

#endif
