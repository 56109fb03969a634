// SPDX-License-Identifier: Apache-2.0
#include "sound/PulseSound.h"

#include <ZRCore/ZRPlatform.h>

#include <cstring>
#include <utility>

#include "loop/FromC.h"
#include "sound/SoundGuard.h"
#include "sound/SoundOwner.h"
#include "sound/SoundRestoring.h"

PulseSound::PulseSound(std::shared_ptr<GLibLoop> loop, std::string stateFolder)
    : connection_(std::move(loop)),
      others_(connection_, std::move(stateFolder),
              {.changed =
                   [this](bool arePlaying) {
                     postHint({{AVAudioSessionSilenceSecondaryAudioHintTypeKey, arePlaying ? 1 : 0}});
                   },
               .unnoted =
                   [](const std::string& folder) {
                     ZRPlatformInUse().log->writeLine(
                         "What is lowered cannot be noted, and stays low if this process is "
                         "killed: " +
                         folder + " must be a folder of this user's alone (mode 700).");
                   }}) {
  restoreSoundAtExit();
  guardSound(others_.stateFolder());
  if (others_.mayHaveToRestore()) connection_.connect();
}

bool PulseSound::isOtherAudioPlaying() const { return others_.arePlaying(); }

PulseSound::~PulseSound() = default;

void PulseSound::postHint(std::map<std::string, std::int64_t> information) {
  connection_.loop().post(Callback(this, [this, information = std::move(information)] {
    ZRPlatformInUse().notificationCenter->postNotification({.name = AVAudioSessionSilenceSecondaryAudioHintNotification,
                                                            .object = shared_from_this(),
                                                            .userInfo = information});
  }));
}

AVAudioSessionResult PulseSound::setCategoryWithOptions(const std::string&, AVAudioSessionCategoryOptions options) {
  options_ = options;
  others_.setDucking(isActive_ && (options_ & AVAudioSessionCategoryOptionDuckOthers) != 0);
  return {};
}

AVAudioSessionResult PulseSound::setActiveWithOptions(bool active, AVAudioSessionSetActiveOptions) {
  isActive_ = active;
  if (active) connection_.connect();
  others_.setDucking(isActive_ && (options_ & AVAudioSessionCategoryOptionDuckOthers) != 0);
  return {};
}

/// A stream on the server, from its start until it was heard. How long the last sample is on its way the server
/// reports; its report that a stream has been drained may come seconds late.
class PulseSound::Stream final : public SoundStream, private PulseListener {
 public:
  Stream(PulseSound& sound, SoundEvents events) : sound_(sound), events_(std::move(events)) {
    sound_.connection_.add(*this);
    sound_.connection_.connect();
  }

  ~Stream() override {
    sound_.connection_.remove(*this);
    setAudible(false);
    if (stream_ == nullptr) return;
    ::pa_stream_set_state_callback(stream_, nullptr, nullptr);
    ::pa_stream_set_write_callback(stream_, nullptr, nullptr);
    ::pa_stream_set_event_callback(stream_, nullptr, nullptr);
    if (timing_ != nullptr) {
      ::pa_operation_cancel(timing_);
      ::pa_operation_unref(timing_);
    }
    ::pa_stream_disconnect(stream_);
    ::pa_stream_unref(stream_);
  }

  void start(policy::SampleFormat format) override {
    format_ = format;
    if (sound_.connection_.isReady()) connectStream();
  }

  std::size_t room() const override {
    if (!isStreamReady()) return 0;
    const std::size_t bytes = ::pa_stream_writable_size(stream_);
    return bytes == static_cast<std::size_t>(-1) ? 0
                                                 : bytes / sizeof(std::int16_t) / format_.channels * format_.channels;
  }

  void write(std::span<const std::int16_t> samples) override {
    ::pa_stream_write(stream_, samples.data(), samples.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE);
  }

  void end() override {
    hasEnded_ = true;
    if (isStreamReady()) finish();
  }

 private:
  bool isStreamReady() const { return stream_ != nullptr && ::pa_stream_get_state(stream_) == PA_STREAM_READY; }

  void finish() {
    if (pa_operation* const operation = ::pa_stream_trigger(stream_, nullptr, nullptr)) ::pa_operation_unref(operation);
    askWhenHeard();
  }

  void serverIsReady() override {
    if (format_.channels > 0 && stream_ == nullptr) connectStream();
  }

  void serverIsLost(const std::string& why) override { events_.lost(why); }

  void connectStream() {
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_S16LE;
    spec.rate = format_.samplesPerSecond;
    spec.channels = static_cast<std::uint8_t>(format_.channels);
    pa_proplist* const properties = ::pa_proplist_new();
    ::pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "phone");
    ::pa_proplist_sets(properties, kPromptProperty, soundOwner().c_str());
    stream_ = ::pa_stream_new_with_proplist(sound_.connection_.context(), "Guidance", &spec, nullptr, properties);
    ::pa_proplist_free(properties);
    if (stream_ == nullptr) return failLater();
    ::pa_stream_set_state_callback(
        stream_, from_c::entry([](pa_stream*, void* self) { static_cast<Stream*>(self)->stateChanged(); }), this);
    ::pa_stream_set_write_callback(
        stream_,
        from_c::entry([](pa_stream*, std::size_t, void* self) { static_cast<Stream*>(self)->tellWantsMore(); }), this);
    ::pa_stream_set_event_callback(stream_, from_c::entry([](pa_stream*, const char* name, pa_proplist*, void* self) {
                                     static_cast<Stream*>(self)->serverAsks(name);
                                   }),
                                   this);
    constexpr pa_usec_t kLatency = kLatencyMilliseconds * 1000;
    constexpr auto kServersChoice = static_cast<std::uint32_t>(-1);
    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.fragsize = kServersChoice;
    buffer.tlength = static_cast<std::uint32_t>(::pa_usec_to_bytes(kLatency, &spec));
    buffer.prebuf = buffer.minreq = static_cast<std::uint32_t>(::pa_usec_to_bytes(kLatency / 4, &spec));
    if (::pa_stream_connect_playback(stream_, nullptr, &buffer, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) < 0) {
      return failLater();
    }
    setAudible(true);
    watchOver();
  }

  /// A server that neither takes samples nor answers hangs, unless it has silenced the stream.
  void watchOver() {
    hasMoved_ = false;
    watchdog_ = sound_.connection_.loop().after(PulseConnection::kPatienceSeconds, [this] {
      const bool waits = hasEnded_ ? !wait_ : room() == 0;
      if (waits && !hasMoved_ && isAudible_) return serverIsLost("the sound server hangs");
      watchOver();
    });
  }

  void failLater() {
    wait_ = sound_.connection_.loop().after(0.0, [this] { serverIsLost("the sound server refuses the stream"); });
  }

  void stateChanged() {
    const pa_stream_state_t state = ::pa_stream_get_state(stream_);
    if (state == PA_STREAM_READY) hasEnded_ ? finish() : tellWantsMore();
    if (state == PA_STREAM_FAILED || state == PA_STREAM_TERMINATED) serverIsLost("the sound server ended the stream");
  }

  void tellWantsMore() {
    hasMoved_ = true;
    if (!hasEnded_) events_.wantsMore();
  }

  /// The server's policy would have the stream silenced, for a call say, or lets it go on.
  void serverAsks(const char* request) {
    const bool isSilenced = std::strcmp(request, PA_STREAM_EVENT_REQUEST_CORK) == 0;
    if (!isSilenced && std::strcmp(request, PA_STREAM_EVENT_REQUEST_UNCORK) != 0) return;
    wait_.reset();
    if (pa_operation* const operation = ::pa_stream_cork(stream_, isSilenced ? 1 : 0, nullptr, nullptr)) {
      ::pa_operation_unref(operation);
    }
    setAudible(!isSilenced);
    if (!isSilenced && hasEnded_) askWhenHeard();
    sound_.postHint({{AVAudioSessionInterruptionTypeKey, isSilenced ? 1 : 0}});
    events_.silenced(isSilenced);
  }

  void askWhenHeard() {
    const auto answered = from_c::entry([](pa_stream*, int, void* self) { static_cast<Stream*>(self)->timingCame(); });
    if (timing_ != nullptr) ::pa_operation_unref(timing_);
    timing_ = ::pa_stream_update_timing_info(stream_, answered, this);
  }

  void timingCame() {
    if (!isAudible_) return;  // silenced meanwhile: it is asked again when the stream goes on
    pa_usec_t microseconds = 0;
    int isNegative = 0;
    const bool isKnown = ::pa_stream_get_latency(stream_, &microseconds, &isNegative) == 0 && isNegative == 0;
    const double seconds = isKnown ? static_cast<double>(microseconds) * 1e-6 : 0.0;
    wait_ = sound_.connection_.loop().after(seconds, [this] {
      setAudible(false);
      events_.heard();
    });
  }

  void setAudible(bool isAudible) {
    if (std::exchange(isAudible_, isAudible) == isAudible) return;
    isAudible ? sound_.others_.ourStreamStarts() : sound_.others_.ourStreamEnds();
  }

  PulseSound& sound_;
  SoundEvents events_;
  policy::SampleFormat format_;
  pa_stream* stream_ = nullptr;
  pa_operation* timing_ = nullptr;
  bool hasEnded_ = false;
  bool isAudible_ = false;
  bool hasMoved_ = false;  ///< since the watchdog looked last
  std::unique_ptr<Loop::Wait> watchdog_;
  std::unique_ptr<Loop::Wait> wait_;
};

std::unique_ptr<SoundStream> PulseSound::open(SoundEvents events) {
  return std::make_unique<Stream>(*this, std::move(events));
}
