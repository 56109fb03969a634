// SPDX-License-Identifier: Apache-2.0
#include "sound/ClipPlayer.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <utility>

#include "sound/BufferedStream.h"

namespace {

NSError clipError(long code, const std::string& sentence) {
  return {AVFoundationErrorDomain, code, {{NSLocalizedDescriptionKey, sentence}}};
}

/// A clip's bytes, decoded piece by piece.
class Clip {
 public:
  explicit Clip(std::string_view bytes) : bytes_(bytes) {
    static SF_VIRTUAL_IO io{
        [](void* clip) { return static_cast<sf_count_t>(static_cast<Clip*>(clip)->bytes_.size()); },
        [](sf_count_t offset, int whence, void* clip) { return static_cast<Clip*>(clip)->seek(offset, whence); },
        [](void* into, sf_count_t count, void* clip) { return static_cast<Clip*>(clip)->read(into, count); }, nullptr,
        [](void* clip) { return static_cast<Clip*>(clip)->at_; }};
    file_ = ::sf_open_virtual(&io, SFM_READ, &info_, this);
  }
  Clip(const Clip&) = delete;
  Clip& operator=(const Clip&) = delete;
  ~Clip() {
    if (file_ != nullptr) ::sf_close(file_);
  }

  /// Why it can't be played; absent when it can.
  std::optional<NSError> fault() const {
    if (file_ == nullptr) return clipError(AVErrorFileFormatNotRecognized, ::sf_strerror(nullptr));
    if (info_.channels < 1 || info_.channels > 2 || info_.samplerate < 4000 || info_.samplerate > 192000) {
      return clipError(AVErrorFileFormatNotRecognized, "The clip has an odd sample rate, or more than two channels.");
    }
    return std::nullopt;
  }

  policy::SampleFormat format() const {
    return {static_cast<unsigned>(info_.samplerate), static_cast<unsigned>(info_.channels)};
  }

  /// The next quarter of a second; empty at the end, and where the rest is damaged.
  std::vector<std::int16_t> next() {
    // As numbers of the library's own 16 bits, a file of floating point would be silent.
    std::vector<float> read(static_cast<std::size_t>(info_.samplerate / 4 * info_.channels));
    const sf_count_t count = ::sf_read_float(file_, read.data(), static_cast<sf_count_t>(read.size()));
    read.resize(static_cast<std::size_t>(std::max<sf_count_t>(count, 0)));
    std::vector<std::int16_t> samples(read.size());
    std::transform(read.begin(), read.end(), samples.begin(), [](float sample) {
      const float bounded = std::isnan(sample) ? 0.0F : std::clamp(sample * 32768.0F, -32768.0F, 32767.0F);
      return static_cast<std::int16_t>(std::lround(bounded));
    });
    return samples;
  }

  std::optional<NSError> damage() const {
    if (::sf_error(file_) == SF_ERR_NO_ERROR) return std::nullopt;
    return clipError(AVErrorDecodeFailed, ::sf_strerror(file_));
  }

 private:
  sf_count_t seek(sf_count_t offset, int whence) {
    const auto size = static_cast<sf_count_t>(bytes_.size());
    const sf_count_t from = whence == SEEK_CUR ? at_ : whence == SEEK_END ? size : 0;
    at_ = std::clamp<sf_count_t>(from + offset, 0, size);
    return at_;
  }

  sf_count_t read(void* into, sf_count_t count) {
    const sf_count_t given = std::clamp<sf_count_t>(static_cast<sf_count_t>(bytes_.size()) - at_, 0, count);
    std::memcpy(into, bytes_.data() + at_, static_cast<std::size_t>(given));
    at_ += given;
    return given;
  }

  std::string bytes_;
  sf_count_t at_ = 0;
  SF_INFO info_{};
  SNDFILE* file_ = nullptr;
};

class ClipPlayer final : public AVAudioPlayer {
 public:
  ClipPlayer(std::shared_ptr<Loop> loop, std::shared_ptr<SoundOutput> output, std::unique_ptr<Clip> clip)
      : loop_(std::move(loop)), output_(std::move(output)), clip_(std::move(clip)) {}

  void play() override {
    if (stream_ || !clip_) return;
    stream_ = std::make_unique<BufferedStream>(
        *output_,
        SoundEvents{.wantsMore = [this] { decode(); },
                    .heard =
                        [this] {
                          end([](auto& told, auto& self) { told.audioPlayerDidFinishPlayingSuccessfully(self, true); });
                        },
                    .lost =
                        [this](const std::string&) {
                          end([](auto& told, auto& self) {
                            told.audioPlayerDidFinishPlayingSuccessfully(self, false);
                          });
                        },
                    .silenced =
                        [this](bool isSilenced) {
                          if (isSilenced) end([](auto& told, auto& self) { told.audioPlayerBeginInterruption(self); });
                        }});
    stream_->setVolume(volume_);
    stream_->start(clip_->format());
    decode();
  }

  void stop() override { stream_.reset(); }

  bool isPlaying() const override { return stream_ != nullptr; }

  void setVolume(float volume) override {
    volume_ = std::isnan(volume) ? 1.0F : std::clamp(volume, 0.0F, 1.0F);
    if (stream_) stream_->setVolume(volume_);
  }

 private:
  void decode() {
    while (clip_ && stream_ && !stream_->isFull()) {
      const auto samples = clip_->next();
      if (!samples.empty()) {
        stream_->push(samples);
        continue;
      }
      const auto damage = clip_->damage();
      clip_.reset();
      if (!damage) return stream_->end();
      end([error = *damage](auto& told, auto& self) { told.audioPlayerDecodeErrorDidOccur(self, error); });
    }
  }

  /// Ends the sound and tells it, later, to whoever is the delegate then.
  template <class Tell>
  void end(Tell tell) {
    loop_->post([weak = weak_from_this(), tell] {
      const auto self = weak.lock();
      const auto told = self ? self->delegate().lock() : nullptr;
      if (told) tell(*told, self);
    });
    stream_.reset();
  }

  std::shared_ptr<Loop> loop_;
  std::shared_ptr<SoundOutput> output_;
  std::unique_ptr<Clip> clip_;
  std::unique_ptr<BufferedStream> stream_;
  float volume_ = 1.0F;
};

}  // namespace

ClipPlayers::ClipPlayers(std::shared_ptr<Loop> loop, std::shared_ptr<SoundOutput> output)
    : loop_(std::move(loop)), output_(std::move(output)) {}

ClipPlayers::~ClipPlayers() = default;

std::variant<std::shared_ptr<AVAudioPlayer>, NSError> ClipPlayers::playerWithData(std::string_view data) {
  auto clip = std::make_unique<Clip>(data);
  if (auto fault = clip->fault()) return *fault;
  return std::make_shared<ClipPlayer>(loop_, output_, std::move(clip));
}
