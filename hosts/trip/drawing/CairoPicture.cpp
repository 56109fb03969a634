// SPDX-License-Identifier: Apache-2.0
#include "CairoPicture.h"

#include <cstddef>
#include <cstdint>

namespace trip {

namespace {

/// Cairo's colours are multiplied by the opacity.
std::uint32_t cairoPixel(const std::uint8_t* rgba) {
  const std::uint32_t opacity = rgba[3];
  const auto part = [&](int i) { return (rgba[i] * opacity + 127) / 255; };
  return opacity << 24U | part(0) << 16U | part(1) << 8U | part(2);
}

}  // namespace

CairoPicture::CairoPicture(const UIImage& image)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(image.widthPixels),
                                          static_cast<int>(image.heightPixels))) {
  unsigned char* const pixels = cairo_image_surface_get_data(surface_.get());
  if (!pixels) return;  // no memory: cairo draws nothing then
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface_.get()));
  const std::uint8_t* from = image.rgba.data();
  for (std::size_t y = 0; y < image.heightPixels; ++y) {
    auto* const row = reinterpret_cast<std::uint32_t*>(pixels + y * stride);
    for (std::size_t x = 0; x < image.widthPixels; ++x, from += 4) row[x] = cairoPixel(from);
  }
  cairo_surface_mark_dirty(surface_.get());
}

}  // namespace trip
