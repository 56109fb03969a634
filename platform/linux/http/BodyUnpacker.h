// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_HTTP_BODYUNPACKER_H
#define ZRCORE_LINUX_HTTP_BODYUNPACKER_H

#define ZLIB_CONST  // input is not written to
#include <zlib.h>

#include <cstdint>
#include <string>
#include <string_view>

/// Unpacks a body of the encodings gzip and deflate as it comes. In place of libcurl's, which takes a body that ends
/// too early for a whole one.
class BodyUnpacker {
 public:
  /// Whether bodies of that Content-Encoding are to be unpacked.
  static bool knows(std::string_view encoding);

  BodyUnpacker();
  BodyUnpacker(const BodyUnpacker&) = delete;
  BodyUnpacker& operator=(const BodyUnpacker&) = delete;
  ~BodyUnpacker();

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

#endif
