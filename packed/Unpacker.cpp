// SPDX-License-Identifier: Apache-2.0
#include "Unpacker.h"

#include <new>

namespace packed {

namespace {
constexpr int kGzipOrZlib = MAX_WBITS + 32;
}

Unpacker::Unpacker() {
  if (inflateInit2(&stream_, kGzipOrZlib) != Z_OK) throw std::bad_alloc();
}

Unpacker::~Unpacker() { inflateEnd(&stream_); }

bool Unpacker::startAgainAsBareDeflate(std::string_view packed) {
  // Servers have long disagreed on what "deflate" means; what fails at its first bytes is taken as the other kind.
  if (hasUnpacked_) return false;
  hasUnpacked_ = true;
  stream_.next_in = reinterpret_cast<const Bytef*>(packed.data());
  stream_.avail_in = static_cast<uInt>(packed.size());
  return inflateReset2(&stream_, -MAX_WBITS) == Z_OK;
}

bool Unpacker::startNextMember() {
  // What is packed piece by piece, in parallel for instance, is several members one behind the other (RFC 1952).
  constexpr Bytef kMemberBegin = 0x1F;
  if (*stream_.next_in != kMemberBegin) return false;
  isWhole_ = false;
  return inflateReset(&stream_) == Z_OK;
}

Unpacker::Taken Unpacker::take(std::string_view packed, std::string& body, std::uint64_t longest) {
  stream_.next_in = reinterpret_cast<const Bytef*>(packed.data());
  stream_.avail_in = static_cast<uInt>(packed.size());
  while (stream_.avail_in > 0) {
    if (isWhole_ && !startNextMember()) break;  // padding
    char block[16384];
    stream_.next_out = reinterpret_cast<Bytef*>(block);
    stream_.avail_out = sizeof block;
    const int result = inflate(&stream_, Z_NO_FLUSH);
    if (result == Z_DATA_ERROR && startAgainAsBareDeflate(packed)) continue;
    if (result != Z_OK && result != Z_STREAM_END) return Taken::damaged;
    hasUnpacked_ = true;
    const std::size_t count = sizeof block - stream_.avail_out;
    if (body.size() + count > longest) return Taken::tooLong;
    body.append(block, count);
    isWhole_ = result == Z_STREAM_END;
  }
  return Taken::good;
}

}  // namespace packed
