// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_TESTS_SUPPORT_TILEPICTURES_H
#define ZRCORE_TESTS_SUPPORT_TILEPICTURES_H

#include <cairo.h>

#include <cstdint>
#include <string>

/// The colour (0xrrggbb) of a tile, far from that of its neighbours and from those that maps are drawn with.
inline std::uint32_t tileColor(int zoom, int column, int row) {
  const auto part = [](int number) { return static_cast<std::uint32_t>(0x60 + 0x28 * (number & 3)); };
  return part(column) << 16U | part(row) << 8U | part(zoom);
}

/// A PNG of one colour.
inline std::string tilePicture(std::uint32_t color, int pixelsAcross = 256) {
  cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixelsAcross, pixelsAcross);
  cairo_t* const context = cairo_create(surface);
  cairo_set_source_rgb(context, (color >> 16U) / 255.0, (color >> 8U & 0xffU) / 255.0, (color & 0xffU) / 255.0);
  cairo_paint(context);
  std::string file;
  const auto append = [](void* to, const unsigned char* bytes, unsigned int size) {
    static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(bytes), size);
    return CAIRO_STATUS_SUCCESS;
  };
  cairo_surface_write_to_png_stream(surface, append, &file);
  cairo_destroy(context);
  cairo_surface_destroy(surface);
  return file;
}

#endif
