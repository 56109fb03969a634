// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_PIXBUFIMAGES_H
#define ZRCORE_LINUX_PIXBUFIMAGES_H

#include <ZRCore/UIImage.h>

#include <cstdint>

/// Decodes PNG, JPEG and GIF with gdk-pixbuf: upright as the camera's mark says, and of an animation the first picture.
class PixbufImages final : public ZRImages {
 public:
  /// @param largestPixels  a file that declares more (width times height) is refused before memory is taken for them.
  explicit PixbufImages(std::uint64_t largestPixels) : largestPixels_(largestPixels) {}

  std::shared_ptr<const UIImage> imageWithData(std::string_view data) const override;

 private:
  std::uint64_t largestPixels_;
};

#endif
