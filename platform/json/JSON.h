// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PLATFORM_JSON_JSON_H
#define ZRCORE_PLATFORM_JSON_JSON_H

#include <ZRCore/ZRJSONService.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

/// The careful reader: it knows the place of each fault, and numbers of any length. `JSONTape` is the quick one.
std::variant<ZROHMValue, NSError> readJSONCarefully(std::string_view bytes, ZRJSONFragments fragments,
                                                    std::uint64_t mostValues);
std::variant<std::string, NSError> writeJSON(const ZROHMValue& value, ZRJSONLayout layout);

#endif
