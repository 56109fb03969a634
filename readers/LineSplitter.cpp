// SPDX-License-Identifier: Apache-2.0
#include "LineSplitter.h"

namespace readers {

void LineSplitter::hold(std::string_view piece) {
  // Room for a byte order mark, which does not count, so that the verdict does not depend on how the line arrives.
  constexpr std::size_t kMostHeld = kLongestText + 3;
  if (tooLong_ || held_.size() + piece.size() > kMostHeld) {
    tooLong_ = true;
    held_.clear();
  } else {
    held_ += piece;
  }
}

/// After a CR: without further ones, and the LF that ends them.
std::string_view LineSplitter::withoutRestOfEnd(std::string_view bytes) {
  if (!isAfterReturn_) return bytes;
  bytes.remove_prefix(std::min(bytes.find_first_not_of('\r'), bytes.size()));
  if (bytes.empty()) return bytes;
  isAfterReturn_ = false;
  if (bytes.front() == '\n') bytes.remove_prefix(1);
  return bytes;
}

}  // namespace readers
