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
/// However the bytes are cut into pieces, what comes of them is the same. What stands behind the end is padding, unless
/// it begins as a further member of gzip does.
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
  enum class Place { beforeFirst, inside, between, padding };

  bool begin(std::string_view packed);
  Taken unpack(std::string_view& packed, std::string& body, std::uint64_t longest);

  z_stream stream_{};
  Place place_ = Place::beforeFirst;
  std::string held_;  ///< a byte that does not tell yet what begins with it
  bool isGzip_ = false;
  bool isWhole_ = false;
};

}  // namespace packed

#endif
