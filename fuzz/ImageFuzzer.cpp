// SPDX-License-Identifier: Apache-2.0
// Any bytes as a picture: what decodes is as large as it says and as is allowed, and is decoded the same again.
#include <cstdint>
#include <string_view>

#include "FuzzLaws.h"
#include "documents/PictureFile.h"
#include "documents/PixbufImages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::uint64_t kLargestPixels = 1U << 18U;
  const PixbufImages images(kLargestPixels);
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto image = images.imageWithData(input);
  if (!image) return 0;
  const std::uint64_t pixels = std::uint64_t{image->widthPixels} * image->heightPixels;
  require(pixels > 0 && pixels <= kLargestPixels, "a picture has pixels, and not too many");
  require(image->rgba.size() == 4 * pixels, "each pixel has four bytes");
  const auto again = images.imageWithData(input);
  require(again && again->rgba == image->rgba, "it is the same picture again");
  const auto needed = readPicture(input, *pictureFormat(input));
  require(needed && needed->drawings <= 64, "a picture is not drawn for ever");
  require(needed->bytes.size() <= input.size(), "nothing is added to a file");
  const auto most = readPicture(needed->bytes, *pictureFormat(input));
  require(most && most->bytes == needed->bytes, "what is needed is needed");
  return 0;
}
