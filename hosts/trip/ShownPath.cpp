// SPDX-License-Identifier: Apache-2.0
#include "ShownPath.h"

#include <ZRCore/ZRPrintableText.h>

namespace trip {

std::string shownPath(std::string_view path) {
  if (path.size() <= ZRLongestExcerpt) return ZRPrintableText(path);
  path.remove_prefix(path.size() - ZRLongestExcerpt);
  while (!path.empty() && (static_cast<unsigned char>(path[0]) & 0xC0U) == 0x80U) path.remove_prefix(1);
  return "..." + ZRPrintableText(path);
}

}  // namespace trip
