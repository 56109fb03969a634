// SPDX-License-Identifier: Apache-2.0
#include "documents/PictureFile.h"

#include <algorithm>
#include <cstddef>

namespace {

/// Encoders write up to about twelve.
constexpr std::uint64_t kMostScans = 64;

/// Walks over a file's bytes; what lies past its end reads as zeros, and the walk as failed.
class Walk {
 public:
  explicit Walk(std::string_view bytes) : rest_(bytes), length_(bytes.size()) {}

  bool hasFailed() const { return hasFailed_; }
  std::size_t position() const { return length_ - rest_.size(); }

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
  std::size_t length_;
  bool hasFailed_ = false;
};

/// Of two numbers that stand one behind the other after `skipped` bytes.
std::uint64_t areaAhead(Walk walk, std::size_t skipped, std::size_t bytes) {
  walk.skip(skipped);
  const std::uint64_t height = walk.number(bytes);
  return height * walk.number(bytes);
}

/// Of two numbers of two bytes, their least significant one first.
std::uint64_t littleAreaAhead(Walk walk) {
  const auto number = [&walk] {
    const std::uint64_t low = walk.byte();
    return low | std::uint64_t{walk.byte()} << 8U;
  };
  const std::uint64_t width = number();
  return width * number();
}

/// Whether a side is longer than the other formats can tell. A row costs time, however short it is.
bool hasLongSide(Walk walk) {
  const std::size_t width = walk.number(4);
  return std::max(width, walk.number(4)) > 0xFFFF;
}

bool isInterlaced(Walk walk) {
  walk.skip(12);
  return walk.byte() != 0;
}

std::optional<PictureFile> readPNG(std::string_view file) {
  constexpr std::size_t kHeader = 0x49484452;        // "IHDR"
  constexpr std::size_t kTransparency = 0x74524E53;  // "tRNS"
  constexpr std::size_t kEnd = 0x49454E44;           // "IEND"
  constexpr std::size_t kAncillary = 0x20000000;     // a small first letter: a decoder may pass over it
  PictureFile picture;
  Walk walk(file);
  walk.skip(8);
  picture.bytes = file.substr(0, 8);
  for (std::size_t type = 0; type != kEnd;) {
    const std::size_t begin = walk.position();
    const std::size_t length = walk.number(4);
    type = walk.number(4);
    if (type == kHeader) {
      picture.pixels = areaAhead(walk, 0, 4);
      if (hasLongSide(walk)) return std::nullopt;
      if (isInterlaced(walk)) picture.drawings = 3;  // seven passes, of which the first ones are small
    }
    walk.skip(length + 4);  // the data and their checksum
    if (walk.hasFailed()) return std::nullopt;
    // Texts and profiles are packed a thousand to one, and decoders unpack and keep them.
    const bool isNeeded = (type & kAncillary) == 0 || type == kTransparency;
    if (isNeeded) picture.bytes += file.substr(begin, walk.position() - begin);
  }
  return picture;
}

std::optional<PictureFile> readJPEG(std::string_view file) {
  constexpr unsigned kEndOfImage = 0xD9;
  constexpr unsigned kStartOfScan = 0xDA;
  constexpr unsigned kProgressiveFrame = 0xC2;
  PictureFile picture;
  Walk walk(file);
  walk.skip(2);
  bool isInScan = false, isProgressive = false;
  std::uint64_t scans = 0;
  while (!walk.hasFailed()) {
    if (isInScan) walk.skipToMark();
    if (walk.byte() != 0xFF) return std::nullopt;
    unsigned mark = 0xFF;
    while (mark == 0xFF && !walk.hasFailed()) mark = walk.byte();
    if (mark == kEndOfImage && !walk.hasFailed()) {
      picture.bytes = file.substr(0, walk.position());
      if (isProgressive) picture.drawings = std::max<std::uint64_t>(scans, 1);
      return picture;
    }
    const bool standsAlone = mark <= 0x01 || (mark >= 0xD0 && mark <= 0xD7);  // 0: a byte 0xFF of the scan
    if (standsAlone) continue;
    const bool isFrame = mark >= 0xC0 && mark <= 0xCF && mark != 0xC4 && mark != 0xC8 && mark != 0xCC;
    if (isFrame && mark > kProgressiveFrame) return std::nullopt;  // lossless or arithmetic: no browser reads it either
    const std::size_t length = walk.number(2);
    if (length < 2) return std::nullopt;
    if (isFrame) picture.pixels = std::max(picture.pixels, areaAhead(walk, 1, 2));
    isProgressive |= mark == kProgressiveFrame;
    walk.skip(length - 2);
    isInScan = mark == kStartOfScan;
    if (isInScan && ++scans > kMostScans) return std::nullopt;
  }
  return std::nullopt;
}

std::optional<PictureFile> readGIF(std::string_view file) {
  constexpr unsigned kExtension = 0x21;
  constexpr unsigned kGraphicControl = 0xF9;  // says which colour is transparent
  constexpr unsigned kImage = 0x2C;
  constexpr unsigned kTrailer = 0x3B;
  PictureFile picture;
  picture.drawings = 5;  // its codes are slow to follow
  Walk walk(file);
  const auto skipColours = [&](unsigned flags) {
    if (flags & 0x80U) walk.skip(std::size_t{3} << ((flags & 7U) + 1U));
  };
  walk.skip(6);
  picture.pixels = littleAreaAhead(walk);
  walk.skip(4);
  const unsigned flags = walk.byte();
  walk.skip(2);
  skipColours(flags);
  picture.bytes = file.substr(0, walk.position());
  bool hasImage = false;
  while (!walk.hasFailed()) {
    const std::size_t begin = walk.position();
    const unsigned block = walk.byte();
    if (block == kTrailer && !walk.hasFailed()) {
      picture.bytes += ';';
      return picture;
    }
    unsigned label = 0;
    if (block == kImage) {
      walk.skip(4);
      if (!hasImage) picture.pixels = std::max(picture.pixels, littleAreaAhead(walk));
      walk.skip(4);
      skipColours(walk.byte());
      walk.skip(1);  // the size of the image's codes
    } else if (block == kExtension) {
      label = walk.byte();
    } else {
      return std::nullopt;
    }
    for (std::size_t length = 1; length != 0 && !walk.hasFailed();) {
      length = walk.byte();
      walk.skip(length);
    }
    // Of an animation the first image is shown; a decoder would draw them all.
    if (!hasImage && (block == kImage || label == kGraphicControl)) {
      picture.bytes += file.substr(begin, walk.position() - begin);
    }
    hasImage |= block == kImage;
  }
  return std::nullopt;
}

}  // namespace

std::optional<PictureFormat> pictureFormat(std::string_view file) {
  if (file.starts_with("\x89PNG\r\n\x1A\n")) return PictureFormat::png;
  if (file.starts_with("\xFF\xD8\xFF")) return PictureFormat::jpeg;
  if (file.starts_with("GIF87a") || file.starts_with("GIF89a")) return PictureFormat::gif;
  return std::nullopt;
}

std::optional<PictureFile> readPicture(std::string_view file, PictureFormat format) {
  switch (format) {
    case PictureFormat::png:
      return readPNG(file);
    case PictureFormat::jpeg:
      return readJPEG(file);
    case PictureFormat::gif:
      return readGIF(file);
  }
  return std::nullopt;
}
