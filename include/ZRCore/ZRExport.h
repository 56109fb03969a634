// SPDX-License-Identifier: Apache-2.0
/// @file
/// The macros that every public header uses. Readable as C11 and C++20.
#ifndef ZRCORE_ZREXPORT_H
#define ZRCORE_ZREXPORT_H

/// Marks what libZRCore shows to the outside; everything else is hidden.
#define ZR_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
#define ZR_EXTERN_C_BEGIN extern "C" {
#define ZR_EXTERN_C_END }
#define ZR_NOEXCEPT noexcept
#else
#define ZR_EXTERN_C_BEGIN
#define ZR_EXTERN_C_END
#define ZR_NOEXCEPT
#endif

#endif
