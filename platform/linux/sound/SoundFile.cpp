// SPDX-License-Identifier: Apache-2.0
#include "sound/SoundFile.h"

#include <fcntl.h>
#include <owners/FileDescriptor.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <utility>

ZRSoundFile::~ZRSoundFile() = default;

std::shared_ptr<ZRSoundFile> ZRSoundFile::create(const std::string& path, std::string& fault) {
  const FileDescriptor descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  if (!descriptor.isOpen()) {
    fault = std::string("the sound file cannot be opened: ") + std::strerror(errno);
    return nullptr;
  }
  return createIn(descriptor.get(), fault);
}

std::shared_ptr<ZRSoundFile> ZRSoundFile::createIn(int descriptor, std::string& fault) {
  SF_INFO info{};
  info.samplerate = static_cast<int>(SoundFile::kSamplesPerSecond);
  info.channels = 1;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  const int own = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  SNDFILE* const file = own < 0 ? nullptr : ::sf_open_fd(own, SFM_WRITE, &info, SF_TRUE);
  if (file == nullptr) {
    fault = own < 0 ? std::strerror(errno) : ::sf_strerror(nullptr);
    return nullptr;
  }
  ::sf_command(file, SFC_SET_UPDATE_HEADER_AUTO, nullptr, SF_TRUE);  // readable also if this process dies
  return std::make_shared<SoundFile>(file);
}

std::vector<std::int16_t> convertedForFile(std::span<const std::int16_t> samples, policy::SampleFormat format) {
  const std::size_t frames = samples.size() / format.channels;
  std::vector<float> mono(frames);
  for (std::size_t frame = 0; frame < frames; ++frame) {
    float sum = 0.0F;
    for (unsigned channel = 0; channel < format.channels; ++channel) sum += samples[frame * format.channels + channel];
    mono[frame] = sum / static_cast<float>(format.channels);
  }
  const double step = static_cast<double>(format.samplesPerSecond) / SoundFile::kSamplesPerSecond;
  std::vector<std::int16_t> converted(static_cast<std::size_t>(static_cast<double>(frames) / step));
  for (std::size_t i = 0; i < converted.size(); ++i) {
    const double at = static_cast<double>(i) * step;
    const auto before = std::min(static_cast<std::size_t>(at), frames - 1), after = std::min(before + 1, frames - 1);
    const auto part = static_cast<float>(at - static_cast<double>(before));
    converted[i] = static_cast<std::int16_t>(std::lround(mono[before] + part * (mono[after] - mono[before])));
  }
  return converted;
}

class SoundFile::Stream final : public SoundStream {
 public:
  Stream(SoundFile& file, SoundEvents events) : file_(file), events_(std::move(events)) { ++file_.unended_; }

  ~Stream() override {
    if (!hasEnded_) --file_.unended_;
    if (const auto waiting = std::find(file_.unheard_.begin(), file_.unheard_.end(), this);
        waiting != file_.unheard_.end()) {
      file_.unheard_.erase(waiting);
      if (end_ == file_.end_) file_.cutAt(std::max(begin_, file_.now()));
    }
  }

  void start(policy::SampleFormat format) override { format_ = format; }
  std::size_t room() const override { return 65536; }
  void write(std::span<const std::int16_t> samples) override {
    samples_.insert(samples_.end(), samples.begin(), samples.end());
    file_.post(self_, &Stream::tellWantsMore);
  }

  void end() override {
    hasEnded_ = true;
    --file_.unended_;
    begin_ = std::max(file_.end_, file_.now());
    const auto converted = convertedForFile(std::exchange(samples_, {}), format_);
    if (!file_.writeSilenceUntil(begin_) || !file_.write(converted)) return file_.post(self_, &Stream::tellLost);
    end_ = file_.end_;
    file_.unheard_.push_back(this);
    tellIfHeard();
  }

  void tellIfHeard() {
    if (file_.seconds_ && file_.now() < end_) return;
    file_.unheard_.remove(this);
    file_.post(self_, &Stream::tellHeard);
  }

 private:
  void tellWantsMore() { events_.wantsMore(); }
  void tellHeard() { events_.heard(); }
  void tellLost() { events_.lost(file_.fault_); }

  SoundFile& file_;
  SoundEvents events_;
  policy::SampleFormat format_;
  std::vector<std::int16_t> samples_;
  bool hasEnded_ = false;
  sf_count_t begin_ = 0, end_ = 0;
  std::shared_ptr<Stream*> self_ = std::make_shared<Stream*>(this);
};

SoundFile::~SoundFile() { close(); }

std::unique_ptr<SoundStream> SoundFile::open(SoundEvents events) {
  return std::make_unique<Stream>(*this, std::move(events));
}

void SoundFile::post(std::weak_ptr<Stream*> stream, void (Stream::*tell)()) {
  ++*untold_;
  loop_->post([untold = untold_, stream = std::move(stream), tell] {
    --*untold;
    if (const auto told = stream.lock()) ((**told).*tell)();
  });
}

sf_count_t SoundFile::now() const {
  return seconds_ ? static_cast<sf_count_t>(std::llround(*seconds_ * kSamplesPerSecond)) : end_;
}

void SoundFile::setTimeSeconds(double seconds) {
  if (std::isnan(seconds)) return;
  seconds_ = std::clamp(seconds, seconds_.value_or(0.0), kLongestSeconds);
  for (Stream* const stream : std::list(unheard_)) stream->tellIfHeard();
}

void SoundFile::letTimePass() {
  seconds_.reset();
  for (Stream* const stream : std::list(unheard_)) stream->tellIfHeard();
}

bool SoundFile::write(std::span<const std::int16_t> samples) {
  const auto count = static_cast<sf_count_t>(samples.size());
  if (file_ == nullptr && fault_.empty()) fault_ = "the sound file is closed";
  if (!fault_.empty()) return false;
  const sf_count_t written = ::sf_write_short(file_, samples.data(), count);
  end_ += written;
  if (written != count) fault_ = std::string("the sound file cannot be written: ") + ::sf_strerror(file_);
  return fault_.empty();
}

bool SoundFile::writeSilenceUntil(sf_count_t position) {
  static constexpr std::array<std::int16_t, 16384> kSilence{};
  while (end_ < position) {
    const auto count = std::min<sf_count_t>(position - end_, kSilence.size());
    if (!write(std::span(kSilence).first(static_cast<std::size_t>(count)))) return false;
  }
  return true;
}

void SoundFile::cutAt(sf_count_t position) {
  if (file_ == nullptr || position >= end_) return;
  ::sf_command(file_, SFC_FILE_TRUNCATE, &position, sizeof position);
  ::sf_seek(file_, 0, SEEK_END);
  end_ = position;
}

std::string SoundFile::close() {
  if (file_ != nullptr && ::sf_close(std::exchange(file_, nullptr)) != 0 && fault_.empty()) {
    fault_ = "the sound file cannot be completed";
  }
  return fault_;
}
