// SPDX-License-Identifier: Apache-2.0
#include "sound/Clip.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

/// Without the tags in front (ID3v2): what they are in front of decides who decodes it.
std::string_view withoutTags(std::string_view bytes) {
  constexpr std::size_t kHeader = 10;
  while (bytes.starts_with("ID3") && bytes.size() >= kHeader) {
    std::size_t length = kHeader;
    for (std::size_t i = 6, shift = 21; i < kHeader; ++i, shift -= 7) {
      length += (static_cast<unsigned char>(bytes[i]) & std::size_t{0x7f}) << shift;
    }
    constexpr unsigned char kHasFooter = 0x10;
    if ((static_cast<unsigned char>(bytes[5]) & kHasFooter) != 0) length += kHeader;
    bytes.remove_prefix(std::min(length, bytes.size()));
  }
  return bytes;
}

/// Eleven bits set begin a frame of MPEG audio.
bool isMpeg(std::string_view bytes) {
  return bytes.size() >= 2 && bytes[0] == '\xff' && (static_cast<unsigned char>(bytes[1]) & 0xe0U) == 0xe0U;
}

}  // namespace

NSError clipError(long code, const std::string& sentence) {
  return {AVFoundationErrorDomain, code, {{NSLocalizedDescriptionKey, sentence}}};
}

std::variant<std::unique_ptr<Clip>, NSError> Clip::open(std::string_view bytes) {
  const std::string_view sound = withoutTags(bytes);
  std::string fault;
  std::unique_ptr<Clip> clip = isMpeg(sound) ? makeMp3Clip(sound, fault) : makeSndfileClip(sound, fault);
  if (!clip) return clipError(AVErrorFileFormatNotRecognized, fault);
  if (clip->format_.channels < 1 || clip->format_.channels > 2 || clip->format_.samplesPerSecond < 4000 ||
      clip->format_.samplesPerSecond > 192000) {
    return clipError(AVErrorFileFormatNotRecognized, "The clip has an odd sample rate, or more than two channels.");
  }
  return clip;
}

Clip::~Clip() = default;

void Clip::setFormat(long samplesPerSecond, int channels) {
  format_ = {static_cast<unsigned>(std::max(samplesPerSecond, 0L)), static_cast<unsigned>(std::max(channels, 0))};
}

std::vector<std::int16_t> Clip::next() {
  std::vector<float> decoded(std::size_t{format_.samplesPerSecond / 4} * format_.channels);
  decoded.resize(decode(decoded));
  std::vector<std::int16_t> samples(decoded.size());
  std::transform(decoded.begin(), decoded.end(), samples.begin(), [](float sample) {
    const float bounded = std::isnan(sample) ? 0.0F : std::clamp(sample * 32768.0F, -32768.0F, 32767.0F);
    return static_cast<std::int16_t>(std::lround(bounded));
  });
  return samples;
}

off_t Clip::seek(off_t offset, int whence) {
  const off_t from = whence == SEEK_CUR ? at() : whence == SEEK_END ? size() : 0;
  at_ = static_cast<std::size_t>(std::clamp<off_t>(from + offset, 0, size()));
  return at();
}

std::size_t Clip::read(void* into, std::size_t count) {
  const std::size_t given = std::min(bytes_.size() - at_, count);
  std::memcpy(into, bytes_.data() + at_, given);
  at_ += given;
  return given;
}
