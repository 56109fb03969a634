// SPDX-License-Identifier: Apache-2.0
#include "documents/PictureFile.h"

#include <algorithm>
#include <cstddef>

namespace {

/// Walks over a file's bytes; what lies past its end reads as zeros, and the walk as failed.
class Walk {
 public:
  explicit Walk(std::string_view bytes) : rest_(bytes) {}

  bool hasFailed() const { return hasFailed_; }

  void skip(std::size_t count) {
    hasFailed_ |= count > rest_.size();
    rest_.remove_prefix(std::min(count, rest_.size()));
  }
  unsigned byte() { return static_cast<unsigned>(number(1)); }
  /// An unsigned number, its most significant byte first.
  std::size_t number(std::size_t bytes) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
      value = value << 8U | (i < rest_.size() ? static_cast<unsigned char>(rest_[i]) : 0U);
    }
    skip(bytes);
    return value;
  }
  /// To the next byte 0xFF.
  void skipToMark() { skip(std::min(rest_.find('\xFF'), rest_.size())); }

 private:
  std::string_view rest_;
  bool hasFailed_ = false;
};

bool isWholePNG(Walk walk) {
  constexpr std::size_t kEnd = 0x49454E44;  // "IEND"
  walk.skip(8);
  for (std::size_t type = 0; type != kEnd && !walk.hasFailed();) {
    const std::size_t length = walk.number(4);
    type = walk.number(4);
    walk.skip(length + 4);  // the data and their checksum
  }
  return !walk.hasFailed();
}

bool isWholeJPEG(Walk walk) {
  constexpr unsigned kEndOfImage = 0xD9;
  constexpr unsigned kStartOfScan = 0xDA;
  walk.skip(2);
  bool isInScan = false;
  while (!walk.hasFailed()) {
    if (isInScan) walk.skipToMark();
    if (walk.byte() != 0xFF) return false;
    unsigned mark = 0xFF;
    while (mark == 0xFF && !walk.hasFailed()) mark = walk.byte();
    if (mark == kEndOfImage) return !walk.hasFailed();
    const bool standsAlone = mark <= 0x01 || (mark >= 0xD0 && mark <= 0xD7);  // 0: a byte 0xFF of the scan
    if (standsAlone) continue;
    const std::size_t length = walk.number(2);
    if (length < 2) return false;
    walk.skip(length - 2);
    isInScan = mark == kStartOfScan;
  }
  return false;
}

bool isWholeGIF(Walk walk) {
  constexpr unsigned kExtension = 0x21;
  constexpr unsigned kImage = 0x2C;
  constexpr unsigned kTrailer = 0x3B;
  const auto skipColours = [&](unsigned flags) {
    if (flags & 0x80U) walk.skip(std::size_t{3} << ((flags & 7U) + 1U));
  };
  walk.skip(10);
  const unsigned flags = walk.byte();
  walk.skip(2);
  skipColours(flags);
  while (!walk.hasFailed()) {
    const unsigned block = walk.byte();
    if (block == kTrailer) return !walk.hasFailed();
    if (block == kImage) {
      walk.skip(8);
      skipColours(walk.byte());
    } else if (block != kExtension) {
      return false;
    }
    walk.skip(1);  // the extension's label, or the size of the image's codes
    for (std::size_t length = 1; length != 0 && !walk.hasFailed();) {
      length = walk.byte();
      walk.skip(length);
    }
  }
  return false;
}

}  // namespace

std::optional<PictureFormat> pictureFormat(std::string_view file) {
  if (file.starts_with("\x89PNG\r\n\x1A\n")) return PictureFormat::png;
  if (file.starts_with("\xFF\xD8\xFF")) return PictureFormat::jpeg;
  if (file.starts_with("GIF87a") || file.starts_with("GIF89a")) return PictureFormat::gif;
  return std::nullopt;
}

bool isWholePicture(std::string_view file, PictureFormat format) {
  switch (format) {
    case PictureFormat::png:
      return isWholePNG(Walk(file));
    case PictureFormat::jpeg:
      return isWholeJPEG(Walk(file));
    case PictureFormat::gif:
      return isWholeGIF(Walk(file));
  }
  return false;
}
