// SPDX-License-Identifier: Apache-2.0
#include "LineSplitter.h"

namespace readers {

void LineSplitter::hold(std::string_view piece) {
  // Room for a byte order mark and a CR, which do not count, so that the verdict does not depend on how the line
  // arrives.
  constexpr std::size_t kMostHeld = kLongestText + 4;
  if (tooLong_ || held_.size() + piece.size() > kMostHeld) {
    tooLong_ = true;
    held_.clear();
  } else {
    held_ += piece;
  }
}

}  // namespace readers
