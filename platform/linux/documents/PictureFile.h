// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_PICTUREFILE_H
#define ZRCORE_LINUX_PICTUREFILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The formats that are decoded. No others, though the system's decoders may know more: pictures come from outside, and
/// each decoder is one more way in.
enum class PictureFormat { png, jpeg, gif };

/// The format that the file's first bytes tell.
std::optional<PictureFormat> pictureFormat(std::string_view file);

/// What must be known of a picture before it is decoded.
struct PictureFile {
  std::string bytes;           ///< of the file, what the first picture in it needs
  std::uint64_t pixels = 0;    ///< as the file declares them
  std::uint64_t drawings = 1;  ///< how often the decoder draws them, or takes the time of that
};

/// Walks over the file to the mark that its format ends with; decoders fill what is missing with black or grey.
/// @return nothing when that is not there, or when the file is built as no encoder does it
std::optional<PictureFile> readPicture(std::string_view file, PictureFormat format);

#endif
