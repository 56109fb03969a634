// SPDX-License-Identifier: Apache-2.0
#include "MaybeGzip.h"

#include <cstdint>

namespace packed {

bool MaybeGzip::feed(std::string_view bytes, std::string& to) {
  constexpr std::string_view kBegin = "\x1F\x8B";
  if (!isKnown_) {
    begin_ += bytes;
    if (begin_.size() < kBegin.size() && kBegin.starts_with(begin_)) return true;
    isKnown_ = true;
    if (begin_.starts_with(kBegin)) unpacker_.emplace();
    bytes = begin_;
  }
  if (unpacker_) return unpacker_->take(bytes, to, UINT64_MAX) == Unpacker::Taken::good;
  to += bytes;
  return true;
}

}  // namespace packed
