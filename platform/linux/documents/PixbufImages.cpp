// SPDX-License-Identifier: Apache-2.0
#include "documents/PixbufImages.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>

#include "documents/PictureFile.h"

namespace {

const char* decoderName(PictureFormat format) {
  switch (format) {
    case PictureFormat::png:
      return "png";
    case PictureFormat::jpeg:
      return "jpeg";
    case PictureFormat::gif:
      return "gif";
  }
  return "";
}

struct SizeLimit {
  std::uint64_t largestPixels;
  bool isExceeded = false;
};

void onSizePrepared(GdkPixbufLoader* loader, int width, int height, gpointer data) {
  auto& limit = *static_cast<SizeLimit*>(data);
  if (static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height) <= limit.largestPixels) return;
  limit.isExceeded = true;
  gdk_pixbuf_loader_set_size(loader, 0, 0);  // which decoders take as an order to stop
}

/// @return whether the decoder took all of the file. It must be closed in any case.
bool feed(GdkPixbufLoader* loader, std::string_view data, const SizeLimit& limit) {
  constexpr std::size_t kSlice = std::size_t{16} * 1024;
  bool isTaken = true;
  while (isTaken && !data.empty()) {
    const std::string_view next = data.substr(0, kSlice);
    data.remove_prefix(next.size());
    isTaken = gdk_pixbuf_loader_write(loader, reinterpret_cast<const guchar*>(next.data()), next.size(), nullptr) &&
              !limit.isExceeded;
  }
  return gdk_pixbuf_loader_close(loader, nullptr) && isTaken;
}

std::shared_ptr<const UIImage> rgbaFrom(const GdkPixbuf* pixbuf) {
  const auto width = static_cast<std::size_t>(gdk_pixbuf_get_width(pixbuf));
  const auto height = static_cast<std::size_t>(gdk_pixbuf_get_height(pixbuf));
  const auto channels = static_cast<std::size_t>(gdk_pixbuf_get_n_channels(pixbuf));
  const auto stride = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(pixbuf));
  const guint8* const pixels = gdk_pixbuf_read_pixels(pixbuf);

  auto image = std::make_shared<UIImage>();
  image->widthPixels = static_cast<std::uint32_t>(width);
  image->heightPixels = static_cast<std::uint32_t>(height);
  image->rgba.resize(width * height * 4, 255);
  std::uint8_t* to = image->rgba.data();
  for (std::size_t y = 0; y < height; ++y) {
    const guint8* from = pixels + y * stride;
    if (channels == 4) {
      to = std::copy_n(from, 4 * width, to);
    } else {
      for (std::size_t x = 0; x < width; ++x, from += 3, to += 4) std::copy_n(from, 3, to);
    }
  }
  return image;
}

}  // namespace

std::shared_ptr<const UIImage> PixbufImages::imageWithData(std::string_view data) const {
  const auto format = pictureFormat(data);
  if (!format) return nullptr;
  const auto picture = readPicture(data, *format);
  if (!picture || picture->pixels > largestPixels_) return nullptr;
  // The time that a picture takes: its drawings, and about two more for making and copying it. The largest one may take
  // three and a half.
  const double drawnPixels = static_cast<double>(picture->pixels) * static_cast<double>(picture->drawings + 2);
  if (drawnPixels > 3.5 * static_cast<double>(largestPixels_)) return nullptr;
  g_autoptr(GdkPixbufLoader) loader = gdk_pixbuf_loader_new_with_type(decoderName(*format), nullptr);
  if (!loader) return nullptr;
  SizeLimit limit{largestPixels_};
  g_signal_connect(loader, "size-prepared", G_CALLBACK(onSizePrepared), &limit);
  if (!feed(loader, picture->bytes, limit)) return nullptr;
  GdkPixbuf* const pixbuf = gdk_pixbuf_loader_get_pixbuf(loader);
  if (!pixbuf) return nullptr;
  g_autoptr(GdkPixbuf) upright = gdk_pixbuf_apply_embedded_orientation(pixbuf);
  return upright ? rgbaFrom(upright) : nullptr;
}
