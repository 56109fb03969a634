// SPDX-License-Identifier: Apache-2.0
#include <sndfile.h>

#include <algorithm>

#include "sound/Clip.h"

namespace {

class SndfileClip final : public Clip {
 public:
  explicit SndfileClip(std::string_view bytes) : Clip(bytes) {
    static SF_VIRTUAL_IO io{
        [](void* clip) { return static_cast<sf_count_t>(static_cast<SndfileClip*>(clip)->size()); },
        [](sf_count_t offset, int whence, void* clip) {
          return static_cast<sf_count_t>(static_cast<SndfileClip*>(clip)->seek(static_cast<off_t>(offset), whence));
        },
        [](void* into, sf_count_t count, void* clip) {
          const auto wanted = static_cast<std::size_t>(std::max<sf_count_t>(count, 0));
          return static_cast<sf_count_t>(static_cast<SndfileClip*>(clip)->read(into, wanted));
        },
        nullptr, [](void* clip) { return static_cast<sf_count_t>(static_cast<SndfileClip*>(clip)->at()); }};
    SF_INFO info{};
    file_ = ::sf_open_virtual(&io, SFM_READ, &info, this);
    setFormat(info.samplerate, info.channels);
  }
  ~SndfileClip() override {
    if (file_ != nullptr) ::sf_close(file_);
  }

  bool isOpen() const { return file_ != nullptr; }

  std::optional<NSError> damage() const override {
    if (::sf_error(file_) == SF_ERR_NO_ERROR) return std::nullopt;
    return clipError(AVErrorDecodeFailed, ::sf_strerror(file_));
  }

 private:
  std::size_t decode(std::span<float> samples) override {
    // As numbers of the library's own 16 bits, a file of floating point would be silent.
    const sf_count_t count = ::sf_read_float(file_, samples.data(), static_cast<sf_count_t>(samples.size()));
    return static_cast<std::size_t>(std::max<sf_count_t>(count, 0));
  }

  SNDFILE* file_ = nullptr;
};

}  // namespace

std::unique_ptr<Clip> makeSndfileClip(std::string_view bytes, std::string& fault) {
  auto clip = std::make_unique<SndfileClip>(bytes);
  if (clip->isOpen()) return clip;
  fault = ::sf_strerror(nullptr);
  return nullptr;
}
