// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PACKED_UNPACKER_H
#define ZRCORE_PACKED_UNPACKER_H

#define ZLIB_CONST  // input is not written to
#include <zlib.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace packed {

/// Unpacks gzip (RFC 1952) and deflate (RFC 1950 and 1951) as it comes, and reports an end that comes too early.
class Unpacker {
 public:
  Unpacker();
  Unpacker(const Unpacker&) = delete;
  Unpacker& operator=(const Unpacker&) = delete;
  ~Unpacker();

  enum class Taken { good, damaged, tooLong };
  /// Appends to `body` what further bytes unpack to, up to a length of `longest` in all.
  Taken take(std::string_view packed, std::string& body, std::uint64_t longest);

  /// Whether the end was reached, so far as can be told: more may follow.
  bool isWhole() const { return isWhole_; }

 private:
  bool startAgainAsBareDeflate(std::string_view packed);
  bool startNextMember();

  z_stream stream_{};
  bool hasUnpacked_ = false;
  bool isWhole_ = false;
};

}  // namespace packed

#endif
