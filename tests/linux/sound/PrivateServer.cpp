// SPDX-License-Identifier: Apache-2.0
#include "PrivateServer.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <numbers>

namespace {

constexpr double kToneHertz = 440.0;

bool answersAt(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool answers = ::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  ::close(socket);
  return answers;
}

}  // namespace

bool eventually(const std::function<bool()>& holds) { return ZRRunLinuxLoopFor(30.0, holds); }

Monitor::Monitor()
    : mainloop_(::pa_glib_mainloop_new(nullptr)),
      context_(::pa_context_new(::pa_glib_mainloop_get_api(mainloop_), "monitor")) {
  ::pa_context_set_state_callback(
      context_, [](pa_context*, void* self) { static_cast<Monitor*>(self)->stateChanged(); }, this);
  ::pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
}

Monitor::~Monitor() {
  ::pa_context_set_state_callback(context_, nullptr, nullptr);
  if (stream_ != nullptr) {
    ::pa_stream_set_read_callback(stream_, nullptr, nullptr);
    ::pa_stream_unref(stream_);
  }
  ::pa_context_disconnect(context_);
  ::pa_context_unref(context_);
  ::pa_glib_mainloop_free(mainloop_);
}

void Monitor::stateChanged() {
  if (::pa_context_get_state(context_) != PA_CONTEXT_READY) return;
  const pa_sample_spec spec{PA_SAMPLE_S16LE, kSamplesPerSecond, 1};
  constexpr auto kServersChoice = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{kServersChoice, kServersChoice, kServersChoice, kServersChoice, kBlock / 4};
  stream_ = ::pa_stream_new(context_, "monitor", &spec, nullptr);
  ::pa_stream_set_read_callback(
      stream_, [](pa_stream*, std::size_t, void* self) { static_cast<Monitor*>(self)->read(); }, this);
  ::pa_stream_connect_record(stream_, "zrnull.monitor", &buffer, PA_STREAM_ADJUST_LATENCY);
}

void Monitor::read() {
  const void* bytes = nullptr;
  std::size_t count = 0;
  while (::pa_stream_readable_size(stream_) > 0 && ::pa_stream_peek(stream_, &bytes, &count) == 0 && count > 0) {
    const auto* const first = static_cast<const std::int16_t*>(bytes);
    if (bytes != nullptr) samples.insert(samples.end(), first, first + count / 2);
    ::pa_stream_drop(stream_);
  }
}

double Monitor::toneAt(std::size_t end) const {
  if (end < kBlock || end > samples.size()) return -1.0;
  const double factor = 2.0 * std::cos(2.0 * std::numbers::pi * kToneHertz / kSamplesPerSecond);
  double last = 0.0, before = 0.0;
  for (std::size_t i = end - kBlock; i < end; ++i) {
    const double next = samples[i] + factor * last - before;
    before = last;
    last = next;
  }
  return std::sqrt(std::fmax(last * last + before * before - factor * last * before, 0.0)) / (kBlock / 2.0);
}

double Monitor::loudness() const {
  if (samples.size() < kBlock) return 0.0;
  double sum = 0.0;
  for (std::size_t i = samples.size() - kBlock; i < samples.size(); ++i) sum += samples[i] * samples[i];
  return std::sqrt(sum / kBlock);
}

std::vector<std::pair<double, double>> Monitor::stretches(double gapSeconds) const {
  std::vector<std::pair<double, double>> found;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    if (std::abs(samples[i]) < 50) continue;
    const double at = static_cast<double>(i) / kSamplesPerSecond;
    if (found.empty() || at - found.back().second > gapSeconds) found.emplace_back(at, at);
    found.back().second = at;
  }
  return found;
}

PrivateServer::PrivateServer() {
  std::string name = "/tmp/zrsound-XXXXXX";
  folder_ = ::mkdtemp(name.data());
  for (const char* variable : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"}) ::setenv(variable, folder_.c_str(), 1);
  ::setenv("PULSE_SERVER", ("unix:" + (folder_ / "sound").string()).c_str(), 1);
}

PrivateServer::~PrivateServer() {
  stop();
  std::filesystem::remove_all(folder_);
}

bool PrivateServer::isInstalled() {
  return ChildProcess::exists("pulseaudio") && ChildProcess::exists("pacat") && ChildProcess::exists("espeak-ng");
}

bool PrivateServer::start(const std::vector<std::string>& modules) {
  const std::string socket = folder_ / "sound";
  std::filesystem::remove(socket);
  std::vector<std::string> command{"pulseaudio",
                                   "-n",
                                   "--daemonize=no",
                                   "--exit-idle-time=-1",
                                   "--use-pid-file=no",
                                   "-L",
                                   "module-native-protocol-unix auth-anonymous=1 socket=" + socket,
                                   "-L",
                                   "module-null-sink sink_name=zrnull"};
  for (const std::string& module : modules) command.insert(command.end(), {"-L", module});
  server_ = std::make_unique<ChildProcess>(command);
  for (int look = 0; look < 1000 && !answersAt(socket); ++look) ZRRunLinuxLoopFor(0.01, [] { return false; });
  return answersAt(socket);
}

void PrivateServer::stop() {
  if (server_) server_->send(SIGKILL);
  server_.reset();
}

void PrivateServer::freeze() const { server_->send(SIGSTOP); }

std::unique_ptr<ChildProcess> PrivateServer::music(const std::string& role,
                                                   const std::vector<std::string>& properties) const {
  const std::filesystem::path tone = folder_ / "tone";
  if (!std::filesystem::exists(tone)) {
    std::ofstream file(tone, std::ios::binary);
    for (int i = 0; i < 8000 * 60; ++i) {
      const auto sample = static_cast<std::int16_t>(
          std::lround(kToneAmplitude * std::sin(2.0 * std::numbers::pi * kToneHertz * i / 8000.0)));
      file.write(reinterpret_cast<const char*>(&sample), sizeof sample);
    }
  }
  ChildProcess::Arguments command{"pacat",
                                  "--rate=8000",
                                  "--channels=1",
                                  "--format=s16le",
                                  "--latency-msec=50",
                                  "--raw",
                                  "--client-name=player",
                                  "--property=media.role=" + role};
  for (const std::string& property : properties) command.push_back("--property=" + property);
  command.push_back(tone);
  return std::make_unique<ChildProcess>(command);
}
