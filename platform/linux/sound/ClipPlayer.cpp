// SPDX-License-Identifier: Apache-2.0
#include "sound/ClipPlayer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sound/BufferedStream.h"
#include "sound/Clip.h"

namespace {

class ClipPlayer final : public AVAudioPlayer {
 public:
  ClipPlayer(std::shared_ptr<Loop> loop, std::shared_ptr<SoundOutput> output, std::unique_ptr<Clip> clip)
      : loop_(std::move(loop)), output_(std::move(output)), clip_(std::move(clip)) {}

  void play() override {
    if (stream_ || !clip_) return;
    stream_ = std::make_unique<BufferedStream>(
        *output_,
        SoundEvents{
            .wantsMore = [this] { decode(); },
            .heard =
                [this] {
                  end([](auto& told, const auto& self) { told.audioPlayerDidFinishPlayingSuccessfully(self, true); });
                },
            .lost =
                [this](const std::string&) {
                  end([](auto& told, const auto& self) { told.audioPlayerDidFinishPlayingSuccessfully(self, false); });
                },
            .silenced =
                [this](bool isSilenced) {
                  if (isSilenced) end([](auto& told, const auto& self) { told.audioPlayerBeginInterruption(self); });
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
      end([error = *damage](auto& told, const auto& self) { told.audioPlayerDecodeErrorDidOccur(self, error); });
    }
  }

  /// Ends the sound and reports it, later, to whoever is the delegate then.
  template <class Tell>
  void end(Tell tell) {
    loop_->post(Callback(this, [this, tell] {
      if (const auto told = delegate().lock()) tell(*told, shared_from_this());
    }));
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
  auto opened = Clip::open(data);
  if (const auto* const fault = std::get_if<NSError>(&opened)) return *fault;
  return std::make_shared<ClipPlayer>(loop_, output_, std::get<std::unique_ptr<Clip>>(std::move(opened)));
}
