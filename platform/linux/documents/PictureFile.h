// SPDX-License-Identifier: Apache-2.0
#ifndef ZRCORE_LINUX_PICTUREFILE_H
#define ZRCORE_LINUX_PICTUREFILE_H

#include <optional>
#include <string_view>

/// The formats that are decoded. No others, though the system's decoders may know more: pictures come from outside, and
/// each decoder is one more way in.
enum class PictureFormat { png, jpeg, gif };

/// The format that the file's first bytes tell.
std::optional<PictureFormat> pictureFormat(std::string_view file);

/// Whether the file goes on to the mark that its format ends with. Decoders fill what is missing with black or grey.
bool isWholePicture(std::string_view file, PictureFormat format);

#endif
