// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_HOSTS_TRIP_DRAWING_CAIROPICTURE_H
#define ZRCORE_HOSTS_TRIP_DRAWING_CAIROPICTURE_H

#include <ZRCore/UIImage.h>
#include <cairo.h>

#include <memory>

namespace trip {

/// A decoded picture in the form in which cairo draws it.
class CairoPicture {
 public:
  explicit CairoPicture(const UIImage& image);

  int width() const { return cairo_image_surface_get_width(surface_.get()); }
  int height() const { return cairo_image_surface_get_height(surface_.get()); }
  cairo_surface_t* surface() const { return surface_.get(); }

 private:
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  };
  std::unique_ptr<cairo_surface_t, Destroy> surface_;
};

}  // namespace trip

#endif
