// SPDX-License-Identifier: Apache-2.0
/// @file
/// Pictures and their decoding.
#ifndef ZRCORE_UIIMAGE_H
#define ZRCORE_UIIMAGE_H

#include <ZRCore/ZRExport.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

/// A decoded picture.
struct UIImage {
  std::uint32_t widthPixels = 0;
  std::uint32_t heightPixels = 0;
  /// Red, green, blue and opacity of each pixel, 0 to 255, row by row from the top left; colours are not multiplied by
  /// the opacity.
  std::vector<std::uint8_t> rgba;
};

/// Decodes pictures. Any thread.
class ZR_EXPORT ZRImages {
 public:
  virtual ~ZRImages();
  /// The picture that `data` is a file of (PNG and JPEG at least).
  /// @return null for everything else: no bytes, another format, a file that is cut short.
  virtual std::shared_ptr<const UIImage> imageWithData(std::string_view data) const = 0;
};

#endif
