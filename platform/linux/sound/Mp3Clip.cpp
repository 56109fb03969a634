// SPDX-License-Identifier: Apache-2.0
#include <mpg123.h>

#include "sound/Clip.h"

namespace {

class Mp3Clip final : public Clip {
 public:
  explicit Mp3Clip(std::string_view bytes) : Clip(bytes) {
    ::mpg123_init();  // needed by releases before 1.27, which count the calls
    handle_ = ::mpg123_new(nullptr, nullptr);
    if (handle_ == nullptr) return;
    constexpr long kFlags = MPG123_QUIET | MPG123_FORCE_FLOAT | MPG123_GAPLESS | MPG123_NO_FRANKENSTEIN;
    ::mpg123_param(handle_, MPG123_ADD_FLAGS, kFlags, 0.0);
    ::mpg123_replace_reader_handle(
        handle_,
        [](void* clip, void* into, std::size_t count) {
          return static_cast<ssize_t>(static_cast<Mp3Clip*>(clip)->read(into, count));
        },
        [](void* clip, off_t offset, int whence) { return static_cast<Mp3Clip*>(clip)->seek(offset, whence); },
        nullptr);
    long samplesPerSecond = 0;
    int channels = 0, encoding = 0;
    isOpen_ = ::mpg123_open_handle(handle_, this) == MPG123_OK &&
              ::mpg123_getformat(handle_, &samplesPerSecond, &channels, &encoding) == MPG123_OK &&
              encoding == MPG123_ENC_FLOAT_32;
    setFormat(samplesPerSecond, channels);
  }
  ~Mp3Clip() override { ::mpg123_delete(handle_); }

  bool isOpen() const { return isOpen_; }
  std::string fault() const { return handle_ != nullptr ? ::mpg123_strerror(handle_) : "no memory"; }

  std::optional<NSError> damage() const override {
    if (!isDamaged_) return std::nullopt;
    return clipError(AVErrorDecodeFailed, fault());
  }

 private:
  std::size_t decode(std::span<float> samples) override {
    std::size_t bytes = 0;
    const int result =
        ::mpg123_read(handle_, reinterpret_cast<unsigned char*>(samples.data()), samples.size_bytes(), &bytes);
    isDamaged_ = result == MPG123_ERR;
    return bytes / sizeof(float);
  }

  mpg123_handle* handle_ = nullptr;
  bool isOpen_ = false;
  bool isDamaged_ = false;
};

}  // namespace

std::unique_ptr<Clip> makeMp3Clip(std::string_view bytes, std::string& fault) {
  auto clip = std::make_unique<Mp3Clip>(bytes);
  if (clip->isOpen()) return clip;
  fault = clip->fault();
  return nullptr;
}
