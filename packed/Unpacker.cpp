// SPDX-License-Identifier: Apache-2.0
#include "Unpacker.h"

#include <new>
#include <utility>

namespace packed {

namespace {
constexpr int kGzipOrZlib = MAX_WBITS + 32;
}

Unpacker::Unpacker() {
  if (inflateInit2(&stream_, kGzipOrZlib) != Z_OK) throw std::bad_alloc();
}

Unpacker::~Unpacker() { inflateEnd(&stream_); }

/// Looks at the first two bytes of what begins here. @return false when that is padding
bool Unpacker::begin(std::string_view packed) {
  const auto first = static_cast<unsigned char>(packed[0]), second = static_cast<unsigned char>(packed[1]);
  const bool beginsAsGzip = first == 0x1F && second == 0x8B;
  if (place_ == Place::between) {
    // What is packed piece by piece, in parallel for instance, is several members one behind the other (RFC 1952).
    return isGzip_ && beginsAsGzip && inflateReset(&stream_) == Z_OK;
  }
  isGzip_ = beginsAsGzip;
  // Servers have long disagreed on what "deflate" means: with the frame of RFC 1950, or bare.
  const bool isFramed = (first & 0x0FU) == Z_DEFLATED && (first << 8U | second) % 31 == 0;
  return beginsAsGzip || isFramed || inflateReset2(&stream_, -MAX_WBITS) == Z_OK;
}

Unpacker::Taken Unpacker::unpack(std::string_view& packed, std::string& body, std::uint64_t longest) {
  char block[16384];
  stream_.next_in = reinterpret_cast<const Bytef*>(packed.data());
  stream_.avail_in = static_cast<uInt>(packed.size());
  int result = Z_OK;
  do {  // also without input: what is known may be longer than a block
    stream_.next_out = reinterpret_cast<Bytef*>(block);
    stream_.avail_out = sizeof block;
    result = inflate(&stream_, Z_NO_FLUSH);
    const std::size_t count = sizeof block - stream_.avail_out;
    if (body.size() + count > longest) return Taken::tooLong;
    body.append(block, count);
  } while (result == Z_OK && stream_.avail_out == 0);
  packed.remove_prefix(packed.size() - stream_.avail_in);
  isWhole_ = result == Z_STREAM_END;
  if (isWhole_) place_ = Place::between;
  const bool isGood = isWhole_ || result == Z_OK || result == Z_BUF_ERROR;  // the latter: there was no more to tell
  return isGood ? Taken::good : Taken::damaged;
}

Unpacker::Taken Unpacker::take(std::string_view packed, std::string& body, std::uint64_t longest) {
  std::string joined = std::exchange(held_, {});
  if (!joined.empty()) packed = joined += packed;
  while (!packed.empty() && place_ != Place::padding) {
    if (place_ != Place::inside) {
      if (packed.size() < 2) {
        held_ = packed;
        return Taken::good;
      }
      place_ = begin(packed) ? Place::inside : Place::padding;
      continue;
    }
    const Taken taken = unpack(packed, body, longest);
    if (taken != Taken::good) return taken;
  }
  return Taken::good;
}

}  // namespace packed
