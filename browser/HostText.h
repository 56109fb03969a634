// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_BROWSER_HOSTTEXT_H
#define ZRCORE_BROWSER_HOSTTEXT_H

#include <ZRCore/ZRPlatform.h>

#include <string>
#include <string_view>

namespace browser {

/// The host's translation of an English text, or the text itself.
inline std::string hostText(std::string_view english) {
  return ZRPlatformInUse().bundle->localizedStringForKey(english).value_or(std::string(english));
}

}  // namespace browser

#endif
