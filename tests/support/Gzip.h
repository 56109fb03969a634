// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_GZIP_H
#define ZRCORE_TESTS_SUPPORT_GZIP_H

#define ZLIB_CONST
#include <zlib.h>

#include <string>
#include <string_view>

/// The bytes as a gzip file of one member.
inline std::string gzipped(std::string_view plain) {
  z_stream stream{};
  deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY);
  std::string packed(deflateBound(&stream, plain.size()) + 32, '\0');
  stream.next_in = reinterpret_cast<const Bytef*>(plain.data());
  stream.avail_in = static_cast<uInt>(plain.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

#endif
