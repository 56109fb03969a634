// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_HOSTILEPICTURES_H
#define ZRCORE_TESTS_SUPPORT_HOSTILEPICTURES_H

#include <zlib.h>

#include <cstdint>
#include <string>

// Pictures that cost a decoder the most for their bytes.

inline std::string bigEndian(std::uint32_t number, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(number >> 8 * i);
  return text;
}

/// A black progressive JPEG: a scan of the blocks' means, then `scans` that say of each block that it has no more.
/// @param components  1 (grey) or 3
inline std::string progressiveJPEG(unsigned width, unsigned height, unsigned scans, char components = 1) {
  using namespace std::string_literals;
  const unsigned blocks = ((width + 7) / 8) * ((height + 7) / 8);
  const auto segment = [](char mark, const std::string& content) {
    return std::string{'\xFF', mark} + bigEndian(static_cast<std::uint32_t>(content.size() + 2), 2) + content;
  };
  const std::string oneCode = "\1"s + std::string(15, '\0');  // of one bit, which is 0
  std::string frame = "\x08"s + bigEndian(height, 2) + bigEndian(width, 2) + components;
  std::string means(1, components);
  for (char i = 1; i <= components; ++i) {
    frame += i + "\x11\0"s;
    means += i + "\0"s;
  }
  std::string file = "\xFF\xD8"s + segment('\xDB', "\0"s + std::string(64, '\1')) + segment('\xC2', frame) +
                     segment('\xC4', "\0"s + oneCode + "\0"s) + segment('\xC4', "\x10"s + oneCode + "\xE0"s);
  file += segment('\xDA', means + "\0\0\0"s) + std::string((blocks * static_cast<unsigned>(components) + 7) / 8, '\0');
  for (unsigned scan = 0; scan < scans; ++scan) {
    const char component = static_cast<char>(1 + scan % static_cast<unsigned>(components));
    file += segment('\xDA', "\1"s + component + "\0\1\x3F\0"s);
    file += std::string((((blocks >> 14U) + 1) * 15 + 7) / 8, '\0');  // runs of 2^14 blocks
  }
  return file + "\xFF\xD9";
}

inline std::string pngChunk(std::string type, const std::string& content) {
  type += content;
  const auto sum = crc32(0, reinterpret_cast<const Bytef*>(type.data()), static_cast<uInt>(type.size()));
  return bigEndian(static_cast<std::uint32_t>(content.size()), 4) + type +
         bigEndian(static_cast<std::uint32_t>(sum), 4);
}

inline std::string deflated(const std::string& plain) {
  uLongf length = compressBound(static_cast<uLong>(plain.size()));
  std::string packed(length, '\0');
  compress2(reinterpret_cast<Bytef*>(packed.data()), &length, reinterpret_cast<const Bytef*>(plain.data()),
            static_cast<uLong>(plain.size()), 9);
  packed.resize(length);
  return packed;
}

/// A black PNG of three bytes a pixel, with `middle` between its header and its pixels.
inline std::string blackPNG(unsigned width, unsigned height, bool isInterlaced = false,
                            const std::string& middle = {}) {
  using namespace std::string_literals;
  // Interlaced, each row stands in several passes: zeros more than enough.
  const std::size_t bytes = (std::size_t{3} * width + 1) * height * (isInterlaced ? 2 : 1) + (isInterlaced ? 64 : 0);
  return "\x89PNG\r\n\x1A\n"s +
         pngChunk("IHDR", bigEndian(width, 4) + bigEndian(height, 4) + "\x08\2\0\0"s + (isInterlaced ? '\1' : '\0')) +
         middle + pngChunk("IDAT", deflated(std::string(bytes, '\0'))) + pngChunk("IEND", "");
}

/// `count` packed texts, each of `bytes` bytes.
inline std::string pngTexts(unsigned count, std::size_t bytes) {
  using namespace std::string_literals;
  const std::string chunk = pngChunk("zTXt", "k\0\0"s + deflated(std::string(bytes, 'A')));
  std::string texts;
  while (count-- > 0) texts += chunk;
  return texts;
}

/// A GIF of black images, each as large as the canvas.
inline std::string blackGIF(unsigned width, unsigned height, unsigned images) {
  using namespace std::string_literals;
  const auto little = [](unsigned number) {
    return std::string{static_cast<char>(number), static_cast<char>(number >> 8U)};
  };
  // Codes for ever longer runs of zeros, until the table is full; then it begins anew.
  std::string codes;
  std::uint32_t bits = 0;
  unsigned held = 0;
  const auto put = [&](unsigned code, unsigned length) {
    bits |= code << held;
    for (held += length; held >= 8; held -= 8, bits >>= 8U) codes += static_cast<char>(bits);
  };
  constexpr unsigned kClear = 4, kEnd = 5;
  std::uint64_t left = std::uint64_t{width} * height;
  while (left > 0) {
    put(kClear, codes.empty() ? 3 : 12);
    unsigned length = 3;
    for (unsigned run = 1; run <= 4090 && left > 0; ++run) {
      const bool isLast = left <= run;
      put(run == 1 ? 0 : run + 4, length);
      left -= isLast ? left : run;
      if (run + 5 == 1U << length && length < 12) ++length;
    }
    if (left == 0) put(kEnd, length);
  }
  put(0, 8);
  std::string image = ","s + std::string(4, '\0') + little(width) + little(height) + "\0\2"s;
  for (std::size_t at = 0; at < codes.size(); at += 255) {
    const std::string block = codes.substr(at, 255);
    image += static_cast<char>(block.size()) + block;
  }
  image += '\0';
  std::string file = "GIF89a"s + little(width) + little(height) + "\x80\0\0\0\0\0\xFF\xFF\xFF"s;
  while (images-- > 0) file += image;
  return file + ";";
}

#endif
