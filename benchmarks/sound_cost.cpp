// SPDX-License-Identifier: Apache-2.0
// What spoken prompts cost in time, on a private sound server, each beside its rival in the same run. Needs pulseaudio
// and espeak-ng. sound_cost [ROUNDS]
#include <PrivateServer.h>
#include <ZRCore/ZRAudio.h>
#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr const char* kText = "In four hundred meters, turn left onto Main Street";

double now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Median and greatest, in milliseconds; negative values are failures.
void print(const char* name, std::vector<double> seconds) {
  std::sort(seconds.begin(), seconds.end());
  std::printf("%-58s median %6.0f ms, greatest %6.0f ms, of %zu\n", name, 1e3 * seconds[seconds.size() / 2],
              1e3 * seconds.back(), seconds.size());
}

/// The seconds until `holds`.
double secondsUntil(const std::function<bool()>& holds) {
  const double begin = now();
  return eventually(holds) ? now() - begin : -1.0;
}

class Measurement {
 public:
  Measurement(ZRAudio& audio, Monitor& monitor) : audio_(audio), monitor_(monitor) {}

  /// From the call, or the start of the program, until a sample can be heard; then from the stop until none can.
  void prompts(int rounds) {
    std::vector<double> ours, ourStops, rivals, rivalStops;
    for (int round = 0; round < rounds; ++round) {
      wait(0.3);
      audio_.speakTextInterruptVolume(kText, true, 1.0F);
      ours.push_back(secondsUntil([this] { return isHeard(); }));
      wait(0.5);
      audio_.stopSpeechPlayback();
      ourStops.push_back(secondsUntil([this] { return monitor_.loudness() < 1.0; }));

      wait(0.3);
      const ChildProcess rival({"espeak-ng", "-v", "en-US", "-s", "175", kText});
      rivals.push_back(secondsUntil([this] { return isHeard(); }));
      wait(0.5);
      rival.send(SIGKILL);
      rivalStops.push_back(secondsUntil([this] { return monitor_.loudness() < 1.0; }));
    }
    print("speakText until heard", ours);
    print("  espeak-ng, playing by itself, until heard", rivals);
    print("stopSpeechPlayback until silent", ourStops);
    print("  espeak-ng, killed, until silent", rivalStops);
  }

  /// The fall of music after a prompt's call, and its return after the prompt's end. The prompt is a silent one.
  void ducking(int rounds) {
    std::vector<double> falls, returns;
    const double half = PrivateServer::kToneAmplitude / 2;
    for (int round = 0; round < rounds; ++round) {
      wait(0.3);
      audio_.speakTextInterruptVolume("Turn left", true, 0.0F);
      falls.push_back(secondsUntil([&] { return monitor_.tone() < half; }));
      eventually([this] { return !audio_.isSpeaking(); });
      returns.push_back(secondsUntil([&] { return monitor_.tone() > half; }));
    }
    print("music lowered after speakText", falls);
    print("music back after the prompt's end", returns);
  }

  /// The return of music after another host, this program again, was ended in the middle of a prompt.
  void ends(int rounds) {
    std::vector<double> returns;
    const double half = PrivateServer::kToneAmplitude / 2;
    for (int round = 0; round < rounds; ++round) {
      wait(0.3);
      const ChildProcess host({"/proc/self/exe", "--speak"});
      secondsUntil([&] { return monitor_.tone() < half; });
      host.send(SIGSEGV);
      returns.push_back(secondsUntil([&] { return monitor_.tone() > half; }));
    }
    print("  after a signal that nobody handles", returns);
  }

 private:
  bool isHeard() { return std::abs(monitor_.samples.empty() ? 0 : *loudest()) > 50; }
  std::vector<std::int16_t>::const_iterator loudest() const {
    const auto count = std::min<std::size_t>(monitor_.samples.size(), Monitor::kBlock / 4);
    return std::max_element(monitor_.samples.end() - static_cast<std::ptrdiff_t>(count), monitor_.samples.end(),
                            [](int a, int b) { return std::abs(a) < std::abs(b); });
  }
  static void wait(double seconds) {
    ZRRunLinuxLoopFor(seconds, [] { return false; });
  }

  ZRAudio& audio_;
  Monitor& monitor_;
};

double processorSeconds() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         1e-6 * static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

void idle() {
  constexpr double kSeconds = 5.0;
  ZRRunLinuxLoopFor(1.0, [] { return false; });
  long wakeUps = -3;  // the first look, the deadline's, the last
  const double before = processorSeconds();
  ZRRunLinuxLoopFor(kSeconds, [&wakeUps] { return ++wakeUps < -3; });
  std::printf("idle after a prompt: %ld wake-ups and %.1f ms of processor time in %.0f s\n", std::max(wakeUps, 0L),
              1e3 * (processorSeconds() - before), kSeconds);
}

/// A host that `ends` ends.
int speak() {
  if (!ZRPlatformInstall(makeLinuxPlatform())) return 3;
  ZRAudio::sharedInstance()->speakTextInterruptVolume(kText, false, 0.0F);
  ZRRunLinuxLoopFor(10.0, [] { return false; });
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (ZRGuardLinuxSound(argc, argv)) return 0;
  if (argc > 1 && std::string_view(argv[1]) == "--speak") return speak();
  const int rounds = argc > 1 ? std::max(std::atoi(argv[1]), 1) : 20;
  PrivateServer server;
  if (!PrivateServer::isInstalled() || !server.start()) {
    std::fprintf(stderr, "sound_cost: pulseaudio, pulseaudio-utils and espeak-ng are needed: run scripts/setup\n");
    return 3;
  }
  auto monitor = std::make_unique<Monitor>();
  eventually([&] { return monitor->isRecording(); });
  if (!ZRPlatformInstall(makeLinuxPlatform())) return 3;
  const auto audio = ZRAudio::init();
  Measurement(*audio, *monitor).prompts(rounds);
  {
    const auto player = server.music();
    eventually([&] { return monitor->tone() > PrivateServer::kToneAmplitude / 2; });
    Measurement(*audio, *monitor).ducking(rounds);
    Measurement(*audio, *monitor).ends(rounds);
  }
  monitor.reset();
  idle();
}
