// SPDX-License-Identifier: Apache-2.0
/// @file
/// The JSON service for hosts. Link ZRCore::JSON.
#ifndef ZRCORE_ZRJSON_H
#define ZRCORE_ZRJSON_H

#include <ZRCore/ZRJSONService.h>

#include <memory>

/// Reads and writes JSON. Without state; any thread.
std::shared_ptr<ZRJSONService> ZRMakeJSONService();

#endif
