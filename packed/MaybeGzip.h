// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_PACKED_MAYBEGZIP_H
#define ZRCORE_PACKED_MAYBEGZIP_H

#include <optional>
#include <string>
#include <string_view>

#include "Unpacker.h"

namespace packed {

/// Bytes of a file as they come: unpacked when it begins as a gzip file does (RFC 1952), else as they are.
class MaybeGzip {
 public:
  /// How many bytes to feed next, where `mostPlain` would be read of a plain file at a time: the first ones tell, and
  /// packed ones become up to a thousand times as many.
  std::size_t nextBytes(std::size_t mostPlain) const { return !isKnown_ ? 2 : unpacker_ ? 4096 : mostPlain; }

  /// Appends to `to` what the next bytes stand for.
  /// @return false when they are damaged, after which there is nothing more to come
  bool feed(std::string_view bytes, std::string& to);

  /// Whether it is known that nothing is packed.
  bool isPlain() const { return isKnown_ && !unpacker_; }
  /// Whether the file may end here.
  bool isWhole() const { return !unpacker_ || unpacker_->isWhole(); }

 private:
  std::string begin_;  ///< until it can be told
  bool isKnown_ = false;
  std::optional<Unpacker> unpacker_;
};

}  // namespace packed

#endif
